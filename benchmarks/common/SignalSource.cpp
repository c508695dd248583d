// SPDX-License-Identifier: MIT
#include "SignalSource.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <numbers>
#include <vector>

namespace {

constexpr std::size_t tableSize = 1U << 16U;
constexpr float noise = 0.05F;

/*! Six periods of a sine. */
const std::vector<float> &waveTable()
{
    static const std::vector<float> table = [] {
        constexpr double periods = 6.0;
        std::vector<float> values(tableSize);
        for (std::size_t i = 0; i < tableSize; ++i) {
            const double phase = 2.0 * std::numbers::pi * periods * static_cast<double>(i)
                                 / static_cast<double>(tableSize);
            values[i] = static_cast<float>(std::sin(phase));
        }
        return values;
    }();
    return table;
}

/*! From -1 to 1, as if by chance, but the same for the same sample. No two neighbours are alike, which
    is what makes a dense line dear to draw. */
float noiseOf(qint64 sample)
{
    auto bits = static_cast<std::uint32_t>(sample);
    bits = (bits ^ (bits >> 16U)) * 0x7feb352dU;
    bits = (bits ^ (bits >> 15U)) * 0x846ca68bU;
    bits ^= bits >> 16U;
    return static_cast<float>(bits) / 2147483648.0F - 1.0F;
}

} // namespace

SignalSource::SignalSource(const BenchmarkOptions &options, int trace)
    : m_mode(options.mode)
    , m_pointCount(options.points)
    , m_step(static_cast<double>(tableSize) / options.points)
    // One above the other, each with its share of the height.
    , m_offset(static_cast<float>((2.0 * trace + 1.0) / options.traces - 1.0))
    , m_scale(static_cast<float>(0.9 / options.traces))
    , m_visibleLength(options.points - 1)
{
    if (m_mode == BenchmarkOptions::Mode::Pan)
        m_visibleLength /= 10.0;
}

QColor SignalSource::colorOf(int trace, bool isOther)
{
    return QColor::fromHsv(trace * 67 % 360, 255, isOther ? 160 : 200);
}

SignalSource::Frame SignalSource::begin()
{
    m_sample = m_pointCount;
    return frame({0, m_pointCount, 0}, {});
}

SignalSource::Frame SignalSource::next()
{
    switch (m_mode) {
    case BenchmarkOptions::Mode::Append: {
        constexpr int count = BenchmarkOptions::appendedPoints;
        const Piece first = {m_head, std::min(count, m_pointCount - m_head), m_sample};
        const Piece second = {0, count - first.length, m_sample + first.length};
        m_sample += count;
        m_head = (m_head + count) % m_pointCount;
        return frame(first, second);
    }
    case BenchmarkOptions::Mode::Rewrite: {
        const Piece all = {0, m_pointCount, m_sample};
        m_sample += m_pointCount;
        return frame(all, {});
    }
    case BenchmarkOptions::Mode::Pan:
        m_visibleFirst += m_visibleLength / 100.0;
        if (m_visibleFirst + m_visibleLength > m_pointCount - 1)
            m_visibleFirst = 0.0;
        return frame({}, {});
    default:
        return frame({}, {});
    }
}

float SignalSource::valueAt(qint64 sample) const
{
    const auto index =
            static_cast<std::size_t>(static_cast<double>(sample) * m_step) & (tableSize - 1);
    const float value = (1.0F - noise) * waveTable()[index] + noise * noiseOf(sample);
    return m_offset + m_scale * value;
}

SignalSource::Frame SignalSource::frame(const Piece &first, const Piece &second) const
{
    return {{first, second}, m_visibleFirst, m_visibleLength};
}
