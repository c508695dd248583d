// SPDX-License-Identifier: MIT
#pragma once

#include <ChartsLibrary/TraceDomain.h>
#include <ChartsLibrary/ViewPort.h>

namespace Gallery {

/*! The view port that shows the visible ranges of \a domain, zoomed or not. */
[[nodiscard]] inline Charts::ViewPort visibleRanges(const Charts::TraceDomain &domain)
{
    return {.x = static_cast<float>(domain.minX()),
            .y = static_cast<float>(domain.minY()),
            .width = static_cast<float>(domain.spanX()),
            .height = static_cast<float>(domain.spanY())};
}

} // namespace Gallery
