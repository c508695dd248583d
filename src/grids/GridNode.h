// SPDX-License-Identifier: MIT
#ifndef CHARTS_GRIDNODE_H
#define CHARTS_GRIDNODE_H

#include "ArcShape.h"

#include <QtCore/QLine>
#include <QtCore/QLineF>
#include <QtGui/QColor>
#include <QtQuick/QSGNode>

#include <array>
#include <cstddef>
#include <vector>

namespace Charts {

class AbstractGrid;

/*!
    \internal
    The paint node of a grid: containers for lines or arcs, drawn one after another in their order.
    The nodes in them are kept from one rebuild to the next. Render thread.

        GridNode
          container 0    LineNode or ArcNode, one for each line or arc
          container 1
          ...
*/
template<std::size_t ContainerCount>
class GridNode : public QSGNode
{
public:
    GridNode()
    {
        for (QSGNode *&container : m_containers) {
            container = new QSGNode;
            appendChildNode(container);
        }
    }

    /*! Owned by this node. */
    [[nodiscard]] QSGNode &container(std::size_t index) { return *m_containers.at(index); }

private:
    std::array<QSGNode *, ContainerCount> m_containers = {};
};

/*! How a grid draws its lines of one kind. */
struct GridPen
{
    GridPen(const AbstractGrid &grid, const QColor &lineColor);

    float width = 1.0F;
    QColor color;
    bool isSmooth = true;
};

/*! Makes \a container show \a lines, whole pixels or not, and nothing else. */
void drawLines(QSGNode &container, const std::vector<QLine> &lines, const GridPen &pen);
void drawLines(QSGNode &container, const std::vector<QLineF> &lines, const GridPen &pen);
/*! Makes \a container show \a arcs and nothing else. */
void drawArcs(QSGNode &container, const std::vector<ArcShape> &arcs, const GridPen &pen);

} // namespace Charts

#endif
