// SPDX-License-Identifier: MIT
#include "ReadableRange.h"

#include <ChartsLibrary/DomainUtils.h>

#include <cmath>

namespace Gallery {

ReadableRange readableRange(const Charts::Span &range)
{
    const double step = Charts::DomainUtils().niceStep(range);
    const double first = std::floor(range.min / step);
    const double last = std::ceil(range.max / step);
    return {{first * step, last * step}, static_cast<int>(last - first)};
}

} // namespace Gallery
