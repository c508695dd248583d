// SPDX-License-Identifier: MIT
#include "LineNode.h"

#include "SmoothVertex.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace Charts {

namespace {

struct Normal
{
    float x = 0.0F;
    float y = 0.0F;
};

constexpr int verticesPerLine(bool smooth)
{
    return smooth ? 8 : 4;
}

/*! A unit vector across the line from \a a to \a b; (0, 0) where the two are one point. */
Normal normalOf(const QPointF &a, const QPointF &b)
{
    const auto x = static_cast<float>(a.y() - b.y());
    const auto y = static_cast<float>(b.x() - a.x());
    const float length = std::hypot(x, y);
    constexpr float tolerance = 1e-5F;
    if (std::abs(length - 1.0F) <= tolerance)
        return {x, y};
    if (length <= tolerance)
        return {};
    return {x / length, y / length};
}

SmoothVertex vertexAt(const QPointF &point, const PremultipliedColor &color, float dx, float dy)
{
    return {static_cast<float>(point.x()), static_cast<float>(point.y()), color, dx, dy};
}

} // namespace

LineNode::LineNode()
    : m_geometry(SmoothColorMaterial::attributeSet(), 0, 0, QSGGeometry::UnsignedIntType)
{
    m_geometry.setDrawingMode(QSGGeometry::DrawTriangleStrip);
    setGeometry(&m_geometry);
    setMaterial(&m_material);
}

LineNode::~LineNode() = default;

void LineNode::update(const QLineF &line, float width, QColor color, bool smooth)
{
    m_geometry.allocate(verticesPerLine(smooth));
    setSmoothVertices(0, line, width, color, smooth);
    markDirty(DirtyGeometry);
}

void LineNode::update(const QList<QPointF> &points, float width, QColor color, bool smooth)
{
    const int step = verticesPerLine(smooth);
    // The scene graph counts vertices in an int.
    const qsizetype lineCount =
            std::clamp<qsizetype>(points.size() - 1, 0, std::numeric_limits<int>::max() / step);
    m_geometry.allocate(static_cast<int>(step * lineCount));
    for (qsizetype i = 0; i < lineCount; ++i) {
        setSmoothVertices(static_cast<std::size_t>(step * i), QLineF(points[i], points[i + 1]),
                width, color, smooth);
    }
    markDirty(DirtyGeometry);
}

void LineNode::setSmoothVertices(
        std::size_t index, QLineF line, float width, QColor color, bool smooth)
{
    // A smooth line runs through the middle of its pixels.
    const double shift = smooth ? 0.5 : 0.0;
    const QPointF a(line.x1() + shift, line.y1() + shift);
    const QPointF b(line.x2() + shift, line.y2() + shift);
    const Normal normal = normalOf(a, b);
    const double halfWidth = width * 0.5;
    const QPointF edge(halfWidth * normal.x, halfWidth * normal.y);
    const auto opaque = PremultipliedColor::from(color);

    auto *vertex = static_cast<SmoothVertex *>(m_geometry.vertexData()) + index;
    if (!smooth) {
        *vertex++ = vertexAt(a + edge, opaque, 0.0F, 0.0F);
        *vertex++ = vertexAt(b + edge, opaque, 0.0F, 0.0F);
        *vertex++ = vertexAt(a - edge, opaque, 0.0F, 0.0F);
        *vertex++ = vertexAt(b - edge, opaque, 0.0F, 0.0F);
        return;
    }
    const PremultipliedColor transparent;
    const float dx = width * 0.4F * normal.x;
    const float dy = width * 0.4F * normal.y;
    *vertex++ = vertexAt(a + edge, transparent, dx, dy);
    *vertex++ = vertexAt(b + edge, transparent, dx, dy);
    *vertex++ = vertexAt(a + edge, opaque, -dx, -dy);
    *vertex++ = vertexAt(b + edge, opaque, -dx, -dy);
    *vertex++ = vertexAt(a - edge, opaque, dx, dy);
    *vertex++ = vertexAt(b - edge, opaque, dx, dy);
    *vertex++ = vertexAt(a - edge, transparent, -dx, -dy);
    *vertex++ = vertexAt(b - edge, transparent, -dx, -dy);
}

} // namespace Charts
