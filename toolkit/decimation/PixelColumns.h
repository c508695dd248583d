// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>

namespace Charts::Decimation {

/// The columns of pixels that show samples, side by side from the position `first` to the position
/// `last`. A sample's position is its number.
///
///     position     first                                        last
///                    |    column 0    |    column 1    | ... |    |
///                 edge(0)          edge(1)          edge(2)    edge(count)
///
/// Column c shows the samples i with edge(c) <= i < edge(c + 1): as neighbours share an edge, each
/// sample is in one column and none in two. The edges are first + c * width() in double precision,
/// so that a sample on an edge, and only such a one, may be counted to the neighbour.
///
/// There are columns to the left of 0 and from count() on, too; they are those beside the chart.
class PixelColumns
{
public:
    /// More than any display has.
    static constexpr int MaxCount = 1 << 24;

    /// None.
    PixelColumns() = default;
    /// None either unless `count` is positive and not above MaxCount, `first` less than `last`, and these two finite and so
    /// far apart, compared to their size, that the columns have a width.
    PixelColumns(double first, double last, int count);

    [[nodiscard]] bool isEmpty() const { return m_count == 0; }
    [[nodiscard]] int count() const { return m_count; }
    [[nodiscard]] double first() const { return m_first; }
    [[nodiscard]] double last() const { return m_last; }
    /// Samples, or parts of one, in a column.
    [[nodiscard]] double width() const { return m_width; }
    [[nodiscard]] double edge(int column) const { return m_first + column * m_width; }
    /// The first of the samples `begin` to `end - 1` that is not to the left of a column, or `end`.
    [[nodiscard]] std::size_t firstSample(int column, std::size_t begin, std::size_t end) const;

    friend bool operator==(const PixelColumns &, const PixelColumns &) = default;

private:
    double m_first = 0.0;
    double m_last = 0.0;
    double m_width = 0.0;
    int m_count = 0;
};

} // namespace Charts::Decimation
