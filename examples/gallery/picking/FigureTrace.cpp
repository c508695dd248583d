// SPDX-License-Identifier: MIT
#include "FigureTrace.h"

#include "VisibleRanges.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace Gallery {

namespace {

// Enough for a smooth line when a single figure fills the chart, and few enough that the segments
// of a small one are not shorter than a pixel.
constexpr int pointsPerOscillation = 64;

} // namespace

FigureTrace::FigureTrace(
        const Figure &figure, const QPointF &centre, double width, double height, QObject *parent)
    : AbstractTrace(parent)
{
    // The last point is the first again: the figure is closed.
    const int pointCount =
            pointsPerOscillation * std::max(figure.xFrequency, figure.yFrequency) + 1;
    m_data.setDrawType(Charts::DrawType::LineStrip);
    m_data.dirtyRange().setSize(pointCount);
    m_data.filledRange().setSize(pointCount);
    m_data.array().reserve(pointCount);
    for (int i = 0; i < pointCount; ++i) {
        const double t = 2.0 * std::numbers::pi * i / (pointCount - 1);
        const double x = 0.5 * width * std::sin(figure.xFrequency * t + figure.phase);
        const double y = 0.5 * height * std::sin(figure.yFrequency * t);
        m_data.array().push_back({.x = static_cast<float>(centre.x() + x),
                .y = static_cast<float>(centre.y() + y),
                .opacity = 1.0F});
    }
    m_data.dirtyRange().push({0, pointCount});
    m_data.filledRange().push({0, pointCount});
}

void FigureTrace::updateData()
{
    m_data.setColor(color());
    m_data.setWidth(static_cast<float>(lineWidth()));
    m_data.setVisible(isVisible());
    m_data.setViewPort(visibleRanges(*domain()));
}

} // namespace Gallery
