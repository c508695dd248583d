// SPDX-License-Identifier: MIT
#include "LoadTrace.h"

#include "VisibleRanges.h"

namespace Gallery {

namespace {

constexpr double lowest = 0.0; // percent
constexpr double highest = 100.0;

} // namespace

LoadTrace::LoadTrace(const PlaybackClock &clock, int historyLength, QObject *parent)
    : AbstractTrace(parent)
    , m_clock(clock)
    , m_ring(m_data, historyLength)
{
    m_data.setDrawType(Charts::DrawType::LineStrip);
    domain()->setRangeXY(-ShownSeconds, 0.0, lowest, highest);
}

void LoadTrace::append(double seconds, float percent)
{
    m_newPoints.push_back({static_cast<float>(seconds), percent, 1.0F});
}

void LoadTrace::updateData()
{
    for (const Charts::TracePoint &point : m_newPoints)
        m_ring.append(point.x, point.y);
    m_newPoints.clear();

    m_data.setColor(color());
    m_data.setWidth(static_cast<float>(lineWidth()));
    m_data.setVisible(isVisible());
    // Lines on the limits are seen at their full width. In a zoom what lies outside stays outside.
    m_data.setBoundingY(domain()->isZoomed() ? Charts::BoundingMethod::Unbounded
                                             : Charts::BoundingMethod::Clamp);
    // The domain counts from now, the vertices from the start.
    Charts::ViewPort viewPort = visibleRanges(*domain());
    viewPort.x += static_cast<float>(m_clock.seconds());
    m_data.setViewPort(viewPort);
}

} // namespace Gallery
