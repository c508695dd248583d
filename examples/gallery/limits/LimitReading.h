// SPDX-License-Identifier: MIT
#pragma once

#include <ChartsLibrary/TraceData.h>

#include <QtCore/QList>
#include <QtCore/QPointF>

#include <optional>
#include <vector>

namespace Gallery {

enum class LimitSide {
    Upper, // the trace has to stay below it
    Lower  // the trace has to stay above it
};

/*! The point of a trace that is nearest to a limit, or farthest beyond it. */
struct LimitReading
{
    double x = 0.0;
    double y = 0.0;      // the trace's
    double margin = 0.0; // from there to the limit; below 0 beyond it
};

/*!
    Compares two polylines whose x ascend: at the vertices of both, as their distance is extreme at
    some vertex. Vertices without a number are passed over. Nothing if they have no x in common, and
    for fewer than two points.
*/
[[nodiscard]] std::optional<LimitReading> limitReading(
        const std::vector<Charts::TracePoint> &trace, const QList<QPointF> &limit, LimitSide side);

/*! The y of a polyline at \a x; nothing beside its ends. */
[[nodiscard]] std::optional<double> valueAt(const QList<QPointF> &polyline, double x);

} // namespace Gallery
