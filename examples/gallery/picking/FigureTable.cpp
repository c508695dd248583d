// SPDX-License-Identifier: MIT
#include "FigureTable.h"

#include <QtCore/QtMath>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <numbers>
#include <vector>

namespace Gallery {

namespace {

struct Ratio
{
    int x = 1;
    int y = 1;
};

// All that have a common period with at most six oscillations.
constexpr std::array<Ratio, 15> frequencyRatios = {{{1, 1}, {1, 2}, {1, 3}, {1, 4}, {1, 5}, {1, 6},
        {2, 3}, {2, 5}, {3, 2}, {3, 4}, {3, 5}, {4, 3}, {4, 5}, {5, 4}, {5, 6}}};
constexpr int phaseCount = 20;
constexpr double phaseStep = 180.0 / phaseCount; // degrees
constexpr double share = 0.74;                   // of its cell that a figure fills

// Enough for a smooth line when a single figure fills the chart, and few enough that the segments
// of a small one are not shorter than a pixel.
constexpr int pointsPerOscillation = 64;

/*! Two sine oscillations against each other, as an oscilloscope in X-Y mode shows them; the phase
    is that of the x oscillation, in degrees, and where the figure stands. */
std::vector<Charts::TracePoint> figure(const Ratio &ratio, double phase, double row)
{
    // The last point is the first again: the figure is closed.
    const int pointCount = pointsPerOscillation * std::max(ratio.x, ratio.y) + 1;
    std::vector<Charts::TracePoint> points;
    for (int i = 0; i < pointCount; ++i) {
        const double t = 2.0 * std::numbers::pi * i / (pointCount - 1);
        const double x = std::sin(ratio.x * t + qDegreesToRadians(phase));
        const double y = std::sin(ratio.y * t);
        points.push_back({.x = static_cast<float>(phase + 0.5 * share * phaseStep * x),
                .y = static_cast<float>(row + 0.5 * share * y),
                .opacity = 1.0F});
    }
    return points;
}

QColor colorOf(std::size_t row, int column)
{
    const double hue = static_cast<double>(row) / static_cast<double>(frequencyRatios.size());
    const double saturation = 0.45 + 0.3 * column / (phaseCount - 1);
    return QColor::fromHsvF(static_cast<float>(hue), static_cast<float>(saturation), 1.0F);
}

QString nameOf(const Ratio &ratio)
{
    return QStringLiteral("%1 : %2").arg(ratio.x).arg(ratio.y);
}

} // namespace

FigureTable::FigureTable(QObject *parent)
    : QObject(parent)
{
    for (std::size_t row = 0; row < frequencyRatios.size(); ++row) {
        const Ratio &ratio = frequencyRatios.at(row);
        for (int column = 0; column < phaseCount; ++column) {
            const double phase = column * phaseStep;
            auto *trace = new StaticTrace(figure(ratio, phase, static_cast<double>(row)), this);
            trace->setName(QStringLiteral("%1 at %2°").arg(nameOf(ratio)).arg(phase));
            trace->setColor(colorOf(row, column));
            trace->domain()->setRangeXY(-0.6 * phaseStep, (phaseCount - 0.4) * phaseStep, -0.6,
                    static_cast<double>(frequencyRatios.size()) - 0.4);
            m_traces.append(trace);
        }
    }
}

QStringList FigureTable::ratios() const
{
    QStringList names;
    for (const Ratio &ratio : frequencyRatios)
        names.append(nameOf(ratio));
    return names;
}

} // namespace Gallery
