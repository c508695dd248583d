// SPDX-License-Identifier: MIT
#include "StaticTrace.h"

#include "VisibleRanges.h"

#include <utility>

namespace Gallery {

StaticTrace::StaticTrace(std::vector<Charts::TracePoint> points, QObject *parent)
    : AbstractTrace(parent)
{
    const auto pointCount = static_cast<int>(points.size());
    m_data.array() = std::move(points);
    m_data.dirtyRange().setSize(pointCount);
    m_data.filledRange().setSize(pointCount);
    m_data.dirtyRange().push({0, pointCount});
    m_data.filledRange().push({0, pointCount});
    m_data.setDrawType(Charts::DrawType::LineStrip);
}

void StaticTrace::updateData()
{
    m_data.setColor(color());
    m_data.setWidth(static_cast<float>(lineWidth()));
    m_data.setVisible(isVisible());
    m_data.setSquaredViewPort(domain()->isRound());
    Charts::ViewPort viewPort = visibleRanges(*domain());
    if (domain()->isLeftSmith()) {
        viewPort.x += viewPort.width;
        viewPort.width = -viewPort.width;
    }
    m_data.setViewPort(viewPort);
}

} // namespace Gallery
