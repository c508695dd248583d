// SPDX-License-Identifier: MIT
#include "SpectrumTrace.h"

#include "VisibleRanges.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>

namespace Gallery {

namespace {

constexpr double lowest = -100.0; // dBm
constexpr double highest = 0.0;

constexpr int sweepsBefore = 30; // the average is settled at the start
constexpr int mostSweepsAtOnce = 30;
constexpr float shareOfSweep = 1.0F / 8.0F;

/*! A line whose level and frequency swing about their means. */
struct SpectralLine
{
    double frequency;      // MHz
    double level;          // dBm
    double levelSwing;     // dB
    double frequencySwing; // MHz
    double period;         // seconds
};

constexpr std::array<SpectralLine, 6> lines = {{
        {SpectrumTrace::CarrierFrequency, SpectrumTrace::CarrierLevel, 0.0, 0.0, 1.0},
        {99.2, -58.0, 1.5, 0.0, 5.0},
        {100.4, -69.0, 2.0, 0.0, 7.0},
        {102.0, -71.0, 9.0, 0.0, 9.0},
        {104.1, -81.0, 2.0, 0.35, 13.0},
        {105.7, -83.0, 2.0, 0.0, 11.0},
}};

double milliwatts(double dBm)
{
    return std::pow(10.0, dBm / 10.0);
}

/*! What the filter of the resolution bandwidth, a Gaussian 60 kHz wide, lets through of a line. */
double throughFilter(double distance)
{
    constexpr double halfWidth = 0.03; // MHz, where half of the power is left
    return std::exp2(-std::pow(distance / halfWidth, 2));
}

/*! The power of the noise: it falls by 20 dB for ten times the distance from the carrier. */
double noisePower(double frequency)
{
    constexpr double levelAtOneMegahertz = -67.0; // dBm
    constexpr double flatWithin = 0.03;           // MHz, as wide as the filter
    const double distance =
            std::max(flatWithin, std::abs(frequency - SpectrumTrace::CarrierFrequency));
    return milliwatts(SpectrumTrace::FloorLevel)
           + milliwatts(levelAtOneMegahertz) / (distance * distance);
}

} // namespace

SpectrumTrace::SpectrumTrace(const PlaybackClock &clock, QObject *parent)
    : AbstractTrace(parent)
    , m_clock(clock)
{
    constexpr double step = (LastFrequency - FirstFrequency) / (PointCount - 1);
    m_data.array().reserve(PointCount);
    for (int i = 0; i < PointCount; ++i) {
        m_data.array().push_back({.x = static_cast<float>(FirstFrequency + i * step),
                .y = static_cast<float>(lowest),
                .opacity = 1.0F});
    }
    m_data.dirtyRange().setSize(PointCount);
    m_data.filledRange().setSize(PointCount);
    m_data.filledRange().push({0, PointCount});
    m_data.setDrawType(Charts::DrawType::LineStrip);
    domain()->setRangeXY(FirstFrequency, LastFrequency, lowest, highest);

    m_sweepCount = -sweepsBefore;
    sweep(1.0F);
    while (m_sweepCount < 0)
        sweep(shareOfSweep);
}

void SpectrumTrace::updateData()
{
    const auto due = static_cast<long long>(std::floor(m_clock.seconds() * SweepsPerSecond));
    // After a halt of the program the average needs the last sweeps only.
    m_sweepCount = std::max(m_sweepCount, due - mostSweepsAtOnce);
    while (m_sweepCount < due)
        sweep(shareOfSweep);

    m_data.setColor(color());
    m_data.setWidth(static_cast<float>(lineWidth()));
    m_data.setVisible(isVisible());
    m_data.setViewPort(visibleRanges(*domain()));
}

void SpectrumTrace::sweep(float share)
{
    const double seconds = static_cast<double>(m_sweepCount) / SweepsPerSecond;
    struct Line
    {
        double frequency;
        double power;
    };
    std::array<Line, lines.size()> now{};
    std::transform(lines.begin(), lines.end(), now.begin(), [seconds](const SpectralLine &line) {
        const double swing = std::sin(2.0 * std::numbers::pi * seconds / line.period);
        return Line{line.frequency + line.frequencySwing * swing,
                milliwatts(line.level + line.levelSwing * swing)};
    });

    m_random.seed(static_cast<std::mt19937::result_type>(m_sweepCount));
    for (Charts::TracePoint &point : m_data.array()) {
        const double frequency = point.x;
        // The power of noise in one reading is distributed exponentially.
        const double uniform = (static_cast<double>(m_random()) + 0.5) / 4294967296.0;
        double power = -std::log(uniform) * noisePower(frequency);
        for (const Line &line : now)
            power += line.power * throughFilter(frequency - line.frequency);
        const auto level = static_cast<float>(10.0 * std::log10(power));
        point.y += (level - point.y) * share;
    }
    m_data.dirtyRange().push({0, PointCount});
    ++m_sweepCount;
}

} // namespace Gallery
