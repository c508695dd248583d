// SPDX-License-Identifier: MIT
#include "EpochTrace.h"

#include <utility>

void EpochTrace::setSamples(std::vector<Sample> samples)
{
    m_samples = std::move(samples);
    m_hasNewSamples = true;
}

//! [points]
void EpochTrace::writePoints()
{
    m_origin = m_samples.empty() ? 0.0 : m_samples.front().seconds;
    auto &points = m_data.array();
    points.clear();
    for (const Sample &sample : m_samples) {
        points.push_back({
                .x = static_cast<float>(sample.seconds - m_origin), // subtracted as doubles
                .y = static_cast<float>(sample.value),
                .opacity = 1.0F,
        });
    }
    const auto count = static_cast<int>(points.size());
    m_data.dirtyRange().setSize(count);
    m_data.filledRange().setSize(count);
    m_data.dirtyRange().push({0, count});
    m_data.filledRange().push({0, count});
}
//! [points]

//! [update]
void EpochTrace::updateData()
{
    if (std::exchange(m_hasNewSamples, false))
        writePoints();
    m_data.setDrawType(Charts::DrawType::LineStrip);
    m_data.setColor(color());
    m_data.setWidth(static_cast<float>(lineWidth()));
    m_data.setViewPort({
            .x = static_cast<float>(domain()->minX() - m_origin), // as doubles, too
            .y = static_cast<float>(domain()->minY()),
            .width = static_cast<float>(domain()->spanX()),
            .height = static_cast<float>(domain()->spanY()),
    });
}
//! [update]
