// SPDX-License-Identifier: MIT
#include "TestSignal.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <numbers>
#include <random>

namespace Gallery {

namespace {

// Within a stretch, wave and envelope are straight lines.
constexpr std::size_t stretchLength = 1000;
constexpr std::size_t carrierLength = 40;
constexpr std::size_t noiseLength = 65'537; // prime, so that sums with other periods do not repeat

// Whole stretches in which nothing was measured.
constexpr std::size_t pausePeriod = 9'000'000;
constexpr std::size_t pauseBegin = 6'200'000;
constexpr std::size_t pauseEnd = 6'350'000;

double turns(double position, double period)
{
    return std::sin(2.0 * std::numbers::pi * position / period);
}

double waveAt(double position)
{
    return 1.4 * turns(position, 4.7e6) + 0.5 * turns(position, 0.9e6);
}

double envelopeAt(double position)
{
    const double swell = turns(position, 1.3e6) * turns(position, 71e3);
    return 0.15 + 1.3 * swell * swell;
}

} // namespace

TestSignal::TestSignal()
{
    for (std::size_t i = 0; i < carrierLength; ++i)
        m_carrier.push_back(static_cast<float>(turns(static_cast<double>(i), carrierLength)));
    std::mt19937 random(1); // gives the same numbers with every standard library
    m_noise.reserve(noiseLength);
    for (std::size_t i = 0; i < noiseLength; ++i) {
        // A sum of four: nearly a normal distribution.
        const auto sum = (random() >> 8U) + (random() >> 8U) + (random() >> 8U) + (random() >> 8U);
        m_noise.push_back(0.15F * (static_cast<float>(sum) / 33'554'432.0F - 1.0F));
    }
}

void TestSignal::read(std::span<float> samples)
{
    while (!samples.empty()) {
        const std::size_t count = std::min(stretchLength - m_next % stretchLength, samples.size());
        readStretch(samples.first(count));
        samples = samples.subspan(count);
        m_next += count;
    }
}

void TestSignal::readStretch(std::span<float> samples)
{
    const std::size_t inPeriod = m_next % pausePeriod;
    if (inPeriod >= pauseBegin && inPeriod < pauseEnd) {
        std::fill(samples.begin(), samples.end(), std::numeric_limits<float>::quiet_NaN());
        return;
    }
    const std::size_t offset = m_next % stretchLength;
    const auto begin = static_cast<double>(m_next - offset);
    const auto end = begin + static_cast<double>(stretchLength);
    const auto wave = static_cast<float>(waveAt(begin));
    const auto envelope = static_cast<float>(envelopeAt(begin));
    const float waveStep = (static_cast<float>(waveAt(end)) - wave) / stretchLength;
    const float envelopeStep = (static_cast<float>(envelopeAt(end)) - envelope) / stretchLength;

    std::size_t noiseIndex = m_next % noiseLength;
    std::size_t carrierIndex = m_next % carrierLength;
    auto part = static_cast<float>(offset);
    for (float &sample : samples) {
        sample = wave + part * waveStep + (envelope + part * envelopeStep) * m_carrier[carrierIndex]
                 + m_noise[noiseIndex];
        part += 1.0F;
        carrierIndex = carrierIndex + 1 == carrierLength ? 0 : carrierIndex + 1;
        noiseIndex = noiseIndex + 1 == noiseLength ? 0 : noiseIndex + 1;
    }

    // At most one in a stretch.
    const std::size_t untilSpike =
            (FirstSpike + SpikeDistance - m_next % SpikeDistance) % SpikeDistance;
    if (untilSpike < samples.size())
        samples[untilSpike] = SpikeHeight;
}

} // namespace Gallery
