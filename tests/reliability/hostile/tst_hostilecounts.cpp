// SPDX-License-Identifier: MIT
#include "ChartWindow.h"
#include "GlProbe.h"
#include "Graphics.h"
#include "MouseInput.h"
#include "PixelTrace.h"
#include "Rounds.h"

#include <ChartsLibrary/ChartMouseEvent.h>

#include <QtCore/QElapsedTimer>
#include <QtCore/QRegularExpression>
#include <QtCore/QThread>
#include <QtTest/QTest>

#include <cstdint>
#include <memory>
#include <utility>
#include <vector>

using namespace Charts;
using namespace Qt::StringLiterals;

namespace {

/*! One pixel of the chart; counts how often it is asked for its data. */
class CountedTrace : public PixelTrace
{
public:
    CountedTrace(const QSize &size, int index)
        : PixelTrace(size, DrawType::Points, 1.0F, Qt::red)
        , m_width(size.width())
    {
        placeAt(index);
        data.clearDirty(); // each would cost a frame of its own
    }

    /*! Row by row from the lowest. */
    void placeAt(int index)
    {
        setPoints(std::vector<QPointF>{{index % m_width + 0.5, index / m_width + 0.5}});
    }
    TraceData *traceData() override
    {
        ++asked;
        return PixelTrace::traceData();
    }

    static inline std::atomic<std::int64_t> asked = 0;

private:
    int m_width;
};

struct Costs
{
    std::int64_t updates = 0;
    std::int64_t asked = 0;
    std::int64_t draws = 0;
    std::int64_t uploads = 0;
    std::int64_t allocations = 0;
    std::int64_t objects = 0;
};

} // namespace

/*! More entries and more traces than any chart should have. */
class tst_HostileCounts : public QObject
{
    Q_OBJECT

public:
    static void initMain() { Graphics::setUp(); }

private Q_SLOTS:
    void init();
    void cleanup();

    void oneTraceAThousandTimes();
    void thousandsOfTraces();

private:
    static constexpr QSize size = {200, 100};
};

void tst_HostileCounts::init()
{
    QTest::failOnWarning(QRegularExpression(u".*"_s));
}

void tst_HostileCounts::cleanup()
{
    QCOMPARE(GlProbe::takeErrors(), QStringList());
    QCOMPARE(GlProbe::liveObjects(), QStringList());
}

void tst_HostileCounts::oneTraceAThousandTimes()
{
    struct Listed
    {
        std::unique_ptr<CountedTrace> trace;
        int times = 0;
        std::atomic<bool> isRunning = false;
        std::atomic<int> besideItself = 0;
    };
    constexpr int thousand = 1000;
    Listed often;
    Listed half;
    Listed once;
    often.times = thousand;
    half.times = thousand / 2;
    once.times = 1;

    ChartWindow window(size);
    Chart &chart = *window.chart();
    int index = 0;
    for (Listed *listed : {&often, &half, &once}) {
        listed->trace = std::make_unique<CountedTrace>(size, index++);
        listed->trace->onUpdate = [listed] {
            if (listed->isRunning.exchange(true))
                ++listed->besideItself;
            QThread::yieldCurrentThread();
            listed->isRunning = false;
        };
    }
    for (int i = 0; i < thousand; ++i) {
        for (Listed *listed : {&often, &half, &once}) {
            if (i < listed->times)
                chart.addTrace(listed->trace.get());
        }
    }
    const auto checkUpdates = [&] {
        for (const Listed *listed : {&often, &half, &once})
            listed->trace->updateCount = 0;
        chart.updateTraces();
        for (const Listed *listed : {&often, &half, &once}) {
            QCOMPARE(listed->trace->updateCount.load(), listed->times);
            QCOMPARE(listed->besideItself.load(), 0);
        }
    };
    for (int i = 0; i < rounds(3, 200); ++i) {
        checkUpdates();
        if (QTest::currentTestFailed())
            return;
    }

    // Drawn as often as listed, from one buffer each.
    QVERIFY2(window.start(), window.error());
    once.trace->data.dirtyRange().push({0, 1});
    auto before = GlProbe::totals();
    QVERIFY2(window.frame(), window.error());
    auto after = GlProbe::totals();
    QCOMPARE(after.drawCalls - before.drawCalls, thousand + thousand / 2 + 1);
    QCOMPARE(after.uploads - before.uploads, 1);
    QCOMPARE(GlProbe::liveObjects().filter(QRegularExpression(u"^buffer"_s)).size(), 3);

    // Every removal takes one entry.
    for (; often.times > thousand / 4; --often.times)
        chart.removeTrace(often.trace.get());
    checkUpdates();
    QVERIFY(chart.includes(often.trace.get()));

    // Destroyed, all the others go at once: what is listed last is the one trace that is left.
    AbstractTrace *address = often.trace.get();
    often.trace.reset();
    QVERIFY(!chart.includes(address));
    half.trace->disconnect();
    half.trace.reset();
    once.trace->updateCount = 0;
    chart.updateTraces();
    QCOMPARE(once.trace->updateCount.load(), 1);
    once.trace->data.dirtyRange().push({0, 1});
    before = GlProbe::totals();
    QVERIFY2(window.frame(), window.error());
    after = GlProbe::totals();
    QCOMPARE(after.drawCalls - before.drawCalls, 1);
    QCOMPARE(GlProbe::liveObjects().filter(QRegularExpression(u"^buffer"_s)).size(), 1);
    chart.removeTrace(once.trace.get());
    chart.updateTraces();
    QCOMPARE(once.trace->updateCount.load(), 2);
}

namespace {

/*! So many traces in a chart, one a pixel, and what each step of their life costs. */
class Crowd
{
public:
    explicit Crowd(int count)
        : m_count(count)
        , m_window(size)
    {
        QElapsedTimer timer;
        timer.start();
        for (int i = 0; i < count; ++i) {
            m_traces.push_back(std::make_unique<CountedTrace>(size, i));
            AbstractTrace &trace = *m_traces.back();
            QObject::connect(&trace, &AbstractTrace::hovered, m_window.chart(),
                    [this, i](ChartMouseEvent *, bool state) {
                        if (state)
                            m_hovered.append(i);
                    });
        }
        note(timer, "make");
    }

    /*! Goes through all of it; false with \a error() set when something is not as it should be. */
    bool run() { return add() && rest() && hover() && changeZ() && destroy(); }

    [[nodiscard]] const char *error() const { return m_error.constData(); }
    [[nodiscard]] const QString &times() const { return m_times; }
    [[nodiscard]] const std::vector<std::pair<const char *, Costs>> &costs() const
    {
        return m_costs;
    }

private:
    static constexpr QSize size = {200, 100};

    bool fail(const QString &what)
    {
        m_error = what.toUtf8();
        return false;
    }
    bool expect(const char *what, std::int64_t actual, std::int64_t expected)
    {
        return actual == expected
               || fail(QStringLiteral("%1 traces, %2: %3 instead of %4")
                               .arg(m_count)
                               .arg(QLatin1StringView(what))
                               .arg(actual)
                               .arg(expected));
    }
    void note(const QElapsedTimer &timer, const char *what)
    {
        m_times += QStringLiteral(" %1 %2 ms,").arg(QLatin1StringView(what)).arg(timer.elapsed());
    }
    template<typename Step>
    bool measure(const char *what, Step &&step)
    {
        const auto before = GlProbe::totals();
        const int objects = GlProbe::objectsMade();
        for (auto &trace : m_traces) {
            if (trace)
                trace->updateCount = 0;
        }
        CountedTrace::asked = 0;
        QElapsedTimer timer;
        timer.start();
        if (!step())
            return m_error.isEmpty() ? fail(QString::fromUtf8(m_window.error())) : false;
        note(timer, what);
        const auto after = GlProbe::totals();
        Costs costs = {.asked = CountedTrace::asked,
                .draws = after.drawCalls - before.drawCalls,
                .uploads = after.uploads - before.uploads,
                .allocations = after.allocations - before.allocations,
                .objects = GlProbe::objectsMade() - objects};
        for (auto &trace : m_traces)
            costs.updates += trace ? trace->updateCount.load() : 0;
        m_costs.emplace_back(what, costs);
        return true;
    }
    [[nodiscard]] const Costs &last() const { return m_costs.back().second; }

    bool add()
    {
        return measure("add",
                       [this] {
                           for (auto &trace : m_traces)
                               m_window.chart()->addTrace(trace.get());
                           return true;
                       })
               && measure("first frame", [this] { return m_window.start() && m_window.frame(); })
               && expect("draws of the first frames", last().draws % m_count, 0)
               && expect("uploads of the first frames", last().uploads, m_count)
               && expect("allocations of the first frames", last().allocations, m_count);
    }
    bool rest()
    {
        return measure("frame at rest", [this] { return m_window.frame(); })
               && expect("updates at rest", last().updates, m_count)
               && expect("draws at rest", last().draws, 0)
               && measure("frame with one change",
                       [this] {
                           m_traces[0]->data.dirtyRange().push({0, 1});
                           return m_window.frame();
                       })
               && expect("draws after a change", last().draws, m_count)
               && expect("uploads after a change", last().uploads, 1);
    }
    /*! Moves over some of the traces, first and last among them. */
    bool hover()
    {
        QList<int> expected;
        return measure("twenty moves",
                       [&] {
                           m_traces[0]->data.dirtyRange().push({0, 1});
                           for (int i = 0; i < 20; ++i) {
                               const int index = int(std::int64_t{m_count - 1} * i / 19);
                               expected.append(index);
                               moveTo(index);
                           }
                           return m_window.answerEvents();
                       })
               && expect("draws for moves", last().draws, 2 * m_count)
               && (std::exchange(m_hovered, {}) == expected
                       || fail(u"other traces than those under the pointer"_s));
    }
    /*! Lets some traces climb over others, into whose pixels they go. */
    bool changeZ()
    {
        QList<int> expected;
        return measure("new z of every tenth",
                       [this] {
                           for (int i = 0; i < m_count; i += 10)
                               m_traces[std::size_t(i)]->setZ(double(i) * 7919.0);
                           return true;
                       })
               && measure("twenty z up and down",
                       [&] {
                           for (int i = 0; i < 20; ++i) {
                               const int low = i;
                               const int high = m_count - 2 - 2 * i; // not where the pointer is
                               m_traces[std::size_t(low)]->placeAt(high);
                               m_traces[std::size_t(low)]->setZ(1e9 + i);
                               expected.append(low);
                               moveTo(high);
                           }
                           return m_window.answerEvents();
                       })
               && expect("draws for new z", last().draws, 2 * m_count)
               && (std::exchange(m_hovered, {}) == expected
                       || fail(u"not the traces that climbed are on top"_s));
    }
    bool destroy()
    {
        return measure("cut off and destroy one",
                       [this] {
                           m_traces[1]->disconnect();
                           m_traces[1].reset();
                           m_window.chart()->updateTraces();
                           return true;
                       })
               && expect("updates without it", last().updates, m_count - 1)
               && measure("destroy two of three",
                       [this] {
                           for (std::size_t i = 0; i < m_traces.size(); ++i) {
                               if (i % 3 != 0)
                                   m_traces[i].reset();
                           }
                           return true;
                       })
               && measure("frame without them", [this] { return m_window.frame(); })
               && expect("draws without them", last().draws, (m_count + 2) / 3)
               && expect("buffers that are left", buffers(), (m_count + 2) / 3)
               && measure("cut off and destroy the rest",
                       [this] {
                           for (auto &trace : m_traces) {
                               if (trace)
                                   trace->disconnect();
                               trace.reset();
                           }
                           return true;
                       })
               && measure("last frame", [this] { return m_window.frame(); })
               && expect("draws in the end", last().draws, 0)
               && expect("buffers in the end", buffers(), 0);
    }
    void moveTo(int index)
    {
        const QPointF position(index % size.width(), size.height() - index / size.width());
        HoverInput(QEvent::HoverMove, position).sendTo(*m_window.chart());
    }
    static std::int64_t buffers()
    {
        return GlProbe::liveObjects().filter(QRegularExpression(u"^buffer"_s)).size();
    }

    int m_count;
    ChartWindow m_window;
    std::vector<std::unique_ptr<CountedTrace>> m_traces;
    QList<int> m_hovered;
    std::vector<std::pair<const char *, Costs>> m_costs;
    QString m_times;
    QByteArray m_error;
};

} // namespace

void tst_HostileCounts::thousandsOfTraces()
{
    const int few = rounds(100, 1000);
    constexpr int factor = 10;
    Crowd small(few);
    QVERIFY2(small.run(), small.error());
    Crowd large(factor * few);
    QVERIFY2(large.run(), large.error());

    // Ten times the traces cost ten times the work.
    QCOMPARE(large.costs().size(), small.costs().size());
    for (std::size_t i = 0; i < small.costs().size(); ++i) {
        const auto &[what, less] = small.costs()[i];
        const Costs &more = large.costs()[i].second;
        for (const auto cost : {&Costs::updates, &Costs::asked, &Costs::draws, &Costs::uploads,
                     &Costs::allocations, &Costs::objects}) {
            // The shapes of a chart's own few objects come on top.
            QVERIFY2(more.*cost <= factor * (less.*cost + 20), what);
        }
    }
    if (rounds(0, 1) == 1) {
        qInfo("%d traces:%s", few, qPrintable(small.times()));
        qInfo("%d traces:%s", factor * few, qPrintable(large.times()));
    }
}

QTEST_MAIN(tst_HostileCounts)

#include "tst_hostilecounts.moc"
