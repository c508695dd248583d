// SPDX-License-Identifier: MIT
#include "NetworkPlot.h"

#include "Decibels.h"
#include "ReadableRange.h"

#include <QtGui/QColor>

#include <algorithm>
#include <cmath>
#include <utility>

namespace Gallery {

namespace {

using Charts::TraceDomain;
using Charts::Readers::NetworkData;

struct Unit
{
    const char *name;
    double hertz;
};

Unit unitFor(double highest)
{
    for (const Unit &unit : {Unit{"GHz", 1e9}, Unit{"MHz", 1e6}, Unit{"kHz", 1e3}}) {
        if (highest >= unit.hertz)
            return unit;
    }
    return {"Hz", 1.0};
}

QString nameOf(const NetworkData &data, std::size_t row, std::size_t column)
{
    if (!data.modes.empty()) {
        return QStringLiteral("S %1 %2").arg(QString::fromStdString(data.modes[row]),
                QString::fromStdString(data.modes[column]));
    }
    // "S21", and "S12,1" where a port's number has two digits.
    const QString separator = data.portCount > 9 ? QStringLiteral(",") : QString();
    return QStringLiteral("S%1%2%3").arg(row + 1).arg(separator).arg(column + 1);
}

QColor colorOf(const NetworkData &data, std::size_t row, std::size_t column)
{
    const auto ports = static_cast<std::size_t>(data.portCount);
    const double share =
            static_cast<double>(row * ports + column) / static_cast<double>(ports * ports);
    const double hue = 0.55 + share;
    return QColor::fromHsvF(static_cast<float>(hue - std::floor(hue)), 0.6F, 1.0F);
}

std::vector<NetworkPlot::Source> &networkSources()
{
    static std::vector<NetworkPlot::Source> sources;
    return sources;
}

} // namespace

void NetworkPlot::setSources(std::vector<Source> sources)
{
    networkSources() = std::move(sources);
}

NetworkPlot::NetworkPlot(QObject *parent)
    : QObject(parent)
{
    makeTraces();
}

QStringList NetworkPlot::sources() const
{
    QStringList names;
    for (const Source &source : networkSources())
        names.append(source.name);
    return names;
}

void NetworkPlot::setCurrentSource(int index)
{
    if (index == m_currentSource || index < 0 || index >= sources().size())
        return;
    m_currentSource = index;
    makeTraces();
    Q_EMIT tracesChanged();
}

void NetworkPlot::setScale(double scale)
{
    if (scale == m_scale)
        return;
    m_scale = scale;
    applyScale();
    Q_EMIT scaleChanged();
}

void NetworkPlot::setFlip(bool flip)
{
    if (flip == m_flip)
        return;
    m_flip = flip;
    applyScale();
    Q_EMIT flipChanged();
}

void NetworkPlot::makeTraces()
{
    // Destroyed traces leave their chart by themselves.
    for (QList<StaticTrace *> *traces : {&m_magnitudes, &m_reflections, &m_phasors}) {
        qDeleteAll(*traces);
        traces->clear();
    }
    const NetworkData &data = *networkSources().at(static_cast<std::size_t>(m_currentSource)).data;
    makeMagnitudes(data);
    const auto ports = static_cast<std::size_t>(data.portCount);
    for (std::size_t row = 0; row < ports; ++row) {
        for (std::size_t column = 0; column < ports; ++column) {
            if (row == column)
                m_reflections.append(makePhasor(data, row, column, TraceDomain::SmithFormat));
            m_phasors.append(makePhasor(data, row, column, TraceDomain::PolarFormat));
        }
    }
    applyScale();
}

void NetworkPlot::makeMagnitudes(const NetworkData &data)
{
    const Unit unit = unitFor(data.frequency.back());
    m_frequencyUnit = QString::fromLatin1(unit.name);
    Charts::Span range(data.frequency.front() / unit.hertz, data.frequency.back() / unit.hertz);
    if (range.min == range.max)
        range = {range.min - 0.5, range.max + 0.5};

    Charts::Span levels(-10.0, -10.0);
    const auto ports = static_cast<std::size_t>(data.portCount);
    for (std::size_t row = 0; row < ports; ++row) {
        for (std::size_t column = 0; column < ports; ++column) {
            std::vector<Charts::TracePoint> points;
            points.reserve(data.frequency.size());
            for (std::size_t i = 0; i < data.frequency.size(); ++i) {
                const double level = decibels(data.s(i, row, column));
                levels = {std::min(levels.min, level), std::max(levels.max, level)};
                points.push_back({.x = static_cast<float>(data.frequency[i] / unit.hertz),
                        .y = static_cast<float>(level),
                        .opacity = 1.0F});
            }
            auto *trace = new StaticTrace(std::move(points), this);
            trace->setName(nameOf(data, row, column));
            trace->setColor(colorOf(data, row, column));
            m_magnitudes.append(trace);
        }
    }
    // What lies 120 dB below the highest is noise, or nothing at all.
    levels.min = std::max(levels.min, levels.max - 120.0);
    const double margin = 0.03 * (levels.max - levels.min);
    const ReadableRange readable =
            readableRange({levels.min - margin, std::max(levels.max + margin, 0.0)});
    m_magnitudeBands = readable.stepCount;
    for (StaticTrace *trace : std::as_const(m_magnitudes))
        trace->domain()->setRangeXY(range, readable.range);
}

StaticTrace *NetworkPlot::makePhasor(const NetworkData &data, std::size_t row, std::size_t column,
        TraceDomain::TraceFormat format)
{
    std::vector<Charts::TracePoint> points;
    points.reserve(data.frequency.size());
    for (std::size_t i = 0; i < data.frequency.size(); ++i) {
        const std::complex<double> &value = data.s(i, row, column);
        points.push_back({.x = static_cast<float>(value.real()),
                .y = static_cast<float>(value.imag()),
                .opacity = 1.0F});
    }
    auto *trace = new StaticTrace(std::move(points), this);
    trace->setName(nameOf(data, row, column));
    trace->setColor(colorOf(data, row, column));
    trace->domain()->setFormat(format);
    trace->domain()->setRangeArg(data.frequency.front(), data.frequency.back());
    return trace;
}

void NetworkPlot::applyScale()
{
    const Charts::Span range(-m_scale, m_scale);
    for (StaticTrace *trace : std::as_const(m_reflections)) {
        trace->domain()->setRangeXY(range, range);
        trace->domain()->setLeftSmith(m_flip);
    }
    for (StaticTrace *trace : std::as_const(m_phasors))
        trace->domain()->setRangeXY(range, range);
}

} // namespace Gallery
