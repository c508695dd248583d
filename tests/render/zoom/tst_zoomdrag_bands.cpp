// SPDX-License-Identifier: MIT
#include "Graphics.h"
#include "ZoomWindow.h"

#include <QtCore/QRegularExpression>
#include <QtTest/QSignalSpy>
#include <QtTest/QTest>

using namespace Charts;
using namespace Qt::StringLiterals;

/*! The rubber band is the application's: it shows, hides, exchanges and deletes it when it likes.
    Whether a drag is under way is whether the band is visible. */
class tst_ZoomDragBands : public QObject
{
    Q_OBJECT

public:
    static void initMain() { Graphics::setUp(); }

private Q_SLOTS:
    void init();

    void visibleFromTheStart();
    void shownByTheApplication();
    void shownByTheApplicationMeanwhile();
    void anotherButtonMovesWhatIsShown();
    void hiddenByTheApplication();
    void inAnInvisibleParent();

    void exchanged();
    void exchangedForAVisibleOne();
    void clearedAndSetAgain();
    void deleted();
    void deletedWhileZoomed();
    void sharedByTwoCharts();

    void deletedWhenHidden();
    void clearedWhenHidden();
    void resetWhenZoomed();
    void resizedByTheApplication();
};

void tst_ZoomDragBands::init()
{
    QTest::failOnWarning(QRegularExpression(u".*"_s));
}

void tst_ZoomDragBands::visibleFromTheStart()
{
    ZoomWindow window;
    auto *band = new ZoomDelegate(window.chart());
    band->setPosition({5.0, 6.0});
    band->setSize({7.0, 8.0});
    window.chart()->setRubberBand(band);
    QVERIFY2(band->isVisible(), "nobody has hidden it");
    QVERIFY2(window.start(), window.error());

    // Moves without a button are not the chart's to follow.
    window.mouse.move({90.0, 70.0});
    window.mouse.move({20.0, 10.0});
    QCOMPARE(band->resizeArea(), QRectF(5.0, 6.0, 7.0, 8.0));

    window.mouse.press({40.0, 30.0});
    window.mouse.move({60.0, 50.0});
    QCOMPARE(band->resizeArea(), QRectF(40.0, 30.0, 20.0, 20.0));
    window.mouse.release({60.0, 50.0});
    QVERIFY(!band->isVisible());
    QCOMPARE(window.zoomCount, 1);
}

void tst_ZoomDragBands::shownByTheApplication()
{
    ZoomWindow window;
    TestTrace &trace = window.addTrace({0.0, 200.0}, {0.0, 100.0});
    QVERIFY2(window.start(), window.error());
    window.mouse.drag({40.0, 30.0}, {60.0, 50.0});
    window.chart()->zoomReset();
    window.chart()->setIsZoomEnabled(false);
    window.band()->setVisible(true);
    (void)window.takeLog();

    // The press starts nothing, so that the start is still the one of the last drag.
    window.mouse.press({150.0, 90.0});
    QCOMPARE(window.bandRect(), QRectF(40.0, 30.0, 20.0, 20.0));
    window.mouse.move({20.0, 10.0});
    QCOMPARE(window.bandRect(), QRectF(20.0, 10.0, 20.0, 20.0));
    window.mouse.move({500.0, 80.0});
    QCOMPARE(window.bandRect(), QRectF(40.0, 30.0, 160.0, 50.0));
    window.mouse.releaseWithoutMove({0.0, 0.0});
    QCOMPARE(window.takeLog(), QStringList({u"hidden"_s, u"zoomed"_s, u"T0 zoomed"_s, u"T0 x"_s,
                                       u"T0 y"_s, u"zoomedIn"_s}));
    QCOMPARE(trace.domain()->xRange(), Span(40.0, 200.0));
    QCOMPARE(trace.domain()->yRange(), Span(20.0, 70.0));
    window.mouse.drag({40.0, 30.0}, {60.0, 50.0});
    QCOMPARE(window.takeLog(), QStringList());
}

void tst_ZoomDragBands::shownByTheApplicationMeanwhile()
{
    ZoomWindow window;
    window.chart()->setIsZoomEnabled(false);
    QVERIFY2(window.start(), window.error());
    window.mouse.press({150.0, 90.0});
    // A click with an own rectangle: no drag has set bounds, it stays as the application left it.
    window.band()->setPosition({10.0, 20.0});
    window.band()->setSize({30.0, 40.0});
    window.band()->setVisible(true);
    window.mouse.release({150.0, 90.0});
    QVERIFY(!window.isBandShown());
    QCOMPARE(window.zoomCount, 1);
}

void tst_ZoomDragBands::anotherButtonMovesWhatIsShown()
{
    ZoomWindow window;
    QVERIFY2(window.start(), window.error());
    window.mouse.drag({40.0, 30.0}, {60.0, 50.0});
    window.band()->setVisible(true);
    (void)window.takeLog();
    // Moves do not ask for the button that is held, starts and ends do.
    window.mouse.press({150.0, 90.0}, Qt::RightButton);
    window.mouse.move({70.0, 60.0});
    QCOMPARE(window.bandRect(), QRectF(40.0, 30.0, 30.0, 30.0));
    QVERIFY(window.isBandShown());
    window.mouse.release({70.0, 60.0}, Qt::RightButton);
    // Qt takes the mouse from the chart when the last button is up. That stops without a zoom.
    QCOMPARE(window.takeLog(), QStringList{u"hidden"_s});
    QCOMPARE(window.zoomCount, 1);
}

void tst_ZoomDragBands::hiddenByTheApplication()
{
    ZoomWindow window;
    QVERIFY2(window.start(), window.error());
    window.mouse.press({40.0, 30.0});
    window.mouse.move({60.0, 50.0});
    window.band()->setVisible(false);
    (void)window.takeLog();
    window.mouse.move({90.0, 70.0});
    QCOMPARE(window.bandRect(), QRectF(40.0, 30.0, 20.0, 20.0));
    window.mouse.release({90.0, 70.0});
    QCOMPARE(window.takeLog(), QStringList());

    // Hidden and shown again, the drag goes on.
    window.mouse.press({40.0, 30.0});
    window.band()->setVisible(false);
    window.mouse.move({60.0, 50.0});
    window.band()->setVisible(true);
    window.mouse.move({90.0, 70.0});
    QCOMPARE(window.bandRect(), QRectF(40.0, 30.0, 50.0, 40.0));
    window.mouse.release({90.0, 70.0});
    QCOMPARE(window.zoomCount, 1);
}

void tst_ZoomDragBands::inAnInvisibleParent()
{
    ZoomWindow window;
    QQuickItem parent(window.chart());
    parent.setSize({200.0, 100.0});
    parent.setVisible(false);
    window.band()->setParentItem(&parent);
    QVERIFY2(window.start(), window.error());
    window.mouse.drag({40.0, 30.0}, {90.0, 70.0});
    QVERIFY(!window.isBandShown());
    QCOMPARE(window.zoomCount, 0);
    window.band()->setParentItem(window.chart());
}

void tst_ZoomDragBands::exchanged()
{
    ZoomWindow window;
    auto *next = new ZoomDelegate(window.chart());
    next->setVisible(false);
    QVERIFY2(window.start(), window.error());
    window.mouse.press({40.0, 30.0});
    window.mouse.move({60.0, 50.0});
    window.chart()->setRubberBand(next);
    window.mouse.move({90.0, 70.0});
    window.mouse.release({90.0, 70.0});
    // The old one is left as it was, the new one has not begun.
    QVERIFY(window.isBandShown());
    QCOMPARE(window.bandRect(), QRectF(40.0, 30.0, 20.0, 20.0));
    QCOMPARE(next->resizeArea(), QRectF());
    QCOMPARE(window.zoomCount, 0);

    window.mouse.drag({10.0, 10.0}, {50.0, 40.0});
    QCOMPARE(next->resizeArea(), QRectF(10.0, 10.0, 40.0, 30.0));
    QVERIFY(!next->isVisible());
    QVERIFY(window.isBandShown());
    QCOMPARE(window.zoomCount, 1);
}

void tst_ZoomDragBands::exchangedForAVisibleOne()
{
    ZoomWindow window;
    auto *next = new ZoomDelegate(window.chart());
    next->setSize({50.0, 50.0});
    QVERIFY2(window.start(), window.error());
    window.mouse.press({40.0, 30.0});
    window.chart()->setRubberBand(next);
    // Without a start it has no bounds, and all is clipped away.
    window.mouse.move({90.0, 70.0});
    QCOMPARE(next->size(), QSizeF(0.0, 0.0));
    window.mouse.release({90.0, 70.0});
    QVERIFY(!next->isVisible());
    QVERIFY(window.isBandShown());
    QCOMPARE(window.zoomCount, 0);
}

void tst_ZoomDragBands::clearedAndSetAgain()
{
    ZoomWindow window;
    QVERIFY2(window.start(), window.error());
    window.mouse.press({40.0, 30.0});
    window.mouse.move({60.0, 50.0});
    (void)window.takeLog();
    window.chart()->setRubberBand(nullptr);
    QCOMPARE(window.takeLog(), QStringList{u"rubber band cleared"_s});
    window.mouse.move({90.0, 70.0});
    QCOMPARE(window.bandRect(), QRectF(40.0, 30.0, 20.0, 20.0));

    // Still visible, it takes up the drag.
    window.chart()->setRubberBand(window.band());
    window.mouse.move({100.0, 80.0});
    QCOMPARE(window.bandRect(), QRectF(40.0, 30.0, 60.0, 50.0));
    window.chart()->setRubberBand(nullptr);
    window.mouse.release({100.0, 80.0});
    QVERIFY(window.isBandShown());
    QCOMPARE(window.zoomCount, 0);
}

void tst_ZoomDragBands::deleted()
{
    ZoomWindow window;
    QVERIFY2(window.start(), window.error());
    window.mouse.press({40.0, 30.0});
    window.mouse.move({60.0, 50.0});
    delete window.band();
    QCOMPARE(window.chart()->rubberBand(), nullptr);
    window.mouse.move({90.0, 70.0});
    window.mouse.release({90.0, 70.0});
    window.mouse.drag({10.0, 10.0}, {50.0, 40.0});
    QCOMPARE(window.zoomCount, 0);

    auto *next = new ZoomDelegate(window.chart());
    window.chart()->setRubberBand(next);
    window.mouse.drag({10.0, 10.0}, {50.0, 40.0});
    QCOMPARE(window.zoomCount, 1);
}

void tst_ZoomDragBands::deletedWhileZoomed()
{
    ZoomWindow window;
    TestTrace &trace = window.addTrace({0.0, 200.0}, {0.0, 100.0});
    QVERIFY2(window.start(), window.error());
    window.mouse.drag({50.0, 25.0}, {150.0, 75.0});
    delete window.band();
    QVERIFY(window.chart()->isZoomed());
    QCOMPARE(trace.domain()->xRange(), Span(50.0, 150.0));
    window.chart()->zoomReset();
    QCOMPARE(trace.domain()->xRange(), Span(0.0, 200.0));
}

void tst_ZoomDragBands::sharedByTwoCharts()
{
    ZoomWindow window;
    auto *other = new Chart(window.contentItem());
    other->setPosition({100.0, 0.0});
    other->setSize({100.0, 100.0});
    other->setIsZoomEnabled(true);
    other->setRubberBand(window.band());
    QSignalSpy zooms(other, &Chart::zoomedIn);
    QVERIFY2(window.start(), window.error());

    // Each drives it in its own drags, with its own coordinates in the band's parent.
    window.mouse.drag({120.0, 30.0}, {160.0, 50.0});
    QCOMPARE(window.bandRect(), QRectF(20.0, 30.0, 40.0, 20.0));
    QCOMPARE(zooms.size(), 1);
    QCOMPARE(window.zoomCount, 0);
    window.mouse.drag({20.0, 30.0}, {160.0, 50.0});
    QCOMPARE(window.bandRect(), QRectF(20.0, 30.0, 140.0, 20.0));
    QCOMPARE(zooms.size(), 1);
    QCOMPARE(window.zoomCount, 1);
}

void tst_ZoomDragBands::deletedWhenHidden()
{
    ZoomWindow window;
    QVERIFY2(window.start(), window.error());
    connect(window.band(), &QQuickItem::visibleChanged, window.band(), [&] {
        if (!window.band()->isVisible())
            window.band()->deleteLater();
    });
    window.mouse.drag({40.0, 30.0}, {60.0, 50.0});
    QCOMPARE(window.zoomCount, 1);
    QTRY_COMPARE(window.chart()->rubberBand(), nullptr);
    window.mouse.drag({40.0, 30.0}, {60.0, 50.0});
    QCOMPARE(window.zoomCount, 1);
}

void tst_ZoomDragBands::clearedWhenHidden()
{
    ZoomWindow window;
    QVERIFY2(window.start(), window.error());
    connect(window.band(), &QQuickItem::visibleChanged, window.chart(), [&] {
        if (!window.band()->isVisible())
            window.chart()->setRubberBand(nullptr);
    });
    window.mouse.drag({40.0, 30.0}, {60.0, 50.0});
    QVERIFY(!window.isBandShown());
    QCOMPARE(window.chart()->rubberBand(), nullptr);
}

void tst_ZoomDragBands::resetWhenZoomed()
{
    ZoomWindow window;
    TestTrace &trace = window.addTrace({0.0, 200.0}, {0.0, 100.0});
    QVERIFY2(window.start(), window.error());
    (void)window.takeLog();
    connect(window.chart(), &Chart::zoomedIn, window.chart(), &Chart::zoomReset);
    window.mouse.drag({50.0, 25.0}, {150.0, 75.0});
    QVERIFY(!window.chart()->isZoomed());
    QCOMPARE(trace.domain()->xRange(), Span(0.0, 200.0));
    QCOMPARE(trace.updateCount.load(), 2);
    QCOMPARE(window.takeLog(),
            QStringList({u"shown"_s, u"hidden"_s, u"zoomed"_s, u"T0 zoomed"_s, u"T0 x"_s, u"T0 y"_s,
                    u"zoomedIn"_s, u"reset"_s, u"T0 reset"_s, u"T0 base x"_s, u"T0 x"_s,
                    u"T0 base y"_s, u"T0 y"_s}));
}

void tst_ZoomDragBands::resizedByTheApplication()
{
    ZoomWindow window;
    TestTrace &trace = window.addTrace({0.0, 200.0}, {0.0, 100.0});
    QVERIFY2(window.start(), window.error());
    window.mouse.press({40.0, 30.0});
    window.mouse.move({60.0, 50.0});
    // What counts at the release is the item's own geometry, whoever has set it.
    window.band()->setPosition({10.0, 20.0});
    window.band()->setSize({30.0, 40.0});
    window.mouse.release({60.0, 50.0});
    QCOMPARE(trace.domain()->xRange(), Span(10.0, 40.0));
    QCOMPARE(trace.domain()->yRange(), Span(40.0, 80.0));
}

QTEST_MAIN(tst_ZoomDragBands)

#include "tst_zoomdrag_bands.moc"
