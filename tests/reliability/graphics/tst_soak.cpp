// SPDX-License-Identifier: MIT
#include "ChartWindow.h"
#include "GlProbe.h"
#include "Graphics.h"
#include "Rounds.h"
#include "TestTrace.h"

#include <ChartsLibrary/XYGrid.h>

#include <QtCore/QCoreApplication>
#include <QtCore/QElapsedTimer>
#include <QtCore/QEventLoop>
#include <QtCore/QFile>
#include <QtCore/QRegularExpression>
#include <QtTest/QTest>

#include <algorithm>
#include <atomic>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <limits>
#include <memory>
#include <new>
#include <utility>
#include <vector>

#include <malloc.h>
#include <unistd.h>

using namespace Charts;

namespace {

std::atomic<std::int64_t> newBytes = 0;

} // namespace

// Bytes by new are those of the chart and of C++ beside it, to the byte. A driver written in C takes
// and leaves many times as many while it draws, which hides what the chart might take. A sanitizer has
// operators of its own, and finds what is lost by itself.
#if !defined(__SANITIZE_ADDRESS__) && !defined(__SANITIZE_THREAD__)
void *operator new(std::size_t size)
{
    void *memory = std::malloc(size);
    if (!memory)
        throw std::bad_alloc();
    newBytes += static_cast<std::int64_t>(malloc_usable_size(memory));
    return memory;
}

void operator delete(void *memory) noexcept
{
    newBytes -= static_cast<std::int64_t>(malloc_usable_size(memory));
    std::free(memory);
}

void operator delete(void *memory, std::size_t) noexcept
{
    operator delete(memory);
}
#endif

namespace {

constexpr int traceCount = 8;
constexpr int pointCount = 100000;
constexpr double interval = 33.0;
/*! Bytes by new, however long it takes; one tick writes five hundred times as many. */
constexpr std::int64_t heapBound = 20000;
/*! Kilobytes in the long form. Mesa's software renderer has pools that were seen to grow and shrink by
    four megabytes within minutes on a busy machine, with nothing taken by new; half an hour settles
    them. */
constexpr std::int64_t residentBound = 1024;
constexpr std::int64_t shortResidentBound = 8192;
constexpr int settledMilliseconds = 30 * 60 * 1000;

/*! Kilobytes of memory that the process really occupies. */
std::int64_t residentKilobytes()
{
    QFile file(QStringLiteral("/proc/self/statm"));
    if (!file.open(QIODevice::ReadOnly))
        return 0;
    const QList<QByteArray> fields = file.readAll().split(' ');
    return fields.value(1).toLongLong() * sysconf(_SC_PAGESIZE) / 1024;
}

/*! A wave that runs: each update writes all points anew, where they are. */
class WaveTrace : public TestTrace
{
public:
    explicit WaveTrace(int index)
        : m_index(index)
    {
        data.setDrawType(DrawType::LineStrip);
        data.setColor(QColor::fromHsv(index * 360 / traceCount, 255, 200));
        data.setViewPort({0.0F, -1.0F, static_cast<float>(pointCount), traceCount + 1.0F});
        setPoints(std::vector<TracePoint>(pointCount));
        onUpdate = [this] { write(); };
    }

private:
    void write()
    {
        // The pictures repeat soon, so that a driver has soon met the one that takes most memory.
        constexpr int period = 20000;
        m_step = (m_step + 1) % 10;
        int phase = (m_step * (period / 10) + m_index * 2500) % period;
        for (int i = 0; i < pointCount; ++i) {
            const float height = static_cast<float>(std::abs(phase - period / 2)) / period;
            data.array()[static_cast<std::size_t>(i)] = {
                    static_cast<float>(i), static_cast<float>(m_index) + height, 1.0F};
            phase = phase + 1 < period ? phase + 1 : 0;
        }
        data.dirtyRange().push({0, pointCount});
    }

    int m_index;
    int m_step = 0;
};

/*! The times between ticks. Written by whichever thread updates the trace, never by two at once. */
class TickTimes
{
public:
    explicit TickTimes(std::size_t capacity)
    {
        // Memory counts as resident once it has been written to.
        m_intervals.assign(capacity, 0.0);
        m_intervals.clear();
        m_timer.start();
    }

    void note()
    {
        const auto now = static_cast<double>(m_timer.nsecsElapsed()) / 1e6;
        // No memory is taken while memory is watched.
        if (m_last >= 0.0 && m_intervals.size() < m_intervals.capacity())
            m_intervals.push_back(now - m_last);
        m_last = now;
    }

    [[nodiscard]] QString summary() const
    {
        std::vector<double> sorted = m_intervals;
        if (sorted.empty())
            return QStringLiteral("no ticks");
        std::sort(sorted.begin(), sorted.end());
        const auto late =
                sorted.end() - std::upper_bound(sorted.begin(), sorted.end(), 2.0 * interval);
        return QStringLiteral("%1 ticks: median %2 ms, 99th percentile %3 ms, longest %4 ms, %5 of "
                              "them later than two intervals")
                .arg(sorted.size())
                .arg(sorted[sorted.size() / 2], 0, 'f', 1)
                .arg(sorted[sorted.size() * 99 / 100], 0, 'f', 1)
                .arg(sorted.back(), 0, 'f', 1)
                .arg(late);
    }

private:
    QElapsedTimer m_timer;
    double m_last = -1.0;
    std::vector<double> m_intervals;
};

constexpr std::int64_t bytesOfTick = std::int64_t{traceCount} * pointCount * sizeof(TracePoint);

/*! The least memory that was held at one of many moments: what a driver has on its way comes and goes
    with each frame. */
struct Memory
{
    std::int64_t heap = std::numeric_limits<std::int64_t>::max();
    std::int64_t residentKilobytes = std::numeric_limits<std::int64_t>::max();
};

/*! Runs for the given time, and until all points have been uploaded three times: a busy machine may
    take longer. */
Memory runFor(int milliseconds)
{
    Memory least;
    QElapsedTimer timer;
    timer.start();
    const std::int64_t enough = GlProbe::totals().uploadedBytes + 3 * bytesOfTick;
    while (timer.elapsed() < milliseconds || GlProbe::totals().uploadedBytes < enough) {
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
        least.heap = std::min(least.heap, newBytes.load());
        least.residentKilobytes = std::min(least.residentKilobytes, residentKilobytes());
    }
    return least;
}

} // namespace

/*! As much as a chart has to do, for as long as one has time for: it takes no memory for it. */
class tst_Soak : public QObject
{
    Q_OBJECT

public:
    static void initMain() { Graphics::setUp(); }

private Q_SLOTS:
    void init();
    void cleanup();

    void rewritten();
};

void tst_Soak::init()
{
    QTest::failOnWarning(QRegularExpression(QStringLiteral(".*")));
}

void tst_Soak::cleanup()
{
    QCOMPARE(GlProbe::takeErrors(), QStringList());
    QCOMPARE(GlProbe::liveObjects(), QStringList());
}

void tst_Soak::rewritten()
{
    const bool isLong = rounds(0, 1) == 1;
    bool isGiven = false;
    const int given = qEnvironmentVariableIntValue("CHARTS_TEST_SOAK_MINUTES", &isGiven);
    const int total = isLong ? std::max(isGiven ? given : 30, 2) * 60000 : 3000;
    // Two times at the beginning, of which the first is for what is taken once and for good, and one
    // at the end.
    const int watched = isLong ? 30000 : 1000;

    ChartWindow window({380, 250});
    XYGrid grid(window.contentItem());
    grid.setSize(window.size());
    grid.setZ(-1.0);
    TickTimes times(static_cast<std::size_t>(total / 30));
    std::vector<std::unique_ptr<WaveTrace>> traces;
    for (int i = 0; i < traceCount; ++i) {
        traces.push_back(std::make_unique<WaveTrace>(i));
        window.chart()->addTrace(traces.back().get());
    }
    traces.front()->onUpdate = [&times, write = traces.front()->onUpdate] {
        times.note();
        write();
    };
    QVERIFY2(window.start(), window.error());
    const auto memoryOf = [&traces] {
        std::vector<std::pair<const TracePoint *, std::size_t>> result;
        for (const auto &trace : traces)
            result.emplace_back(trace->data.array().data(), trace->data.array().capacity());
        return result;
    };

    window.startTicking();
    (void)runFor(watched);
    Memory before = runFor(watched);
    const auto memory = memoryOf();
    const QStringList objects = GlProbe::liveObjects();
    const int objectsMade = GlProbe::objectsMade();
    const GlProbe::Totals drawn = GlProbe::totals();
    const int updates = traces.front()->updateCount;
    if (isLong)
        (void)runFor(total - 3 * watched);
    Memory after = runFor(watched);
    // What is taken once and for good may be taken in any of the first seconds.
    for (int i = 0; !isLong && i < 4 && after.heap - before.heap > heapBound; ++i) {
        before = after;
        after = runFor(watched);
    }
    const GlProbe::Totals drawnMore = GlProbe::totals();
    const std::int64_t heapGrowth = after.heap - before.heap;
    const std::int64_t residentGrowth = after.residentKilobytes - before.residentKilobytes;
    qInfo().noquote() << times.summary();
    qInfo().noquote() << drawnMore.clears - drawn.clears << "frames; of" << total / 1000
                      << "s, at least" << before.residentKilobytes
                      << "kB resident at the beginning," << residentGrowth
                      << "kB more at the end; by new" << heapGrowth << "bytes more";

    // It did what it was to do.
    QVERIFY(traces.front()->updateCount > updates);
    for (const auto &trace : traces)
        QCOMPARE(trace->updateCount.load(), traces.front()->updateCount.load());
    const std::int64_t uploaded = drawnMore.uploadedBytes - drawn.uploadedBytes;
    QVERIFY(uploaded >= bytesOfTick);
    QCOMPARE(uploaded % bytesOfTick, 0);

    // And took nothing for it.
    QCOMPARE(memoryOf(), memory);
    QCOMPARE(GlProbe::liveObjects(), objects);
    QCOMPARE(GlProbe::objectsMade(), objectsMade);
    QCOMPARE(drawnMore.allocations, drawn.allocations);
    QVERIFY2(heapGrowth <= heapBound, qPrintable(QString::number(heapGrowth)));
    if (isLong) {
        const auto bound = total >= settledMilliseconds ? residentBound : shortResidentBound;
        QVERIFY2(residentGrowth < bound, qPrintable(QString::number(residentGrowth)));
    }
}

QTEST_MAIN(tst_Soak)

#include "tst_soak.moc"
