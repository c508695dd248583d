// SPDX-License-Identifier: MIT
#pragma once

#include <limits>
#include <span>

namespace Charts::Decimation {

/// The smallest and the largest of some values. NaN stands for a missing value and counts for
/// nothing; infinities are values like others.
struct MinMax
{
    float min = std::numeric_limits<float>::infinity();
    float max = -std::numeric_limits<float>::infinity();

    /// There was no value, or none but NaN.
    [[nodiscard]] constexpr bool isEmpty() const { return min > max; }

    constexpr void include(const MinMax &other)
    {
        min = other.min < min ? other.min : min;
        max = other.max > max ? other.max : max;
    }

    friend constexpr bool operator==(const MinMax &, const MinMax &) = default;
};

static_assert(sizeof(MinMax) == 8);

/// Reads about as fast as the memory gives where there is SSE2, as on every x86-64. May be called on
/// any thread.
[[nodiscard]] MinMax minMaxOf(std::span<const float> values);

/// The same without SSE2: what other processors use.
[[nodiscard]] MinMax portableMinMaxOf(std::span<const float> values);

} // namespace Charts::Decimation
