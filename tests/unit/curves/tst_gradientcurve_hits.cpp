// SPDX-License-Identifier: MIT
#include "PaintedCurve.h"

#include <ChartsLibrary/FillRectProvider.h>
#include <ChartsLibrary/GradientCurve.h>
#include <ChartsLibrary/LinearCurveTransform.h>
#include <ChartsLibrary/LogarithmicCurveTransform.h>

#include <QtCore/QRegularExpression>
#include <QtTest/QTest>

#include <algorithm>
#include <cmath>
#include <limits>

using namespace Charts;
using namespace Qt::StringLiterals;

namespace {

using Points = QList<QPointF>;

constexpr double inf = std::numeric_limits<double>::infinity();
constexpr double NaN = std::numeric_limits<double>::quiet_NaN();
constexpr int largestInt = std::numeric_limits<int>::max();

double below(double value)
{
    return std::nextafter(value, -inf);
}

double above(double value)
{
    return std::nextafter(value, inf);
}

/*! From the nearest place on the polyline, found along each of its segments. */
long double distanceToPolyline(const QPointF &point, const Points &points)
{
    using Exact = long double;
    Exact nearest = std::numeric_limits<Exact>::infinity();
    for (qsizetype i = 1; i < points.size(); ++i) {
        const Exact ax = points.at(i - 1).x();
        const Exact ay = points.at(i - 1).y();
        const Exact wayX = points.at(i).x() - ax;
        const Exact wayY = points.at(i).y() - ay;
        const Exact along =
                ((point.x() - ax) * wayX + (point.y() - ay) * wayY) / (wayX * wayX + wayY * wayY);
        const Exact part = std::clamp<Exact>(along, 0, 1);
        const Exact dx = point.x() - (ax + part * wayX);
        const Exact dy = point.y() - (ay + part * wayY);
        nearest = std::min(nearest, std::sqrt(dx * dx + dy * dy));
    }
    return nearest;
}

} // namespace

/*! Where a gradient curve is hit. */
class tst_GradientCurveHits : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();

    void points_data();
    void points();
    void anotherPlace();
    void followsTheProperties();
    void asksTheTransform();
    void withoutTransform();
    void grid_data();
    void grid();
};

void tst_GradientCurveHits::init()
{
    QTest::failOnWarning(QRegularExpression(u".*"_s));
}

void tst_GradientCurveHits::points_data()
{
    QTest::addColumn<Points>("line");
    QTest::addColumn<double>("width");
    QTest::addColumn<int>("margin");
    QTest::addColumn<QPointF>("point");
    QTest::addColumn<bool>("isHit");

    const auto row = [](const char *name, const Points &line, double width, int margin,
                             const QPointF &point, bool isHit) {
        QTest::newRow(name) << line << width << margin << point << isHit;
    };
    const Points level = {{10.0, 50.0}, {90.0, 50.0}};
    row("on the line", level, 2.0, 10, {50.0, 50.0}, true);
    row("10 pixels away", level, 2.0, 10, {50.0, 60.0}, true);
    row("14 pixels away", level, 2.0, 10, {50.0, 64.0}, false);
    row("just below", level, 2.0, 10, {50.0, below(61.0)}, true);
    row("limit below", level, 2.0, 10, {50.0, 61.0}, false);
    row("just above", level, 2.0, 10, {50.0, above(39.0)}, true);
    row("limit above", level, 2.0, 10, {50.0, 39.0}, false);
    row("first end", level, 2.0, 10, {10.0, 50.0}, true);
    row("last end", level, 2.0, 10, {90.0, 50.0}, true);
    row("just before", level, 2.0, 10, {-1.0 + 0x1p-40, 50.0}, true);
    row("limit before", level, 2.0, 10, {-1.0, 50.0}, false);
    row("just behind", level, 2.0, 10, {below(101.0), 50.0}, true);
    row("limit behind", level, 2.0, 10, {101.0, 50.0}, false);
    // The ends are round: 3, 4, 5.
    row("limit before the end, askew", level, 2.0, 4, {7.0, 46.0}, false);
    row("just before the end, askew", level, 2.0, 4, {7.0, above(46.0)}, true);
    row("limit behind the end, askew", level, 2.0, 4, {93.0, 54.0}, false);
    row("just behind the end, askew", level, 2.0, 4, {93.0, below(54.0)}, true);
    row("outside of the round end", level, 2.0, 4, {94.9, 54.9}, false);

    const Points back = {{90.0, 50.0}, {10.0, 50.0}};
    row("drawn to the left", back, 2.0, 10, {50.0, below(61.0)}, true);
    row("drawn to the left, limit", back, 2.0, 10, {50.0, 61.0}, false);
    row("drawn to the left, limit behind", back, 2.0, 10, {-1.0, 50.0}, false);
    const Points down = {{50.0, 10.0}, {50.0, 90.0}};
    row("vertical", down, 2.0, 10, {below(61.0), 50.0}, true);
    row("vertical, limit", down, 2.0, 10, {61.0, 50.0}, false);
    const Points slope = {{0.0, 0.0}, {30.0, 40.0}};
    row("slope", slope, 2.0, 4, {11.01, 23.0}, true);
    row("slope, limit", slope, 2.0, 4, {11.0, 23.0}, false);
    row("slope, limit on the other side", slope, 2.0, 4, {19.0, 17.0}, false);
    row("slope, the corner of its box", slope, 2.0, 4, {30.0, 0.0}, false);
    row("slope, limit beside its end", slope, 2.0, 4, {26.0, 43.0}, false);
    row("slope, beside its end", slope, 2.0, 4, {26.01, 43.0}, true);

    const Points corner = {{0.0, 50.0}, {50.0, 50.0}, {50.0, 100.0}};
    row("corner", corner, 2.0, 4, {50.0, 50.0}, true);
    row("outside of the corner", corner, 2.0, 4, {53.0, above(46.0)}, true);
    row("outside of the corner, limit", corner, 2.0, 4, {53.0, 46.0}, false);
    row("within the corner", corner, 2.0, 4, {below(50.0) - 4.5, 54.5}, true);
    row("within the corner, limit", corner, 2.0, 4, {45.0, 55.0}, false);
    row("near the first segment only", corner, 2.0, 4, {3.0, 52.0}, true);
    row("near the last segment only", corner, 2.0, 4, {52.0, 97.0}, true);
    row("between the ends", corner, 2.0, 4, {0.0, 100.0}, false);

    const Points spot = {{10.0, 10.0}, {10.0, 10.0}};
    row("segment without length", spot, 2.0, 10, {10.0, 10.0}, false);
    row("beside a segment without length", spot, 2.0, 10, {11.0, 10.0}, false);
    const Points pause = {{10.0, 10.0}, {10.0, 10.0}, {20.0, 10.0}, {20.0, 10.0}};
    row("segment after one without length", pause, 2.0, 10, {10.0, 10.0}, true);
    row("segment before one without length", pause, 2.0, 10, {21.0, 10.0}, true);
    row("no points", {}, 2.0, 10, {0.0, 0.0}, false);
    row("one point", {{10.0, 10.0}}, 2.0, 10, {10.0, 10.0}, false);

    row("no margin", level, 2.0, 0, {50.0, below(51.0)}, true);
    row("no margin, limit", level, 2.0, 0, {50.0, 51.0}, false);
    row("odd width", level, 1.0, 0, {50.0, below(50.5)}, true);
    row("odd width, limit", level, 1.0, 0, {50.0, 50.5}, false);
    row("no width", level, 0.0, 3, {50.0, below(53.0)}, true);
    row("no width, limit", level, 0.0, 3, {50.0, 53.0}, false);
    row("neither width nor margin", level, 0.0, 0, {50.0, 50.0}, false);
    row("negative margin", level, 20.0, -5, {50.0, below(55.0)}, true);
    row("negative margin, limit", level, 20.0, -5, {50.0, 55.0}, false);
    row("negative margin of a thin line", level, 2.0, -5, {50.0, 50.0}, false);
    row("negative width", level, -4.0, 5, {50.0, below(53.0)}, true);
    row("negative width, limit", level, -4.0, 5, {50.0, 53.0}, false);
    row("largest margin", level, 1.0, largestInt, {50.0, 50.0 + 2147483647.25}, true);
    row("largest margin, limit", level, 1.0, largestInt, {50.0, 50.0 + 2147483647.5}, false);
    row("smallest margin", level, 1.0, -largestInt - 1, {50.0, 50.0}, false);
    row("infinite width", level, inf, 0, {1e300, 1e300}, true);

    row("x not a number", level, 2.0, 10, {NaN, 50.0}, false);
    row("y not a number", level, 2.0, 10, {50.0, NaN}, false);
    row("infinitely far", level, 2.0, 10, {inf, 50.0}, false);
    row("infinitely low", level, 2.0, 10, {50.0, -inf}, false);
    row("line not a number", {{NaN, 50.0}, {90.0, 50.0}}, 2.0, 10, {50.0, 50.0}, false);
    row("a number again", {{NaN, 50.0}, {90.0, 50.0}, {190.0, 50.0}}, 2.0, 10, {100.0, 50.0}, true);
    row("width not a number", level, NaN, 10, {50.0, 50.0}, true); // no change, still 1
}

void tst_GradientCurveHits::points()
{
    QFETCH(Points, line);
    QFETCH(double, width);
    QFETCH(int, margin);
    QFETCH(QPointF, point);
    QFETCH(bool, isHit);

    RecordingTransform transform(line);
    GradientCurve curve;
    curve.setGeometryTransform(&transform);
    curve.setLineWidth(width);
    curve.setContainsMouseMargin(margin);
    QCOMPARE(curve.contains(point), isHit);
    // Neither the item's size nor its fill limit that.
    FillRectProvider provider;
    curve.setShape(&provider);
    curve.setUpDirection(true);
    curve.setSize({60.0, 55.0});
    QCOMPARE(curve.contains(point), isHit);
}

// The point is in coordinates of the item, wherever that is.
void tst_GradientCurveHits::anotherPlace()
{
    QQuickItem parent;
    parent.setPosition({1000.0, 1000.0});
    LinearCurveTransform transform;
    GradientCurve curve(&parent);
    curve.setGeometryTransform(&transform);
    curve.setPosition({100.0, 200.0});
    curve.setScale(3.0);
    curve.setRotation(90.0);
    curve.setP2({100.0, 0.0});
    QVERIFY(curve.contains({50.0, 10.0}));
    QVERIFY(!curve.contains({150.0, 200.0}));
}

// Without a frame in between.
void tst_GradientCurveHits::followsTheProperties()
{
    LinearCurveTransform straight;
    GradientCurve curve;
    curve.setGeometryTransform(&straight);
    curve.setP2({100.0, 0.0});
    QVERIFY(curve.contains({50.0, 10.0}));
    QVERIFY(!curve.contains({50.0, 10.5}));
    curve.setLineWidth(1.5);
    QVERIFY(curve.contains({50.0, 10.5}));
    curve.setContainsMouseMargin(2);
    QVERIFY(!curve.contains({50.0, 10.0}));
    curve.setP1({0.0, 20.0});
    QVERIFY(curve.contains({50.0, 10.0}));
    curve.setP2({100.0, 20.0});
    QVERIFY(!curve.contains({50.0, 10.0}));
    QVERIFY(curve.contains({50.0, 20.0}));

    // At half of its way it has covered less than a hundredth of its height.
    LogarithmicCurveTransform bend;
    bend.setDecibel(0.05);
    curve.setP2({100.0, 220.0});
    QVERIFY(curve.contains({50.0, 120.0}));
    curve.setGeometryTransform(&bend);
    QVERIFY(!curve.contains({50.0, 120.0}));
    QVERIFY(curve.contains({50.0, 21.0}));
    // Neither does it need a repaint after a change of the transform.
    bend.setDecibel(-0.05);
    QVERIFY(!curve.contains({50.0, 21.0}));
    QVERIFY(curve.contains({50.0, 219.0}));
}

void tst_GradientCurveHits::asksTheTransform()
{
    RecordingTransform transform;
    PaintedCurve<GradientCurve> curve;
    curve.setGeometryTransform(&transform);
    curve.setP1({1.0, 2.0});
    curve.setP2({3.0, 4.0});
    const QList<RecordingTransform::Ends> once = {{{1.0, 2.0}, {3.0, 4.0}}};
    QVERIFY(curve.contains({0.0, 0.0}));
    QCOMPARE(transform.takeQuestions(), once);
    QVERIFY(!curve.contains({1000.0, 0.0}));
    QCOMPARE(transform.takeQuestions(), once);
    // What is to be drawn stays to be drawn.
    FillRectProvider provider;
    curve.setShape(&provider);
    QVERIFY(curve.contains({0.0, 0.0}));
    curve.paint();
    QCOMPARE(transform.takeQuestions().size(), 2);
    QCOMPARE(curve.lineVertices().size(), 8);
}

void tst_GradientCurveHits::withoutTransform()
{
    GradientCurve curve;
    curve.setSize({100.0, 100.0});
    curve.setP2({100.0, 100.0});
    QVERIFY(!curve.contains({0.0, 0.0}));
    QVERIFY(!curve.contains({50.0, 50.0}));
    LinearCurveTransform transform;
    curve.setGeometryTransform(&transform);
    QVERIFY(curve.contains({50.0, 50.0}));
    curve.setGeometryTransform(nullptr);
    QVERIFY(!curve.contains({50.0, 50.0}));
}

void tst_GradientCurveHits::grid_data()
{
    QTest::addColumn<Points>("line");
    QTest::addColumn<double>("width");
    QTest::addColumn<int>("margin");

    QTest::newRow("level") << Points{{20.0, 40.0}, {80.0, 40.0}} << 3.0 << 10;
    QTest::newRow("slope") << Points{{80.0, 11.0}, {13.0, 67.0}} << 1.0 << 10;
    QTest::newRow("acute angle") << Points{{20.0, 20.0}, {80.0, 25.0}, {15.0, 35.0}} << 1.0 << 3;
    QTest::newRow("crossing") << Points{{20.0, 20.0}, {80.0, 80.0}, {80.0, 20.0}, {20.0, 80.0}}
                              << 0.3 << 5;
    QTest::newRow("wide") << Points{{40.0, 50.0}, {60.0, 50.0}} << 41.0 << -2;
    QTest::newRow("outside") << Points{{-40.0, -40.0}, {140.0, 120.0}} << 2.0 << 17;
    Points wave;
    for (int i = 0; i <= 60; ++i)
        wave += QPointF(20.0 + i, 50.0 + 30.0 * std::sin(i * 0.2));
    QTest::newRow("wave") << wave << 2.0 << 4;
}

void tst_GradientCurveHits::grid()
{
    QFETCH(Points, line);
    QFETCH(double, width);
    QFETCH(int, margin);

    RecordingTransform transform(line);
    GradientCurve curve;
    curve.setGeometryTransform(&transform);
    curve.setLineWidth(width);
    curve.setContainsMouseMargin(margin);
    const long double reach = margin + width / 2;
    int hits = 0;
    int misses = 0;
    for (int row = -10; row <= 60; ++row) {
        for (int column = -10; column <= 60; ++column) {
            const QPointF point(column * 2.03, row * 2.01);
            const long double distance = distanceToPolyline(point, line);
            if (std::abs(distance - reach) < 1e-9L)
                continue;
            const bool isHit = distance < reach;
            ++(isHit ? hits : misses);
            if (curve.contains(point) != isHit) {
                QFAIL(qPrintable(
                        u"(%1, %2) at a distance of %3"_s.arg(point.x()).arg(point.y()).arg(
                                double(distance))));
            }
        }
    }
    QVERIFY(hits > 100);
    QVERIFY(misses > 100);
}

QTEST_MAIN(tst_GradientCurveHits)

#include "tst_gradientcurve_hits.moc"
