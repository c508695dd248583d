// SPDX-License-Identifier: MIT
#ifndef CHARTS_ARCNODE_H
#define CHARTS_ARCNODE_H

#include "ArcShape.h"
#include "ChartsExport.h"
#include "SmoothColorMaterial.h"

#include <QtGui/QColor>
#include <QtQuick/QSGGeometry>
#include <QtQuick/QSGGeometryNode>

namespace Charts {

/*!
    \class Charts::ArcNode
    \brief Draws a circular arc as a band of one width and colour, smooth or not.

    Everything is in the vertices, which each update writes anew. Lives on the render thread; made
    and owned by the paint node of an item.
*/
class CHARTS_EXPORT ArcNode : public QSGGeometryNode
{
public:
    /*! Makes a node that shows nothing before its first update(). */
    ArcNode();
    ~ArcNode() override;

    /*!
        Draws \a arc in \a color, \a width pixels wide, with \a antialiasing at smooth edges.

        The band is cut into segments of at most five pixels along its middle. The arc runs from its
        start angle in the direction of growing angles to its end angle; where the two are the same
        direction there is no arc, except when the end is 2 pi: then it is the full circle.
    */
    void update(const ArcShape &arc, float width, QColor color, bool antialiasing);

private:
    QSGGeometry m_geometry;
    SmoothColorMaterial m_material;
};

} // namespace Charts

#endif
