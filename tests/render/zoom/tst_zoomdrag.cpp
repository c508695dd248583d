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

/*! Where the pointer moves to, and the rubber band after it. */
struct Step
{
    QPointF to;
    QRectF band;
};
using Steps = QList<Step>;

/*! Lets an item take what is pressed outside of it. */
class Everywhere : public QQuickItem
{
public:
    using QQuickItem::QQuickItem;
    [[nodiscard]] bool contains(const QPointF &) const override { return true; }
};

} // namespace

Q_DECLARE_METATYPE(Step)

/*! The rubber band's geometry in drags of the left button, and the range each of them zooms to. */
class tst_ZoomDrag : public QObject
{
    Q_OBJECT

public:
    static void initMain() { Graphics::setUp(); }

private Q_SLOTS:
    void init();

    void drag_data();
    void drag();
    void emptyDrag_data();
    void emptyDrag();
    void dragAfterDrag();
    void pressIsRounded_data();
    void pressIsRounded();
    void chartResized_data();
    void chartResized();
    void typeChanged();
};

void tst_ZoomDrag::init()
{
    QTest::failOnWarning(QRegularExpression(QStringLiteral(".*")));
}

void tst_ZoomDrag::drag_data()
{
    QTest::addColumn<ZoomDelegate::ZoomType>("type");
    QTest::addColumn<QPointF>("from");
    QTest::addColumn<Steps>("steps");

    const auto row = [](const char *name, ZoomDelegate::ZoomType type, QPointF from, Steps steps) {
        QTest::newRow(name) << type << from << steps;
    };
    row("right and down", diagonal, {40, 30},
            {{{60, 45}, {40, 30, 20, 15}}, {{120.5, 80.25}, {40, 30, 80.5, 50.25}}});
    row("left and up", diagonal, {120, 80},
            {{{100.5, 60.25}, {100.5, 60.25, 19.5, 19.75}}, {{30, 10}, {30, 10, 90, 70}}});
    row("right and up", diagonal, {40, 80},
            {{{41, 79}, {40, 79, 1, 1}}, {{90, 35.5}, {40, 35.5, 50, 44.5}}});
    row("left and down", diagonal, {120, 20},
            {{{119.75, 20.125}, {119.75, 20, 0.25, 0.125}}, {{70, 90}, {70, 20, 50, 70}}});
    row("round the start", diagonal, {100, 50},
            {{{130, 70}, {100, 50, 30, 20}}, {{70, 70}, {70, 50, 30, 20}},
                    {{70, 30}, {70, 30, 30, 20}}, {{130, 30}, {100, 30, 30, 20}}});
    row("to the edges", diagonal, {150, 40},
            {{{200, 100}, {150, 40, 50, 60}}, {{0, 0}, {0, 0, 150, 40}}});
    row("beyond the right", diagonal, {150, 40},
            {{{200.5, 60}, {150, 40, 50, 20}}, {{5000, 60}, {150, 40, 50, 20}}});
    row("beyond the left", diagonal, {150, 40},
            {{{-0.5, 60}, {0, 40, 150, 20}}, {{-5000, 60}, {0, 40, 150, 20}}});
    row("beyond the top", diagonal, {150, 40},
            {{{160, -0.5}, {150, 0, 10, 40}}, {{160, -5000}, {150, 0, 10, 40}}});
    row("beyond the bottom", diagonal, {150, 40},
            {{{140, 100.5}, {140, 40, 10, 60}}, {{140, 5000}, {140, 40, 10, 60}}});
    row("beyond the top left", diagonal, {150, 40}, {{{-20, -30}, {0, 0, 150, 40}}});
    row("beyond the top right", diagonal, {150, 40}, {{{220, -30}, {150, 0, 50, 40}}});
    row("beyond the bottom left", diagonal, {150, 40}, {{{-20, 130}, {0, 40, 150, 60}}});
    row("beyond the bottom right", diagonal, {150, 40}, {{{220, 130}, {150, 40, 50, 60}}});
    row("beyond and back", diagonal, {100, 50},
            {{{1e9, 1e9}, {100, 50, 100, 50}}, {{-1e9, -1e9}, {0, 0, 100, 50}},
                    {{120, 60}, {100, 50, 20, 10}}});

    row("vertical", vertical, {40, 30},
            {{{60, 45}, {40, 0, 20, 100}}, {{120.5, 10}, {40, 0, 80.5, 100}}});
    row("vertical, to the left", vertical, {120, 80}, {{{30.25, 10}, {30.25, 0, 89.75, 100}}});
    row("vertical, beyond the right", vertical, {150, 40}, {{{300, 50}, {150, 0, 50, 100}}});
    row("vertical, beyond the left", vertical, {150, 40}, {{{-300, 50}, {0, 0, 150, 100}}});
    row("vertical, beyond the top", vertical, {150, 40}, {{{160, -50}, {150, 0, 10, 100}}});
    row("vertical, beyond the bottom", vertical, {150, 40}, {{{140, 150}, {140, 0, 10, 100}}});

    row("horizontal", horizontal, {40, 30},
            {{{60, 45}, {0, 30, 200, 15}}, {{10, 80.25}, {0, 30, 200, 50.25}}});
    row("horizontal, upwards", horizontal, {120, 80}, {{{30, 10.75}, {0, 10.75, 200, 69.25}}});
    row("horizontal, beyond the right", horizontal, {150, 40}, {{{300, 50}, {0, 40, 200, 10}}});
    row("horizontal, beyond the left", horizontal, {150, 40}, {{{-300, 50}, {0, 40, 200, 10}}});
    row("horizontal, beyond the top", horizontal, {150, 40}, {{{160, -50}, {0, 0, 200, 40}}});
    row("horizontal, beyond the bottom", horizontal, {150, 40}, {{{140, 150}, {0, 40, 200, 60}}});

    // The only further value that the enumeration can hold.
    row("unknown type", ZoomDelegate::ZoomType(3), {40, 30}, {{{60, 45}, {40, 30, 20, 15}}});
}

void tst_ZoomDrag::drag()
{
    QFETCH(ZoomDelegate::ZoomType, type);
    QFETCH(QPointF, from);
    QFETCH(Steps, steps);

    ZoomWindow window;
    window.band()->setZoomType(type);
    // Data units are pixels, counted from the bottom left.
    TestTrace &trace = window.addTrace({0.0, 200.0}, {0.0, 100.0});
    QVERIFY2(window.start(), window.error());

    window.mouse.press(from);
    QVERIFY(window.isBandShown());
    QCOMPARE(window.bandRect(), QRectF(from, QSizeF(0.0, 0.0)));
    for (const Step &step : steps) {
        window.mouse.move(step.to);
        QVERIFY(window.isBandShown());
        QCOMPARE(window.bandRect(), step.band);
    }
    QCOMPARE(window.zoomCount, 0);
    QVERIFY(!window.chart()->isZoomed());

    window.mouse.releaseWithoutMove(steps.last().to);
    QVERIFY(!window.isBandShown());
    QCOMPARE(window.zoomCount, 1);
    const QRectF band = steps.last().band;
    QCOMPARE(window.bandRect(), band);
    QCOMPARE(trace.domain()->xRange(), Span(band.left(), band.right()));
    QCOMPARE(trace.domain()->yRange(), Span(100.0 - band.bottom(), 100.0 - band.top()));
}

void tst_ZoomDrag::emptyDrag_data()
{
    QTest::addColumn<QPointF>("to");

    QTest::newRow("no move") << QPointF();
    QTest::newRow("to the same point") << QPointF(100.0, 50.0);
    QTest::newRow("no width") << QPointF(100.0, 80.0);
    QTest::newRow("no height") << QPointF(160.0, 50.0);
}

void tst_ZoomDrag::emptyDrag()
{
    QFETCH(QPointF, to);

    ZoomWindow window;
    TestTrace &trace = window.addTrace({0.0, 200.0}, {0.0, 100.0});
    QVERIFY2(window.start(), window.error());
    (void)window.takeLog();

    window.mouse.press({100.0, 50.0});
    if (!to.isNull())
        window.mouse.move(to);
    QVERIFY(window.isBandShown());
    QVERIFY(window.band()->width() <= 0.0 || window.band()->height() <= 0.0);
    window.mouse.release(to.isNull() ? QPointF(100.0, 50.0) : to);
    QCOMPARE(window.takeLog(), QStringList({QStringLiteral("shown"), QStringLiteral("hidden")}));
    QVERIFY(!window.chart()->isZoomed());
    QCOMPARE(trace.updateCount.load(), 0);
}

void tst_ZoomDrag::dragAfterDrag()
{
    ZoomWindow window;
    QVERIFY2(window.start(), window.error());
    window.mouse.drag({20.0, 20.0}, {90.0, 80.0});
    QCOMPARE(window.zoomCount, 1);
    // Nothing is left of the first one.
    window.mouse.press({150.0, 60.0});
    QCOMPARE(window.bandRect(), QRectF(150.0, 60.0, 0.0, 0.0));
    window.mouse.release({150.0, 60.0});
    QCOMPARE(window.zoomCount, 1);
    window.mouse.press({150.0, 60.0});
    window.mouse.move({140.0, 65.0});
    QCOMPARE(window.bandRect(), QRectF(140.0, 60.0, 10.0, 5.0));
    window.mouse.release({140.0, 65.0});
    QCOMPARE(window.zoomCount, 2);
}

void tst_ZoomDrag::pressIsRounded_data()
{
    QTest::addColumn<QPointF>("press");
    QTest::addColumn<QPointF>("start");
    QTest::addColumn<QPointF>("move");
    QTest::addColumn<QRectF>("band");

    const auto row = [](const char *name, QPointF press, QPointF start, QPointF move, QRectF band) {
        QTest::newRow(name) << press << start << move << band;
    };
    row("halves", {40.5, 31.5}, {41, 32}, {120.5, 70.25}, {41, 32, 79.5, 38.25});
    row("below halves", {40.499, 31.499}, {40, 31}, {120.5, 70.25}, {40, 31, 80.5, 39.25});
    row("above halves", {40.501, 31.501}, {41, 32}, {120.5, 70.25}, {41, 32, 79.5, 38.25});
    row("a half", {0.5, 0.5}, {1, 1}, {0.25, 0.125}, {0.25, 0.125, 0.75, 0.875});
    // The sum of it and a half is 1 as a double.
    row("just below a half", {0.49999999999999994, 0.49999999999999994}, {0, 0}, {50, 40},
            {0, 0, 50, 40});
    row("the corner", {199.5, 99.5}, {200, 100}, {150.25, 60.5}, {150.25, 60.5, 49.75, 39.5});
    row("half outside", {-0.5, -0.5}, {-1, -1}, {50.5, 40.5}, {0, 0, 50.5, 40.5});
    row("outside", {-2.5, -3.5}, {-3, -4}, {50.5, 40.5}, {0, 0, 50.5, 40.5});
    row("not quite outside", {-0.25, -0.25}, {0, 0}, {50.5, 40.5}, {0, 0, 50.5, 40.5});
    row("beyond the end", {201.5, 100.5}, {202, 101}, {150.25, 60.5}, {150.25, 60.5, 49.75, 39.5});
}

void tst_ZoomDrag::pressIsRounded()
{
    QFETCH(QPointF, press);
    QFETCH(QPointF, start);
    QFETCH(QPointF, move);
    QFETCH(QRectF, band);

    ZoomWindow window;
    Everywhere mask;
    window.chart()->setContainmentMask(&mask);
    QVERIFY2(window.start(), window.error());
    window.mouse.press(press);
    QVERIFY(window.isBandShown());
    QCOMPARE(window.bandRect(), QRectF(start, QSizeF(0.0, 0.0)));
    window.mouse.move(move);
    QCOMPARE(window.bandRect(), band);
}

void tst_ZoomDrag::chartResized_data()
{
    QTest::addColumn<QSizeF>("size");
    QTest::addColumn<ZoomDelegate::ZoomType>("type");
    QTest::addColumn<QRectF>("band");
    QTest::addColumn<Span>("x");
    QTest::addColumn<Span>("y");

    // From (20, 10) beyond the bottom right. The band keeps to the chart's 200 x 100 pixels of the
    // start, its rectangle is one in the chart's pixels of the end.
    QTest::newRow("larger") << QSizeF(400.0, 125.0) << diagonal << QRectF(20, 10, 180, 90)
                            << Span(5.0, 50.0) << Span(20.0, 92.0);
    QTest::newRow("smaller") << QSizeF(100.0, 80.0) << diagonal << QRectF(20, 10, 180, 90)
                             << Span(20.0, 200.0) << Span(-25.0, 87.5);
    QTest::newRow("vertical") << QSizeF(400.0, 125.0) << vertical << QRectF(20, 0, 180, 100)
                              << Span(5.0, 50.0) << Span(20.0, 100.0);
    QTest::newRow("horizontal") << QSizeF(400.0, 125.0) << horizontal << QRectF(0, 10, 200, 90)
                                << Span(0.0, 50.0) << Span(20.0, 92.0);
    // The domains keep the size from before.
    QTest::newRow("no height") << QSizeF(400.0, 0.0) << diagonal << QRectF(20, 10, 180, 90)
                               << Span(10.0, 100.0) << Span(0.0, 90.0);
}

void tst_ZoomDrag::chartResized()
{
    QFETCH(QSizeF, size);
    QFETCH(ZoomDelegate::ZoomType, type);
    QFETCH(QRectF, band);
    QFETCH(Span, x);
    QFETCH(Span, y);

    ZoomWindow window;
    window.band()->setZoomType(type);
    TestTrace &trace = window.addTrace({0.0, 100.0}, {0.0, 100.0});
    QVERIFY2(window.start(), window.error());
    window.mouse.press({20.0, 10.0});
    window.mouse.move({60.0, 30.0});
    window.chart()->setSize(size);
    window.mouse.move({1000.0, 1000.0});
    QCOMPARE(window.bandRect(), band);
    window.mouse.release({1000.0, 1000.0});
    QCOMPARE(window.zoomCount, 1);
    QCOMPARE(trace.domain()->xRange(), x);
    QCOMPARE(trace.domain()->yRange(), y);
}

void tst_ZoomDrag::typeChanged()
{
    ZoomWindow window;
    QVERIFY2(window.start(), window.error());
    window.mouse.press({40.0, 30.0});
    window.mouse.move({60.0, 45.0});
    // It shows with the next move.
    window.band()->setZoomType(horizontal);
    QCOMPARE(window.bandRect(), QRectF(40.0, 30.0, 20.0, 15.0));
    window.mouse.move({60.0, 44.0});
    QCOMPARE(window.bandRect(), QRectF(0.0, 30.0, 200.0, 14.0));
    window.band()->setZoomType(vertical);
    window.mouse.move({60.0, 46.0});
    QCOMPARE(window.bandRect(), QRectF(40.0, 0.0, 20.0, 100.0));
    window.band()->setZoomType(diagonal);
    window.mouse.move({60.0, 47.0});
    QCOMPARE(window.bandRect(), QRectF(40.0, 30.0, 20.0, 17.0));
}

QTEST_MAIN(tst_ZoomDrag)

#include "tst_zoomdrag.moc"
