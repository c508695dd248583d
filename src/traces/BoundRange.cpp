// SPDX-License-Identifier: MIT
#include "BoundRange.h"

#include <algorithm>
#include <cstdint>

namespace Charts {

namespace {

// In 64 bits: the sum of two ints need not be an int.
std::int64_t endOf(Range<int> range)
{
    return std::int64_t{range.start} + range.length;
}

} // namespace

void BoundRange::push(Range<int> range)
{
    if (range.length == 0)
        return;
    const std::int64_t end = endOf(range);
    if (end > m_size)
        return;

    const auto touching = std::find_if(m_ranges.begin(), m_ranges.end(),
            [&](Range<int> stored) { return range.start <= endOf(stored) && stored.start <= end; });
    if (touching == m_ranges.end()) {
        m_ranges.push_back(range);
        return;
    }
    const std::int64_t unitedEnd = std::max(endOf(*touching), end);
    touching->start = std::min(touching->start, range.start);
    touching->length = static_cast<int>(unitedEnd - touching->start);
}

Range<int> BoundRange::pop(bool all)
{
    if (all) {
        m_ranges.clear();
        return {0, m_size};
    }
    if (m_ranges.empty())
        return {0, 0};
    const Range<int> last = m_ranges.back();
    m_ranges.pop_back();
    return last;
}

bool BoundRange::contain(int index) const
{
    return std::any_of(m_ranges.begin(), m_ranges.end(),
            [index](Range<int> stored) { return stored.start <= index && index < endOf(stored); });
}

void BoundRange::setSize(int size)
{
    if (size == m_size)
        return;
    m_ranges.clear();
    m_size = size;
}

} // namespace Charts
