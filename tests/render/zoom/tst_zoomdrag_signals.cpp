// SPDX-License-Identifier: MIT
#include "Graphics.h"
#include "ZoomWindow.h"

#include <QtCore/QRegularExpression>
#include <QtTest/QTest>

#include <array>

using namespace Charts;
using namespace Qt::StringLiterals;

/*! What a drag and the reset after it tell, and in which order. */
class tst_ZoomDragSignals : public QObject
{
    Q_OBJECT

public:
    static void initMain() { Graphics::setUp(); }

private Q_SLOTS:
    void init();

    void signalOrder();
    void dragOfAll();
    void withoutTraces();
    void traceLeaves_data();
    void traceLeaves();
    void resetWhenNotZoomed();
    void disabledWhileZoomed();
    void bandClearedWhileZoomed();
    void baseChangedWhileZoomed();
};

void tst_ZoomDragSignals::init()
{
    QTest::failOnWarning(QRegularExpression(QStringLiteral(".*")));
}

void tst_ZoomDragSignals::signalOrder()
{
    ZoomWindow window;
    QList<TestTrace *> traces;
    for (const double z : {3.0, 1.0, 2.0}) {
        traces.append(&window.addTrace({0.0, 200.0}, {0.0, 100.0}));
        traces.last()->setZ(z);
    }
    QVERIFY2(window.start(), window.error());
    // On threads of the pool, while this one waits.
    std::array<Span, 3> rangesInUpdate;
    for (std::size_t i = 0; i < 3; ++i) {
        TestTrace *trace = traces.at(static_cast<qsizetype>(i));
        trace->onUpdate = [trace, &range = rangesInUpdate.at(i)] {
            range = trace->domain()->xRange();
        };
    }
    connect(window.chart(), &Chart::isZoomedChanged, &window,
            [&] { window.note(window.chart()->isZoomed() ? u"is"_s : u"is not"_s); });
    connect(window.chart(), &Chart::zoomedIn, &window, [&] {
        for (std::size_t i = 0; i < 3; ++i) {
            window.note(
                    u"updated %1"_s.arg(traces.at(static_cast<qsizetype>(i))->updateCount.load()));
            QCOMPARE(
                    rangesInUpdate.at(i), traces.at(static_cast<qsizetype>(i))->domain()->xRange());
        }
    });
    (void)window.takeLog();

    window.mouse.press({50.0, 20.0});
    window.mouse.move({150.0, 70.0});
    QCOMPARE(window.takeLog(), QStringList{u"shown"_s});
    window.mouse.release({150.0, 70.0});
    // From the lowest trace to the highest one.
    QCOMPARE(window.takeLog(),
            QStringList({u"hidden"_s, u"zoomed"_s, u"is"_s, u"T1 zoomed"_s, u"T1 x"_s, u"T1 y"_s,
                    u"T2 zoomed"_s, u"T2 x"_s, u"T2 y"_s, u"T0 zoomed"_s, u"T0 x"_s, u"T0 y"_s,
                    u"zoomedIn"_s, u"updated 1"_s, u"updated 1"_s, u"updated 1"_s}));

    // Zoomed already, so that only the ranges change.
    window.mouse.drag({50.0, 20.0}, {150.0, 70.0});
    QCOMPARE(window.takeLog().mid(0, 8), QStringList({u"shown"_s, u"hidden"_s, u"T1 x"_s, u"T1 y"_s,
                                                 u"T2 x"_s, u"T2 y"_s, u"T0 x"_s, u"T0 y"_s}));
}

void tst_ZoomDragSignals::dragOfAll()
{
    ZoomWindow window;
    TestTrace &trace = window.addTrace({0.0, 10.0}, {0.0, 5.0});
    QVERIFY2(window.start(), window.error());
    (void)window.takeLog();
    window.mouse.drag({0.0, 0.0}, {300.0, 300.0});
    // The range in force is no zoom for a domain, but is one for the chart.
    QCOMPARE(window.takeLog(), QStringList({u"shown"_s, u"hidden"_s, u"zoomed"_s, u"zoomedIn"_s}));
    QVERIFY(window.chart()->isZoomed());
    QVERIFY(!trace.domain()->isZoomed());
    window.chart()->zoomReset();
    QCOMPARE(window.takeLog(), QStringList{u"reset"_s});
}

void tst_ZoomDragSignals::withoutTraces()
{
    ZoomWindow window;
    QVERIFY2(window.start(), window.error());
    (void)window.takeLog();
    window.mouse.drag({50.0, 25.0}, {150.0, 75.0});
    QCOMPARE(window.takeLog(), QStringList({u"shown"_s, u"hidden"_s, u"zoomed"_s, u"zoomedIn"_s}));
    window.mouse.drag({50.0, 25.0}, {150.0, 75.0});
    QCOMPARE(window.takeLog(), QStringList({u"shown"_s, u"hidden"_s, u"zoomedIn"_s}));
    window.chart()->zoomReset();
    QCOMPARE(window.takeLog(), QStringList{u"reset"_s});
}

void tst_ZoomDragSignals::traceLeaves_data()
{
    QTest::addColumn<bool>("isDestroyed");
    QTest::newRow("removed") << false;
    QTest::newRow("destroyed") << true;
}

void tst_ZoomDragSignals::traceLeaves()
{
    QFETCH(bool, isDestroyed);

    ZoomWindow window;
    TestTrace &leaving = window.addTrace({0.0, 200.0}, {0.0, 100.0});
    TestTrace &staying = window.addTrace({0.0, 200.0}, {0.0, 100.0});
    QVERIFY2(window.start(), window.error());
    (void)window.takeLog();
    window.mouse.press({50.0, 25.0});
    window.mouse.move({150.0, 75.0});
    if (isDestroyed)
        window.deleteTrace(0);
    else
        window.chart()->removeTrace(&leaving);
    window.mouse.release({150.0, 75.0});
    QCOMPARE(window.zoomCount, 1);
    QCOMPARE(window.takeLog().filter(u"T0"_s), QStringList());
    QCOMPARE(staying.domain()->xRange(), Span(50.0, 150.0));
    if (!isDestroyed)
        QCOMPARE(leaving.updateCount.load(), 0);
    window.chart()->zoomReset();
    QCOMPARE(window.takeLog().filter(u"T0"_s), QStringList());
    QCOMPARE(staying.domain()->xRange(), Span(0.0, 200.0));
}

void tst_ZoomDragSignals::resetWhenNotZoomed()
{
    ZoomWindow window;
    TestTrace &trace = window.addTrace({0.0, 200.0}, {0.0, 100.0});
    QVERIFY2(window.start(), window.error());
    window.mouse.drag({50.0, 25.0}, {150.0, 75.0});
    window.chart()->zoomReset();
    (void)window.takeLog();
    const int updates = trace.updateCount;
    window.chart()->zoomReset();
    QCOMPARE(window.takeLog(), QStringList());
    QCOMPARE(trace.updateCount.load(), updates);
}

void tst_ZoomDragSignals::disabledWhileZoomed()
{
    ZoomWindow window;
    window.addTrace({0.0, 200.0}, {0.0, 100.0});
    QVERIFY2(window.start(), window.error());
    window.mouse.drag({50.0, 25.0}, {150.0, 75.0});
    (void)window.takeLog();
    window.chart()->setIsZoomEnabled(false);
    const QStringList expected({u"disabled"_s, u"reset"_s, u"T0 reset"_s, u"T0 base x"_s, u"T0 x"_s,
            u"T0 base y"_s, u"T0 y"_s});
    QCOMPARE(window.takeLog(), expected);
    window.mouse.drag({50.0, 25.0}, {150.0, 75.0});
    QCOMPARE(window.takeLog(), QStringList());
}

void tst_ZoomDragSignals::bandClearedWhileZoomed()
{
    ZoomWindow window;
    window.addTrace({0.0, 200.0}, {0.0, 100.0});
    QVERIFY2(window.start(), window.error());
    window.mouse.drag({50.0, 25.0}, {150.0, 75.0});
    (void)window.takeLog();
    window.chart()->setRubberBand(nullptr);
    const QStringList expected({u"reset"_s, u"T0 reset"_s, u"T0 base x"_s, u"T0 x"_s,
            u"T0 base y"_s, u"T0 y"_s, u"rubber band cleared"_s});
    QCOMPARE(window.takeLog(), expected);
    window.mouse.drag({50.0, 25.0}, {150.0, 75.0});
    QCOMPARE(window.takeLog(), QStringList());
}

void tst_ZoomDragSignals::baseChangedWhileZoomed()
{
    ZoomWindow window;
    TestTrace &trace = window.addTrace({0.0, 200.0}, {0.0, 100.0});
    QVERIFY2(window.start(), window.error());
    window.mouse.drag({50.0, 25.0}, {150.0, 75.0});
    trace.domain()->setBaseRangeX(-7.0, 7.0);
    QCOMPARE(trace.domain()->xRange(), Span(50.0, 150.0));
    // A listener may still change it when the reset is under way.
    connect(trace.domain(), &TraceDomain::zoomedChanged, &window,
            [&] { trace.domain()->setBaseRangeY(1.0, 2.0); });
    window.chart()->zoomReset();
    QCOMPARE(trace.domain()->xRange(), Span(-7.0, 7.0));
    QCOMPARE(trace.domain()->yRange(), Span(1.0, 2.0));
}

QTEST_MAIN(tst_ZoomDragSignals)

#include "tst_zoomdrag_signals.moc"
