// SPDX-License-Identifier: MIT
#ifndef CHARTS_BOUNDRANGE_H
#define CHARTS_BOUNDRANGE_H

#include "ChartsExport.h"
#include "Range.h"

#include <vector>

namespace Charts {

/*!
    \class Charts::BoundRange
    \brief A small set of half-open index ranges over an array of size() points.

    Used for what has changed and for what is filled in a vertex array. Owned by its TraceData and
    used on whichever thread that one is used on.
*/
class CHARTS_EXPORT BoundRange
{
public:
    /*!
        Adds \a range, whose start and length must not be negative; this is not checked. An empty
        range, or one that ends beyond size(), is ignored. The first stored
        range that overlaps or touches it is widened in place to cover both; a stored range that
        the widened one now overlaps stays, since uploading a few points twice costs less than
        keeping the set disjoint. Otherwise \a range is appended.
    */
    void push(Range<int> range);

    /*!
        With \a all false, removes and returns the range stored last, or {0, 0} when there is none.
        With \a all true, removes every range and returns {0, size()}, whether there was one or not.
    */
    Range<int> pop(bool all);

    /*! Whether a stored range covers \a index. */
    [[nodiscard]] bool contain(int index) const;
    /*! Whether no range is stored. */
    [[nodiscard]] bool isEmpty() const { return m_ranges.empty(); }

    /*! Makes \a size the number of points of the array, 0 at first. A new size drops every stored
        range, the same one none. */
    void setSize(int size);
    [[nodiscard]] int size() const { return m_size; }

private:
    std::vector<Range<int>> m_ranges;
    int m_size = 0;
};

} // namespace Charts

#endif
