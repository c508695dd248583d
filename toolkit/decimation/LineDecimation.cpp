// SPDX-License-Identifier: MIT
#include "LineDecimation.h"

#include <algorithm>
#include <cmath>

namespace Charts::Decimation {

void LineDecimation::fill(
        const MinMaxPyramid &pyramid, std::span<const float> storage, const PixelColumns &columns)
{
    m_vertices.clear();
    m_origin = std::floor(columns.first());
    if (columns.isEmpty() || pyramid.end() == 0)
        return;
    if (columns.width() < LeastSamplesPerColumn)
        fillSamples(pyramid, storage, columns);
    else
        fillColumns(pyramid, storage, columns);
}

void LineDecimation::fillColumns(
        const MinMaxPyramid &pyramid, std::span<const float> storage, const PixelColumns &columns)
{
    const double quarter = columns.width() / 4.0;
    std::size_t first = columns.firstSample(-1, pyramid.begin(), pyramid.end());
    int runLength = 0; // columns since the last gap
    for (int column = -1; column <= columns.count(); ++column) {
        const std::size_t last = columns.firstSample(column + 1, pyramid.begin(), pyramid.end());
        const Extremes extremes = pyramid.query(storage, first, last);
        const double edge = columns.edge(column);
        if (extremes.isEmpty()) {
            if (runLength == 1)
                widenLastColumn(quarter);
            addGap(edge);
            runLength = 0;
        } else {
            add(edge + quarter, extremes.first());
            add(edge + 3.0 * quarter, extremes.second());
            ++runLength;
        }
        first = last;
    }
    if (runLength == 1)
        widenLastColumn(quarter);
}

void LineDecimation::fillSamples(
        const MinMaxPyramid &pyramid, std::span<const float> storage, const PixelColumns &columns)
{
    const auto sampleAt = [&](std::size_t index) { return storage[index % storage.size()]; };
    std::size_t first = columns.firstSample(0, pyramid.begin(), pyramid.end());
    std::size_t last = columns.firstSample(columns.count(), pyramid.begin(), pyramid.end());
    first -= first > pyramid.begin() ? 1 : 0;
    last += last < pyramid.end() ? 1 : 0;
    for (std::size_t i = first; i < last; ++i) {
        const auto position = static_cast<double>(i);
        const float value = sampleAt(i);
        if (std::isnan(value)) {
            addGap(position);
            continue;
        }
        const bool isAlone = (i == first || std::isnan(sampleAt(i - 1)))
                             && (i + 1 == last || std::isnan(sampleAt(i + 1)));
        if (isAlone) {
            add(position - columns.width() / 2.0, value);
            add(position + columns.width() / 2.0, value);
        } else {
            add(position, value);
        }
    }
}

void LineDecimation::addGap(double position)
{
    // In front of the first vertex there is nothing to interrupt.
    if (!m_vertices.empty() && !m_vertices.back().isGap)
        m_vertices.push_back({static_cast<float>(position - m_origin), m_vertices.back().y, true});
}

void LineDecimation::widenLastColumn(double quarter)
{
    m_vertices[m_vertices.size() - 2].x -= static_cast<float>(quarter);
    m_vertices[m_vertices.size() - 1].x += static_cast<float>(quarter);
}

void LineDecimation::add(double position, float value)
{
    m_vertices.push_back({static_cast<float>(position - m_origin), value, false});
}

} // namespace Charts::Decimation
