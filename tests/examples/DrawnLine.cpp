// SPDX-License-Identifier: MIT
#include "DrawnLine.h"

#include <algorithm>
#include <cmath>

namespace DrawnLine {

namespace {

constexpr double visibleFrom = 0.1;
constexpr double leastVisiblePart = 1e-5;

} // namespace

std::vector<Piece> pieces(const std::vector<Charts::TracePoint> &vertices)
{
    std::vector<Piece> result;
    for (std::size_t i = 1; i < vertices.size(); ++i) {
        const Charts::TracePoint &a = vertices[i - 1];
        const Charts::TracePoint &b = vertices[i];
        const double opacityA = a.opacity;
        const double opacityB = b.opacity;
        if ((opacityA < visibleFrom && opacityB < visibleFrom) || (a.x == b.x && a.y == b.y))
            continue;
        // The part of the line, from 0 at a to 1 at b, that is opaque enough.
        double from = 0.0;
        double to = 1.0;
        if (opacityA < visibleFrom)
            from = (visibleFrom - opacityA) / (opacityB - opacityA);
        if (opacityB < visibleFrom)
            to = (opacityA - visibleFrom) / (opacityA - opacityB);
        if (to - from < leastVisiblePart)
            continue;
        const auto along = [](double start, double end, double part) {
            // Exact at both ends.
            return part == 1.0 ? end : start + part * (end - start);
        };
        result.push_back({along(a.x, b.x, from), along(a.y, b.y, from), along(a.x, b.x, to),
                along(a.y, b.y, to)});
    }
    return result;
}

std::vector<Piece> sortedPieces(const std::vector<Charts::TracePoint> &vertices)
{
    std::vector<Piece> result = pieces(vertices);
    std::stable_sort(result.begin(), result.end(),
            [](const Piece &a, const Piece &b) { return a.x1 < b.x1; });
    return result;
}

QString toString(const Piece &piece)
{
    return QStringLiteral("(%1, %2)-(%3, %4)")
            .arg(piece.x1, 0, 'g', 9)
            .arg(piece.y1, 0, 'g', 9)
            .arg(piece.x2, 0, 'g', 9)
            .arg(piece.y2, 0, 'g', 9);
}

QString compare(const std::vector<Piece> &actual, const std::vector<Piece> &expected)
{
    const std::size_t common = std::min(actual.size(), expected.size());
    for (std::size_t i = 0; i < common; ++i) {
        if (actual[i] != expected[i]) {
            return QStringLiteral("piece %1 is %2 instead of %3")
                    .arg(i)
                    .arg(toString(actual[i]), toString(expected[i]));
        }
    }
    if (actual.size() > common)
        return QStringLiteral("unexpected piece %1").arg(toString(actual[common]));
    if (expected.size() > common)
        return QStringLiteral("missing piece %1").arg(toString(expected[common]));
    return {};
}

std::set<int> takeIndices(Charts::BoundRange &ranges)
{
    std::set<int> indices;
    while (!ranges.isEmpty()) {
        const Charts::Range<int> range = ranges.pop(false);
        for (int i = 0; i < range.length; ++i)
            indices.insert(range.start + i);
    }
    return indices;
}

std::set<int> differences(
        const std::vector<Charts::TracePoint> &before, const std::vector<Charts::TracePoint> &after)
{
    std::set<int> indices;
    for (std::size_t i = 0; i < after.size(); ++i) {
        if (before.at(i) != after[i])
            indices.insert(static_cast<int>(i));
    }
    return indices;
}

} // namespace DrawnLine
