// SPDX-License-Identifier: MIT
#include "SweepTrace.h"

#include <algorithm>
#include <cstddef>

namespace {

constexpr int gapLength = 8;

} // namespace

//! [constructor]
SweepTrace::SweepTrace(int pointCount, QObject *parent)
    : AbstractTrace(parent)
{
    // All the memory that there will ever be. Nothing is visible yet.
    m_data.array().assign(static_cast<std::size_t>(pointCount), {.opacity = 0.0F});
    m_data.dirtyRange().setSize(pointCount);
    m_data.filledRange().setSize(pointCount);
    m_data.dirtyRange().push({0, pointCount});
    m_data.filledRange().push({0, pointCount});
    m_data.setDrawType(Charts::DrawType::LineStrip);
    m_data.setViewPort(
            {.x = 0.0F, .y = -1.0F, .width = static_cast<float>(pointCount - 1), .height = 2.0F});
}
//! [constructor]

//! [append]
void SweepTrace::append(std::span<const float> samples)
{
    const std::lock_guard lock(m_mutex);
    m_waiting.insert(m_waiting.end(), samples.begin(), samples.end());
}
//! [append]

//! [update]
void SweepTrace::updateData()
{
    m_data.setColor(color());
    m_data.setWidth(static_cast<float>(lineWidth()));

    m_arrived.clear();
    {
        const std::lock_guard lock(m_mutex);
        m_arrived.swap(m_waiting); // both keep their memory
    }
    if (m_arrived.empty())
        return; // nothing is marked, so nothing is uploaded or drawn
    const auto count = static_cast<int>(m_data.array().size());
    for (const float sample : m_arrived) {
        write(m_next, {.x = static_cast<float>(m_next), .y = sample, .opacity = 1.0F});
        m_next = (m_next + 1) % count;
    }
    // The oldest points go out, so that the newest one can be told. The first of them moves onto the
    // newest point: the line between the two would be visible for nine tenths of its length.
    const auto newest = static_cast<std::size_t>((m_next + count - 1) % count);
    for (int i = 0; i < gapLength; ++i) {
        const int index = (m_next + i) % count;
        Charts::TracePoint point =
                m_data.array()[i == 0 ? newest : static_cast<std::size_t>(index)];
        point.opacity = 0.0F;
        write(index, point);
    }
}
//! [update]

//! [write]
void SweepTrace::write(int index, const Charts::TracePoint &point)
{
    m_data.array()[static_cast<std::size_t>(index)] = point;
    m_data.dirtyRange().push({index, 1}); // ranges that touch become one
}
//! [write]
