// SPDX-License-Identifier: MIT
#include "MinMax.h"

#include <array>
#include <cstddef>

#ifdef __SSE2__
#include <emmintrin.h>
#endif

namespace Charts::Decimation {

namespace {

// "value < low ? value : low" keeps low where value is NaN, as every comparison with NaN is false;
// std::min() and std::fmin() do either less or more.
void includeOne(MinMax &minMax, float value)
{
    minMax.min = value < minMax.min ? value : minMax.min;
    minMax.max = value > minMax.max ? value : minMax.max;
}

#ifdef __SSE2__

MinMax minMaxOfLanes(__m128 low, __m128 high)
{
    low = _mm_min_ps(low, _mm_movehl_ps(low, low));
    high = _mm_max_ps(high, _mm_movehl_ps(high, high));
    low = _mm_min_ss(low, _mm_shuffle_ps(low, low, 1));
    high = _mm_max_ss(high, _mm_shuffle_ps(high, high, 1));
    return {_mm_cvtss_f32(low), _mm_cvtss_f32(high)};
}

#endif

} // namespace

MinMax portableMinMaxOf(std::span<const float> values)
{
    // Independent of each other, so that a comparison need not wait for the one before.
    constexpr std::size_t laneCount = 4;
    std::array<MinMax, laneCount> lanes;
    const std::size_t wholeCount = values.size() - values.size() % laneCount;
    for (std::size_t i = 0; i < wholeCount; i += laneCount) {
        for (std::size_t lane = 0; lane < laneCount; ++lane)
            includeOne(lanes[lane], values[i + lane]);
    }
    for (const float value : values.subspan(wholeCount))
        includeOne(lanes.front(), value);

    MinMax result;
    for (const MinMax &lane : lanes)
        result.include(lane);
    return result;
}

#ifdef __SSE2__

// By hand: GCC does not turn the loop above into vector instructions unless it may forget about NaN.
// Of the minimum's two operands minps returns the second one if either is NaN, which is the second
// one here: it never is NaN itself.
MinMax minMaxOf(std::span<const float> values)
{
    constexpr std::size_t step = 8;
    __m128 low0 = _mm_set1_ps(MinMax().min);
    __m128 low1 = low0;
    __m128 high0 = _mm_set1_ps(MinMax().max);
    __m128 high1 = high0;
    const std::size_t wholeCount = values.size() - values.size() % step;
    for (std::size_t i = 0; i < wholeCount; i += step) {
        const __m128 values0 = _mm_loadu_ps(values.data() + i);
        const __m128 values1 = _mm_loadu_ps(values.data() + i + step / 2);
        low0 = _mm_min_ps(values0, low0);
        low1 = _mm_min_ps(values1, low1);
        high0 = _mm_max_ps(values0, high0);
        high1 = _mm_max_ps(values1, high1);
    }
    MinMax result = minMaxOfLanes(_mm_min_ps(low0, low1), _mm_max_ps(high0, high1));
    for (const float value : values.subspan(wholeCount))
        includeOne(result, value);
    return result;
}

#else

MinMax minMaxOf(std::span<const float> values)
{
    return portableMinMaxOf(values);
}

#endif

} // namespace Charts::Decimation
