// SPDX-License-Identifier: MIT
#pragma once

#include <ChartsLibrary/AbstractTrace.h>
#include <ChartsLibrary/TraceData.h>
#include <cmath>

class WaveTrace : public Charts::AbstractTrace
{
    Q_OBJECT
    QML_ELEMENT

public:
    WaveTrace()
    {
        m_data.array().resize(PointCount);
        m_data.dirtyRange().setSize(PointCount);
        m_data.filledRange().setSize(PointCount);
        m_data.setDrawType(Charts::DrawType::LineStrip);
        m_data.setViewPort({.x = 0, .y = -1.2F, .width = PointCount - 1, .height = 2.4F});
    }
    Charts::TraceData *traceData() override { return &m_data; }
    void updateData() override // every 33 ms, on a thread of the pool
    {
        m_phase += 0.1F;
        for (int i = 0; i < PointCount; ++i) {
            const auto x = static_cast<float>(i);
            const float y = std::sin(0.003F * x) * std::sin(0.05F * x - m_phase);
            m_data.array()[i] = {.x = x, .y = y, .opacity = 1};
        }
        m_data.dirtyRange().push({0, PointCount});  // what to upload
        m_data.filledRange().push({0, PointCount}); // what to draw
        m_data.setColor(color());
        m_data.setWidth(static_cast<float>(lineWidth()));
    }

private:
    static constexpr int PointCount = 1000;
    Charts::TraceData m_data;
    float m_phase = 0;
};
