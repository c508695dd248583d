// SPDX-License-Identifier: MIT
#include "MinMaxPyramid.h"

#include <algorithm>
#include <array>

namespace Charts::Decimation {

/// A range as it is put together: samples at its two ends, and between them pairs, the more the higher
/// the level.
///
///     level 1              |-------|-------|
///     level 0        |-|-|-|               |-|-|
///     samples      ..|                         |...
///                  rising                falling
class MinMaxPyramid::Segments
{
public:
    void pushRising(const Segment &segment) { push(m_rising, m_risingCount, segment); }
    void pushFalling(const Segment &segment) { push(m_falling, m_fallingCount, segment); }

    [[nodiscard]] std::size_t size() const { return m_risingCount + m_fallingCount; }
    /// From left to right.
    [[nodiscard]] const Segment &operator[](std::size_t index) const
    {
        return index < m_risingCount ? m_rising[index] : m_falling[size() - 1 - index];
    }

private:
    // One on each side for the samples and for every level that 64 bits can count.
    static constexpr std::size_t Height = 22;
    using Side = std::array<Segment, Height>;

    static void push(Side &side, std::size_t &count, const Segment &segment)
    {
        if (segment.first < segment.last)
            side[count++] = segment;
    }

    Side m_rising;
    Side m_falling;
    std::size_t m_risingCount = 0;
    std::size_t m_fallingCount = 0;
};

MinMaxPyramid::MinMaxPyramid(std::size_t capacity)
    : m_capacity(std::max<std::size_t>(capacity, 1))
{
}

std::size_t MinMaxPyramid::begin() const
{
    return m_end > m_capacity ? m_end - m_capacity : 0;
}

std::size_t MinMaxPyramid::memory() const
{
    std::size_t bytes = 0;
    for (const Level &level : m_levels)
        bytes += level.pairs.capacity() * sizeof(MinMax);
    return bytes;
}

void MinMaxPyramid::append(std::span<const float> samples)
{
    while (!samples.empty()) {
        const std::size_t missing = BlockLength - m_end % BlockLength;
        const std::size_t count = std::min(missing, samples.size());
        m_open.include(minMaxOf(samples.first(count)));
        samples = samples.subspan(count);
        m_end += count;
        if (count == missing) {
            close(0, m_open);
            m_open = {};
        }
    }
}

void MinMaxPyramid::close(std::size_t index, const MinMax &pair)
{
    if (index == m_levels.size()) {
        // As many as can lie within what is kept: of those that lie there only in part the samples
        // are asked. None of a level above the highest with any.
        std::size_t capacity = Unlimited;
        if (m_capacity != Unlimited) {
            capacity = index == 0 ? m_capacity / BlockLength : m_levels.back().capacity / FanOut;
            if (capacity == 0)
                return;
        }
        m_levels.emplace_back().capacity = capacity;
    }

    Level &level = m_levels[index];
    const std::size_t slot = level.count % level.capacity;
    if (slot == level.pairs.size())
        level.pairs.push_back(pair);
    else
        level.pairs[slot] = pair;
    level.open.include(pair);
    ++level.count;
    if (level.count % FanOut == 0) {
        const MinMax above = level.open;
        level.open = {};
        close(index + 1, above);
    }
}

MinMaxPyramid::Segments MinMaxPyramid::split(std::size_t first, std::size_t last) const
{
    // At each level what does not fill a pair of the level above is taken off at both ends.
    Segments segments;
    std::size_t level = Samples;
    std::size_t above = 0;
    std::size_t length = BlockLength;
    while (above < m_levels.size()) {
        const std::size_t firstAbove = first / length + (first % length != 0 ? 1 : 0);
        const std::size_t lastAbove = last / length;
        if (firstAbove >= lastAbove)
            break;
        segments.pushRising({level, first, firstAbove * length});
        segments.pushFalling({level, lastAbove * length, last});
        first = firstAbove;
        last = lastAbove;
        level = above++;
        length = FanOut;
    }
    segments.pushRising({level, first, last});
    return segments;
}

MinMax MinMaxPyramid::fold(std::span<const float> storage, const Segment &segment) const
{
    const std::size_t count = segment.last - segment.first;
    if (segment.level == Samples) {
        const std::size_t slot = segment.first % storage.size();
        const std::size_t straight = std::min(count, storage.size() - slot);
        MinMax result = minMaxOf(storage.subspan(slot, straight));
        result.include(minMaxOf(storage.first(count - straight)));
        return result;
    }
    const Level &level = m_levels[segment.level];
    MinMax result;
    std::size_t slot = segment.first % level.capacity;
    for (std::size_t i = 0; i < count; ++i) {
        result.include(level.pairs[slot]);
        slot = slot + 1 == level.capacity ? 0 : slot + 1;
    }
    return result;
}

Extremes MinMaxPyramid::query(
        std::span<const float> storage, std::size_t first, std::size_t last) const
{
    first = std::max(first, begin());
    last = std::min(last, end());
    if (first >= last)
        return {};

    const Segments segments = split(first, last);
    MinMax values;
    std::size_t minSegment = 0;
    std::size_t maxSegment = 0;
    for (std::size_t i = 0; i < segments.size(); ++i) {
        const MinMax found = fold(storage, segments[i]);
        if (found.min < values.min || values.isEmpty())
            minSegment = i;
        if (found.max > values.max || values.isEmpty())
            maxSegment = i;
        values.include(found);
    }
    if (values.isEmpty() || values.min == values.max)
        return {values, true};
    return {values, minSegment == maxSegment ? isMinFirst(storage, segments[minSegment], values)
                                             : minSegment < maxSegment};
}

bool MinMaxPyramid::isMinFirst(
        std::span<const float> storage, Segment segment, const MinMax &values) const
{
    // Down into the first pair that has both, until one has only one of them.
    while (segment.level != Samples) {
        const Level &level = m_levels[segment.level];
        for (std::size_t i = segment.first; i < segment.last; ++i) {
            const MinMax &pair = level.pairs[i % level.capacity];
            const bool hasMin = pair.min == values.min;
            const bool hasMax = pair.max == values.max;
            if (hasMin != hasMax)
                return hasMin;
            if (hasMin) {
                const bool isLowest = segment.level == 0;
                const std::size_t length = isLowest ? BlockLength : FanOut;
                segment = {isLowest ? Samples : segment.level - 1, i * length, (i + 1) * length};
                break;
            }
        }
    }
    for (std::size_t i = segment.first; i < segment.last; ++i) {
        const float sample = storage[i % storage.size()];
        if (sample == values.min || sample == values.max)
            return sample == values.min;
    }
    return true;
}

} // namespace Charts::Decimation
