// SPDX-License-Identifier: MIT
#ifndef SNIPPETS_GAPS_H
#define SNIPPETS_GAPS_H

#include <ChartsLibrary/TracePoint.h>

#include <cmath>
#include <vector>

//! [gaps]
/*! The vertices of a line that is interrupted where a value is NaN. */
inline std::vector<Charts::TracePoint> lineWithGaps(const std::vector<float> &values)
{
    std::vector<Charts::TracePoint> points;
    bool isInGap = false;
    for (std::size_t i = 0; i < values.size(); ++i) {
        const Charts::TracePoint point = {
                .x = static_cast<float>(i), .y = values[i], .opacity = 1.0F};
        if (std::isnan(point.y)) {
            // Once more at the last point, but hidden: the line ends exactly there.
            if (!isInGap && !points.empty())
                points.push_back({.x = points.back().x, .y = points.back().y, .opacity = 0.0F});
            isInGap = true;
            continue;
        }
        // It goes on from a hidden vertex at the next point.
        if (isInGap && !points.empty())
            points.push_back({.x = point.x, .y = point.y, .opacity = 0.0F});
        points.push_back(point);
        isInGap = false;
    }
    return points;
}
//! [gaps]

#endif
