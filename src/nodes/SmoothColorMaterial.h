// SPDX-License-Identifier: MIT
#ifndef CHARTS_SMOOTHCOLORMATERIAL_H
#define CHARTS_SMOOTHCOLORMATERIAL_H

#include "ChartsExport.h"

#include <QtQuick/QSGGeometry>
#include <QtQuick/QSGMaterial>

namespace Charts {

/*!
    \class Charts::SmoothColorMaterial
    \brief Draws triangles in the colours of their vertices, with edges smoothed without
    multisampling.

    A vertex on an edge carries an offset, along which the vertex shader moves it: an opaque vertex
    inwards, a transparent twin of it outwards. Between the two the colour fades.

    \table
    \header \li location \li attribute \li components \li meaning
    \row \li 0 \li vertex \li two floats \li position in coordinates of the item
    \row \li 1 \li vertexColor \li four bytes \li red, green, blue, alpha, premultiplied
    \row \li 2 \li vertexOffset \li two floats \li offset in coordinates of the item, (0, 0) for a
        vertex that stays
    \endtable

    It has no data of its own and all instances are equal, so that the scene graph can batch all
    nodes that use it. Lives on the render thread, owned by its node.
*/
class CHARTS_EXPORT SmoothColorMaterial : public QSGMaterial
{
public:
    /*! Makes a material that blends. All of them are the same. */
    SmoothColorMaterial();
    ~SmoothColorMaterial() override;

    QSGMaterialType *type() const override;
    QSGMaterialShader *createShader(QSGRendererInterface::RenderMode renderMode) const override;
    /*! Always 0, whatever the \a other is: all materials of the class are equal. */
    int compare(const QSGMaterial *other) const override;

    /*! The layout of a vertex, 20 bytes. The same object at all times. */
    [[nodiscard]] static const QSGGeometry::AttributeSet &attributeSet();
};

} // namespace Charts

#endif
