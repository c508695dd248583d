// SPDX-License-Identifier: MIT
#include "Graphics.h"
#include "MouseLog.h"
#include "PixelTrace.h"
#include "ZoomWindow.h"

#include <QtCore/QRegularExpression>
#include <QtTest/QTest>

#include <functional>

using namespace Charts;
using namespace Qt::StringLiterals;

namespace {

using Action = std::function<void(ZoomWindow &)>;

} // namespace

Q_DECLARE_METATYPE(Action)

/*! What else starts, moves and ends a zoom drag, or does not. */
class tst_ZoomDragRules : public QObject
{
    Q_OBJECT

public:
    static void initMain() { Graphics::setUp(); }

private Q_SLOTS:
    void init();

    void plainMoves();
    void releaseDoesNotMove();
    void withoutMove();

    void notEnabled();
    void withoutBand();
    void disabledMeanwhile();
    void disabledMeanwhileZoomed();
    void enabledMeanwhile();

    void ungrabbed_data();
    void ungrabbed();
    void stolenByTheParent();
    void coveredByAnotherItem();
    void windowHidden();
    void takenOutOfTheWindow();

    void mouseSignals();
};

void tst_ZoomDragRules::init()
{
    QTest::failOnWarning(QRegularExpression(u".*"_s));
}

void tst_ZoomDragRules::plainMoves()
{
    ZoomWindow window;
    QVERIFY2(window.start(), window.error());
    window.mouse.drag({40.0, 30.0}, {60.0, 50.0});
    (void)window.takeLog();
    window.mouse.move({90.0, 70.0});
    window.mouse.move({20.0, 10.0});
    QCOMPARE(window.takeLog(), QStringList());
    QCOMPARE(window.bandRect(), QRectF(40.0, 30.0, 20.0, 20.0));
}

void tst_ZoomDragRules::releaseDoesNotMove()
{
    ZoomWindow window;
    TestTrace &trace = window.addTrace({0.0, 200.0}, {0.0, 100.0});
    QVERIFY2(window.start(), window.error());
    window.mouse.press({40.0, 30.0});
    window.mouse.move({60.0, 50.0});
    window.mouse.releaseWithoutMove({160.0, 90.0});
    QCOMPARE(window.bandRect(), QRectF(40.0, 30.0, 20.0, 20.0));
    QCOMPARE(trace.domain()->xRange(), Span(40.0, 60.0));
    QCOMPARE(trace.domain()->yRange(), Span(50.0, 70.0));
}

void tst_ZoomDragRules::withoutMove()
{
    ZoomWindow window;
    TestTrace &trace = window.addTrace({0.0, 200.0}, {0.0, 100.0});
    QVERIFY2(window.start(), window.error());
    window.mouse.press({40.0, 30.0});
    window.mouse.releaseWithoutMove({160.0, 90.0});
    QCOMPARE(window.zoomCount, 0);
    // A negative size is exceeded by none, too. Then a click zooms to its point.
    window.band()->setMinSize(-1);
    window.mouse.press({40.0, 30.0});
    window.mouse.release({40.0, 30.0});
    QCOMPARE(window.zoomCount, 1);
    QCOMPARE(trace.domain()->xRange(), Span(40.0, 40.0));
    QCOMPARE(trace.domain()->yRange(), Span(70.0, 70.0));
}

void tst_ZoomDragRules::notEnabled()
{
    ZoomWindow window;
    window.chart()->setIsZoomEnabled(false);
    QVERIFY2(window.start(), window.error());
    (void)window.takeLog();
    window.mouse.drag({40.0, 30.0}, {120.0, 80.0});
    QCOMPARE(window.takeLog(), QStringList());
    QCOMPARE(window.bandRect(), QRectF());

    window.chart()->setIsZoomEnabled(true);
    window.mouse.drag({40.0, 30.0}, {120.0, 80.0});
    QCOMPARE(window.zoomCount, 1);
}

void tst_ZoomDragRules::withoutBand()
{
    ZoomWindow window;
    TestTrace &trace = window.addTrace({0.0, 200.0}, {0.0, 100.0});
    window.chart()->setRubberBand(nullptr);
    QVERIFY2(window.start(), window.error());
    (void)window.takeLog();
    window.mouse.drag({40.0, 30.0}, {120.0, 80.0});
    QCOMPARE(window.takeLog(), QStringList());
    QCOMPARE(trace.updateCount.load(), 0);
}

void tst_ZoomDragRules::disabledMeanwhile()
{
    ZoomWindow window;
    QVERIFY2(window.start(), window.error());
    window.mouse.press({40.0, 30.0});
    (void)window.takeLog();
    window.chart()->setIsZoomEnabled(false);
    QCOMPARE(window.takeLog(), QStringList{u"disabled"_s});
    // What has begun goes to its end.
    window.mouse.move({60.0, 50.0});
    QCOMPARE(window.bandRect(), QRectF(40.0, 30.0, 20.0, 20.0));
    window.mouse.release({60.0, 50.0});
    QCOMPARE(window.takeLog(), QStringList({u"hidden"_s, u"zoomed"_s, u"zoomedIn"_s}));
    window.mouse.drag({40.0, 30.0}, {120.0, 80.0});
    QCOMPARE(window.takeLog(), QStringList());
}

void tst_ZoomDragRules::disabledMeanwhileZoomed()
{
    ZoomWindow window;
    TestTrace &trace = window.addTrace({0.0, 200.0}, {0.0, 100.0});
    QVERIFY2(window.start(), window.error());
    window.mouse.drag({50.0, 25.0}, {150.0, 75.0});
    window.mouse.press({40.0, 30.0});
    window.mouse.move({60.0, 50.0});
    window.chart()->setIsZoomEnabled(false);
    QCOMPARE(trace.domain()->xRange(), Span(0.0, 200.0));
    QVERIFY(window.isBandShown());
    window.mouse.release({60.0, 50.0});
    // The rectangle is one of the ranges that are in force by now.
    QCOMPARE(trace.domain()->xRange(), Span(40.0, 60.0));
    QVERIFY(window.chart()->isZoomed());
}

void tst_ZoomDragRules::enabledMeanwhile()
{
    ZoomWindow window;
    window.chart()->setIsZoomEnabled(false);
    QVERIFY2(window.start(), window.error());
    window.mouse.press({40.0, 30.0});
    window.mouse.move({50.0, 40.0});
    window.chart()->setIsZoomEnabled(true);
    (void)window.takeLog();
    window.mouse.move({60.0, 50.0});
    window.mouse.release({60.0, 50.0});
    QCOMPARE(window.takeLog(), QStringList());
    QCOMPARE(window.bandRect(), QRectF());
}

void tst_ZoomDragRules::ungrabbed_data()
{
    QTest::addColumn<Action>("lose");
    QTest::addColumn<Action>("restore");

    const Action nothing = [](ZoomWindow &) {};
    QTest::newRow("given up") << Action([](ZoomWindow &window) { window.chart()->ungrabMouse(); })
                              << nothing;
    QTest::newRow("chart disabled")
            << Action([](ZoomWindow &window) { window.chart()->setEnabled(false); })
            << Action([](ZoomWindow &window) { window.chart()->setEnabled(true); });
    QTest::newRow("parent disabled")
            << Action([](ZoomWindow &window) { window.chart()->parentItem()->setEnabled(false); })
            << Action([](ZoomWindow &window) { window.chart()->parentItem()->setEnabled(true); });
    QTest::newRow("chart invisible")
            << Action([](ZoomWindow &window) { window.chart()->setVisible(false); })
            << Action([](ZoomWindow &window) { window.chart()->setVisible(true); });
    QTest::newRow("parent invisible")
            << Action([](ZoomWindow &window) { window.chart()->parentItem()->setVisible(false); })
            << Action([](ZoomWindow &window) { window.chart()->parentItem()->setVisible(true); });
}

void tst_ZoomDragRules::ungrabbed()
{
    QFETCH(Action, lose);
    QFETCH(Action, restore);

    ZoomWindow window;
    // Not the window's own, which newer versions of Qt do not show again.
    QQuickItem parent(window.contentItem());
    window.chart()->setParentItem(&parent);
    QVERIFY2(window.start(), window.error());
    (void)window.takeLog();
    window.mouse.press({40.0, 30.0});
    window.mouse.move({60.0, 50.0});
    lose(window);
    QVERIFY(!window.isBandShown());
    restore(window);
    QVERIFY2(!window.isBandShown(), "it does not come back with its parent");
    window.mouse.move({90.0, 70.0});
    window.mouse.release({90.0, 70.0});
    QCOMPARE(window.bandRect(), QRectF(40.0, 30.0, 20.0, 20.0));
    QCOMPARE(window.takeLog(), QStringList({u"shown"_s, u"hidden"_s}));
    QVERIFY(!window.chart()->isZoomed());

    // The next one is as good as any.
    window.mouse.drag({10.0, 10.0}, {50.0, 40.0});
    QCOMPARE(window.bandRect(), QRectF(10.0, 10.0, 40.0, 30.0));
    QCOMPARE(window.zoomCount, 1);
}

void tst_ZoomDragRules::stolenByTheParent()
{
    /*! Takes the mouse from its children as soon as they drag far, as a list does to scroll. */
    class Thief : public QQuickItem
    {
    public:
        explicit Thief(QQuickItem *parent)
            : QQuickItem(parent)
        {
            setFiltersChildMouseEvents(true);
        }

    protected:
        bool childMouseEventFilter(QQuickItem *, QEvent *event) override
        {
            if (event->type() != QEvent::MouseMove
                    || static_cast<QMouseEvent *>(event)->position().x() < 100.0)
                return false;
            grabMouse();
            return true;
        }
    };

    ZoomWindow window;
    Thief thief(window.contentItem());
    window.chart()->setParentItem(&thief);
    QVERIFY2(window.start(), window.error());
    (void)window.takeLog();
    window.mouse.press({40.0, 30.0});
    window.mouse.move({99.0, 50.0});
    QVERIFY(window.isBandShown());
    window.mouse.move({101.0, 50.0});
    QVERIFY(!window.isBandShown());
    window.mouse.move({60.0, 50.0});
    window.mouse.release({60.0, 50.0});
    QCOMPARE(window.takeLog(), QStringList({u"shown"_s, u"hidden"_s}));
    QCOMPARE(window.bandRect(), QRectF(40.0, 30.0, 59.0, 20.0));
    window.chart()->setParentItem(window.contentItem());
}

void tst_ZoomDragRules::coveredByAnotherItem()
{
    ZoomWindow window;
    QQuickItem cover(window.contentItem());
    cover.setSize({100.0, 100.0});
    cover.setAcceptedMouseButtons(Qt::LeftButton);
    QVERIFY2(window.start(), window.error());
    (void)window.takeLog();
    // Plain items refuse what they are offered, and the chart below gets it.
    window.mouse.drag({40.0, 30.0}, {60.0, 50.0});
    QCOMPARE(window.zoomCount, 1);
    window.chart()->setX(100.0);
    window.mouse.drag({40.0, 30.0}, {160.0, 50.0});
    QCOMPARE(window.zoomCount, 1);
    window.mouse.drag({120.0, 30.0}, {40.0, 50.0});
    QCOMPARE(window.zoomCount, 2);
    QCOMPARE(window.bandRect(), QRectF(0.0, 30.0, 20.0, 20.0));
}

void tst_ZoomDragRules::windowHidden()
{
    ZoomWindow window;
    QVERIFY2(window.start(), window.error());
    (void)window.takeLog();
    window.mouse.press({40.0, 30.0});
    window.mouse.move({60.0, 50.0});
    // Hiding a window takes the mouse from none of its items, so that nothing ends the drag.
    window.hide();
    QVERIFY2(window.start(), window.error());
    QCOMPARE(window.zoomCount, 0);
    QCOMPARE(window.bandRect(), QRectF(40.0, 30.0, 20.0, 20.0));
    // Its release was lost with the window; the next press begins another one.
    window.mouse.press({10.0, 20.0});
    QCOMPARE(window.bandRect(), QRectF(10.0, 20.0, 0.0, 0.0));
    window.mouse.move({60.0, 50.0});
    window.mouse.release({60.0, 50.0});
    QVERIFY(!window.isBandShown());
    QCOMPARE(window.zoomCount, 1);
}

void tst_ZoomDragRules::takenOutOfTheWindow()
{
    ZoomWindow window;
    QVERIFY2(window.start(), window.error());
    window.mouse.press({40.0, 30.0});
    window.mouse.move({60.0, 50.0});
    window.chart()->setParentItem(nullptr);
    window.mouse.move({70.0, 60.0});
    window.chart()->setParentItem(window.contentItem());
    window.mouse.move({80.0, 70.0});
    window.mouse.release({80.0, 70.0});
    QVERIFY(!window.isBandShown());
    window.chart()->zoomReset();
    (void)window.takeLog();
    window.mouse.drag({10.0, 10.0}, {50.0, 40.0});
    QCOMPARE(window.takeLog(), QStringList({u"shown"_s, u"hidden"_s, u"zoomed"_s, u"zoomedIn"_s}));
    QCOMPARE(window.bandRect(), QRectF(10.0, 10.0, 40.0, 30.0));
}

void tst_ZoomDragRules::mouseSignals()
{
    ZoomWindow window;
    PixelTrace line({200, 100}, DrawType::LineStrip, 9.0F, Qt::red);
    line.setPoints(std::vector<QPointF>{{0.0, 50.5}, {200.0, 50.5}});
    window.chart()->addTrace(&line);
    MouseLog log;
    log.watch(*window.chart());
    log.watch(line, u"line"_s);
    QVERIFY2(window.start(), window.error());
    window.mouse.move({20.0, 20.0});
    QVERIFY2(window.answerEvents(), window.error());
    (void)log.take();

    // From beside the line onto it. Without OpenGL nobody finds traces, and no signal comes.
    window.mouse.press({40.0, 20.0});
    window.mouse.move({90.0, 30.0});
    window.mouse.move({120.0, 50.0});
    window.mouse.release({120.0, 50.0});
    QCOMPARE(window.zoomCount, 1);
    line.data.dirtyRange().push({0, 2});
    QVERIFY2(window.answerEvents(), window.error());
    QStringList signalsSeen = log.take();
    if (Graphics::isOpenGL()) {
        // The pointer has come to rest on the line, which is told as well, now or a frame later.
        signalsSeen.removeIf([](const QString &text) { return text.contains(u"hovered"_s); });
        QCOMPARE(signalsSeen,
                QStringList({u"chart pressed"_s, u"line released"_s, u"chart clicked"_s}));
    } else {
        QCOMPARE(signalsSeen, QStringList());
    }

    // A drag too small to zoom is a click like any other.
    window.band()->setMinSize(10);
    window.mouse.drag({120.0, 50.0}, {121.0, 51.0});
    QCOMPARE(window.zoomCount, 1);
    line.data.dirtyRange().push({0, 2});
    QVERIFY2(window.answerEvents(), window.error());
    signalsSeen = log.take();
    if (Graphics::isOpenGL()) {
        signalsSeen.removeIf([](const QString &text) { return text.contains(u"hovered"_s); });
        QCOMPARE(signalsSeen,
                QStringList({u"line pressed"_s, u"line released"_s, u"line clicked"_s}));
    } else {
        QCOMPARE(signalsSeen, QStringList());
    }
    window.chart()->removeTrace(&line);
}

QTEST_MAIN(tst_ZoomDragRules)

#include "tst_zoomdrag_rules.moc"
