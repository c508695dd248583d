// SPDX-License-Identifier: MIT
#include "SweepTrace.h"

#include "VisibleRanges.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace Gallery {

namespace {

constexpr double gapShare = 0.04; // of the sweep

// A missing value is a single vertex between two visible ones, and so is the gap where samples are
// far apart; 0 would hide only a tenth of the segments next to it. Far below 0 the interpolated
// opacity falls under the limit at once.
constexpr float hiddenOpacity = -1e6F;

} // namespace

SweepTrace::SweepTrace(Table table, std::size_t column, const SweepSettings &settings,
        const PlaybackClock &clock, QObject *parent)
    : AbstractTrace(parent)
    , m_table(std::move(table))
    , m_column(column)
    , m_settings(settings)
    , m_clock(clock)
{
    const double duration = m_table->time.back() - m_table->time.front();
    m_sweepCount = std::max(1LL, std::llround(std::ceil(duration / m_settings.length)));

    std::size_t longest = 0;
    for (long long sweep = 0; sweep < m_sweepCount; ++sweep)
        longest = std::max(longest, firstSampleOf(sweep + 1) - firstSampleOf(sweep));

    // One vertex more than any sweep has samples: the gap needs at least one.
    const std::size_t vertexCount = longest + 1;
    m_data.setDrawType(Charts::DrawType::LineStrip);
    m_data.array().assign(vertexCount,
            {.x = static_cast<float>(m_settings.length), .y = 0.0F, .opacity = hiddenOpacity});
    m_data.dirtyRange().setSize(static_cast<int>(vertexCount));
    m_data.filledRange().setSize(static_cast<int>(vertexCount));
    mark(0, vertexCount);

    // As if the beam had passed once already.
    beginSweep(0);
    advanceTo(m_settings.length);
    beginSweep(1);
}

void SweepTrace::updateData()
{
    // The first sweep is on the screen already.
    const double time = m_clock.seconds() * m_settings.speed + m_settings.length;
    const auto sweep = static_cast<long long>(std::floor(time / m_settings.length));
    if (sweep != m_sweep) {
        advanceTo(m_settings.length);
        // After a halt of the program, sweeps that nobody has seen are left out, all but the last.
        if (sweep != m_sweep + 1) {
            beginSweep(sweep - 1);
            advanceTo(m_settings.length);
        }
        beginSweep(sweep);
    }
    advanceTo(time - static_cast<double>(sweep) * m_settings.length);

    m_data.setColor(color());
    m_data.setWidth(static_cast<float>(lineWidth()));
    m_data.setVisible(isVisible());
    m_data.setViewPort(visibleRanges(*domain()));
}

std::size_t SweepTrace::firstSampleOf(long long sweep) const
{
    const auto &time = m_table->time;
    if (sweep >= m_sweepCount)
        return time.size();
    const double start = time.front() + static_cast<double>(sweep) * m_settings.length;
    return static_cast<std::size_t>(
            std::lower_bound(time.begin(), time.end(), start) - time.begin());
}

void SweepTrace::beginSweep(long long sweep)
{
    const long long sweepOfTable = sweep % m_sweepCount;
    m_sweep = sweep;
    m_nextSample = firstSampleOf(sweepOfTable);
    m_endSample = firstSampleOf(sweepOfTable + 1);
    m_head = 0;
    m_gapEnd = 0;
}

void SweepTrace::advanceTo(double position)
{
    auto &array = m_data.array();
    const auto &values = m_table->columns[m_column].values;
    const double start =
            m_table->time.front() + static_cast<double>(m_sweep % m_sweepCount) * m_settings.length;
    const std::size_t firstChanged = m_head;

    for (; m_nextSample < m_endSample; ++m_nextSample, ++m_head) {
        const double x = m_table->time[m_nextSample] - start;
        if (x > position)
            break;
        const float value = values[m_nextSample];
        array[m_head] = std::isnan(value)
                                ? Charts::TracePoint{static_cast<float>(x), 0.0F, hiddenOpacity}
                                : Charts::TracePoint{static_cast<float>(x), value, 1.0F};
    }

    const auto gapX = static_cast<float>(position + gapShare * m_settings.length);
    const std::size_t gapBefore = m_gapEnd;
    m_gapEnd = std::max(m_gapEnd, m_head + 1);
    while (m_gapEnd < array.size() && array[m_gapEnd].x <= gapX)
        ++m_gapEnd;
    if (m_head == firstChanged && m_gapEnd == gapBefore)
        return;
    for (std::size_t i = m_head; i < m_gapEnd; ++i)
        array[i].opacity = hiddenOpacity;
    mark(firstChanged, m_gapEnd);
}

void SweepTrace::mark(std::size_t first, std::size_t end)
{
    const Charts::Range<int> range = {static_cast<int>(first), static_cast<int>(end - first)};
    m_data.dirtyRange().push(range);
    m_data.filledRange().push(range);
}

} // namespace Gallery
