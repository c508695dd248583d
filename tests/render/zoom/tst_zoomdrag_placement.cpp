// SPDX-License-Identifier: MIT
#include "Graphics.h"
#include "ZoomWindow.h"

#include <QtCore/QRegularExpression>
#include <QtTest/QTest>

using namespace Charts;

namespace {

constexpr auto diagonal = ZoomDelegate::Diagonal;
constexpr auto vertical = ZoomDelegate::Vertical;
constexpr auto horizontal = ZoomDelegate::Horizontal;

} // namespace

/*! Charts anywhere in the window, and rubber bands that are children of other items. */
class tst_ZoomDragPlacement : public QObject
{
    Q_OBJECT

public:
    static void initMain() { Graphics::setUp(); }

private Q_SLOTS:
    void init();

    void bandElsewhere_data();
    void bandElsewhere();
    void bandWithoutParent();
    void placement_data();
    void placement();
    void chartMoved();
};

void tst_ZoomDragPlacement::init()
{
    QTest::failOnWarning(QRegularExpression(QStringLiteral(".*")));
}

void tst_ZoomDragPlacement::bandElsewhere_data()
{
    QTest::addColumn<QRectF>("parent");
    QTest::addColumn<ZoomDelegate::ZoomType>("type");
    QTest::addColumn<QRectF>("band");

    // The numbers of the chart's coordinates are used in the parent's and come back unchanged.
    QTest::newRow("smaller") << QRectF(30, 10, 100, 50) << diagonal << QRectF(20, 20, 80, 30);
    QTest::newRow("smaller, vertical")
            << QRectF(30, 10, 100, 50) << vertical << QRectF(20, 0, 80, 50);
    QTest::newRow("smaller, horizontal")
            << QRectF(30, 10, 100, 50) << horizontal << QRectF(0, 20, 100, 30);
    QTest::newRow("larger") << QRectF(-50, -50, 400, 400) << diagonal << QRectF(20, 20, 280, 230);
    QTest::newRow("larger, vertical")
            << QRectF(-50, -50, 400, 400) << vertical << QRectF(20, 0, 280, 400);
    QTest::newRow("as large") << QRectF(7, 5, 200, 100) << diagonal << QRectF(20, 20, 180, 80);
}

void tst_ZoomDragPlacement::bandElsewhere()
{
    QFETCH(QRectF, parent);
    QFETCH(ZoomDelegate::ZoomType, type);
    QFETCH(QRectF, band);

    ZoomWindow window;
    QQuickItem elsewhere(window.contentItem());
    elsewhere.setPosition(parent.topLeft());
    elsewhere.setSize(parent.size());
    window.band()->setParentItem(&elsewhere);
    window.band()->setZoomType(type);
    TestTrace &trace = window.addTrace({0.0, 200.0}, {0.0, 100.0});
    QVERIFY2(window.start(), window.error());

    window.mouse.press({20.0, 20.0});
    QCOMPARE(window.bandRect(), QRectF(20.0, 20.0, 0.0, 0.0));
    window.mouse.move({300.0, 250.0});
    QCOMPARE(window.bandRect(), band);
    window.mouse.release({300.0, 250.0});
    QCOMPARE(window.zoomCount, 1);
    QCOMPARE(trace.domain()->xRange(), Span(band.left(), band.right()));
    QCOMPARE(trace.domain()->yRange(), Span(100.0 - band.bottom(), 100.0 - band.top()));
    window.band()->setParentItem(window.chart());
}

void tst_ZoomDragPlacement::bandWithoutParent()
{
    ZoomWindow window;
    window.band()->setParentItem(nullptr);
    QVERIFY2(window.start(), window.error());
    window.mouse.press({20.0, 20.0});
    // Newer versions of Qt tell of an item without a parent that it is hidden, whatever was set.
    QQuickItem parent;
    window.band()->setParentItem(&parent);
    QVERIFY(window.isBandShown());
    window.band()->setParentItem(nullptr);
    window.mouse.move({300.0, 250.0});
    QCOMPARE(window.band()->size(), QSizeF(0.0, 0.0));
    window.mouse.release({300.0, 250.0});
    QVERIFY(!window.isBandShown());
    QCOMPARE(window.zoomCount, 0);
}

void tst_ZoomDragPlacement::placement_data()
{
    QTest::addColumn<QSizeF>("size");
    QTest::addColumn<QPointF>("position");
    QTest::addColumn<double>("scale");
    QTest::addColumn<double>("rotation");
    QTest::addColumn<QPointF>("press"); // in the window
    QTest::addColumn<QPointF>("move");
    QTest::addColumn<QRectF>("band"); // in the chart

    const auto row = [](const char *name, QSizeF size, QPointF position, double scale,
                             double rotation, QPointF press, QPointF move, QRectF band) {
        QTest::newRow(name) << size << position << scale << rotation << press << move << band;
    };
    row("moved", {150, 80}, {30, 15}, 1, 0, {50, 20}, {500, 60.5}, {20, 5, 130, 40.5});
    row("between pixels", {150, 80}, {30.25, 15.75}, 1, 0, {50, 20}, {70.25, 55.75},
            {20, 4, 20, 36});
    row("twice as large", {100, 50}, {0, 0}, 2, 0, {41, 21}, {121, 81}, {21, 11, 39.5, 29.5});
    row("half as large", {400, 200}, {0, 0}, 0.5, 0, {20.25, 10.25}, {70, 500}, {41, 21, 99, 179});
    row("turned right", {100, 200}, {200, 0}, 1, 90, {150, 30}, {90.5, -10}, {0, 50, 30, 59.5});
    row("upside down", {200, 100}, {200, 100}, 1, 180, {190, 80}, {150.5, -20}, {10, 20, 39.5, 80});
    row("mirrored through its corner", {200, 100}, {200, 100}, -1, 0, {190, 80}, {150.5, -20},
            {10, 20, 39.5, 80});
}

void tst_ZoomDragPlacement::placement()
{
    QFETCH(QSizeF, size);
    QFETCH(QPointF, position);
    QFETCH(double, scale);
    QFETCH(double, rotation);
    QFETCH(QPointF, press);
    QFETCH(QPointF, move);
    QFETCH(QRectF, band);

    ZoomWindow window;
    QQuickItem parent(window.contentItem());
    parent.setTransformOrigin(QQuickItem::TopLeft);
    parent.setPosition(position);
    parent.setScale(scale);
    parent.setRotation(rotation);
    window.chart()->setParentItem(&parent);
    window.chart()->setSize(size);
    TestTrace &trace = window.addTrace({0.0, size.width()}, {0.0, size.height()});
    QVERIFY2(window.start(), window.error());

    window.mouse.press(press);
    QVERIFY(window.isBandShown());
    window.mouse.move(move);
    QCOMPARE(window.bandRect(), band);
    window.mouse.release(move);
    QCOMPARE(window.zoomCount, 1);
    QCOMPARE(trace.domain()->xRange(), Span(band.left(), band.right()));
    QCOMPARE(trace.domain()->yRange(),
            Span(size.height() - band.bottom(), size.height() - band.top()));
    window.chart()->setParentItem(window.contentItem());
}

void tst_ZoomDragPlacement::chartMoved()
{
    ZoomWindow window;
    QVERIFY2(window.start(), window.error());
    window.mouse.press({50.0, 40.0});
    window.mouse.move({60.0, 60.0});
    QCOMPARE(window.bandRect(), QRectF(50.0, 40.0, 10.0, 20.0));
    // The start stays where it was in the chart.
    window.chart()->setPosition({30.0, 10.0});
    window.mouse.move({100.0, 80.0});
    QCOMPARE(window.bandRect(), QRectF(50.0, 40.0, 20.0, 30.0));
}

QTEST_MAIN(tst_ZoomDragPlacement)

#include "tst_zoomdrag_placement.moc"
