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
    explicit WaveTrace(QObject *parent = nullptr)
        : AbstractTrace(parent)
    {
        m_data.array().resize(PointCount);
        m_data.dirtyRange().setSize(PointCount);
        m_data.filledRange().setSize(PointCount);
        m_data.setDrawType(Charts::DrawType::LineStrip);
        m_data.setViewPort({.x = 0.0F, .y = -1.2F, .width = 1.0F, .height = 2.4F});
    }

    Charts::TraceData *traceData() override { return &m_data; }

    // Called every 33 ms on a thread of its own: write the trace's data and nothing else.
    void updateData() override
    {
        m_phase += 0.08F;
        for (int i = 0; i < PointCount; ++i) {
            const float x = static_cast<float>(i) / (PointCount - 1);
            const float envelope = std::sin(3.1416F * x);
            m_data.array()[static_cast<std::size_t>(i)] = {
                    .x = x, .y = envelope * std::sin(40.0F * x - m_phase), .opacity = 1.0F};
        }
        m_data.dirtyRange().push({0, PointCount});
        m_data.filledRange().push({0, PointCount});
        m_data.setColor(color());
        m_data.setWidth(static_cast<float>(lineWidth()));
    }

private:
    static constexpr int PointCount = 1000;
    Charts::TraceData m_data;
    float m_phase = 0.0F;
};
