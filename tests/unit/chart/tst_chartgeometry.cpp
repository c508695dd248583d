// SPDX-License-Identifier: MIT
#include "TestTrace.h"

#include <ChartsLibrary/Chart.h>
#include <ChartsLibrary/TraceDomain.h>

#include <QtCore/QRegularExpression>
#include <QtTest/QSignalSpy>
#include <QtTest/QTest>

#include <limits>
#include <memory>

using namespace Charts;
using namespace Qt::StringLiterals;

// The chart's size and that of its traces' domains.
class tst_ChartGeometry : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();

    void sizeAtAddition_data();
    void sizeAtAddition();
    void resize_data();
    void resize();
    void moveKeepsSize();
    void sizedBeforeTheItemTells();
    void eachTraceOnce();
    void removedTraceKeepsSize();
    void handlerRemovesTheTrace();
    void handlerRemovesAnotherTrace();
};

void tst_ChartGeometry::init()
{
    QTest::failOnWarning(QRegularExpression(u".*"_s));
}

void tst_ChartGeometry::sizeAtAddition_data()
{
    QTest::addColumn<QSizeF>("size");
    QTest::newRow("plain") << QSizeF(120.0, 80.0);
    QTest::newRow("fractions") << QSizeF(100.5, 200.25);
    QTest::newRow("empty") << QSizeF(0.0, 0.0);
    QTest::newRow("no width") << QSizeF(0.0, 80.0);
    QTest::newRow("negative") << QSizeF(-1.0, 80.0);
    QTest::newRow("huge") << QSizeF(1e12, 1e300);
}

// At this point even an empty size is passed on.
void tst_ChartGeometry::sizeAtAddition()
{
    QFETCH(QSizeF, size);

    Chart chart;
    chart.setSize(size);
    TestTrace trace;
    trace.domain()->setSize(QSizeF(5.0, 6.0));
    chart.addTrace(&trace);
    QCOMPARE(trace.domain()->size(), size);
}

void tst_ChartGeometry::resize_data()
{
    QTest::addColumn<QSizeF>("size");
    QTest::addColumn<bool>("followed");

    const double nan = std::numeric_limits<double>::quiet_NaN();
    QTest::newRow("plain") << QSizeF(300.0, 200.0) << true;
    QTest::newRow("fractions") << QSizeF(0.25, 0.5) << true;
    QTest::newRow("width only") << QSizeF(300.0, 80.0) << true;
    QTest::newRow("height only") << QSizeF(120.0, 200.0) << true;
    QTest::newRow("huge") << QSizeF(1e300, 1e12) << true;
    QTest::newRow("empty") << QSizeF(0.0, 0.0) << false;
    QTest::newRow("no width") << QSizeF(0.0, 200.0) << false;
    QTest::newRow("no height") << QSizeF(300.0, 0.0) << false;
    QTest::newRow("negative width") << QSizeF(-300.0, 200.0) << false;
    QTest::newRow("negative height") << QSizeF(300.0, -200.0) << false;
    QTest::newRow("NaN") << QSizeF(nan, nan) << false;
}

void tst_ChartGeometry::resize()
{
    QFETCH(QSizeF, size);
    QFETCH(bool, followed);

    Chart chart;
    const QSizeF before(120.0, 80.0);
    chart.setSize(before);
    TestTrace first;
    TestTrace second;
    chart.addTrace(&first);
    chart.addTrace(&second);
    chart.setSize(size);
    QCOMPARE(first.domain()->size(), followed ? size : before);
    QCOMPARE(second.domain()->size(), followed ? size : before);

    chart.setSize(QSizeF(10.0, 20.0));
    QCOMPARE(first.domain()->size(), QSizeF(10.0, 20.0));
    QCOMPARE(second.domain()->size(), QSizeF(10.0, 20.0));
}

void tst_ChartGeometry::moveKeepsSize()
{
    Chart chart;
    chart.setSize(QSizeF(120.0, 80.0));
    TestTrace trace;
    chart.addTrace(&trace);
    QSignalSpy changes(trace.domain(), &TraceDomain::sizeChanged);
    chart.setPosition(QPointF(30.0, -40.0));
    QCOMPARE(trace.domain()->size(), QSizeF(120.0, 80.0));
    QCOMPARE(changes.size(), 0);
}

void tst_ChartGeometry::sizedBeforeTheItemTells()
{
    Chart chart;
    chart.setSize(QSizeF(120.0, 80.0));
    TestTrace trace;
    chart.addTrace(&trace);
    QSizeF seen;
    connect(&chart, &QQuickItem::widthChanged, &chart, [&] { seen = trace.domain()->size(); });
    chart.setWidth(60.0);
    QCOMPARE(seen, QSizeF(60.0, 80.0));
}

void tst_ChartGeometry::eachTraceOnce()
{
    Chart chart;
    TestTrace trace;
    chart.addTrace(&trace);
    chart.addTrace(&trace);
    QSignalSpy changes(trace.domain(), &TraceDomain::sizeChanged);
    chart.setSize(QSizeF(120.0, 80.0));
    QCOMPARE(changes.size(), 1);
    QCOMPARE(changes.first().first().toSizeF(), QSizeF(120.0, 80.0));
}

void tst_ChartGeometry::removedTraceKeepsSize()
{
    Chart chart;
    chart.setSize(QSizeF(120.0, 80.0));
    TestTrace trace;
    chart.addTrace(&trace);
    chart.removeTrace(&trace);
    chart.setSize(QSizeF(10.0, 20.0));
    QCOMPARE(trace.domain()->size(), QSizeF(120.0, 80.0));
}

void tst_ChartGeometry::handlerRemovesTheTrace()
{
    Chart chart;
    TestTrace first;
    TestTrace second;
    second.setZ(1.0);
    TestTrace third;
    third.setZ(2.0);
    for (TestTrace *trace : {&first, &second, &third})
        chart.addTrace(trace);
    connect(first.domain(), &TraceDomain::sizeChanged, &chart, [&] { chart.removeTrace(&first); });
    chart.setSize(QSizeF(120.0, 80.0));
    QVERIFY(!chart.includes(&first));
    QCOMPARE(second.domain()->size(), QSizeF(120.0, 80.0));
    QCOMPARE(third.domain()->size(), QSizeF(120.0, 80.0));
}

void tst_ChartGeometry::handlerRemovesAnotherTrace()
{
    Chart chart;
    TestTrace first;
    auto second = std::make_unique<TestTrace>();
    second->setZ(1.0);
    TestTrace third;
    third.setZ(2.0);
    for (TestTrace *trace : {&first, second.get(), &third})
        chart.addTrace(trace);
    connect(first.domain(), &TraceDomain::sizeChanged, &chart, [&] { second.reset(); });
    chart.setSize(QSizeF(120.0, 80.0));
    QCOMPARE(first.domain()->size(), QSizeF(120.0, 80.0));
    QCOMPARE(third.domain()->size(), QSizeF(120.0, 80.0));
}

QTEST_MAIN(tst_ChartGeometry)

#include "tst_chartgeometry.moc"
