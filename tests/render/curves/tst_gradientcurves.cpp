// SPDX-License-Identifier: MIT
#include "CurveWindow.h"
#include "ExpectedCurve.h"
#include "FixedShapes.h"
#include "Graphics.h"

#include <ChartsLibrary/FillRectProvider.h>
#include <ChartsLibrary/GradientCurve.h>
#include <ChartsLibrary/LinearCurveTransform.h>

#include <QtCore/QRegularExpression>
#include <QtGui/QImage>
#include <QtTest/QTest>

#include <cmath>
#include <memory>

using namespace Charts;

/*! Pixels of curves with a fill, in items of 120 times 60. */
class tst_GradientCurves : public QObject
{
    Q_OBJECT

public:
    static void initMain() { Graphics::setUp(); }

private Q_SLOTS:
    void initTestCase();
    void init();
    void cleanup();
    void cleanupTestCase();

    void levelFade_data();
    void levelFade();
    void straight_data();
    void straight();
    void polyline_data();
    void polyline();
    void diagonalOfASegment();
    void ownHeights_data();
    void ownHeights();
    void clipped();

    void glow_data();
    void glow();
    void translucent_data();
    void translucent();
    void overItsLine();
    void resized();

private:
    /*! Puts a red line, rising to the right, with its fill below, into the window. */
    std::unique_ptr<GradientCurve> curve();
    [[nodiscard]] QImage picture() { return m_window->picture(); }

    std::unique_ptr<CurveWindow> m_window;
    LinearCurveTransform m_linear;
    FillRectProvider m_toEdge;
};

void tst_GradientCurves::initTestCase()
{
    m_window = std::make_unique<CurveWindow>();
    QVERIFY2(m_window->start(), m_window->error());
}

void tst_GradientCurves::init()
{
    QTest::failOnWarning(QRegularExpression(QStringLiteral(".*")));
    m_window->setColor(Qt::white);
    QVERIFY(isBlank(picture()));
}

void tst_GradientCurves::cleanup()
{
    QCOMPARE(CurveWindow::glErrors(), QStringList());
}

void tst_GradientCurves::cleanupTestCase()
{
    QVERIFY(CurveWindow::isWatched());
    m_window.reset();
}

std::unique_ptr<GradientCurve> tst_GradientCurves::curve()
{
    auto curve = std::make_unique<GradientCurve>();
    curve->setGeometryTransform(&m_linear);
    curve->setShape(&m_toEdge);
    curve->setP1({10.0, 40.0});
    curve->setP2({110.0, 20.0});
    curve->setLineWidth(2.0);
    curve->setColor(Qt::red);
    m_window->put(*curve);
    return curve;
}

void tst_GradientCurves::levelFade_data()
{
    QTest::addColumn<bool>("isUp");
    QTest::addColumn<double>("y");
    QTest::addColumn<int>("step");
    // Of black on white: half a pixel from the line to start with, then a pixel for each.
    QTest::addColumn<QList<int>>("levels");
    QTest::newRow("down, five high")
            << false << 55.0 << 1 << QList<int>{26, 77, 128, 179, 230, 255};
    QTest::newRow("up, five high") << true << 5.0 << -1 << QList<int>{26, 77, 128, 179, 230, 255};
    QTest::newRow("down, one high") << false << 59.0 << 1 << QList<int>{128, 255, 255};
    QTest::newRow("up, one high") << true << 1.0 << -1 << QList<int>{128, 255, 255};
    QTest::newRow("down, at the edge") << false << 60.0 << 1 << QList<int>{255, 255};
    QTest::newRow("up, at the edge") << true << 0.0 << -1 << QList<int>{255, 255};
    QTest::newRow("down, beyond the edge") << false << 70.0 << 1 << QList<int>{255, 255};
    QTest::newRow("up, beyond the edge") << true << -10.0 << -1 << QList<int>{255, 255};
    QTest::newRow("down, 51 high") << false << 9.0 << 1 << QList<int>{3, 8, 13, 18, 23, 28, 33};
    QTest::newRow("up, 51 high") << true << 51.0 << -1 << QList<int>{3, 8, 13, 18, 23, 28, 33};
}

// Level by level, with nothing of the line.
void tst_GradientCurves::levelFade()
{
    QFETCH(bool, isUp);
    QFETCH(double, y);
    QFETCH(int, step);
    QFETCH(QList<int>, levels);

    if (m_window->effectiveDevicePixelRatio() != 1.0)
        return; // straight() looks at every pixel, whatever its size.
    const auto item = curve();
    item->setUpDirection(isUp);
    item->setP1({10.0, y});
    item->setP2({110.0, y});
    item->setLineWidth(0.0);
    item->setColor(Qt::black);
    const ItemPicture drawn(*m_window, *item);
    QVERIFY(drawn.isComplete());
    for (const double x : {10.5, 60.5, 109.5}) {
        QPointF place(x, y + 0.5 * step);
        QCOMPARE(drawn.colorAt(place - QPointF(0.0, step)), QColor(Qt::white));
        for (const int level : levels) {
            const QColor color = drawn.colorAt(place);
            QVERIFY2(distanceOf(color, QColor(level, level, level)) <= 1,
                    qPrintable(QStringLiteral("%1 at %2, %3, expected %4")
                                       .arg(color.name())
                                       .arg(place.x())
                                       .arg(place.y())
                                       .arg(level)));
            place += {0.0, double(step)};
        }
    }
    for (const double x : {9.5, 110.5})
        QCOMPARE(drawn.colorAt({x, y + 0.5 * step}), QColor(Qt::white));
}

void tst_GradientCurves::straight_data()
{
    QTest::addColumn<QLineF>("line");
    QTest::addColumn<double>("lineWidth");
    QTest::addColumn<bool>("isUp");
    QTest::addColumn<double>("height");
    // Upwards from the lower end to 0, downwards from the higher one to 60: at the other end the
    // fill goes farther than the edge, by as much as the ends differ.
    QTest::newRow("level, down") << QLineF(10.0, 20.0, 110.0, 20.0) << 2.0 << false << -40.0;
    QTest::newRow("level, up") << QLineF(10.0, 20.0, 110.0, 20.0) << 2.0 << true << 20.0;
    QTest::newRow("level, thin, between pixels")
            << QLineF(10.3, 20.3, 110.3, 20.3) << 1.0 << false << -39.7;
    QTest::newRow("wide") << QLineF(10.0, 40.0, 110.0, 40.0) << 20.0 << true << 40.0;
    QTest::newRow("rising, down") << QLineF(10.0, 40.0, 110.0, 20.0) << 1.0 << false << -40.0;
    QTest::newRow("rising, up") << QLineF(10.0, 40.0, 110.0, 20.0) << 1.0 << true << 40.0;
    QTest::newRow("falling, down") << QLineF(10.0, 15.0, 110.0, 45.0) << 2.0 << false << -45.0;
    QTest::newRow("falling, up") << QLineF(10.0, 15.0, 110.0, 45.0) << 2.0 << true << 45.0;
    QTest::newRow("from right to left") << QLineF(110.0, 40.0, 10.0, 20.0) << 2.0 << true << 40.0;
    QTest::newRow("steep, down") << QLineF(50.0, 0.0, 70.0, 60.0) << 2.0 << false << -60.0;
    QTest::newRow("from edge to edge, up") << QLineF(0.0, 60.0, 120.0, 0.0) << 2.0 << true << 60.0;
    QTest::newRow("upright") << QLineF(60.0, 10.0, 60.0, 50.0) << 2.0 << false << -50.0;
    QTest::newRow("below the item, down") << QLineF(10.0, 70.0, 110.0, 75.0) << 2.0 << false << 0.0;
    QTest::newRow("above the item, down")
            << QLineF(10.0, -30.0, 110.0, -10.0) << 2.0 << false << -90.0;
    QTest::newRow("above the item, up") << QLineF(10.0, -30.0, 110.0, -10.0) << 2.0 << true << 0.0;
    QTest::newRow("partly above, up") << QLineF(10.0, -20.0, 110.0, 20.0) << 2.0 << true << 20.0;
}

// Every pixel of the window, also those on the line's other side and beyond the far side.
void tst_GradientCurves::straight()
{
    QFETCH(QLineF, line);
    QFETCH(double, lineWidth);
    QFETCH(bool, isUp);
    QFETCH(double, height);

    const auto item = curve();
    item->setP1(line.p1());
    item->setP2(line.p2());
    item->setLineWidth(lineWidth);
    item->setUpDirection(isUp);
    const ItemPicture drawn(*m_window, *item);
    ExpectedCurve expected = {{line.p1(), line.p2()}, lineWidth, Qt::red};
    if (height != 0.0 && line.dx() != 0.0)
        QVERIFY(!expected.differenceFrom(drawn).isEmpty());
    expected.heights = {height, height};
    QCOMPARE(expected.differenceFrom(drawn), QString());
    QVERIFY(drawnPixels(drawn.image()) > 50);
}

void tst_GradientCurves::polyline_data()
{
    QTest::addColumn<QList<QPointF>>("points");
    QTest::addColumn<bool>("isUp");
    QTest::addColumn<QList<double>>("heights");
    // The height at each point is that of the segment that starts there: of its lower end upwards,
    // of its higher end downwards.
    const QList<QPointF> valley = {{10.0, 10.0}, {40.0, 50.0}, {80.0, 30.0}, {110.0, 20.0}};
    QTest::newRow("valley, up") << valley << true << QList<double>{50.0, 50.0, 30.0, 30.0};
    QTest::newRow("valley, down") << valley << false << QList<double>{-50.0, -30.0, -40.0, -40.0};
    const QList<QPointF> step = {{10.0, 40.0}, {60.0, 40.0}, {60.0, 15.0}, {110.0, 15.0}};
    QTest::newRow("step, up") << step << true << QList<double>{40.0, 40.0, 15.0, 15.0};
    QTest::newRow("step, down") << step << false << QList<double>{-20.0, -45.0, -45.0, -45.0};
    const QList<QPointF> back = {{110.0, 50.0}, {70.0, 20.0}, {10.0, 30.0}};
    QTest::newRow("to the left, up") << back << true << QList<double>{50.0, 30.0, 30.0};
    QTest::newRow("to the left, down") << back << false << QList<double>{-40.0, -40.0, -40.0};
    const QList<QPointF> outside = {{10.0, -20.0}, {50.0, -5.0}, {110.0, 40.0}};
    QTest::newRow("from above, up") << outside << true << QList<double>{0.0, 40.0, 40.0};
    QTest::newRow("from above, down") << outside << false << QList<double>{-80.0, -65.0, -65.0};
}

// Neighbouring segments have different heights: the fade bends inside each of them.
void tst_GradientCurves::polyline()
{
    QFETCH(QList<QPointF>, points);
    QFETCH(bool, isUp);
    QFETCH(QList<double>, heights);

    FixedPoints transform;
    transform.list = points;
    const auto item = curve();
    item->setGeometryTransform(&transform);
    item->setLineWidth(3.0);
    item->setUpDirection(isUp);
    const ItemPicture drawn(*m_window, *item);
    const ExpectedCurve expected = {points, 3.0, Qt::red, heights};
    QCOMPARE(expected.differenceFrom(drawn), QString());
}

// From the far side over the first point to the second point: half of the colour in its middle,
// where the other diagonal would leave an eighth.
void tst_GradientCurves::diagonalOfASegment()
{
    FixedHeights shape;
    shape.list = {80.0, 20.0};
    const auto item = curve();
    item->setShape(&shape);
    item->setUpDirection(true);
    item->setP1({10.0, 60.0});
    item->setP2({110.0, 60.0});
    item->setColor(Qt::black);
    const auto levelAt = [](const ItemPicture &drawn, const QPointF &place) {
        return drawn.colorAt(place).red();
    };
    {
        // The far side goes from (10, -20) to (110, 40), the diagonal from (10, -20) to (110, 60).
        const ItemPicture drawn(*m_window, *item);
        QVERIFY(std::abs(levelAt(drawn, {60.5, 20.5}) - 128) <= 4);
        // Half way from the far side to the diagonal.
        QVERIFY(std::abs(levelAt(drawn, {60.5, 15.5}) - 191) <= 8);
        QVERIFY(std::abs(levelAt(drawn, {60.5, 40.5}) - 64) <= 4);
    }
    // The other way round the other diagonal is the one from the far side over the first point.
    item->setP1({110.0, 60.0});
    item->setP2({10.0, 60.0});
    shape.list = {20.0, 80.0};
    const ItemPicture drawn(*m_window, *item);
    QVERIFY(std::abs(levelAt(drawn, {60.5, 20.5}) - 223) <= 4);
}

void tst_GradientCurves::ownHeights_data()
{
    QTest::addColumn<QList<double>>("heights");
    QTest::addColumn<bool>("isUp");
    QTest::addColumn<QList<double>>("drawn");
    using Heights = QList<double>;
    QTest::newRow("up") << Heights{10.0, 60.0, 5.0} << true << Heights{10.0, 60.0, 5.0};
    QTest::newRow("down") << Heights{10.0, 60.0, 5.0} << false << Heights{-10.0, -60.0, -5.0};
    QTest::newRow("pointed") << Heights{0.0, 40.0, 0.0} << true << Heights{0.0, 40.0, 0.0};
    QTest::newRow("upwards below the line")
            << Heights{-20.0, -30.0, -10.0} << true << Heights{-20.0, -30.0, -10.0};
    QTest::newRow("flat") << Heights{0.0, 0.0, 0.0} << true << Heights{};
    QTest::newRow("one is missing") << Heights{10.0, 60.0} << true << Heights{};
    QTest::newRow("one too many") << Heights{10.0, 60.0, 5.0, 5.0} << true << Heights{};
    QTest::newRow("none") << Heights{} << true << Heights{};
}

void tst_GradientCurves::ownHeights()
{
    QFETCH(QList<double>, heights);
    QFETCH(bool, isUp);
    QFETCH(QList<double>, drawn);

    FixedPoints transform;
    transform.list = {{10.0, 30.0}, {50.0, 40.0}, {110.0, 20.0}};
    FixedHeights shape;
    shape.list = heights;
    const auto item = curve();
    item->setGeometryTransform(&transform);
    item->setShape(&shape);
    item->setUpDirection(isUp);
    const ExpectedCurve expected = {transform.list, 2.0, Qt::red, drawn};
    QCOMPARE(expected.differenceFrom(ItemPicture(*m_window, *item)), QString());
}

void tst_GradientCurves::clipped()
{
    const auto item = curve();
    item->setUpDirection(true);
    const QPointF beyond(105.5, -10.5);
    const QPointF within(15.5, 30.5);
    const QColor inside = ItemPicture(*m_window, *item).colorAt(within);
    QVERIFY(ItemPicture(*m_window, *item).colorAt(beyond) != QColor(Qt::white));
    item->setClip(true);
    const ItemPicture drawn(*m_window, *item);
    QCOMPARE(drawn.colorAt(beyond), QColor(Qt::white));
    QCOMPARE(drawn.colorAt(within), inside);
    QVERIFY(inside != QColor(Qt::white));
}

void tst_GradientCurves::glow_data()
{
    QTest::addColumn<QColor>("background");
    QTest::addColumn<QColor>("color");
    QTest::addColumn<QList<QColor>>("drawn");
    using Colors = QList<QColor>;
    // With nine, seven, five, three and one tenth of the colour, s: s times the channels as they are
    // is added to what 1 - s * alpha leaves of the background.
    QTest::newRow("opaque") << QColor(50, 100, 200) << QColor(200, 100, 0)
                            << Colors{{185, 100, 20}, {155, 100, 60}, {125, 100, 100},
                                       {95, 100, 140}, {65, 100, 180}};
    // Blended as usual it would start with (118, 100, 110).
    QTest::newRow("half") << QColor(50, 100, 200) << QColor(200, 100, 0, 128)
                          << Colors{{207, 145, 110}, {172, 135, 130}, {137, 125, 150},
                                     {102, 115, 170}, {67, 105, 190}};
    QTest::newRow("half of red on white")
            << QColor(Qt::white) << QColor(255, 0, 0, 128)
            << Colors{{255, 140, 140}, {255, 165, 165}, {255, 191, 191}, {255, 217, 217},
                       {255, 242, 242}};
    // More than white is white.
    QTest::newRow("clamped") << QColor(128, 128, 128) << QColor(255, 255, 255, 128)
                             << Colors{{255, 255, 255}, {255, 255, 255}, {223, 223, 223},
                                        {185, 185, 185}, {147, 147, 147}};
    QTest::newRow("nothing but light")
            << QColor(Qt::black) << QColor(255, 0, 0, 0)
            << Colors{{229, 0, 0}, {178, 0, 0}, {127, 0, 0}, {76, 0, 0}, {25, 0, 0}};
    QTest::newRow("nothing but shade") << QColor(Qt::white) << QColor(0, 0, 0, 51)
                                       << Colors{{209, 209, 209}, {219, 219, 219}, {229, 229, 229},
                                                  {240, 240, 240}, {250, 250, 250}};
    QTest::newRow("nothing") << QColor(50, 100, 200) << QColor(Qt::transparent)
                             << Colors(5, {50, 100, 200});
}

// A fill of five pixels, with nothing of the line.
void tst_GradientCurves::glow()
{
    QFETCH(QColor, background);
    QFETCH(QColor, color);
    QFETCH(QList<QColor>, drawn);

    if (m_window->effectiveDevicePixelRatio() != 1.0)
        return; // translucent() looks at every pixel, whatever its size.
    m_window->setColor(background);
    const auto item = curve();
    item->setP1({10.0, 55.0});
    item->setP2({110.0, 55.0});
    item->setLineWidth(0.0);
    item->setColor(color);
    const ItemPicture picture(*m_window, *item);
    QPointF place(60.5, 55.5);
    for (const QColor &expected : drawn) {
        const QColor actual = picture.colorAt(place);
        QVERIFY2(distanceOf(actual, expected) <= 2, qPrintable(actual.name()));
        place += {0.0, 1.0};
    }
}

void tst_GradientCurves::translucent_data()
{
    QTest::addColumn<QColor>("background");
    QTest::addColumn<QColor>("color");
    QTest::addColumn<double>("opacity");
    const QColor blueish(50, 100, 200);
    const QColor half(200, 100, 0, 128);
    QTest::newRow("half") << blueish << half << 1.0;
    QTest::newRow("opacity") << blueish << QColor(200, 100, 0) << 0.5;
    QTest::newRow("both") << blueish << half << 0.5;
    QTest::newRow("half of red on white") << QColor(Qt::white) << QColor(255, 0, 0, 128) << 1.0;
    QTest::newRow("clamped") << QColor(200, 200, 200) << QColor(255, 200, 50, 100) << 1.0;
    QTest::newRow("no opacity") << blueish << half << 0.0;
}

// The line is blended as usual, as is everything with an opacity.
void tst_GradientCurves::translucent()
{
    QFETCH(QColor, background);
    QFETCH(QColor, color);
    QFETCH(double, opacity);

    m_window->setColor(background);
    const auto item = curve();
    item->setLineWidth(8.0);
    item->setColor(color);
    item->setOpacity(opacity);
    const ExpectedCurve expected = {
            {item->p1(), item->p2()}, 8.0, color, {-40.0, -40.0}, opacity, background};
    QCOMPARE(expected.differenceFrom(ItemPicture(*m_window, *item)), QString());
}

void tst_GradientCurves::overItsLine()
{
    m_window->setColor(Qt::black);
    const auto item = curve();
    item->setP1({10.0, 0.0});
    item->setP2({110.0, 0.0});
    item->setLineWidth(20.0);
    item->setColor({100, 100, 100, 128});
    const ItemPicture drawn(*m_window, *item);
    // The line leaves 50. Of that the fill, which is there for 59.5 of 60 parts, leaves the half and
    // adds 99. The line would have left 49 of these 99 and added 50.
    QVERIFY2(std::abs(drawn.colorAt({60.5, 0.5}).red() - 124) <= 2,
            qPrintable(drawn.colorAt({60.5, 0.5}).name()));
}

// Downwards the fill follows the edge, upwards it does not move.
void tst_GradientCurves::resized()
{
    const auto item = curve();
    item->setP2({110.0, 40.0});
    for (const bool isUp : {true, false}) {
        item->setUpDirection(isUp);
        for (const double height : {60.0, 45.0, 90.0}) {
            item->setHeight(height);
            ExpectedCurve expected = {{item->p1(), item->p2()}, 2.0, Qt::red};
            expected.heights = QList<double>(2, isUp ? 40.0 : 40.0 - height);
            QCOMPARE(expected.differenceFrom(ItemPicture(*m_window, *item)), QString());
        }
    }
    // The edge is at a whole pixel.
    item->setHeight(79.5);
    const ExpectedCurve expected = {
            {item->p1(), item->p2()}, 2.0, Qt::red, QList<double>(2, -40.0)};
    QCOMPARE(expected.differenceFrom(ItemPicture(*m_window, *item)), QString());
}

QTEST_MAIN(tst_GradientCurves)

#include "tst_gradientcurves.moc"
