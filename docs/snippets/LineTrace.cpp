// SPDX-License-Identifier: MIT
#include "LineTrace.h"

#include <utility>

LineTrace::LineTrace(QObject *parent)
    : AbstractTrace(parent)
{
    m_data.setDrawType(Charts::DrawType::LineStrip);
}

//! [set points]
void LineTrace::setPoints(std::vector<Charts::TracePoint> points)
{
    m_newPoints = std::move(points);
    m_hasNewPoints = true;
}
//! [set points]

void LineTrace::updateData()
{
    //! [points]
    if (std::exchange(m_hasNewPoints, false)) {
        m_data.array().swap(m_newPoints);
        const auto count = static_cast<int>(m_data.array().size());
        m_data.dirtyRange().setSize(count);
        m_data.filledRange().setSize(count);
        m_data.dirtyRange().push({0, count});  // what to upload
        m_data.filledRange().push({0, count}); // what to draw
    }
    //! [points]
    //! [attributes]
    m_data.setVisible(isVisible());
    m_data.setColor(color());
    m_data.setWidth(static_cast<float>(lineWidth()));

    Charts::ViewPort viewPort = {
            .x = static_cast<float>(domain()->minX()),
            .y = static_cast<float>(domain()->minY()),
            .width = static_cast<float>(domain()->spanX()),
            .height = static_cast<float>(domain()->spanY()),
    };
    //! [attributes]
    //! [round]
    m_data.setSquaredViewPort(domain()->isRound());
    if (domain()->isLeftSmith()) {
        viewPort.x += viewPort.width;
        viewPort.width = -viewPort.width;
    }
    //! [round]
    //! [view port]
    m_data.setViewPort(viewPort);
    //! [view port]
}
