// SPDX-License-Identifier: MIT
#pragma once

#include "MinMaxPyramid.h"
#include "PixelColumns.h"

#include <cstdint>
#include <span>
#include <vector>

namespace Charts::Decimation {

/// A vertex of a line strip.
struct LineVertex
{
    float x = 0.0F; // samples to the right of the line's origin
    float y = 0.0F;
    /// No value: the line is interrupted here. There is one such vertex to a gap, so it has to hide all
    /// of the two pieces of line that meet in it. In a chart it does with an opacity far below 0, such
    /// as -1e6; with 0 the tenth next to it would be hidden, and the rest drawn across the gap.
    bool isGap = false;

    friend bool operator==(const LineVertex &, const LineVertex &) = default;
};

/// A line strip that looks like one through all samples of a range.
///
/// Where there are two samples or more to a column, each column has two vertices, its smallest and its
/// largest sample in the order in which they come, a quarter of a column from its edges:
///
///         |        .  |           |
///         |   .   / \ |           |     No sample sticks out of the line: whatever a column's samples
///         |  / \ /   \|   .       |     are, the stroke between its two vertices covers all of them,
///         | /   '     |\ / \      |     a single one that stands apart, too. Only samples count that
///         |'          | '   \     |     are in the column, and all of these.
///         |           |      '....|
///
/// A column that stands alone between two gaps is a dash as wide as a column: there are drivers that
/// draw nothing of one that is half as wide. With fewer samples the line goes through the samples themselves; one that is alone between
/// missing ones becomes a dash as wide as a column.
///
/// A missing value, NaN, interrupts the line where the samples themselves are drawn. In columns it does
/// where a column has no other.
///
/// The line begins and ends one column or sample outside the chart, so that it does not end in sight.
class LineDecimation
{
public:
    /// Fewer samples to a column than this are drawn themselves.
    static constexpr double LeastSamplesPerColumn = 2.0;

    /// Makes the line anew. The samples are those of `pyramid`, which lie in `storage`; see there.
    void fill(const MinMaxPyramid &pyramid, std::span<const float> storage,
            const PixelColumns &columns);

    /// In order. At most 2 for each of the columns and 4 more; samples alone between missing ones take
    /// half as many again.
    [[nodiscard]] const std::vector<LineVertex> &vertices() const { return m_vertices; }

    /// The sample from which x is counted, at or just left of the chart's left edge. 32 bits hold whole
    /// numbers up to 16.7 million only, and no parts of a sample long before: counted from here, the x
    /// of every sample that is drawn itself is exact, and that of a column to a small part of a pixel,
    /// however many samples lie to the left.
    [[nodiscard]] double origin() const { return m_origin; }

private:
    void fillColumns(const MinMaxPyramid &pyramid, std::span<const float> storage,
            const PixelColumns &columns);
    void fillSamples(const MinMaxPyramid &pyramid, std::span<const float> storage,
            const PixelColumns &columns);
    /// Consecutive ones are one.
    void addGap(double position);
    void add(double position, float value);
    /// To its edges.
    void widenLastColumn(double quarter);

    std::vector<LineVertex> m_vertices;
    double m_origin = 0.0;
};

} // namespace Charts::Decimation
