// SPDX-License-Identifier: MIT
#pragma once

#include "MinMax.h"

#include <cstddef>
#include <limits>
#include <span>
#include <vector>

namespace Charts::Decimation {

/// The smallest and the largest value of a range, and which of them comes first.
struct Extremes
{
    MinMax values;
    /// The first sample with the smallest value stands before the first one with the largest, or
    /// they are equal.
    bool isMinFirst = true;

    [[nodiscard]] bool isEmpty() const { return values.isEmpty(); }
    [[nodiscard]] float first() const { return isMinFirst ? values.min : values.max; }
    [[nodiscard]] float second() const { return isMinFirst ? values.max : values.min; }
};

/// Finds the smallest and the largest of any range of samples without looking at all of them.
///
///     level 2                     1 pair of 2048 samples
///     level 1                     8 pairs of 256 samples
///     level 0                    64 pairs of  32 samples
///     samples   0 ..................................... 2047     kept by the caller
///
/// The samples stay where the caller has them, who hands them over with each call: appended ones once,
/// so that the levels can be continued, and the storage with each query, in which the two ends of a
/// range are looked up. The pyramid copies none of them; its levels take a fourteenth of their memory,
/// up to twice as much while they grow.
///
/// Samples are numbered from the first one ever appended. Sample i is storage[i % storage.size()],
/// which fits two kinds of storage:
///
///   - an array that grows, with a pyramid that keeps everything;
///   - a ring, with a pyramid that was constructed with the ring's size: it forgets the samples that
///     newer ones have overwritten.
///
/// A plain value without locks: queries may run on several threads at a time while nobody appends.
class MinMaxPyramid
{
public:
    /// Samples of a pair of the lowest level.
    static constexpr std::size_t BlockLength = 32;
    /// Pairs of a level that make one of the level above.
    static constexpr std::size_t FanOut = 8;

    /// Keeps everything.
    MinMaxPyramid() = default;
    /// Keeps the last `capacity` samples, at least 1.
    explicit MinMaxPyramid(std::size_t capacity);

    /// Continues with `samples`, in pieces of any length. Takes O(1) per sample, on an average.
    void append(std::span<const float> samples);

    /// The oldest sample that is not forgotten.
    [[nodiscard]] std::size_t begin() const;
    /// The number of samples appended so far.
    [[nodiscard]] std::size_t end() const { return m_end; }

    /// The exact extremes of the samples `first` to `last - 1`, or of those of them that are there;
    /// empty if none is, or none but NaN. Takes O(log(last - first)).
    [[nodiscard]] Extremes query(
            std::span<const float> storage, std::size_t first, std::size_t last) const;

    /// Bytes of the levels.
    [[nodiscard]] std::size_t memory() const;

private:
    static constexpr std::size_t Unlimited = std::numeric_limits<std::size_t>::max();
    static constexpr std::size_t Samples = Unlimited; // in place of a level

    struct Level
    {
        std::size_t capacity = Unlimited; // of pairs: number n is pairs[n % capacity]
        std::size_t count = 0;            // of complete pairs so far
        std::vector<MinMax> pairs;
        MinMax open; // of the pairs that are not yet in the level above
    };

    /// Neighbours of one level.
    struct Segment
    {
        std::size_t level = Samples;
        std::size_t first = 0;
        std::size_t last = 0;
    };
    class Segments;

    void close(std::size_t level, const MinMax &pair);
    [[nodiscard]] Segments split(std::size_t first, std::size_t last) const;
    [[nodiscard]] MinMax fold(std::span<const float> storage, const Segment &segment) const;
    [[nodiscard]] bool isMinFirst(
            std::span<const float> storage, Segment segment, const MinMax &values) const;

    std::size_t m_capacity = Unlimited;
    std::size_t m_end = 0;
    MinMax m_open; // of the samples that are not yet in level 0
    std::vector<Level> m_levels;
};

} // namespace Charts::Decimation
