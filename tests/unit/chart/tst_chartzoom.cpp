// SPDX-License-Identifier: MIT
#include "TestTrace.h"

#include <ChartsLibrary/Chart.h>
#include <ChartsLibrary/TraceDomain.h>
#include <ChartsLibrary/ZoomDelegate.h>

#include <QtCore/QRegularExpression>
#include <QtTest/QSignalSpy>
#include <QtTest/QTest>

#include <limits>
#include <memory>

using namespace Charts;
using namespace Qt::StringLiterals;

// Zoom by the chart's methods and properties, without a mouse.
class tst_ChartZoom : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();

    void zoomIn();
    void zoomInFurther();
    void zoomInSignals();
    void zoomInWithoutTraces();
    void zoomInAppliesToAnyRectangle_data();
    void zoomInAppliesToAnyRectangle();
    void roundTracesStay();
    void byName();

    void zoomReset();
    void zoomResetSignals();
    void zoomResetWhenNotZoomed();

    void tracesThatCameLater();
    void tracesThatAreGone();

    void disablingResets();
    void enablingChangesNoZoom();
    void clearingTheRubberBandResets();
    void clearingNoRubberBandChangesNoZoom();
    void exchangingTheRubberBandKeepsZoom();
    void rubberBandStaysAsItIs();

    void handlerRemovesTheTrace();
    void handlerDestroysAnotherTrace();
    void handlerEmptiesTheChart();
    void handlerChangesTheOrder();
};

void tst_ChartZoom::init()
{
    QTest::failOnWarning(QRegularExpression(u".*"_s));
}

namespace {

const QRectF middle(50.0, 25.0, 100.0, 50.0);

/*! A chart of 200 x 100 pixels with three traces that show x from 0 to 10 and y from 0 to 5. */
struct Scene
{
    Scene()
    {
        chart.setSize(QSizeF(200.0, 100.0));
        for (auto &trace : traces) {
            trace = std::make_unique<TestTrace>();
            trace->setZ(double(&trace - traces.data()));
            trace->domain()->setRangeXY(0.0, 10.0, 0.0, 5.0);
            chart.addTrace(trace.get());
        }
    }

    [[nodiscard]] TraceDomain &domain(std::size_t i) const { return *traces.at(i)->domain(); }

    /*! Everything that happens to the chart and its traces from now on. */
    void logTo(QStringList &log)
    {
        QObject::connect(&chart, &Chart::isZoomedChanged, &chart, [&](bool zoomed) {
            log += zoomed && chart.isZoomed() ? u"isZoomed"_s : u"not isZoomed"_s;
        });
        QObject::connect(&chart, &Chart::zoomedIn, &chart, [&] { log += u"zoomedIn"_s; });
        QObject::connect(&chart, &Chart::isZoomEnabledChanged, &chart,
                [&] { log += chart.isZoomEnabled() ? u"enabled"_s : u"disabled"_s; });
        QObject::connect(&chart, &Chart::rubberBandChanged, &chart,
                [&](QQuickItem *item) { log += item ? u"rubberBand"_s : u"no rubberBand"_s; });
        for (std::size_t i = 0; i < traces.size(); ++i) {
            QObject::connect(&domain(i), &TraceDomain::zoomedChanged, &chart, [&, i](bool zoomed) {
                log += zoomed ? u"domain %1 zoomed"_s.arg(i) : u"domain %1 reset"_s.arg(i);
            });
        }
        // One of them, since they run in parallel.
        traces[0]->onUpdate = [&] { log += u"update"_s; };
    }

    Chart chart;
    std::array<std::unique_ptr<TestTrace>, 3> traces;
};

} // namespace

void tst_ChartZoom::zoomIn()
{
    Scene scene;
    scene.chart.zoomIn(middle);
    QVERIFY(scene.chart.isZoomed());
    for (std::size_t i = 0; i < 3; ++i) {
        QVERIFY(scene.domain(i).isZoomed());
        QCOMPARE(scene.domain(i).xRange(), Span(2.5, 7.5));
        QCOMPARE(scene.domain(i).yRange(), Span(1.25, 3.75));
        QCOMPARE(scene.domain(i).baseXRange(), Span(0.0, 10.0));
        QCOMPARE(scene.domain(i).baseYRange(), Span(0.0, 5.0));
        QCOMPARE(scene.traces.at(i)->updateCount.load(), 1);
    }
    QVERIFY2(!scene.chart.isZoomEnabled(), "zooming by mouse is another matter");
}

void tst_ChartZoom::zoomInFurther()
{
    Scene scene;
    QSignalSpy changes(&scene.chart, &Chart::isZoomedChanged);
    QSignalSpy zooms(&scene.chart, &Chart::zoomedIn);
    scene.chart.zoomIn(middle);
    scene.chart.zoomIn(middle);
    QCOMPARE(scene.domain(0).xRange(), Span(3.75, 6.25));
    QCOMPARE(scene.domain(0).yRange(), Span(1.875, 3.125));
    QCOMPARE(scene.domain(0).baseXRange(), Span(0.0, 10.0));
    QCOMPARE(changes.size(), 1);
    QCOMPARE(zooms.size(), 2);
    QCOMPARE(scene.traces[0]->updateCount.load(), 2);
}

void tst_ChartZoom::zoomInSignals()
{
    Scene scene;
    QStringList log;
    scene.logTo(log);
    scene.chart.zoomIn(middle);
    const QStringList expected{u"isZoomed"_s, u"domain 0 zoomed"_s, u"domain 1 zoomed"_s,
            u"domain 2 zoomed"_s, u"update"_s, u"zoomedIn"_s};
    QCOMPARE(log, expected);
}

void tst_ChartZoom::zoomInWithoutTraces()
{
    Chart chart;
    QSignalSpy changes(&chart, &Chart::isZoomedChanged);
    QSignalSpy zooms(&chart, &Chart::zoomedIn);
    chart.zoomIn(middle);
    QVERIFY(chart.isZoomed());
    QCOMPARE(changes, QList<QVariantList>{{true}});
    QCOMPARE(zooms.size(), 1);
}

void tst_ChartZoom::zoomInAppliesToAnyRectangle_data()
{
    QTest::addColumn<QRectF>("rect");
    QTest::addColumn<Span>("x");
    QTest::addColumn<Span>("y");

    QTest::newRow("outside") << QRectF(-200.0, -100.0, 600.0, 300.0) << Span(-10.0, 20.0)
                             << Span(-5.0, 10.0);
    QTest::newRow("a pixel") << QRectF(100.0, 50.0, 1.0, 1.0) << Span(5.0, 5.05) << Span(2.45, 2.5);
    QTest::newRow("empty") << QRectF(100.0, 50.0, 0.0, 0.0) << Span(5.0, 5.0) << Span(2.5, 2.5);
    QTest::newRow("null") << QRectF() << Span(0.0, 0.0) << Span(5.0, 5.0);
    QTest::newRow("turned round") << QRectF(150.0, 75.0, -100.0, -50.0) << Span(7.5, 2.5)
                                  << Span(3.75, 1.25);
    QTest::newRow("huge") << QRectF(0.0, 0.0, 2e20, 1e20) << Span(0.0, 1e19) << Span(-5e18, 5.0);
    // The range in force is no zoom for a domain, but is one for the chart.
    QTest::newRow("all") << QRectF(0.0, 0.0, 200.0, 100.0) << Span(0.0, 10.0) << Span(0.0, 5.0);
}

void tst_ChartZoom::zoomInAppliesToAnyRectangle()
{
    QFETCH(QRectF, rect);
    QFETCH(Span, x);
    QFETCH(Span, y);

    Scene scene;
    QSignalSpy zooms(&scene.chart, &Chart::zoomedIn);
    scene.chart.zoomIn(rect);
    QVERIFY(scene.chart.isZoomed());
    QCOMPARE(zooms.size(), 1);
    QCOMPARE(scene.domain(2).xRange(), x);
    QCOMPARE(scene.domain(2).yRange(), y);
    scene.chart.zoomReset();
    QCOMPARE(scene.domain(2).xRange(), Span(0.0, 10.0));
    QCOMPARE(scene.domain(2).yRange(), Span(0.0, 5.0));
}

void tst_ChartZoom::roundTracesStay()
{
    Scene scene;
    scene.domain(1).setFormat(TraceDomain::SmithFormat);
    scene.chart.zoomIn(middle);
    QVERIFY(scene.chart.isZoomed());
    QVERIFY(scene.domain(0).isZoomed());
    QVERIFY(!scene.domain(1).isZoomed());
    QCOMPARE(scene.domain(1).xRange(), Span(0.0, 10.0));
    QVERIFY(scene.domain(2).isZoomed());
}

void tst_ChartZoom::byName()
{
    Scene scene;
    QVERIFY(QMetaObject::invokeMethod(&scene.chart, "zoomIn", Q_ARG(QRectF, middle)));
    QVERIFY(scene.chart.property("isZoomed").toBool());
    QVERIFY(QMetaObject::invokeMethod(&scene.chart, "zoomReset"));
    QVERIFY(!scene.chart.property("isZoomed").toBool());
}

void tst_ChartZoom::zoomReset()
{
    Scene scene;
    scene.chart.zoomIn(middle);
    scene.chart.zoomIn(middle);
    scene.chart.zoomReset();
    QVERIFY(!scene.chart.isZoomed());
    for (std::size_t i = 0; i < 3; ++i) {
        QVERIFY(!scene.domain(i).isZoomed());
        QCOMPARE(scene.domain(i).xRange(), Span(0.0, 10.0));
        QCOMPARE(scene.domain(i).yRange(), Span(0.0, 5.0));
        QCOMPARE(scene.traces.at(i)->updateCount.load(), 3);
    }
}

void tst_ChartZoom::zoomResetSignals()
{
    Scene scene;
    scene.chart.zoomIn(middle);
    QStringList log;
    scene.logTo(log);
    scene.chart.zoomReset();
    const QStringList expected{u"not isZoomed"_s, u"domain 0 reset"_s, u"domain 1 reset"_s,
            u"domain 2 reset"_s, u"update"_s};
    QCOMPARE(log, expected);
}

void tst_ChartZoom::zoomResetWhenNotZoomed()
{
    Scene scene;
    scene.domain(1).zoomIn(Span(1.0, 2.0), Span(3.0, 4.0));
    QStringList log;
    scene.logTo(log);
    scene.chart.zoomReset();
    QCOMPARE(log, QStringList());
    QVERIFY2(scene.domain(1).isZoomed(), "the application's own zoom is left alone");
}

void tst_ChartZoom::tracesThatCameLater()
{
    Scene scene;
    scene.chart.zoomIn(middle);
    TestTrace late;
    late.domain()->setRangeXY(0.0, 10.0, 0.0, 5.0);
    scene.chart.addTrace(&late);
    QVERIFY(!late.domain()->isZoomed());
    QCOMPARE(late.domain()->xRange(), Span(0.0, 10.0));

    scene.chart.zoomReset();
    QCOMPARE(late.domain()->xRange(), Span(0.0, 10.0));
    QCOMPARE(late.updateCount.load(), 1);
}

void tst_ChartZoom::tracesThatAreGone()
{
    Scene scene;
    scene.chart.zoomIn(middle);
    scene.chart.removeTrace(scene.traces[1].get());
    scene.chart.zoomReset();
    QVERIFY(scene.domain(1).isZoomed());
    QCOMPARE(scene.domain(1).xRange(), Span(2.5, 7.5));
    QCOMPARE(scene.traces[1]->updateCount.load(), 1);
}

void tst_ChartZoom::disablingResets()
{
    Scene scene;
    scene.chart.setIsZoomEnabled(true);
    scene.chart.zoomIn(middle);
    QStringList log;
    scene.logTo(log);
    scene.chart.setIsZoomEnabled(false);
    const QStringList expected{u"disabled"_s, u"not isZoomed"_s, u"domain 0 reset"_s,
            u"domain 1 reset"_s, u"domain 2 reset"_s, u"update"_s};
    QCOMPARE(log, expected);
}

void tst_ChartZoom::enablingChangesNoZoom()
{
    Scene scene;
    scene.chart.zoomIn(middle);
    QStringList log;
    scene.logTo(log);
    scene.chart.setIsZoomEnabled(false); // as it is
    scene.chart.setIsZoomEnabled(true);
    QCOMPARE(log, QStringList{u"enabled"_s});
    QVERIFY(scene.chart.isZoomed());
}

void tst_ChartZoom::clearingTheRubberBandResets()
{
    Scene scene;
    ZoomDelegate rubberBand;
    scene.chart.setRubberBand(&rubberBand);
    scene.chart.zoomIn(middle);
    QStringList log;
    scene.logTo(log);
    QList<ZoomDelegate *> during;
    connect(&scene.chart, &Chart::isZoomedChanged, &scene.chart,
            [&] { during += scene.chart.rubberBand(); });
    scene.chart.setRubberBand(nullptr);
    const QStringList expected{u"not isZoomed"_s, u"domain 0 reset"_s, u"domain 1 reset"_s,
            u"domain 2 reset"_s, u"update"_s, u"no rubberBand"_s};
    QCOMPARE(log, expected);
    QCOMPARE(during, QList<ZoomDelegate *>{&rubberBand});
    QCOMPARE(scene.chart.rubberBand(), nullptr);
}

void tst_ChartZoom::clearingNoRubberBandChangesNoZoom()
{
    Scene scene;
    scene.chart.zoomIn(middle);
    QStringList log;
    scene.logTo(log);
    scene.chart.setRubberBand(nullptr);
    QCOMPARE(log, QStringList());
    QVERIFY(scene.chart.isZoomed());
}

void tst_ChartZoom::exchangingTheRubberBandKeepsZoom()
{
    Scene scene;
    ZoomDelegate first;
    ZoomDelegate second;
    scene.chart.zoomIn(middle);
    QStringList log;
    scene.logTo(log);
    scene.chart.setRubberBand(&first);
    scene.chart.setRubberBand(&second);
    QCOMPARE(log, QStringList({u"rubberBand"_s, u"rubberBand"_s}));
    QVERIFY(scene.chart.isZoomed());
}

void tst_ChartZoom::rubberBandStaysAsItIs()
{
    Scene scene;
    ZoomDelegate rubberBand(&scene.chart);
    rubberBand.setPosition(QPointF(1.0, 2.0));
    rubberBand.setSize(QSizeF(3.0, 4.0));
    scene.chart.setRubberBand(&rubberBand);
    scene.chart.zoomIn(middle);
    scene.chart.zoomReset();
    QVERIFY(rubberBand.isVisible());
    QCOMPARE(rubberBand.resizeArea(), QRectF(1.0, 2.0, 3.0, 4.0));
}

void tst_ChartZoom::handlerRemovesTheTrace()
{
    Scene scene;
    connect(&scene.domain(0), &TraceDomain::zoomedChanged, &scene.chart,
            [&] { scene.chart.removeTrace(scene.traces[0].get()); });
    scene.chart.zoomIn(middle);
    // The ones that are still there are zoomed all the same.
    for (std::size_t i = 1; i < 3; ++i) {
        QCOMPARE(scene.domain(i).xRange(), Span(2.5, 7.5));
        QCOMPARE(scene.traces.at(i)->updateCount.load(), 1);
    }
    QCOMPARE(scene.traces[0]->updateCount.load(), 0);
}

void tst_ChartZoom::handlerDestroysAnotherTrace()
{
    Scene scene;
    connect(&scene.domain(0), &TraceDomain::zoomedChanged, &scene.chart,
            [&] { scene.traces[1].reset(); });
    scene.chart.zoomIn(middle);
    QCOMPARE(scene.domain(0).xRange(), Span(2.5, 7.5));
    QCOMPARE(scene.domain(2).xRange(), Span(2.5, 7.5));
    scene.chart.zoomReset();
    QCOMPARE(scene.domain(2).xRange(), Span(0.0, 10.0));
}

void tst_ChartZoom::handlerEmptiesTheChart()
{
    Scene scene;
    QSignalSpy zooms(&scene.chart, &Chart::zoomedIn);
    connect(&scene.chart, &Chart::isZoomedChanged, &scene.chart, [&] {
        for (auto &trace : scene.traces)
            trace.reset();
    });
    scene.chart.zoomIn(middle);
    QVERIFY(scene.chart.isZoomed());
    QCOMPARE(zooms.size(), 1);
    scene.chart.zoomReset();
    QVERIFY(!scene.chart.isZoomed());
}

void tst_ChartZoom::handlerChangesTheOrder()
{
    Scene scene;
    connect(&scene.domain(0), &TraceDomain::zoomedChanged, &scene.chart,
            [&] { scene.traces[0]->setZ(1.5); });
    scene.chart.zoomIn(middle);
    // Each once, wherever it stands by now.
    for (std::size_t i = 0; i < 3; ++i)
        QCOMPARE(scene.domain(i).xRange(), Span(2.5, 7.5));
}

QTEST_MAIN(tst_ChartZoom)

#include "tst_chartzoom.moc"
