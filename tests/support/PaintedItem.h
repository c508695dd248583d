// SPDX-License-Identifier: MIT
#ifndef CHARTS_TEST_PAINTEDITEM_H
#define CHARTS_TEST_PAINTEDITEM_H

#include <QtCore/QByteArray>
#include <QtCore/QList>
#include <QtCore/QSizeF>
#include <QtQuick/QSGGeometry>
#include <QtQuick/QSGGeometryNode>
#include <QtQuick/QSGNode>
#include <QtTest/QTest>

#include <functional>

/*! The children of \a parent in the order of their drawing. */
inline QList<QSGNode *> childrenOf(const QSGNode *parent)
{
    QList<QSGNode *> children;
    for (QSGNode *child = parent->firstChild(); child; child = child->nextSibling())
        children.append(child);
    return children;
}

/*! The bytes of all vertices of the geometry nodes below \a parent, in the order of their drawing. */
inline QList<QByteArray> pictureOf(const QSGNode *parent)
{
    QList<QByteArray> bytes;
    for (const QSGNode *child : childrenOf(parent)) {
        if (child->type() == QSGNode::GeometryNodeType) {
            const QSGGeometry *geometry = static_cast<const QSGGeometryNode *>(child)->geometry();
            bytes.append(QByteArray(static_cast<const char *>(geometry->vertexData()),
                    qsizetype(geometry->vertexCount()) * geometry->sizeOfVertex()));
        }
        bytes += pictureOf(child);
    }
    return bytes;
}

/*!
    An item without a window: the test asks for its nodes as the scene graph would, and owns them.
*/
template<typename Item>
class PaintedItem : public Item
{
public:
    PaintedItem() = default;
    ~PaintedItem() override { loseNode(); }

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
    /*! All vertices of all nodes, in the order of their drawing. */
    [[nodiscard]] QList<QByteArray> picture() const { return pictureOf(m_node); }

private:
    QSGNode *m_node = nullptr;
};

/*! Takes note of the end of the node that it is a child of. */
class NodeWitness : public QSGNode
{
public:
    explicit NodeWitness(bool *isGone)
        : m_isGone(isGone)
    {
    }
    ~NodeWitness() override { *m_isGone = true; }

private:
    bool *m_isGone;
};

/*! An item without an area has no node, and one that it had is deleted. */
template<typename Painted>
void checkEmptySizes(const std::function<void(Painted &)> &prepare = {})
{
    for (const QSizeF &size : {QSizeF(0, 0), QSizeF(0, 100), QSizeF(100, 0), QSizeF(-5, 100),
                 QSizeF(100, -5), QSizeF(-5, -5)}) {
        Painted item(size);
        if (prepare)
            prepare(item);
        QVERIFY(!item.paint());

        item.setSize({100, 100});
        QVERIFY(item.paint());
        bool isGone = false;
        item.node()->appendChildNode(new NodeWitness(&isGone));
        item.setSize(size);
        QVERIFY(!item.paint());
        QVERIFY(isGone);

        item.setSize({100, 100});
        QVERIFY(item.paint());
        QVERIFY(!item.picture().join().isEmpty());
    }
}

#endif
