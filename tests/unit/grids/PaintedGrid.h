// SPDX-License-Identifier: MIT
#ifndef CHARTS_TEST_PAINTEDGRID_H
#define CHARTS_TEST_PAINTEDGRID_H

#include "GridShapes.h"

#include <QtCore/QByteArray>
#include <QtCore/QSizeF>

/*!
    A grid without a window: the test asks for its nodes as the scene graph would, and owns them.
*/
template<typename Grid>
class PaintedGrid : public Grid
{
public:
    PaintedGrid() = default;
    explicit PaintedGrid(const QSizeF &size)
    {
        this->setSize(size);
        // Vertices at whole pixels, and on the arcs themselves once inner and outer are averaged.
        this->setAntialiasing(false);
    }
    ~PaintedGrid() override { loseNode(); }

    QSGNode *paint()
    {
        m_node = this->updatePaintNode(m_node, nullptr);
        return m_node;
    }
    /*! As if the window had gone. */
    void loseNode()
    {
        delete m_node;
        m_node = nullptr;
    }

    [[nodiscard]] QSGNode *node() const { return m_node; }
    [[nodiscard]] QSGNode *container(qsizetype index) const { return childrenOf(m_node).at(index); }
    [[nodiscard]] QList<DrawnLine> lines(qsizetype container) const
    {
        return shapes<DrawnLine>(container);
    }
    [[nodiscard]] QList<DrawnArc> arcs(qsizetype container) const
    {
        return shapes<DrawnArc>(container);
    }

    /*! All vertices of all nodes, in the order of their drawing. */
    [[nodiscard]] QList<QByteArray> picture() const
    {
        QList<QByteArray> bytes;
        for (const QSGNode *container : childrenOf(m_node)) {
            for (const QSGNode *child : childrenOf(container)) {
                const QSGGeometry *geometry =
                        static_cast<const QSGGeometryNode *>(child)->geometry();
                bytes.append(QByteArray(static_cast<const char *>(geometry->vertexData()),
                        qsizetype(geometry->vertexCount()) * geometry->sizeOfVertex()));
            }
        }
        return bytes;
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

    QSGNode *m_node = nullptr;
};

#endif
