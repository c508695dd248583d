// SPDX-License-Identifier: MIT
#ifndef CHARTS_FUZZYCOMPARE_H
#define CHARTS_FUZZYCOMPARE_H

#include <algorithm>
#include <cmath>

namespace Charts {

/*!
    \internal
    Relative comparison: equal when |a - b| * 1e12 <= min(|a|, |b|). There is no special case for
    zero, so 0 equals nothing but 0. A NaN equals nothing; an infinity follows the arithmetic, it
    differs from itself and equals its negative.
*/
[[nodiscard]] inline bool isRelativelyEqual(double a, double b)
{
    return std::abs(a - b) * 1e12 <= std::min(std::abs(a), std::abs(b));
}

/*!
    \internal
    Whether a setter with the relative test takes \a b for a new value in place of \a a. Not the
    opposite of isRelativelyEqual() for a NaN, which is neither equal nor a change.
*/
[[nodiscard]] inline bool isRelativelyDifferent(double a, double b)
{
    return std::abs(a - b) * 1e12 > std::min(std::abs(a), std::abs(b));
}

/*!
    \internal
    Relative comparison that switches to the absolute tolerance 1e-12 as soon as one of the two
    values is exactly zero, where a relative tolerance would shrink to nothing.
*/
[[nodiscard]] inline bool isFuzzyEqual(double a, double b)
{
    if (a == 0.0 || b == 0.0)
        return std::abs(a - b) <= 1e-12;
    return isRelativelyEqual(a, b);
}

} // namespace Charts

#endif
