// SPDX-License-Identifier: MIT
#include "GridNode.h"

#include "AbstractGrid.h"
#include "AllocateChildren.h"
#include "ArcNode.h"
#include "LineNode.h"

namespace Charts {

namespace {

template<typename Node, typename Shape, typename Update>
void draw(QSGNode &container, const std::vector<Shape> &shapes, Update &&update)
{
    allocateChildren<Node>(&container, static_cast<int>(shapes.size()));
    QSGNode *child = container.firstChild();
    for (const Shape &shape : shapes) {
        update(*static_cast<Node *>(child), shape);
        child = child->nextSibling();
    }
}

template<typename Line>
void drawAnyLines(QSGNode &container, const std::vector<Line> &lines, const GridPen &pen)
{
    draw<LineNode>(container, lines, [&pen](LineNode &node, const Line &line) {
        node.update(QLineF(line), pen.width, pen.color, pen.isSmooth);
    });
}

} // namespace

GridPen::GridPen(const AbstractGrid &grid, const QColor &lineColor)
    : width(static_cast<float>(grid.lineWidth()))
    , color(lineColor)
    , isSmooth(grid.antialiasing())
{
}

void drawLines(QSGNode &container, const std::vector<QLine> &lines, const GridPen &pen)
{
    drawAnyLines(container, lines, pen);
}

void drawLines(QSGNode &container, const std::vector<QLineF> &lines, const GridPen &pen)
{
    drawAnyLines(container, lines, pen);
}

void drawArcs(QSGNode &container, const std::vector<ArcShape> &arcs, const GridPen &pen)
{
    draw<ArcNode>(container, arcs, [&pen](ArcNode &node, const ArcShape &arc) {
        node.update(arc, pen.width, pen.color, pen.isSmooth);
    });
}

} // namespace Charts
