// SPDX-License-Identifier: MIT
#include "FrameMeter.h"

#include <QtCore/QJsonDocument>

#include <algorithm>
#include <cmath>
#include <malloc.h>
#include <sys/resource.h>

namespace {

CpuTime cpuTime(int who)
{
    rusage usage = {};
    getrusage(who, &usage);
    const auto milliseconds = [](const timeval &time) {
        return static_cast<double>(time.tv_sec) * 1e3 + static_cast<double>(time.tv_usec) / 1e3;
    };
    return {milliseconds(usage.ru_utime), milliseconds(usage.ru_stime)};
}

/*! The value that a share of \a fraction of all values does not exceed. */
double quantile(std::vector<double> values, double fraction)
{
    std::sort(values.begin(), values.end());
    const auto count = static_cast<double>(values.size());
    const auto rank = static_cast<std::size_t>(std::ceil(fraction * count));
    return values[std::max<std::size_t>(rank, 1) - 1];
}

double microsecondsPrecision(double milliseconds)
{
    return std::round(milliseconds * 1e3) / 1e3;
}

/*! Bytes that are allocated and not freed, however they were asked for. */
double heapBytes()
{
    const struct mallinfo2 info = mallinfo2();
    return static_cast<double>(info.uordblks + info.hblkhd);
}

double peakMemoryKibibytes()
{
    rusage usage = {};
    getrusage(RUSAGE_SELF, &usage);
    return static_cast<double>(usage.ru_maxrss);
}

} // namespace

CpuTime CpuTime::ofProcess()
{
    return cpuTime(RUSAGE_SELF);
}

CpuTime CpuTime::ofThread()
{
    return cpuTime(RUSAGE_THREAD);
}

FrameMeter::FrameMeter(const BenchmarkOptions &options)
    : m_options(options)
{
    m_blocks.reserve(static_cast<std::size_t>(options.blocks));
    m_wall.reserve(static_cast<std::size_t>(options.frames));
}

bool FrameMeter::run(const DrawFrame &drawFrame, const RenderTime &renderTime)
{
    QElapsedTimer wall;
    int drawn = 0;
    for (int block = 1; block <= m_options.blocks; ++block) {
        const int end = static_cast<int>(qint64{m_options.frames} * block / m_options.blocks);
        const int count = end - drawn;
        const CpuTime cpuBefore = CpuTime::ofProcess();
        const double renderBefore = renderTime();
        for (; drawn < end; ++drawn) {
            wall.start();
            if (!drawFrame())
                return false;
            m_wall.push_back(static_cast<double>(wall.nsecsElapsed()) / 1e6);
        }
        const CpuTime cpu = CpuTime::ofProcess();
        m_blocks.push_back({(cpu.user - cpuBefore.user) / count,
                (cpu.system - cpuBefore.system) / count, (renderTime() - renderBefore) / count});
    }
    return true;
}

QByteArray FrameMeter::report(const QJsonObject &more) const
{
    const auto medianOf = [this](auto value) {
        std::vector<double> values;
        values.reserve(m_blocks.size());
        for (const Block &block : m_blocks)
            values.push_back(value(block));
        return microsecondsPrecision(quantile(values, 0.5));
    };

    QJsonObject line = {
            {QStringLiteral("mode"), m_options.modeName()},
            {QStringLiteral("points"), m_options.points},
            {QStringLiteral("traces"), m_options.traces},
            {QStringLiteral("frames"), m_options.frames},
            {QStringLiteral("blocks"), m_options.blocks},
            {QStringLiteral("size"), QStringLiteral("%1x%2")
                                             .arg(m_options.size.width())
                                             .arg(m_options.size.height())},
            {QStringLiteral("gl"), m_options.gl},
            {QStringLiteral("cpu_ms"),
                    medianOf([](const Block &block) { return block.user + block.system; })},
            {QStringLiteral("cpu_user_ms"),
                    medianOf([](const Block &block) { return block.user; })},
            {QStringLiteral("cpu_system_ms"),
                    medianOf([](const Block &block) { return block.system; })},
            {QStringLiteral("cpu_render_thread_ms"),
                    medianOf([](const Block &block) { return block.render; })},
            {QStringLiteral("wall_median_ms"), microsecondsPrecision(quantile(m_wall, 0.5))},
            {QStringLiteral("wall_p99_ms"), microsecondsPrecision(quantile(m_wall, 0.99))},
            {QStringLiteral("heap_bytes"), heapBytes()},
            {QStringLiteral("peak_memory_kib"), peakMemoryKibibytes()},
    };
    for (auto entry = more.begin(); entry != more.end(); ++entry)
        line.insert(entry.key(), entry.value());
    return QJsonDocument(line).toJson(QJsonDocument::Compact) + '\n';
}
