// SPDX-License-Identifier: MIT
#ifndef CHARTS_GRADIENTNODE_H
#define CHARTS_GRADIENTNODE_H

#include "ChartsExport.h"

#include <QtCore/QLineF>
#include <QtCore/QList>
#include <QtCore/QPointF>
#include <QtCore/QSize>
#include <QtGui/QColor>
#include <QtQuick/QSGGeometry>
#include <QtQuick/QSGGeometryNode>

/*!
    \class GradientNode
    \brief Fills one side of a line or polyline with a colour that fades from the line on.

    Coordinates are pixels of the item. Everything is in the vertices, which each update writes
    anew; their memory is kept while their number stays. Lives on the render thread; made and owned
    by the paint node of an item. The one class of the library outside its namespace.

    A segment from p to q is a strip of four vertices; neighbouring segments share an edge, so that
    the strips of a polyline are one:

        1 p'---3 q'   transparent
          |  /  |
        0 p ---2 q    the colour, its channels not multiplied by its alpha

    The scene graph takes vertex colours as premultiplied. A translucent colour therefore adds more
    light than it covers: it glows.
*/
class CHARTS_EXPORT GradientNode : public QSGGeometryNode
{
public:
    /*! Makes a node that shows nothing before its first update(). */
    GradientNode();
    ~GradientNode() override;

    /*!
        Fills in \a color from \a line to the top edge of an item of \a size if \a up, else to its
        bottom edge. The far side is parallel to the line: it meets the edge at the end of the line
        that is farther from it, and lies beyond it elsewhere. Clip the item where that shows. A
        line above the item is not filled upwards; one below it is filled back to the bottom edge.
    */
    void update(const QLineF &line, const QColor &color, bool up, const QSize &size);
    /*!
        Fills in \a color from the line through \a points as far as \a heights, one for each point,
        upwards if \a up, else downwards. Fewer than two points, or another number of heights, show
        nothing.
    */
    void update(const QList<QPointF> &points, const QColor &color, bool up,
            const QList<double> &heights);

private:
    QSGGeometry m_geometry;
};

#endif
