// SPDX-License-Identifier: MIT
#ifndef CHARTS_TRACEPOINT_H
#define CHARTS_TRACEPOINT_H

#include <cstddef>

namespace Charts {

/*!
    \class Charts::TracePoint
    \brief One vertex of a trace, in the layout in which it lies in the GPU's buffer.

    \c opacity is a mask, not a blend factor: it is interpolated along a line and every fragment
    below 0.1 is left out, so a vertex with opacity 0 is not drawn and a line towards it is cut
    where the value falls under 0.1.
*/
struct TracePoint
{
    float x = 0.0F;
    float y = 0.0F;
    float opacity = 1.0F;

    friend constexpr bool operator==(const TracePoint &, const TracePoint &) = default;
};

static_assert(sizeof(TracePoint) == 12);
static_assert(offsetof(TracePoint, x) == 0);
static_assert(offsetof(TracePoint, y) == 4);
static_assert(offsetof(TracePoint, opacity) == 8);

} // namespace Charts

#endif
