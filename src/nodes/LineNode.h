// SPDX-License-Identifier: MIT
#ifndef CHARTS_LINENODE_H
#define CHARTS_LINENODE_H

#include "ChartsExport.h"
#include "SmoothColorMaterial.h"

#include <QtCore/QLineF>
#include <QtCore/QList>
#include <QtCore/QPointF>
#include <QtGui/QColor>
#include <QtQuick/QSGGeometry>
#include <QtQuick/QSGGeometryNode>

#include <cstddef>

namespace Charts {

/*!
    \class Charts::LineNode
    \brief Draws a straight line or a polyline of one width and colour, smooth or not.

    Coordinates and widths are pixels of the item. Everything is in the vertices, which each update
    writes anew; their memory is kept while their number stays. The ends have no caps. Lives on the
    render thread; made and owned by the paint node of an item.
*/
class CHARTS_EXPORT LineNode : public QSGGeometryNode
{
public:
    /*! Makes a node that shows nothing before its first update(). */
    LineNode();
    ~LineNode() override;

    /*! Draws \a line in \a color, \a width pixels wide, with smooth edges if \a smooth. A line
        without length shows nothing. */
    void update(const QLineF &line, float width, QColor color, bool smooth);
    /*!
        Draws the lines between successive \a points in \a color, \a width pixels wide, with smooth
        edges if \a smooth. Fewer than two show nothing.

        All lines are one strip. Of smooth ones the triangles from one to the next are transparent,
        so that wide lines show notches on the outside of their bends: hardly any up to a width of
        2, clearly from 8 on.
    */
    void update(const QList<QPointF> &points, float width, QColor color, bool smooth);
    /*!
        Writes \a line into the geometry, in \a color and \a width pixels wide: 4 vertices from
        \a index on, or 8 when \a smooth. Neither makes room for them nor marks the node as changed.

        A smooth line is a strip of eight vertices, p and q being its ends, moved by half a pixel:

            0  p + e  transparent, offset outwards      1  q + e
            2  p + e  opaque, offset inwards            3  q + e
            4  p - e  opaque, offset inwards            5  q - e
            6  p - e  transparent, offset outwards      7  q - e

        The offset is two fifths of the width.
    */
    void setSmoothVertices(std::size_t index, QLineF line, float width, QColor color, bool smooth);

private:
    QSGGeometry m_geometry;
    SmoothColorMaterial m_material;
};

} // namespace Charts

#endif
