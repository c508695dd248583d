// SPDX-License-Identifier: MIT
#include "TestTrace.h"

#include <ChartsLibrary/Chart.h>
#include <ChartsLibrary/TraceDomain.h>

#include <QtCore/QRegularExpression>
#include <QtCore/QSet>
#include <QtTest/QSignalSpy>
#include <QtTest/QTest>

#include <algorithm>
#include <cmath>
#include <limits>
#include <memory>

using namespace Charts;
using namespace Qt::StringLiterals;

// How traces get into the chart and out of it, and in which order it keeps them.
class tst_ChartTraces : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();

    void addedTraceIsListed();
    void nullIsIgnored();
    void traceIsNotOwned();
    void addedTwice();
    void removeUnknown();
    void removalKeepsTheOthers();
    void addedAgain();

    void removalDropsApplicationConnections();
    void removalKeepsOtherConnections();
    void removalOfUnknownKeepsConnections();
    void removalReachesOtherCharts();

    void destroyedTrace_data();
    void destroyedTrace();
    void destroyedAfterRemoval();
    void destroyedAfterTheChart();

    void sortedByZ_data();
    void sortedByZ();
    void resortTraces();
    void zChangeSortsAtOnce();
    void equalZ();
    void notANumber();
};

void tst_ChartTraces::init()
{
    QTest::failOnWarning(QRegularExpression(u".*"_s));
}

namespace {

/*! How many entries of the chart's list are \a trace. */
int listings(Chart &chart, TestTrace &trace)
{
    const int before = trace.updateCount;
    chart.updateTraces();
    return trace.updateCount - before;
}

/*! Traces named after their place, whose order in a chart's list can be read. */
class Traces
{
public:
    explicit Traces(const QList<double> &zs)
    {
        for (const double z : zs) {
            auto trace = std::make_unique<TestTrace>();
            trace->setZ(z);
            trace->domain()->setRangeXY(0.0, 1.0, 0.0, 1.0);
            m_traces.push_back(std::move(trace));
        }
    }

    [[nodiscard]] TestTrace &at(int i) { return *m_traces.at(static_cast<std::size_t>(i)); }

    void addTo(Chart &chart)
    {
        chart.setSize(QSizeF(100.0, 100.0));
        for (const auto &trace : m_traces)
            chart.addTrace(trace.get());
    }

    /*! Zooming goes through the list from front to back, and each domain tells when it has come to
        its turn. */
    [[nodiscard]] QList<int> order(Chart &chart)
    {
        QList<int> order;
        QObject context;
        for (int i = 0; i < static_cast<int>(m_traces.size()); ++i) {
            QObject::connect(at(i).domain(), &TraceDomain::xRangeChanged, &context,
                    [&order, i] { order += i; });
        }
        chart.zoomIn(QRectF(25.0, 25.0, 50.0, 50.0));
        return order;
    }

private:
    std::vector<std::unique_ptr<TestTrace>> m_traces;
};

} // namespace

void tst_ChartTraces::addedTraceIsListed()
{
    Chart chart;
    TestTrace trace;
    TestTrace other;
    chart.addTrace(&trace);
    QVERIFY(chart.includes(&trace));
    QVERIFY(!chart.includes(&other));
    QVERIFY(!chart.includes(nullptr));
    QCOMPARE(listings(chart, trace), 1);
    QCOMPARE(listings(chart, other), 0);
}

void tst_ChartTraces::nullIsIgnored()
{
    Chart chart;
    chart.addTrace(nullptr);
    QVERIFY(!chart.includes(nullptr));
    chart.removeTrace(nullptr);
    TestTrace trace;
    chart.addTrace(&trace);
    chart.removeTrace(nullptr);
    chart.resortTraces();
    QCOMPARE(listings(chart, trace), 1);
}

void tst_ChartTraces::traceIsNotOwned()
{
    TestTrace trace;
    QSignalSpy destructions(&trace, &QObject::destroyed);
    auto chart = std::make_unique<Chart>();
    chart->addTrace(&trace);
    QCOMPARE(trace.parent(), nullptr);
    chart.reset();
    QCOMPARE(destructions.size(), 0);
    trace.setZ(1.0);
}

void tst_ChartTraces::addedTwice()
{
    Chart chart;
    TestTrace trace;
    chart.addTrace(&trace);
    chart.addTrace(&trace);
    QCOMPARE(listings(chart, trace), 2);

    chart.removeTrace(&trace);
    QVERIFY(chart.includes(&trace));
    QCOMPARE(listings(chart, trace), 1);

    chart.removeTrace(&trace);
    QVERIFY(!chart.includes(&trace));
    QCOMPARE(listings(chart, trace), 0);
}

void tst_ChartTraces::removeUnknown()
{
    Chart chart;
    TestTrace listed;
    TestTrace unknown;
    chart.removeTrace(&unknown);
    chart.addTrace(&listed);
    chart.removeTrace(&unknown);
    QCOMPARE(listings(chart, listed), 1);
    QCOMPARE(listings(chart, unknown), 0);
}

void tst_ChartTraces::removalKeepsTheOthers()
{
    Chart chart;
    Traces traces({1.0, 2.0, 3.0, 4.0});
    traces.addTo(chart);
    chart.removeTrace(&traces.at(1));
    QCOMPARE(traces.order(chart), QList<int>({0, 2, 3}));
}

void tst_ChartTraces::addedAgain()
{
    Chart chart;
    Traces traces({1.0, 2.0});
    traces.addTo(chart);
    chart.removeTrace(&traces.at(0));
    chart.addTrace(&traces.at(0));

    // Listens to z as it did before.
    traces.at(0).setZ(3.0);
    QCOMPARE(traces.order(chart), QList<int>({1, 0}));
}

void tst_ChartTraces::removalDropsApplicationConnections()
{
    Chart chart;
    auto trace = std::make_unique<TestTrace>();
    QSignalSpy zChanges(trace.get(), &AbstractTrace::zChanged);
    QSignalSpy destructions(trace.get(), &QObject::destroyed);

    chart.addTrace(trace.get());
    trace->setZ(1.0);
    QCOMPARE(zChanges.size(), 1);

    chart.removeTrace(trace.get());
    trace->setZ(2.0);
    QCOMPARE(zChanges.size(), 1);
    trace.reset();
    QCOMPARE(destructions.size(), 0);
}

void tst_ChartTraces::removalKeepsOtherConnections()
{
    Chart chart;
    TestTrace trace;
    QSignalSpy nameChanges(&trace, &AbstractTrace::nameChanged);
    QSignalSpy colorChanges(&trace, &AbstractTrace::colorChanged);
    QSignalSpy sizeChanges(trace.domain(), &TraceDomain::sizeChanged);
    chart.addTrace(&trace);
    chart.removeTrace(&trace);

    trace.setName(u"S11"_s);
    trace.setColor(Qt::red);
    trace.domain()->setSize(QSizeF(3.0, 4.0));
    QCOMPARE(nameChanges.size(), 1);
    QCOMPARE(colorChanges.size(), 1);
    QCOMPARE(sizeChanges.size(), 1);

    // Connections made afterwards are left alone.
    QSignalSpy zChanges(&trace, &AbstractTrace::zChanged);
    trace.setZ(1.0);
    QCOMPARE(zChanges.size(), 1);
}

void tst_ChartTraces::removalOfUnknownKeepsConnections()
{
    Chart chart;
    TestTrace trace;
    QSignalSpy zChanges(&trace, &AbstractTrace::zChanged);
    chart.removeTrace(&trace);
    trace.setZ(1.0);
    QCOMPARE(zChanges.size(), 1);
}

void tst_ChartTraces::removalReachesOtherCharts()
{
    Chart chart;
    Chart otherChart;
    Traces traces({1.0, 2.0});
    traces.addTo(chart);
    traces.addTo(otherChart);

    chart.removeTrace(&traces.at(0));
    QVERIFY(otherChart.includes(&traces.at(0)));
    // The connection of the other chart is gone too, so it does not hear of the new z.
    traces.at(0).setZ(3.0);
    QCOMPARE(traces.order(otherChart), QList<int>({0, 1}));
}

void tst_ChartTraces::destroyedTrace_data()
{
    QTest::addColumn<int>("times");
    QTest::newRow("listed once") << 1;
    QTest::newRow("listed twice") << 2;
    QTest::newRow("listed five times") << 5;
}

void tst_ChartTraces::destroyedTrace()
{
    QFETCH(int, times);

    Chart chart;
    TestTrace first;
    TestTrace last;
    last.setZ(2.0);
    auto trace = std::make_unique<TestTrace>();
    trace->setZ(1.0);
    chart.addTrace(&first);
    chart.addTrace(&last);
    for (int i = 0; i < times; ++i)
        chart.addTrace(trace.get());

    AbstractTrace *address = trace.get();
    trace.reset();
    QVERIFY(!chart.includes(address));
    QCOMPARE(listings(chart, first), 1);
    QCOMPARE(listings(chart, last), 1);
    last.setZ(-1.0);
}

void tst_ChartTraces::destroyedAfterRemoval()
{
    Chart chart;
    auto trace = std::make_unique<TestTrace>();
    chart.addTrace(trace.get());
    chart.removeTrace(trace.get());
    trace.reset();
    chart.updateTraces();
}

void tst_ChartTraces::destroyedAfterTheChart()
{
    auto trace = std::make_unique<TestTrace>();
    {
        Chart chart;
        chart.addTrace(trace.get());
        chart.addTrace(trace.get());
    }
    trace->setZ(4.0);
    trace.reset();
}

void tst_ChartTraces::sortedByZ_data()
{
    QTest::addColumn<QList<double>>("zs");
    QTest::addColumn<QList<int>>("order");

    const double infinity = std::numeric_limits<double>::infinity();
    const double tiny = std::numeric_limits<double>::denorm_min();
    QTest::newRow("one") << QList<double>{7.0} << QList<int>{0};
    QTest::newRow("ascending") << QList<double>{1.0, 2.0, 3.0} << QList<int>{0, 1, 2};
    QTest::newRow("descending") << QList<double>{3.0, 2.0, 1.0} << QList<int>{2, 1, 0};
    QTest::newRow("negative") << QList<double>{0.0, -1.0, 1.0} << QList<int>{1, 0, 2};
    QTest::newRow("close together") << QList<double>{tiny, 0.0, -tiny} << QList<int>{2, 1, 0};
    QTest::newRow("infinite") << QList<double>{infinity, 1e308, -infinity, 0.0}
                              << QList<int>{2, 3, 1, 0};

    // More than a sort handles by insertion.
    QList<double> zs;
    QList<int> order;
    for (int i = 0; i < 50; ++i) {
        zs += double((i * 37) % 50);
        order += (i * 23) % 50; // 37 * 23 = 1 modulo 50
    }
    QTest::newRow("many") << zs << order;
}

void tst_ChartTraces::sortedByZ()
{
    QFETCH(QList<double>, zs);
    QFETCH(QList<int>, order);

    Chart chart;
    Traces traces(zs);
    traces.addTo(chart);
    QCOMPARE(traces.order(chart), order);
}

void tst_ChartTraces::resortTraces()
{
    Chart chart;
    chart.resortTraces();

    Traces traces({1.0, 2.0});
    traces.addTo(chart);
    {
        // A change that the chart does not hear of.
        const QSignalBlocker blocker(&traces.at(0));
        traces.at(0).setZ(3.0);
    }
    chart.resortTraces();
    QCOMPARE(traces.order(chart), QList<int>({1, 0}));
}

void tst_ChartTraces::zChangeSortsAtOnce()
{
    Chart chart;
    Traces traces({1.0, 2.0, 3.0});
    traces.addTo(chart);

    QList<int> order;
    connect(&traces.at(2), &AbstractTrace::zChanged, &chart, [&] { order = traces.order(chart); });
    traces.at(2).setZ(1.5);
    QCOMPARE(order, QList<int>({0, 2, 1}));
}

void tst_ChartTraces::equalZ()
{
    Chart chart;
    Traces traces({1.0, 0.0, 1.0, 2.0, 1.0});
    traces.addTo(chart);
    QList<int> order = traces.order(chart);
    QCOMPARE(order.size(), 5);
    QCOMPARE(order.first(), 1);
    QCOMPARE(order.last(), 3);
    QList<int> equals = order.mid(1, 3);
    std::sort(equals.begin(), equals.end()); // among themselves they have no order
    QCOMPARE(equals, QList<int>({0, 2, 4}));
}

void tst_ChartTraces::notANumber()
{
    const double nan = std::numeric_limits<double>::quiet_NaN();
    QList<double> zs;
    for (int i = 0; i < 40; ++i)
        zs += i % 3 == 0 ? nan : double(40 - i);

    Chart chart;
    Traces traces(zs);
    traces.addTo(chart);
    for (int i = 0; i < 40; ++i)
        traces.at(i).setZ(i % 4 == 0 ? nan : double(i));
    const QList<int> order = traces.order(chart);
    QCOMPARE(QSet<int>(order.cbegin(), order.cend()).size(), 40);

    // The others are in order, wherever these stand among them.
    QList<double> numbers;
    for (const int i : order) {
        if (!std::isnan(traces.at(i).z()))
            numbers += traces.at(i).z();
    }
    QCOMPARE(numbers.size(), 30);
    QVERIFY(std::is_sorted(numbers.cbegin(), numbers.cend()));
}

QTEST_MAIN(tst_ChartTraces)

#include "tst_charttraces.moc"
