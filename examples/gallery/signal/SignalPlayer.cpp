// SPDX-License-Identifier: MIT
#include "SignalPlayer.h"

#include "ReadableRange.h"

#include <QtGui/QColor>

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <utility>

namespace Gallery {

namespace {

std::vector<SignalPlayer::Source> &signalSources()
{
    static std::vector<SignalPlayer::Source> sources;
    return sources;
}

/*! Sweeps of 4 s at the signal's own rate, unless it is far too short or too slow to be seen so. */
SweepSettings settingsFor(const Charts::Readers::SampleTable &table)
{
    constexpr double usualLength = 4.0;
    constexpr double shortestSweep = 2.0; // on the screen
    constexpr double longestSweep = 60.0;
    constexpr double leastSampleCount = 200.0;

    const double duration = table.time.back() - table.time.front();
    if (duration <= 0.0)
        return {};
    const double step = duration / static_cast<double>(table.time.size() - 1);
    SweepSettings settings;
    settings.length = std::min(std::max(usualLength, leastSampleCount * step), duration);
    settings.speed = settings.length / std::clamp(settings.length, shortestSweep, longestSweep);
    return settings;
}

/*! Wider than the range of the values, so that lines on the limits are seen at their full width. */
Charts::Span paddedRangeOf(const Charts::Readers::SampleTable &table)
{
    Charts::Span range(
            std::numeric_limits<double>::infinity(), -std::numeric_limits<double>::infinity());
    for (const auto &column : table.columns) {
        for (const float value : column.values) {
            if (std::isnan(value))
                continue;
            range.min = std::min<double>(range.min, value);
            range.max = std::max<double>(range.max, value);
        }
    }
    if (range.min > range.max)
        return {-1.0, 1.0};
    const double padding =
            range.length() > 0.0 ? range.length() * 0.06 : std::max(1.0, std::abs(range.min));
    return {range.min - padding, range.max + padding};
}

QColor colorOf(std::size_t column)
{
    static constexpr std::array<QRgb, 6> colors = {
            0x66e08a, 0x4fc3f7, 0xffb74d, 0xf06292, 0xba9bff, 0xfff176};
    return QColor::fromRgb(colors[column % colors.size()]);
}

} // namespace

void SignalPlayer::setSources(std::vector<Source> sources)
{
    signalSources() = std::move(sources);
}

SignalPlayer::SignalPlayer(QObject *parent)
    : QObject(parent)
{
    makeTraces();
}

QStringList SignalPlayer::sources() const
{
    QStringList names;
    for (const Source &source : signalSources())
        names.append(source.name);
    return names;
}

void SignalPlayer::setCurrentSource(int index)
{
    if (index == m_currentSource || index < 0 || index >= sources().size())
        return;
    m_currentSource = index;
    m_clock.restart();
    makeTraces();
    Q_EMIT tracesChanged();
}

void SignalPlayer::setPaused(bool paused)
{
    if (paused == isPaused())
        return;
    m_clock.setPaused(paused);
    Q_EMIT pausedChanged();
}

void SignalPlayer::makeTraces()
{
    // Destroyed traces leave their chart by themselves.
    qDeleteAll(m_traces);
    m_traces.clear();

    const auto &table = signalSources().at(static_cast<std::size_t>(m_currentSource)).table;
    m_settings = settingsFor(*table);
    const ReadableRange values = readableRange(paddedRangeOf(*table));
    m_valueRange = values.range;
    m_valueBands = values.stepCount;
    m_valueUnit = QString::fromStdString(table->columns.front().unit);
    for (std::size_t column = 0; column < table->columns.size(); ++column) {
        auto *trace = new SweepTrace(table, column, m_settings, m_clock, this);
        trace->setName(QString::fromStdString(table->columns[column].name));
        trace->setColor(colorOf(column));
        trace->domain()->setRangeXY(timeRange(), m_valueRange);
        m_traces.append(trace);
    }
}

} // namespace Gallery
