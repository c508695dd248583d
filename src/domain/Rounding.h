// SPDX-License-Identifier: MIT
#ifndef CHARTS_ROUNDING_H
#define CHARTS_ROUNDING_H

#include <cmath>
#include <limits>

namespace Charts {

/*!
    \internal
    The nearest int, halves away from zero. What no int can hold ends at the nearest one that
    exists, a NaN at 0: converting such a value directly would be undefined.
*/
[[nodiscard]] inline int roundToInt(double value)
{
    using Limits = std::numeric_limits<int>;
    if (std::isnan(value))
        return 0;
    const double rounded = std::round(value);
    if (rounded <= Limits::min())
        return Limits::min();
    if (rounded >= Limits::max())
        return Limits::max();
    return static_cast<int>(rounded);
}

} // namespace Charts

#endif
