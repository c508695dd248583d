// SPDX-License-Identifier: MIT
#ifndef CHARTS_TEST_LINESITEM_H
#define CHARTS_TEST_LINESITEM_H

#include <ChartsLibrary/AllocateChildren.h>
#include <ChartsLibrary/ArcNode.h>
#include <ChartsLibrary/LineNode.h>

#include <QtQuick/QQuickItem>

/*! Draws lines and arcs, each with a node of its own, as grids do. */
class LinesItem : public QQuickItem
{
public:
    struct Line
    {
        QList<QPointF> points;
        float width = 1.0F;
        QColor color = Qt::black;
        bool isSmooth = true;
    };
    struct Arc
    {
        Charts::ArcShape shape;
        float width = 1.0F;
        QColor color = Qt::black;
        bool isSmooth = true;
    };

    explicit LinesItem(QQuickItem *parent)
        : QQuickItem(parent)
    {
        setFlag(ItemHasContents);
        setSize(parent->size());
    }

    void setLines(const QList<Line> &lines)
    {
        m_lines = lines;
        m_isDirty = true;
        update();
    }

    void setArcs(const QList<Arc> &arcs)
    {
        m_arcs = arcs;
        m_isDirty = true;
        update();
    }

protected:
    QSGNode *updatePaintNode(QSGNode *oldNode, UpdatePaintNodeData *) override
    {
        QSGNode *root = oldNode;
        if (!root) {
            root = new QSGNode;
            root->appendChildNode(new QSGNode);
            root->appendChildNode(new QSGNode);
        }
        if (!m_isDirty)
            return root;
        m_isDirty = false;

        QSGNode *lineNodes = root->firstChild();
        Charts::allocateChildren<Charts::LineNode>(lineNodes, static_cast<int>(m_lines.size()));
        auto *lineNode = static_cast<Charts::LineNode *>(lineNodes->firstChild());
        for (const Line &line : m_lines) {
            lineNode->update(line.points, line.width, line.color, line.isSmooth);
            lineNode = static_cast<Charts::LineNode *>(lineNode->nextSibling());
        }
        QSGNode *arcNodes = root->lastChild();
        Charts::allocateChildren<Charts::ArcNode>(arcNodes, static_cast<int>(m_arcs.size()));
        auto *arcNode = static_cast<Charts::ArcNode *>(arcNodes->firstChild());
        for (const Arc &arc : m_arcs) {
            arcNode->update(arc.shape, arc.width, arc.color, arc.isSmooth);
            arcNode = static_cast<Charts::ArcNode *>(arcNode->nextSibling());
        }
        return root;
    }

private:
    QList<Line> m_lines;
    QList<Arc> m_arcs;
    bool m_isDirty = false;
};

#endif
