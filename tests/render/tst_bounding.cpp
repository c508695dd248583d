// SPDX-License-Identifier: MIT
#include "ChartWindow.h"
#include "ExpectedPicture.h"
#include "GlProbe.h"
#include "Graphics.h"
#include "LongLines.h"
#include "PixelTrace.h"

#include <QtCore/QRegularExpression>
#include <QtGui/QImage>
#include <QtTest/QTest>

#include <algorithm>
#include <cmath>

using namespace Charts;

using Points = std::vector<QPointF>;
Q_DECLARE_METATYPE(Points)

namespace {

constexpr QSize size = {200, 100};
// The lines onto which what is outside is drawn: one pixel inside the edges.
constexpr double left = 1.0;
constexpr double right = 199.0;
constexpr double bottom = 1.0;
constexpr double top = 99.0;

constexpr BoundingMethod methods[] = {
        BoundingMethod::Clamp, BoundingMethod::ExtraMatrices, BoundingMethod::Unbounded};

const char *nameOf(BoundingMethod method)
{
    switch (method) {
    case BoundingMethod::Clamp:
        return "clamp";
    case BoundingMethod::ExtraMatrices:
        return "extra matrices";
    case BoundingMethod::Unbounded:
        break;
    }
    return "none";
}

/*! QPointF::rx or QPointF::ry. */
using Coordinate = double &(QPointF::*)();

/*! Adds the part of the segment that lies beyond a line across an axis, flattened onto it. \a side
    is +1 where beyond means greater. */
void addFlattened(ExpectedPicture &expected, QPointF a, QPointF b, Coordinate coordinate,
        double line, double side, double width, const QColor &color)
{
    const double beyondA = side * ((a.*coordinate)() - line);
    const double beyondB = side * ((b.*coordinate)() - line);
    if (beyondA <= 0.0 && beyondB <= 0.0)
        return;
    const QPointF crossing = a + (b - a) * (beyondA / (beyondA - beyondB));
    if (beyondA <= 0.0)
        a = crossing;
    if (beyondB <= 0.0)
        b = crossing;
    (a.*coordinate)() = line;
    (b.*coordinate)() = line;
    expected.addLine(a, b, width, color);
}

/*! A strip of lines, bounded by \a x on the left and right and by \a y at the top and bottom. */
void addBounded(ExpectedPicture &expected, Points points, BoundingMethod x, BoundingMethod y,
        double width, const QColor &color)
{
    for (QPointF &point : points) {
        if (x == BoundingMethod::Clamp)
            point.setX(std::clamp(point.x(), left, right));
        if (y == BoundingMethod::Clamp)
            point.setY(std::clamp(point.y(), bottom, top));
    }
    for (std::size_t i = 1; i < points.size(); ++i) {
        const QPointF &from = points[i - 1];
        const QPointF &to = points[i];
        expected.addLine(from, to, width, color);
        if (x == BoundingMethod::ExtraMatrices) {
            addFlattened(expected, from, to, &QPointF::rx, right, 1.0, width, color);
            addFlattened(expected, from, to, &QPointF::rx, left, -1.0, width, color);
        }
        if (y == BoundingMethod::ExtraMatrices) {
            addFlattened(expected, from, to, &QPointF::ry, top, 1.0, width, color);
            addFlattened(expected, from, to, &QPointF::ry, bottom, -1.0, width, color);
        }
    }
}

} // namespace

/*! What becomes of a trace where it leaves its view port. */
class tst_Bounding : public QObject
{
    Q_OBJECT

public:
    static void initMain() { Graphics::setUp(); }

private Q_SLOTS:
    void init();
    void cleanup();

    void lines_data();
    void lines();
    void points_data();
    void points();
    void farBeyond_data();
    void farBeyond();
    void drawCalls_data();
    void drawCalls();
    void insideIsTheSame_data();
    void insideIsTheSame();
    void pixelOfTheSquare_data();
    void pixelOfTheSquare();
    void otherValuesMeanNone();
    void switchedWhileShown();
};

void tst_Bounding::init()
{
    QTest::failOnWarning(QRegularExpression(QStringLiteral(".*")));
}

void tst_Bounding::cleanup()
{
    QCOMPARE(GlProbe::takeErrors(), QStringList());
    QCOMPARE(GlProbe::liveObjects(), QStringList());
}

void tst_Bounding::lines_data()
{
    QTest::addColumn<Points>("strip");
    QTest::addColumn<double>("slack");
    QTest::addColumn<BoundingMethod>("x");
    QTest::addColumn<BoundingMethod>("y");

    struct Shape
    {
        const char *name;
        Points strip;
        double slack;
    };
    // Steps along the axes are known to the pixel, slopes to a pixel or so.
    const std::vector<Shape> shapes = {
            {"step over the top", {{20, 50}, {60, 50}, {60, 150}, {140, 150}, {140, 50}, {180, 50}},
                    0.3},
            {"step under the bottom",
                    {{20, 50}, {60, 50}, {60, -70}, {140, -70}, {140, 50}, {180, 50}}, 0.3},
            {"step to the left", {{100, 90}, {100, 70}, {-60, 70}, {-60, 30}, {100, 30}, {100, 10}},
                    0.3},
            {"step to the right",
                    {{100, 90}, {100, 70}, {260, 70}, {260, 30}, {100, 30}, {100, 10}}, 0.3},
            {"round the corners",
                    {{100, 50}, {100, 150}, {300, 150}, {300, 50}, {100, 50}, {100, -50},
                            {-100, -50}, {-100, 50}, {100, 50}},
                    0.3},
            {"all outside", {{-50, 150}, {250, 150}, {250, -50}, {-50, -50}, {-50, 150}}, 0.3},
            {"peak and valley", {{10, 50}, {50, 170}, {110, -60}, {190, 50}}, 1.2},
            {"to both sides", {{100, 95}, {230, 70}, {-30, 30}, {100, 5}}, 1.2},
    };
    for (const Shape &shape : shapes) {
        for (const BoundingMethod x : methods) {
            for (const BoundingMethod y : methods) {
                QTest::addRow("%s, %s on x, %s on y", shape.name, nameOf(x), nameOf(y))
                        << shape.strip << shape.slack << x << y;
            }
        }
    }
}

void tst_Bounding::lines()
{
    QFETCH(Points, strip);
    QFETCH(double, slack);
    QFETCH(BoundingMethod, x);
    QFETCH(BoundingMethod, y);

    // Two pixels wide, a line at a pixel's corner covers both of its neighbours.
    const float width = slack < 1.0 ? 2.0F : 4.0F;
    ChartWindow window(size);
    window.chart()->setAntialiasing(false);
    PixelTrace trace(size, DrawType::LineStrip, width, Qt::red);
    trace.setPoints(strip);
    trace.data.setBoundingX(x);
    trace.data.setBoundingY(y);
    window.chart()->addTrace(&trace);
    QVERIFY2(window.start(), window.error());

    ExpectedPicture expected(size);
    expected.setSlack(slack, slack < 1.0 ? 1.0 : 3.0);
    addBounded(expected, strip, x, y, width, Qt::red);
    QCOMPARE(expected.compare(window.picture()), QString());
}

void tst_Bounding::points_data()
{
    QTest::addColumn<BoundingMethod>("x");
    QTest::addColumn<BoundingMethod>("y");
    for (const BoundingMethod x : methods) {
        for (const BoundingMethod y : methods)
            QTest::addRow("%s on x, %s on y", nameOf(x), nameOf(y)) << x << y;
    }
}

void tst_Bounding::points()
{
    QFETCH(BoundingMethod, x);
    QFETCH(BoundingMethod, y);

    ChartWindow window(size);
    window.chart()->setAntialiasing(false);
    PixelTrace trace(size, DrawType::Points, 4.0F, Qt::red);
    Points points;
    for (const double column : {-500.0, -20.0, 50.0, 100.0, 230.0, 700.0}) {
        for (const double row : {-300.0, -30.0, 40.0, 70.0, 140.0, 900.0})
            points.push_back({column, row});
    }
    trace.setPoints(points);
    trace.data.setBoundingX(x);
    trace.data.setBoundingY(y);
    window.chart()->addTrace(&trace);
    QVERIFY2(window.start(), window.error());

    ExpectedPicture expected(size);
    for (QPointF point : points) {
        if (x == BoundingMethod::Clamp)
            point.setX(std::clamp(point.x(), left, right));
        if (y == BoundingMethod::Clamp)
            point.setY(std::clamp(point.y(), bottom, top));
        const QPointF onto(std::clamp(point.x(), left, right), std::clamp(point.y(), bottom, top));
        // Each extra matrix folds one axis; what is outside on the other axis, too, stays there.
        if (x == BoundingMethod::ExtraMatrices && onto.y() == point.y())
            point.setX(onto.x());
        else if (y == BoundingMethod::ExtraMatrices && onto.x() == point.x())
            point.setY(onto.y());
        if (QRectF(QPointF(0.0, 0.0), size).contains(point))
            expected.addPoint(point, 4.0, Qt::red);
    }
    QCOMPARE(expected.compare(window.picture()), QString());
}

void tst_Bounding::farBeyond_data()
{
    QTest::addColumn<BoundingMethod>("method");
    QTest::addColumn<double>("distance");
    for (const BoundingMethod method : methods) {
        for (const double distance : {1e3, 1e5, 1e7})
            QTest::addRow("%s, %g", nameOf(method), distance) << method << distance;
    }
}

void tst_Bounding::farBeyond()
{
    QFETCH(BoundingMethod, method);
    QFETCH(double, distance);

    const Points strip = {{20, 50}, {60, 50}, {60, distance}, {100, distance}, {100, -distance},
            {140, -distance}, {140, 50}, {180, 50}};
    ChartWindow window(size);
    window.chart()->setAntialiasing(false);
    PixelTrace trace(size, DrawType::LineStrip, 2.0F, Qt::red);
    trace.setPoints(strip);
    trace.data.setBoundingY(method);
    window.chart()->addTrace(&trace);
    QVERIFY2(window.start(), window.error());

    ExpectedPicture expected(size);
    addBounded(expected, strip, BoundingMethod::Unbounded, method, 2.0, Qt::red);
    if (method != BoundingMethod::Clamp && !driverDrawsLinesOf(distance))
        QEXPECT_FAIL("", "this driver leaves out lines of this length", Continue);
    QCOMPARE(expected.compare(window.picture()), QString());
}

void tst_Bounding::drawCalls_data()
{
    QTest::addColumn<BoundingMethod>("x");
    QTest::addColumn<BoundingMethod>("y");
    QTest::addColumn<int>("draws");
    for (const BoundingMethod x : methods) {
        for (const BoundingMethod y : methods) {
            const int draws = 1 + (x == BoundingMethod::ExtraMatrices ? 2 : 0)
                              + (y == BoundingMethod::ExtraMatrices ? 2 : 0);
            QTest::addRow("%s on x, %s on y", nameOf(x), nameOf(y)) << x << y << draws;
        }
    }
}

void tst_Bounding::drawCalls()
{
    QFETCH(BoundingMethod, x);
    QFETCH(BoundingMethod, y);
    QFETCH(int, draws);

    ChartWindow window(size);
    PixelTrace trace(size, DrawType::LineStrip, 2.0F, Qt::red);
    trace.setPoints(Points{{20, 50}, {100, 60}, {180, 50}});
    trace.data.setBoundingX(x);
    trace.data.setBoundingY(y);
    window.chart()->addTrace(&trace);

    const GlProbe::Log log;
    QVERIFY2(window.start(), window.error());
    const auto calls = log.calls("glDrawArrays");
    QCOMPARE(static_cast<int>(calls.size()), draws);
    for (const GlProbe::Call &call : calls) {
        QCOMPARE(call.integer(1), 0);
        QCOMPARE(call.integer(2), 3);
    }
    // However often it is drawn, it is uploaded once.
    QCOMPARE(log.count("glBufferSubData"), 1);
}

void tst_Bounding::insideIsTheSame_data()
{
    QTest::addColumn<bool>("isAntialiased");
    QTest::newRow("plain") << false;
    QTest::newRow("antialiased") << true;
}

void tst_Bounding::insideIsTheSame()
{
    QFETCH(bool, isAntialiased);

    ChartWindow window(size);
    window.chart()->setAntialiasing(isAntialiased);
    PixelTrace trace(size, DrawType::LineStrip, 2.0F, Qt::red);
    Points points;
    for (int i = 0; i <= 100; ++i)
        points.push_back({-50.0 + 3.0 * i, 50.0 + 90.0 * std::sin(i * 0.7)});
    trace.setPoints(points);
    window.chart()->addTrace(&trace);
    QVERIFY2(window.start(), window.error());

    const QRect inside = QRect(QPoint(0, 0), size).adjusted(4, 4, -4, -4);
    const QImage plain = window.picture();
    trace.data.setBoundingX(BoundingMethod::ExtraMatrices);
    trace.data.setBoundingY(BoundingMethod::ExtraMatrices);
    const QImage bounded = window.picture();
    QVERIFY(bounded != plain);
    QCOMPARE(bounded.copy(inside), plain.copy(inside));
}

void tst_Bounding::pixelOfTheSquare_data()
{
    QTest::addColumn<QSize>("chartSize");
    QTest::addColumn<BoundingMethod>("method");
    for (const BoundingMethod method : {BoundingMethod::Clamp, BoundingMethod::ExtraMatrices}) {
        QTest::addRow("wide, %s", nameOf(method)) << QSize(500, 100) << method;
        QTest::addRow("tall, %s", nameOf(method)) << QSize(100, 500) << method;
    }
}

void tst_Bounding::pixelOfTheSquare()
{
    QFETCH(QSize, chartSize);
    QFETCH(BoundingMethod, method);

    // The square of 100 pixels in the middle shows -1 to 1: a pixel is a fiftieth both ways.
    ChartWindow window(chartSize);
    window.chart()->setAntialiasing(false);
    TestTrace trace;
    trace.data.setDrawType(DrawType::Points);
    trace.data.setViewPort({-1.0F, -1.0F, 2.0F, 2.0F});
    trace.data.setSquaredViewPort(true);
    trace.data.setColor(Qt::red);
    trace.data.setWidth(2.0F);
    trace.data.setBoundingX(method);
    trace.data.setBoundingY(method);
    trace.setPoints({{0.0F, 5.0F}, {0.0F, -5.0F}, {5.0F, 0.0F}, {-5.0F, 0.0F}});
    window.chart()->addTrace(&trace);
    QVERIFY2(window.start(), window.error());

    ExpectedPicture expected(chartSize);
    const QPointF middle(chartSize.width() / 2.0, chartSize.height() / 2.0);
    for (const QPointF &offset : {QPointF(0, 49), QPointF(0, -49), QPointF(49, 0), QPointF(-49, 0)})
        expected.addPoint(middle + offset, 2.0, Qt::red);
    QCOMPARE(expected.compare(window.picture()), QString());
}

void tst_Bounding::otherValuesMeanNone()
{
    const Points strip = {{20, 50}, {60, 50}, {60, 150}, {140, 150}, {140, 50}, {260, 50}};
    ChartWindow window(size);
    window.chart()->setAntialiasing(false);
    PixelTrace trace(size, DrawType::LineStrip, 2.0F, Qt::red);
    trace.setPoints(strip);
    trace.data.setBoundingX(static_cast<BoundingMethod>(3));
    trace.data.setBoundingY(static_cast<BoundingMethod>(-1));
    window.chart()->addTrace(&trace);
    const GlProbe::Log log;
    QVERIFY2(window.start(), window.error());
    QCOMPARE(log.count("glDrawArrays"), 1);

    ExpectedPicture expected(size);
    addBounded(expected, strip, BoundingMethod::Unbounded, BoundingMethod::Unbounded, 2.0, Qt::red);
    QCOMPARE(expected.compare(window.picture()), QString());
}

void tst_Bounding::switchedWhileShown()
{
    const Points strip = {{-20, 50}, {60, 50}, {60, 150}, {140, 150}, {140, 50}, {220, 50}};
    ChartWindow window(size);
    window.chart()->setAntialiasing(false);
    // The other trace's bounds must not be left over from this one's, nor this one's from it.
    PixelTrace other(size, DrawType::LineStrip, 2.0F, Qt::blue);
    other.setPoints(Points{{20, 20}, {150, 20}, {150, -50}, {190, -50}});
    other.data.setBoundingY(BoundingMethod::Unbounded);
    other.setZ(1.0);
    PixelTrace trace(size, DrawType::LineStrip, 2.0F, Qt::red);
    trace.setPoints(strip);
    window.chart()->addTrace(&trace);
    window.chart()->addTrace(&other);
    QVERIFY2(window.start(), window.error());

    for (const BoundingMethod method : {BoundingMethod::Clamp, BoundingMethod::ExtraMatrices,
                 BoundingMethod::Unbounded, BoundingMethod::ExtraMatrices, BoundingMethod::Clamp}) {
        trace.data.setBoundingX(method);
        trace.data.setBoundingY(method);
        ExpectedPicture expected(size);
        addBounded(expected, strip, method, method, 2.0, Qt::red);
        addBounded(expected, {{20, 20}, {150, 20}, {150, -50}, {190, -50}},
                BoundingMethod::Unbounded, BoundingMethod::Unbounded, 2.0, Qt::blue);
        QCOMPARE(expected.compare(window.picture()), QString());
    }
}

QTEST_MAIN(tst_Bounding)

#include "tst_bounding.moc"
