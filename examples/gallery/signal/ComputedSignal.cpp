// SPDX-License-Identifier: MIT
#include "ComputedSignal.h"

#include <array>
#include <cmath>
#include <numbers>

namespace Gallery {

namespace {

constexpr double sampleRate = 500.0;
constexpr double duration = 60.0;
constexpr double meanHeartRate = 1.15; // beats a second
constexpr double breathingRate = 0.25; // breaths a second

/*! One wave of the beat: its place and width as parts of the beat, its height in millivolts. */
struct Wave
{
    double centre;
    double width;
    double height;
};

constexpr std::array<Wave, 5> electrocardiogram = {{
        {0.20, 0.025, 0.15},  // P
        {0.36, 0.010, -0.12}, // Q
        {0.38, 0.011, 1.25},  // R
        {0.41, 0.010, -0.28}, // S
        {0.62, 0.045, 0.32},  // T
}};
constexpr std::array<Wave, 2> pulse = {{
        {0.60, 0.070, 0.80}, // systolic
        {0.82, 0.080, 0.35}, // dicrotic
}};

template<std::size_t Count>
double at(const std::array<Wave, Count> &waves, double phase)
{
    double sum = 0.0;
    for (const Wave &wave : waves) {
        // The nearest repetition of the wave, so that its tail reaches into the next beat.
        double distance = phase - wave.centre;
        distance -= std::round(distance);
        sum += wave.height * std::exp(-0.5 * std::pow(distance / wave.width, 2));
    }
    return sum;
}

} // namespace

Charts::Readers::SampleTable computedSignal()
{
    constexpr auto count = static_cast<std::size_t>(duration * sampleRate);
    Charts::Readers::SampleTable table;
    table.timeName = "time";
    table.timeUnit = "s";
    table.time.reserve(count);
    table.columns = {{"ECG, computed", "mV", {}}, {"Pulse, computed", "mV", {}}};
    for (auto &column : table.columns)
        column.values.reserve(count);

    double phase = 0.0;
    for (std::size_t i = 0; i < count; ++i) {
        const double time = static_cast<double>(i) / sampleRate;
        const double breath = std::sin(2.0 * std::numbers::pi * breathingRate * time);
        phase += meanHeartRate * (1.0 + 0.06 * breath) / sampleRate;
        table.time.push_back(time);
        table.columns[0].values.push_back(
                static_cast<float>(at(electrocardiogram, phase) + 0.04 * breath));
        table.columns[1].values.push_back(
                static_cast<float>(at(pulse, phase) * (1.0 + 0.1 * breath) - 1.4));
    }
    return table;
}

} // namespace Gallery
