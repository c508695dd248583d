// SPDX-License-Identifier: MIT
#include "GradientNode.h"

#include <QtQuick/QSGVertexColorMaterial>

#include <algorithm>
#include <limits>

namespace {

constexpr int verticesPerSegment = 4;

/*! A point on the line and, that much higher, where its fill ends. */
struct Side
{
    QPointF point;
    double height = 0.0;
};

struct ColorBytes
{
    explicit ColorBytes(const QColor &color)
        : red(static_cast<uchar>(color.red()))
        , green(static_cast<uchar>(color.green()))
        , blue(static_cast<uchar>(color.blue()))
        , alpha(static_cast<uchar>(color.alpha()))
    {
    }

    uchar red;
    uchar green;
    uchar blue;
    uchar alpha;
};

QSGGeometry::ColoredPoint2D *writeSide(
        QSGGeometry::ColoredPoint2D *vertex, const Side &side, const ColorBytes &color)
{
    const auto x = static_cast<float>(side.point.x());
    vertex->set(
            x, static_cast<float>(side.point.y()), color.red, color.green, color.blue, color.alpha);
    ++vertex;
    vertex->set(x, static_cast<float>(side.point.y() - side.height), 0, 0, 0, 0);
    return ++vertex;
}

QSGGeometry::ColoredPoint2D *writeSegment(QSGGeometry::ColoredPoint2D *vertex, const Side &first,
        const Side &second, const ColorBytes &color)
{
    return writeSide(writeSide(vertex, first, color), second, color);
}

} // namespace

GradientNode::GradientNode()
    : m_geometry(QSGGeometry::defaultAttributes_ColoredPoint2D(), verticesPerSegment, 0,
            QSGGeometry::UnsignedShortType)
{
    m_geometry.setDrawingMode(QSGGeometry::DrawTriangleStrip);
    // Nothing is to be seen before the first update.
    std::fill_n(m_geometry.vertexDataAsColoredPoint2D(), verticesPerSegment,
            QSGGeometry::ColoredPoint2D{});
    setGeometry(&m_geometry);
    setMaterial(new QSGVertexColorMaterial);
    setFlag(OwnsMaterial);
}

GradientNode::~GradientNode() = default;

void GradientNode::update(const QLineF &line, const QColor &color, bool up, const QSize &size)
{
    m_geometry.allocate(verticesPerSegment);
    const double height = up ? std::max({line.y1(), line.y2(), 0.0})
                             : std::min(line.y1() - size.height(), line.y2() - size.height());
    writeSegment(m_geometry.vertexDataAsColoredPoint2D(), {line.p1(), height}, {line.p2(), height},
            ColorBytes(color));
    markDirty(DirtyGeometry);
}

void GradientNode::update(
        const QList<QPointF> &points, const QColor &color, bool up, const QList<double> &heights)
{
    // The scene graph counts vertices in an int.
    const qsizetype segments =
            std::clamp<qsizetype>(heights.size() == points.size() ? points.size() - 1 : 0, 0,
                    std::numeric_limits<int>::max() / verticesPerSegment);
    m_geometry.allocate(verticesPerSegment * static_cast<int>(segments));
    const ColorBytes bytes(color);
    const double sign = up ? 1.0 : -1.0;
    auto *vertex = m_geometry.vertexDataAsColoredPoint2D();
    for (qsizetype k = 0; k < segments; ++k) {
        vertex = writeSegment(vertex, {points[k], sign * heights[k]},
                {points[k + 1], sign * heights[k + 1]}, bytes);
    }
    markDirty(DirtyGeometry);
}
