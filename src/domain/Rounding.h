// SPDX-License-Identifier: MIT
#ifndef CHARTS_ROUNDING_H
#define CHARTS_ROUNDING_H

#include <QtCore/QRect>
#include <QtCore/QRectF>

#include <algorithm>
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

/*!
    \internal
    \a value without its fraction, with the same ends as roundToInt().
*/
[[nodiscard]] inline int truncateToInt(double value)
{
    return roundToInt(std::trunc(value));
}

/*!
    \internal
    qRound() with the same ends as roundToInt(). It adds 0.5 away from zero and truncates, which
    differs where the sum is rounded itself: 0.49999999999999994 becomes 1.
*/
[[nodiscard]] inline int qRoundSaturated(double value)
{
    return truncateToInt(value >= 0.0 ? value + 0.5 : value - 0.5);
}

/*!
    \internal
    QRectF::toRect() of a rectangle of any size. A negative size becomes an empty one: nothing is drawn
    in either, and QRect overflows at the lowest, as it does where the far edge is beyond all ints.
*/
[[nodiscard]] inline QRect toRectSaturated(const QRectF &rect)
{
    const int x = qRoundSaturated(rect.x());
    const int y = qRoundSaturated(rect.y());
    const auto length = [](double value, int start) {
        return std::clamp(
                qRoundSaturated(value), 0, std::numeric_limits<int>::max() - std::max(0, start));
    };
    return {x, y, length(rect.width() + (rect.x() - x) / 2, x),
            length(rect.height() + (rect.y() - y) / 2, y)};
}

} // namespace Charts

#endif
