// SPDX-License-Identifier: MIT
#include "SignalSource.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <numbers>
#include <vector>

namespace {

constexpr std::size_t tableSize = 1U << 16U;

constexpr double periods = 6.0;

/*! The part of the table that one length of a trace takes. Not all of it: the points that follow would
    have the values of those that they replace. */
constexpr double tableShare = 0.9;

/*! The signal of as many points as the table has. Others take every so manieth value or each one several
    times. */
const std::vector<float> &waveTable()
{
    static const std::vector<float> table = [] {
        constexpr double noise = 0.05;
        std::vector<float> values(tableSize);
        std::uint32_t random = 1;
        for (std::size_t i = 0; i < tableSize; ++i) {
            random = random * 1664525U + 1013904223U;
            const double phase = 2.0 * std::numbers::pi * periods * static_cast<double>(i)
                                 / static_cast<double>(tableSize);
            const double uniform = random / 4294967296.0 * 2.0 - 1.0;
            values[i] = static_cast<float>((1.0 - noise) * std::sin(phase) + noise * uniform);
        }
        return values;
    }();
    return table;
}

} // namespace

SignalSource::SignalSource(const BenchmarkOptions &options, int trace)
    : m_mode(options.mode)
    , m_pointCount(options.points)
    , m_step(tableShare * static_cast<double>(tableSize) / options.points)
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
    return m_offset + m_scale * waveTable()[index];
}

SignalSource::Frame SignalSource::frame(const Piece &first, const Piece &second) const
{
    return {{first, second}, m_visibleFirst, m_visibleLength};
}
