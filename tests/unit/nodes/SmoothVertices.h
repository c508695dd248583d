// SPDX-License-Identifier: MIT
#ifndef CHARTS_TEST_SMOOTHVERTICES_H
#define CHARTS_TEST_SMOOTHVERTICES_H

#include <QtCore/QList>
#include <QtQuick/QSGGeometry>
#include <QtQuick/QSGGeometryNode>
#include <QtTest/QTest>

#include <array>
#include <bit>
#include <cmath>
#include <cstdint>
#include <cstring>

/*! Red, green, blue, alpha, as they lie in memory. */
using ColorBytes = std::array<std::uint8_t, 4>;

/*! What 20 bytes of vertex data say. */
struct Vertex
{
    float x = 0.0F;
    float y = 0.0F;
    ColorBytes color = {};
    float dx = 0.0F;
    float dy = 0.0F;

    /*! Byte for byte, so that -0 is not 0; only NaN is NaN, whatever its bits. */
    friend bool operator==(const Vertex &a, const Vertex &b)
    {
        return isSame(a.x, b.x) && isSame(a.y, b.y) && a.color == b.color && isSame(a.dx, b.dx)
               && isSame(a.dy, b.dy);
    }

    static bool isSame(float a, float b)
    {
        return std::bit_cast<std::uint32_t>(a) == std::bit_cast<std::uint32_t>(b)
               || (std::isnan(a) && std::isnan(b));
    }
};
static_assert(sizeof(Vertex) == 20);

/*! Found by QCOMPARE. */
inline char *toString(const Vertex &vertex)
{
    const auto number = [](float value) { return QByteArray::number(double(value), 'g', 9); };
    QByteArray text = '(' + number(vertex.x) + ", " + number(vertex.y) + ") #";
    for (const std::uint8_t byte : vertex.color)
        text += QByteArray::number(byte, 16).rightJustified(2, '0');
    text += " offset (" + number(vertex.dx) + ", " + number(vertex.dy) + ')';
    return qstrdup(text.constData());
}

inline QList<Vertex> verticesOf(const QSGGeometryNode &node)
{
    const QSGGeometry *geometry = node.geometry();
    QList<Vertex> vertices(geometry->vertexCount());
    if (!vertices.isEmpty()) {
        std::memcpy(vertices.data(), geometry->vertexData(),
                sizeof(Vertex) * static_cast<std::size_t>(vertices.size()));
    }
    return vertices;
}

inline QList<std::uint32_t> indicesOf(const QSGGeometryNode &node)
{
    const QSGGeometry *geometry = node.geometry();
    QList<std::uint32_t> indices(geometry->indexCount());
    if (!indices.isEmpty()) {
        std::memcpy(indices.data(), geometry->indexData(),
                sizeof(std::uint32_t) * static_cast<std::size_t>(indices.size()));
    }
    return indices;
}

#endif
