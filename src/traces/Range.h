// SPDX-License-Identifier: MIT
#ifndef CHARTS_RANGE_H
#define CHARTS_RANGE_H

namespace Charts {

/*!
    \class Charts::Range
    \brief The indices start to start + length - 1; the end start + length is exclusive.

    Only the range of \c int is used. Negative numbers are not checked.
*/
template<typename Index>
struct Range
{
    /*! The first index. */
    Index start = 0;
    /*! How many indices. */
    Index length = 0;

    friend constexpr bool operator==(const Range &, const Range &) = default;
};

static_assert(sizeof(Range<int>) == 8);

} // namespace Charts

#endif
