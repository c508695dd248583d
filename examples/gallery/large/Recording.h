// SPDX-License-Identifier: MIT
#pragma once

#include "decimation/MinMaxPyramid.h"

#include <cstddef>
#include <span>
#include <vector>

namespace Gallery {

/*!
    The last samples of a measurement that goes on and on: a ring, and the pyramid over it. Samples
    are numbered from the first one of the measurement. Who changes it sees to it that nobody reads it
    meanwhile.
*/
class Recording
{
public:
    explicit Recording(std::size_t capacity);

    void append(std::span<const float> samples);

    [[nodiscard]] const Charts::Decimation::MinMaxPyramid &pyramid() const { return m_pyramid; }
    /*! Sample i is at i % storage().size(). */
    [[nodiscard]] std::span<const float> storage() const { return m_storage; }
    /*! The oldest sample that is kept, and the one behind the newest. */
    [[nodiscard]] std::size_t begin() const { return m_pyramid.begin(); }
    [[nodiscard]] std::size_t end() const { return m_pyramid.end(); }

private:
    std::vector<float> m_storage;
    Charts::Decimation::MinMaxPyramid m_pyramid;
};

} // namespace Gallery
