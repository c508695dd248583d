// SPDX-License-Identifier: MIT
#include "PixelColumns.h"

#include <cmath>

namespace Charts::Decimation {

PixelColumns::PixelColumns(double first, double last, int count)
{
    if (count <= 0 || count > MaxCount)
        return;
    const double width = (last - first) / count;
    // Also false where one of them is NaN.
    const bool isUsable = std::isfinite(width) && first < first + width && last - width < last;
    if (!isUsable)
        return;
    m_first = first;
    m_last = last;
    m_width = width;
    m_count = count;
}

std::size_t PixelColumns::firstSample(int column, std::size_t begin, std::size_t end) const
{
    const double position = std::ceil(edge(column));
    if (!(position > static_cast<double>(begin)))
        return begin;
    if (position >= static_cast<double>(end))
        return end;
    return static_cast<std::size_t>(position);
}

} // namespace Charts::Decimation
