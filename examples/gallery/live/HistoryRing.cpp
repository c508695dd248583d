// SPDX-License-Identifier: MIT
#include "HistoryRing.h"

#include <cstddef>

namespace Gallery {

namespace {

constexpr int breakCount = 2;

} // namespace

HistoryRing::HistoryRing(Charts::TraceData &data, int pointCount)
    : m_data(data)
    , m_slotCount(pointCount + breakCount)
{
    // Unwritten vertices are drawn with the others, so they have to be masked.
    const int vertexCount = m_slotCount + 1;
    m_data.array().assign(
            static_cast<std::size_t>(vertexCount), {.x = 0.0F, .y = 0.0F, .opacity = 0.0F});
    m_data.dirtyRange().setSize(vertexCount);
    m_data.filledRange().setSize(vertexCount);
    m_data.dirtyRange().push({0, vertexCount});
    m_data.filledRange().push({0, vertexCount});
}

void HistoryRing::append(float x, float y)
{
    if (m_isEmpty)
        begin(x, y);
    write(m_next, {x, y, 1.0F});
    write((m_next + 1) % m_slotCount, {x, y, 0.0F});
    copyOldestInto((m_next + 2) % m_slotCount);
    m_next = (m_next + 1) % m_slotCount;
}

void HistoryRing::begin(float x, float y)
{
    m_isEmpty = false;
    const auto vertexCount = static_cast<int>(m_data.array().size());
    m_data.array().assign(m_data.array().size(), {.x = x, .y = y, .opacity = 0.0F});
    m_data.dirtyRange().push({0, vertexCount});
}

void HistoryRing::copyOldestInto(int slot)
{
    const auto oldest = static_cast<std::size_t>((slot + 1) % m_slotCount);
    Charts::TracePoint point = m_data.array()[oldest];
    point.opacity = 0.0F;
    write(slot, point);
}

void HistoryRing::write(int slot, const Charts::TracePoint &point)
{
    m_data.array()[static_cast<std::size_t>(slot)] = point;
    m_data.dirtyRange().push({slot, 1});
    if (slot == 0) {
        m_data.array()[static_cast<std::size_t>(m_slotCount)] = point;
        m_data.dirtyRange().push({m_slotCount, 1});
    }
}

} // namespace Gallery
