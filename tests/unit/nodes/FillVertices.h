// SPDX-License-Identifier: MIT
#ifndef CHARTS_TEST_FILLVERTICES_H
#define CHARTS_TEST_FILLVERTICES_H

#include "SmoothVertices.h"

/*! What 12 bytes of the vertex data of a fill say. */
struct FillVertex
{
    float x = 0.0F;
    float y = 0.0F;
    ColorBytes color = {};

    /*! Byte for byte, as Vertex is. */
    friend bool operator==(const FillVertex &a, const FillVertex &b)
    {
        return Vertex::isSame(a.x, b.x) && Vertex::isSame(a.y, b.y) && a.color == b.color;
    }
};
static_assert(sizeof(FillVertex) == 12);

/*! Found by QCOMPARE. */
inline char *toString(const FillVertex &vertex)
{
    const auto number = [](float value) { return QByteArray::number(double(value), 'g', 9); };
    QByteArray text = '(' + number(vertex.x) + ", " + number(vertex.y) + ") #";
    for (const std::uint8_t byte : vertex.color)
        text += QByteArray::number(byte, 16).rightJustified(2, '0');
    return qstrdup(text.constData());
}

inline QList<FillVertex> fillVerticesOf(const QSGGeometryNode &node)
{
    const QSGGeometry *geometry = node.geometry();
    QList<FillVertex> vertices(geometry->vertexCount());
    if (!vertices.isEmpty()) {
        std::memcpy(vertices.data(), geometry->vertexData(),
                sizeof(FillVertex) * static_cast<std::size_t>(vertices.size()));
    }
    return vertices;
}

/*! The strip through \a near, \a far, near, far and so on: from \a color to nothing. */
inline QList<FillVertex> fillStrip(const QList<QPointF> &positions, const ColorBytes &color)
{
    QList<FillVertex> vertices;
    for (qsizetype i = 0; i < positions.size(); ++i) {
        const QPointF &position = positions.at(i);
        vertices += {static_cast<float>(position.x()), static_cast<float>(position.y()),
                i % 2 == 0 ? color : ColorBytes{}};
    }
    return vertices;
}

#endif
