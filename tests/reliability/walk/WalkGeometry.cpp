// SPDX-License-Identifier: MIT
#include "WalkGeometry.h"

#include <QtCore/QRectF>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <limits>

using Charts::BoundingMethod;
using Charts::DrawType;
using Charts::TracePoint;

namespace {

enum class Cover {
    No,
    Maybe,
    Yes,
};

/*! The pixels, from the top left, on which a view port lies. */
struct Area
{
    double left = 0.0;
    double top = 0.0;
    double width = 0.0;
    double height = 0.0;
};

Area areaOf(const Look &look, const QSize &size)
{
    const QRect rect = viewportOf(look, size);
    return {double(rect.left()), double(size.height() - rect.top() - rect.height()),
            double(rect.width()), double(rect.height())};
}

struct Vertex
{
    QPointF position;
    bool isShown = false;
};

std::vector<Vertex> verticesOf(const Sketch &sketch, const Area &area)
{
    const Look &look = sketch.look;
    std::vector<Vertex> vertices;
    for (const TracePoint &point : sketch.points) {
        double x = area.left + area.width * double(point.x - look.viewPort.x) / look.viewPort.width;
        double y = area.top + area.height
                   - area.height * double(point.y - look.viewPort.y) / look.viewPort.height;
        if (look.boundingX == BoundingMethod::Clamp)
            x = std::clamp(x, area.left + 1.0, area.left + area.width - 1.0);
        if (look.boundingY == BoundingMethod::Clamp)
            y = std::clamp(y, area.top + 1.0, area.top + area.height - 1.0);
        vertices.push_back({{x, y}, point.opacity >= 0.1F});
    }
    return vertices;
}

/*! The same line with fewer corners: a level piece becomes one segment. */
std::vector<Vertex> simplified(const std::vector<Vertex> &vertices)
{
    std::vector<Vertex> result;
    for (const Vertex &vertex : vertices) {
        if (const std::size_t count = result.size(); count >= 2) {
            const Vertex &before = result[count - 2];
            const Vertex &middle = result[count - 1];
            const bool isLevel = before.position.y() == middle.position.y()
                                 && middle.position.y() == vertex.position.y();
            const bool goesOn = before.position.x() <= middle.position.x()
                                && middle.position.x() <= vertex.position.x();
            if (isLevel && goesOn && before.isShown && middle.isShown && vertex.isShown)
                result.pop_back();
        }
        result.push_back(vertex);
    }
    return result;
}

double lengthOf(const QPointF &vector)
{
    return std::hypot(vector.x(), vector.y());
}

double dot(const QPointF &a, const QPointF &b)
{
    return QPointF::dotProduct(a, b);
}

/*! Where the segment is within [\a low, \a high] on one axis, as fractions of its length. */
void cut(double start, double delta, double low, double high, double &from, double &to)
{
    if (delta == 0.0) {
        if (start < low || start > high)
            to = -1.0;
        return;
    }
    const double a = (low - start) / delta;
    const double b = (high - start) / delta;
    from = std::max(from, std::min(a, b));
    to = std::min(to, std::max(a, b));
}

Cover coverOfSegment(const Vertex &a, const Vertex &b, double width, const Area &area, QPointF p)
{
    // Rounding, of positions and of the width.
    constexpr double slack = 1.0;
    if (!a.isShown && !b.isShown)
        return Cover::No;
    const QPointF delta = b.position - a.position;
    const double length = lengthOf(delta);
    const double reach = width / 2.0 + slack;
    const double along = length == 0.0 ? 0.0 : dot(p - a.position, delta) / (length * length);
    const QPointF nearest = a.position + delta * std::clamp(along, 0.0, 1.0);
    const QPointF off = p - nearest;
    if (std::max(std::abs(off.x()), std::abs(off.y())) > reach)
        return Cover::No;

    // Towards a hidden vertex the line ends where a tenth of the opacity is left.
    double from = a.isShown ? 0.0 : 0.1;
    double to = b.isShown ? 1.0 : 0.9;
    cut(a.position.x(), delta.x(), area.left, area.left + area.width, from, to);
    cut(a.position.y(), delta.y(), area.top, area.top + area.height, from, to);
    // The width of a slanted line is measured along an axis, and its ends are cut along one.
    const bool isStraight = delta.x() == 0.0 || delta.y() == 0.0;
    const double margin = length == 0.0 ? 1.0 : (isStraight ? slack : reach) / length;
    const double core = width / 2.0 * (isStraight ? 1.0 : 0.7) - slack;
    const bool isInside = along >= from + margin && along <= to - margin && lengthOf(off) <= core;
    return isInside ? Cover::Yes : Cover::Maybe;
}

Cover coverOfPoint(const Vertex &vertex, double width, const Area &area, QPointF p)
{
    const QPointF off = p - vertex.position;
    const double distance = std::max(std::abs(off.x()), std::abs(off.y()));
    const double half = std::max(width, 1.0) / 2.0;
    if (!vertex.isShown || distance > half + 1.5)
        return Cover::No;
    const QPointF inArea = vertex.position - QPointF(area.left, area.top);
    const bool isInside = inArea.x() >= 1.0 && inArea.x() <= area.width - 1.0 && inArea.y() >= 1.0
                          && inArea.y() <= area.height - 1.0;
    return isInside && distance <= half - 1.0 ? Cover::Yes : Cover::Maybe;
}

/*! Whether \a p lies near an edge on which parts outside of the view port are drawn. */
bool isNearFoldedLine(const Look &look, const std::vector<Vertex> &vertices, double width,
        const Area &area, QPointF p)
{
    constexpr double edge = 1.0; // where the lines are
    const double reach = width / 2.0 + edge + 2.0;
    const auto isFolded = [&](auto coordinate, double start, double extent) {
        const double fromLow = coordinate(p) - start;
        const auto isBeyond = [&](bool isHigh) {
            return std::any_of(vertices.begin(), vertices.end(), [&](const Vertex &vertex) {
                const double value = coordinate(vertex.position) - start;
                return isHigh ? value > extent - edge - 0.5 : value < edge + 0.5;
            });
        };
        return (fromLow <= reach && isBeyond(false))
               || (extent - fromLow <= reach && isBeyond(true));
    };
    return (look.boundingX == BoundingMethod::ExtraMatrices
                   && isFolded(
                           [](const QPointF &point) { return point.x(); }, area.left, area.width))
           || (look.boundingY == BoundingMethod::ExtraMatrices
                   && isFolded(
                           [](const QPointF &point) { return point.y(); }, area.top, area.height));
}

Cover coverOf(const Sketch &sketch, const QSize &size, QPointF p)
{
    if (sketch.points.empty())
        return Cover::No;
    const Area area = areaOf(sketch.look, size);
    // Where nothing is left between the two clamps, or the pixels are few.
    if (area.width < 5.0 || area.height < 5.0)
        return Cover::Maybe;

    const bool isLine = sketch.look.drawType == DrawType::LineStrip;
    const double width = double(sketch.look.width) + (isLine ? 5.0 : 0.0);
    const std::vector<Vertex> all = verticesOf(sketch, area);
    const std::vector<Vertex> vertices = isLine ? simplified(all) : all;
    // Not every driver draws the half of a wide line that lies outside of the view port.
    const QRectF inside(area.left + 1.0, area.top + 1.0, area.width - 2.0, area.height - 2.0);
    const Cover most = inside.contains(p) ? Cover::Yes : Cover::Maybe;
    Cover cover = isNearFoldedLine(sketch.look, all, width, area, p) ? Cover::Maybe : Cover::No;
    for (std::size_t i = 0; i < vertices.size(); ++i) {
        if (!isLine)
            cover = std::max(cover, coverOfPoint(vertices[i], width, area, p));
        else if (i > 0)
            cover = std::max(cover, coverOfSegment(vertices[i - 1], vertices[i], width, area, p));
    }
    return std::min(cover, most);
}

} // namespace

QRect viewportOf(const Look &look, const QSize &size)
{
    if (!look.isSquared)
        return QRect(QPoint(0, 0), size);
    const int side = std::min(size.width(), size.height());
    return {(size.width() - side) / 2, (size.height() - side) / 2, side, side};
}

std::vector<const void *> tracesAt(const Sketches &image, const QPointF &position)
{
    const double column = std::round(position.x());
    const double row = std::round(position.y());
    // The pixel to the right of the position and above it.
    if (column < 0.0 || column >= image.size.width() || row <= 0.0 || row > image.size.height())
        return {nullptr};
    const QPointF centre(column + 0.5, row - 0.5);

    std::vector<const void *> found;
    for (auto sketch = image.traces.rbegin(); sketch != image.traces.rend(); ++sketch) {
        const Cover cover = coverOf(*sketch, image.size, centre);
        if (cover != Cover::No)
            found.push_back(sketch->trace);
        if (cover == Cover::Yes)
            return found;
    }
    found.push_back(nullptr);
    return found;
}
