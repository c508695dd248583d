// SPDX-License-Identifier: MIT
#ifndef CHARTS_TEST_PAINTEDGRID_H
#define CHARTS_TEST_PAINTEDGRID_H

#include "GridShapes.h"
#include "PaintedItem.h"

#include <QtCore/QSizeF>

/*! A grid without a window. */
template<typename Grid>
class PaintedGrid : public PaintedItem<Grid>
{
public:
    PaintedGrid() = default;
    explicit PaintedGrid(const QSizeF &size)
    {
        this->setSize(size);
        // Vertices at whole pixels, and on the arcs themselves once inner and outer are averaged.
        this->setAntialiasing(false);
    }

    [[nodiscard]] QSGNode *container(qsizetype index) const
    {
        return childrenOf(this->node()).at(index);
    }
    [[nodiscard]] QList<DrawnLine> lines(qsizetype container) const
    {
        return shapes<DrawnLine>(container);
    }
    [[nodiscard]] QList<DrawnArc> arcs(qsizetype container) const
    {
        return shapes<DrawnArc>(container);
    }

private:
    template<typename Shape>
    [[nodiscard]] QList<Shape> shapes(qsizetype containerIndex) const
    {
        QList<Shape> shapes;
        for (const QSGNode *child : childrenOf(container(containerIndex)))
            shapes.append(Shape(child));
        return shapes;
    }
};

#endif
