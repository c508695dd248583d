// SPDX-License-Identifier: MIT
#include "CpuLoad.h"

#include <algorithm>
#include <chrono>
#include <fstream>

namespace Gallery {

namespace {

// The kernel counts in ticks of 10 ms: shorter intervals would only show their rounding.
constexpr std::chrono::milliseconds interval(100);
constexpr int historyLength = static_cast<int>(LoadTrace::ShownSeconds) * 10 + 20;

std::vector<CpuTimes> readMachine()
{
    std::ifstream statistics("/proc/stat");
    return readCpuTimes(statistics);
}

QColor colorOf(qsizetype core, qsizetype count)
{
    // Spread over the colour circle from a light blue on; cores are told apart by the legend too.
    const double hue = 0.55 + static_cast<double>(core) / static_cast<double>(count);
    return QColor::fromHsvF(static_cast<float>(hue - std::floor(hue)), 0.62F, 1.0F);
}

} // namespace

CpuLoad::CpuLoad(QObject *parent)
    : QObject(parent)
    , m_lastTimes(readMachine())
{
    const auto count = static_cast<qsizetype>(m_lastTimes.size());
    for (qsizetype core = 0; core < count; ++core) {
        auto *trace = new LoadTrace(m_clock, historyLength, this);
        trace->setName(QStringLiteral("CPU %1").arg(core));
        trace->setColor(colorOf(core, count));
        m_traces.append(trace);
    }
    connect(&m_timer, &QTimer::timeout, this, &CpuLoad::sample);
    m_timer.start(interval);
}

void CpuLoad::setPaused(bool paused)
{
    if (paused == isPaused())
        return;
    m_clock.setPaused(paused);
    Q_EMIT pausedChanged();
}

void CpuLoad::sample()
{
    std::vector<CpuTimes> times = readMachine();
    if (!isPaused()) {
        const double now = m_clock.seconds();
        // A core may have been taken offline; its line stays where it ended.
        const auto count = std::min(times.size(), m_lastTimes.size());
        for (std::size_t core = 0; core < std::min<std::size_t>(count, m_traces.size()); ++core) {
            m_traces[static_cast<qsizetype>(core)]->append(
                    now, loadBetween(m_lastTimes[core], times[core]));
        }
    }
    m_lastTimes = std::move(times);
}

} // namespace Gallery
