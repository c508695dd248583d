// SPDX-License-Identifier: MIT
#ifndef CHARTS_TRACEPOINT_H
#define CHARTS_TRACEPOINT_H

#include <cstddef>

namespace Charts {

/*!
    \class Charts::TracePoint
    \brief One vertex of a trace, in the layout in which it lies in the GPU's buffer.

    12 bytes: three 32-bit floats, which hold about seven decimal digits. Large numbers such as
    times since 1970 need an origin that is subtracted before, see
    \l{Large x values in 32-bit vertices}.
*/
struct TracePoint
{
    /*! In data units, those of ViewPort::x. */
    float x = 0.0F;
    /*! In data units, those of ViewPort::y; grows upwards. */
    float y = 0.0F;
    /*! A mask, not a blend factor: it is interpolated along a line, and every fragment below 0.1 is
        left out. A vertex with opacity 0 is not drawn, and a line towards it is cut where the value
        falls under 0.1. See \l{Gaps and missing values}. */
    float opacity = 1.0F;

    friend constexpr bool operator==(const TracePoint &, const TracePoint &) = default;
};

static_assert(sizeof(TracePoint) == 12);
static_assert(offsetof(TracePoint, x) == 0);
static_assert(offsetof(TracePoint, y) == 4);
static_assert(offsetof(TracePoint, opacity) == 8);

} // namespace Charts

#endif
