// SPDX-License-Identifier: MIT
#include "LimitReading.h"

#include <algorithm>
#include <iterator>
#include <limits>

namespace Gallery {

namespace {

double xOf(const QPointF &point)
{
    return point.x();
}

double yOf(const QPointF &point)
{
    return point.y();
}

double xOf(const Charts::TracePoint &point)
{
    return point.x;
}

double yOf(const Charts::TracePoint &point)
{
    return point.y;
}

template<typename Polyline>
std::optional<double> interpolated(const Polyline &polyline, double x)
{
    const auto next = std::lower_bound(polyline.begin(), polyline.end(), x,
            [](const auto &point, double value) { return xOf(point) < value; });
    if (next == polyline.end())
        return {};
    if (xOf(*next) == x)
        return yOf(*next);
    if (next == polyline.begin())
        return {};
    const auto previous = std::prev(next);
    const double share = (x - xOf(*previous)) / (xOf(*next) - xOf(*previous));
    return yOf(*previous) + share * (yOf(*next) - yOf(*previous));
}

} // namespace

std::optional<LimitReading> limitReading(
        const std::vector<Charts::TracePoint> &trace, const QList<QPointF> &limit, LimitSide side)
{
    if (trace.size() < 2 || limit.size() < 2)
        return {};
    std::optional<LimitReading> worst;
    const auto compare = [&](double x, std::optional<double> value, std::optional<double> bound) {
        if (!value || !bound)
            return;
        const double margin = side == LimitSide::Upper ? *bound - *value : *value - *bound;
        // False where one is no number.
        if (margin < (worst ? worst->margin : std::numeric_limits<double>::infinity()))
            worst = {x, *value, margin};
    };
    for (const Charts::TracePoint &point : trace)
        compare(point.x, point.y, interpolated(limit, point.x));
    for (const QPointF &point : limit)
        compare(point.x(), interpolated(trace, point.x()), point.y());
    return worst;
}

std::optional<double> valueAt(const QList<QPointF> &polyline, double x)
{
    return polyline.size() < 2 ? std::nullopt : interpolated(polyline, x);
}

} // namespace Gallery
