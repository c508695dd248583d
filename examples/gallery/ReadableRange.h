// SPDX-License-Identifier: MIT
#pragma once

#include <ChartsLibrary/Span.h>

namespace Gallery {

/*! A range whose ends are multiples of a readable step. */
struct ReadableRange
{
    Charts::Span range;
    int stepCount = 1;
};

/*! \a range, which must not be empty, widened. */
[[nodiscard]] ReadableRange readableRange(const Charts::Span &range);

} // namespace Gallery
