// SPDX-License-Identifier: MIT
#include "Recording.h"

#include <algorithm>

namespace Gallery {

Recording::Recording(std::size_t capacity)
    : m_storage(std::max<std::size_t>(capacity, 1))
    , m_pyramid(m_storage.size())
{
}

void Recording::append(std::span<const float> samples)
{
    std::size_t slot = m_pyramid.end() % m_storage.size();
    for (std::span<const float> rest = samples; !rest.empty();) {
        const std::size_t count = std::min(rest.size(), m_storage.size() - slot);
        std::copy_n(rest.begin(), count, m_storage.begin() + static_cast<std::ptrdiff_t>(slot));
        rest = rest.subspan(count);
        slot = 0;
    }
    m_pyramid.append(samples);
}

} // namespace Gallery
