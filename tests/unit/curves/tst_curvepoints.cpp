// SPDX-License-Identifier: MIT
#include "ExactCompare.h"

#include <ChartsLibrary/LogarithmicCurveTransform.h>

#include <QtCore/QRegularExpression>
#include <QtTest/QTest>

#include <numbers>

using namespace Charts;
using namespace Qt::StringLiterals;

namespace {

/*! The points for \a decibel and \a pointCount, asked for through the base. */
QList<QPointF> bent(double decibel, int pointCount, const QPointF &p1, const QPointF &p2)
{
    LogarithmicCurveTransform transform;
    transform.setDecibel(decibel);
    transform.setPointCount(pointCount);
    return static_cast<AbstractCurveTransform &>(transform).points(p1, p2);
}

bool isSame(const QPointF &a, const QPointF &b)
{
    return ::isSame(a.x(), b.x()) && ::isSame(a.y(), b.y());
}

QByteArray pointText(const QPointF &point)
{
    return '(' + exactText(point.x()) + ", " + exactText(point.y()) + ')';
}

/*! Bit by bit, but any NaN is as good as another. */
bool haveSamePoints(const QList<QPointF> &actual, const QList<QPointF> &expected)
{
    if (actual.size() != expected.size()) {
        qInfo() << actual.size() << "points instead of" << expected.size();
        return false;
    }
    for (qsizetype i = 0; i < actual.size(); ++i) {
        if (!isSame(actual.at(i), expected.at(i))) {
            qInfo() << "point" << i << "is" << pointText(actual.at(i)) << "instead of"
                    << pointText(expected.at(i));
            return false;
        }
    }
    return true;
}

} // namespace

class tst_CurvePoints : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();

    void bend_data();
    void bend();
    void knownBend();
    void positions_data();
    void positions();
    void heights_data();
    void heights();
    void withoutDecibel();
    void overflow();
    void beyondItsEnd();
    void vertical_data();
    void vertical();
    void extremeEnds_data();
    void extremeEnds();
};

void tst_CurvePoints::init()
{
    QTest::failOnWarning(QRegularExpression(u".*"_s));
}

void tst_CurvePoints::bend_data()
{
    QTest::addColumn<double>("decibel");
    QTest::addColumn<int>("pointCount");
    QTest::addColumn<QPointF>("p1");
    QTest::addColumn<QPointF>("p2");

    for (const int count : {2, 3, 100, 1000}) {
        const auto row = [count](const char *name, double decibel, QPointF p1, QPointF p2) {
            QTest::addRow("%s, %d points", name, count) << decibel << count << p1 << p2;
        };
        row("above the axis", 0.01, {10.0, 20.0}, {210.0, 90.0});
        row("below the axis", 0.01, {10.0, -20.0}, {210.0, -90.0});
        row("upwards", 0.01, {10.0, 90.0}, {210.0, 20.0});
        row("early", -0.01, {10.0, 20.0}, {210.0, 90.0});
        row("early and upwards", -0.01, {10.0, 90.0}, {210.0, 20.0});
        row("over the axis", 0.01, {0.0, -20.0}, {200.0, 90.0});
        row("over the axis and upwards", 0.01, {0.0, 20.0}, {200.0, -90.0});
        row("over the axis, early", -0.01, {0.0, -20.0}, {200.0, 90.0});
        row("from the axis", 0.02, {0.0, 0.0}, {200.0, 90.0});
        row("to the axis", 0.02, {0.0, 90.0}, {200.0, 0.0});
        row("to the left", 0.01, {210.0, 20.0}, {10.0, 90.0});
        row("to the left, early", -0.01, {210.0, -20.0}, {10.0, 90.0});
        row("level", 0.01, {10.0, 20.0}, {210.0, 20.0});
        row("hardly bent", 1e-9, {10.0, 20.0}, {210.0, 90.0});
        row("sharp", 1.0, {10.0, 20.0}, {210.0, 90.0});
        row("sharp, early", -1.0, {10.0, 20.0}, {210.0, 90.0});
        row("narrow", 1e6, {10.0, 20.0}, {10.000001, 90.0});
        row("wide", 1e-9, {-1e9, 20.0}, {1e9, -90.0});
        row("high", 0.01, {10.0, 1e300}, {210.0, 1.7e308});
        row("from the lowest to the highest", 0.01, {0.0, -largest}, {200.0, largest});
        row("low", 0.01, {10.0, 1e-300}, {210.0, -1e-301});
    }
}

/*
    The curve in wider numbers, with expm1() in place of a difference of powers. Numbers of double
    precision may err by this much, eps being the distance of 1 from the next of them:

    x               eps * width for the step and its multiple, eps * |x| for the sum
    10^e - 1        10^e * eps for the power, and 2 * eps in its exponent, which is that times
                    |e| * ln(10) in the power; eps * |10^e - 1| for the difference
    t               the sum of what both differences err, of each relatively; eps for the quotient
    y               what t errs times the height; 2 * eps * max(|y1|, |y2|) for the rest
*/
void tst_CurvePoints::bend()
{
    QFETCH(double, decibel);
    QFETCH(int, pointCount);
    QFETCH(QPointF, p1);
    QFETCH(QPointF, p2);

    using Wide = long double;
    constexpr Wide eps = std::numeric_limits<double>::epsilon();
    constexpr Wide ln10 = std::numbers::ln10_v<Wide>;
    const Wide width = Wide(p2.x()) - Wide(p1.x());
    const Wide height = Wide(p2.y()) - Wide(p1.y());
    const Wide greatest = std::max(std::abs(p1.y()), std::abs(p2.y()));
    const auto differenceOf = [](Wide e) { return std::expm1(e * ln10); };
    const auto errorOf = [&](Wide e) {
        return eps
               * ((1 + 2 * std::abs(e) * ln10) * std::pow(Wide(10), e) + std::abs(differenceOf(e)));
    };
    const Wide whole = differenceOf(decibel * width);

    const QList<QPointF> points = bent(decibel, pointCount, p1, p2);
    QCOMPARE(points.size(), pointCount);
    for (int i = 0; i < pointCount; ++i) {
        const Wide distance = width * i / (pointCount - 1);
        const Wide e = decibel * distance;
        const Wide t = differenceOf(e) / whole;
        const Wide x = p1.x() + distance;
        const Wide y = p1.y() + t * height;
        const Wide xError = eps * (std::abs(width) + std::abs(x));
        const Wide tError = (errorOf(e) + t * errorOf(decibel * width)) / std::abs(whole) + eps * t;
        const Wide yError = tError * std::abs(height) + 2 * eps * greatest;
        QVERIFY2(std::abs(points.at(i).x() - x) <= xError
                         && std::abs(points.at(i).y() - y) <= yError,
                QByteArray::number(i) + ": " + pointText(points.at(i)) + " instead of "
                        + pointText(QPointF(double(x), double(y))));
        QVERIFY(xError <= 1e-8L * std::abs(width));
        QVERIFY(yError <= 1e-8L * greatest);
    }
}

void tst_CurvePoints::knownBend()
{
    const QList<QPointF> points = bent(0.01, 3, {0.0, 0.0}, {100.0, 10.0});
    QCOMPARE(points.size(), 3);
    QVERIFY(isSame(points.first(), {0.0, 0.0}));
    // (sqrt(10) - 1) / 9
    QVERIFY(isSame(points.at(1).x(), 50.0));
    QVERIFY(std::abs(points.at(1).y() - 2.4025307335204214811) < 1e-14);
    QVERIFY(isSame(points.last(), {100.0, 10.0}));
}

void tst_CurvePoints::positions_data()
{
    QTest::addColumn<double>("from");
    QTest::addColumn<double>("to");
    QTest::addColumn<QList<double>>("positions");

    const auto row = [](const char *name, double from, double to, const QList<double> &positions) {
        QTest::newRow(name) << from << to << positions;
    };
    row("two", 0.1, 0.7, {0.1, 0.7});
    row("three", -50.0, 50.0, {-50.0, 0.0, 50.0});
    row("backwards", 50.0, -50.0, {50.0, 25.0, 0.0, -25.0, -50.0});
    // Worked out in fractions: step, multiple and sum are each rounded once. Adding step by step,
    // multiplying before dividing and fused operations lead elsewhere. So does the exact value: the
    // last position is next to the end.
    row("in sixths", -1.1, 0.8,
            {-1.1, -0x1.9111111111112p-1, -0x1.ddddddddddddep-2, -0x1.3333333333330p-3,
                    0x1.5555555555558p-3, 0x1.eeeeeeeeeeef0p-2, 0x1.999999999999cp-1});
    row("in sixths, backwards", 2.7, -1.1,
            {2.7, 0x1.0888888888889p+1, 0x1.6eeeeeeeeeeefp+0, 0x1.9999999999998p-1,
                    0x1.5555555555550p-3, -0x1.ddddddddddde0p-2, -0x1.199999999999cp+0});
}

// The same steps in x for a bend and in y for a vertical line.
void tst_CurvePoints::positions()
{
    QFETCH(double, from);
    QFETCH(double, to);
    QFETCH(QList<double>, positions);

    const int count = int(positions.size());
    for (const double decibel : {0.01, -1.0, 0.0}) {
        QList<QPointF> level;
        QList<QPointF> vertical;
        for (const double position : positions) {
            level.append({position, 5.0});
            vertical.append({5.0, position});
        }
        QVERIFY(haveSamePoints(bent(decibel, count, {from, 5.0}, {to, 5.0}), level));
        QVERIFY(haveSamePoints(bent(decibel, count, {5.0, from}, {5.0, to}), vertical));
    }
}

void tst_CurvePoints::heights_data()
{
    QTest::addColumn<double>("y1");
    QTest::addColumn<double>("y2");
    QTest::addColumn<QList<double>>("heights");

    const auto row = [](const char *name, double y1, double y2, const QList<double> &between) {
        QTest::newRow(name) << y1 << y2 << QList<double>{y1} + between + QList<double>{y2};
    };
    // Worked out in fractions: t is 9, 99 and 999 of 9999, rounded. On one side of the axis the
    // difference is rounded, and then product and sum together; rounding these apart changes at
    // least one of the three heights, as does the rule for the other case.
    row("above", 0.4, 9.5, {0x1.a1fcc629efdedp-2, 0x1.f5dc83cd4e931p-2, 0x1.4f267b0bc0673p+0});
    row("below", -0.4, -9.5, {-0x1.a1fcc629efdedp-2, -0x1.f5dc83cd4e931p-2, -0x1.4f267b0bc0673p+0});
    row("above, up", 9.5, 1.7, {0x1.2fc67c8546d50p+3, 0x1.2d8759ba0b271p+3, 0x1.170ffdc9b65b5p+3});
    row("below, down", -4.6, -2.7,
            {-0x1.264a616c40b3ep+2, -0x1.25322fa6c7bb1p+2, -0x1.1a403df00e027p+2});
    // Here the first end and the difference do not add up to the second end.
    row("above, not quite there", 0.2, 0.9,
            {0x1.9ae3ef39a6df6p-3, 0x1.a7cb477a2b98ap-3, 0x1.146a5cffad6aap-2});
    row("level", 0.7, 0.7, {0.7, 0.7, 0.7});
    row("level below", -0.7, -0.7, {-0.7, -0.7, -0.7});
    // Two products and their sum, each rounded; fusing any of them changes at least one height.
    row("over the axis", 0.4, -3.4,
            {0x1.9618fa54e34a2p-2, 0x1.7312c1a5c42eap-2, 0x1.4d48ace8d1c70p-6});
    row("over the axis, down", -0.2, 1.7,
            {-0x1.9618fa54e34a2p-3, -0x1.7312c1a5c42eap-3, -0x1.4d48ace8d1c70p-7});
    row("from the axis", 0.0, 1.7,
            {0x1.911ed4a266f3fp-10, 0x1.13c5322fa6c7cp-6, 0x1.5bd8bc64d5479p-3});
    row("to the axis", 1.7, 0.0,
            {0x1.b2ceeb7e0a997p+0, 0x1.aee41e6a74981p+0, 0x1.87b81ba6988a4p+0});
    row("on the axis", 0.0, 0.0, {0.0, 0.0, 0.0});
}

/*! A bend of 4 pixels to the right, on which the powers 1, 10, ... 10000 are exact. */
void tst_CurvePoints::heights()
{
    QFETCH(double, y1);
    QFETCH(double, y2);
    QFETCH(QList<double>, heights);

    QList<QPointF> expected;
    for (qsizetype i = 0; i < heights.size(); ++i)
        expected.append({double(i), heights.at(i)});
    QVERIFY(haveSamePoints(bent(1.0, 5, {0.0, y1}, {4.0, y2}), expected));
}

// 0/0: flat at the second end, or nothing that can be drawn.
void tst_CurvePoints::withoutDecibel()
{
    // The second one leaves all powers at 1, the third one is lost in the product.
    for (const double decibel : {0.0, 1e-20, -1e-300}) {
        const auto heights = [decibel](double y1, double y2) {
            return bent(decibel, 3, {0.0, y1}, {100.0, y2});
        };
        const auto flatAt = [](double y) {
            return QList<QPointF>{{0.0, y}, {50.0, y}, {100.0, y}};
        };
        QVERIFY(haveSamePoints(heights(10.0, 20.0), flatAt(20.0)));
        QVERIFY(haveSamePoints(heights(20.0, 10.0), flatAt(10.0)));
        QVERIFY(haveSamePoints(heights(-10.0, -20.0), flatAt(-20.0)));
        QVERIFY(haveSamePoints(heights(-20.0, -10.0), flatAt(-10.0)));
        QVERIFY(haveSamePoints(heights(10.0, 10.0), flatAt(10.0)));
        QVERIFY(haveSamePoints(heights(-10.0, 20.0), flatAt(NaN)));
        QVERIFY(haveSamePoints(heights(20.0, -10.0), flatAt(NaN)));
        QVERIFY(haveSamePoints(heights(0.0, 10.0), flatAt(NaN)));
        QVERIFY(haveSamePoints(heights(-10.0, 0.0), flatAt(NaN)));
        QVERIFY(haveSamePoints(heights(0.0, 0.0), flatAt(NaN)));
    }
}

// 10^300 can be computed, 10^400 cannot.
void tst_CurvePoints::overflow()
{
    const auto bend = [](double decibel, double y1, double y2) {
        return bent(decibel, 6, {0.0, y1}, {500.0, y2});
    };
    const auto at = [](const QList<double> &heights) {
        QList<QPointF> points;
        for (qsizetype i = 0; i < heights.size(); ++i)
            points.append({100.0 * double(i), heights.at(i)});
        return points;
    };
    // Parts of infinity are 0, and infinity of infinity is nothing.
    QVERIFY(haveSamePoints(bend(1.0, 1.0, 2.0), at({1.0, 1.0, 1.0, 1.0, 2.0, 2.0})));
    QVERIFY(haveSamePoints(bend(1.0, -1.0, 2.0), at({-1.0, -1.0, -1.0, -1.0, NaN, NaN})));
    QVERIFY(haveSamePoints(bend(inf, 1.0, 2.0), at({2.0, 2.0, 2.0, 2.0, 2.0, 2.0})));
    // The other way nothing overflows.
    QVERIFY(haveSamePoints(bend(-1.0, 1.0, 2.0), at({1.0, 2.0, 2.0, 2.0, 2.0, 2.0})));
    QVERIFY(haveSamePoints(bend(-1.0, -1.0, 2.0), at({-1.0, 2.0, 2.0, 2.0, 2.0, 2.0})));
}

// Eleven elevenths of 100 are a little more than 100, which a sharp bend makes visible.
void tst_CurvePoints::beyondItsEnd()
{
    const double beyond = std::nextafter(100.0, inf);
    // 3 * beyond is 300 and 2^-44; t - 1 is that times ln(10).
    const double more = 0x1p-44 * std::numbers::ln10;
    const QPointF down = bent(3.0, 12, {0.0, 1.0}, {100.0, 2.0}).last();
    COMPARE_EXACT(down.x(), beyond);
    QVERIFY(std::abs(down.y() - (2.0 + more)) <= 3e-15);
    const QPointF up = bent(3.0, 12, {0.0, 2.0}, {100.0, 1.0}).last();
    COMPARE_EXACT(up.x(), beyond);
    QVERIFY(std::abs(up.y() - (1.0 - more)) <= 3e-15);
}

void tst_CurvePoints::vertical_data()
{
    QTest::addColumn<double>("decibel");
    QTest::newRow("none") << 0.0;
    QTest::newRow("late") << 0.5;
    QTest::newRow("early") << -0.5;
    QTest::newRow("infinite") << inf;
}

void tst_CurvePoints::vertical()
{
    QFETCH(double, decibel);

    QVERIFY(haveSamePoints(bent(decibel, 5, {7.5, -10.0}, {7.5, 30.0}),
            {{7.5, -10.0}, {7.5, 0.0}, {7.5, 10.0}, {7.5, 20.0}, {7.5, 30.0}}));
    QVERIFY(haveSamePoints(
            bent(decibel, 3, {7.5, 30.0}, {7.5, 10.0}), {{7.5, 30.0}, {7.5, 20.0}, {7.5, 10.0}}));
    QVERIFY(haveSamePoints(bent(decibel, 2, {0.0, 1.0}, {-0.0, 2.0}), {{0.0, 1.0}, {0.0, 2.0}}));
    QVERIFY(haveSamePoints(
            bent(decibel, 3, {2.0, 2.0}, {2.0, 2.0}), {{2.0, 2.0}, {2.0, 2.0}, {2.0, 2.0}}));
    // Of the smallest width there are no parts.
    QVERIFY(haveSamePoints(bent(decibel, 4, {0.0, 1.0}, {smallest, 4.0}),
            {{0.0, 1.0}, {0.0, 2.0}, {0.0, 3.0}, {0.0, 4.0}}));
    const QList<QPointF> many = bent(decibel, 1000, {7.5, 0.0}, {7.5, 999.0});
    QCOMPARE(many.size(), 1000);
    for (int i = 0; i < 1000; ++i)
        QVERIFY(isSame(many.at(i), {7.5, double(i)}));
}

void tst_CurvePoints::extremeEnds_data()
{
    QTest::addColumn<QPointF>("p1");
    QTest::addColumn<QPointF>("p2");
    QTest::addColumn<QList<double>>("x");
    QTest::addColumn<QList<double>>("y");

    const auto yRow = [](const char *name, double y1, double y2, const QList<double> &y) {
        QTest::newRow(name) << QPointF(0.0, y1) << QPointF(2.0, y2) << QList<double>{0.0, 1.0, 2.0}
                            << y;
    };
    // t is 0, 1/11 and 1. On one side of the axis what is not a number becomes the second end.
    yRow("first end not a number", NaN, 5.0, {5.0, 5.0, 5.0});
    yRow("second end not a number", 5.0, NaN, {NaN, NaN, NaN});
    yRow("to infinity", 1.0, inf, {inf, inf, inf});
    yRow("to minus infinity", -1.0, -inf, {-inf, -inf, -inf});
    yRow("from infinity", inf, 1.0, {1.0, 1.0, 1.0});
    yRow("all at infinity", inf, inf, {inf, inf, inf});
    // Over the axis 0 times infinity stays.
    yRow("over the axis to infinity", -1.0, inf, {NaN, inf, inf});
    yRow("over the axis from infinity", inf, -1.0, {inf, inf, NaN});
    yRow("from infinity to infinity", -inf, inf, {NaN, NaN, NaN});

    const auto xRow = [](const char *name, double x1, double x2, double y1, const QList<double> &x,
                              const QList<double> &y) {
        QTest::newRow(name) << QPointF(x1, y1) << QPointF(x2, 8.0) << x << y;
    };
    const QList<double> nowhere = {NaN, NaN, NaN};
    const QList<double> flat = {8.0, 8.0, 8.0};
    xRow("first x not a number", NaN, 2.0, 5.0, nowhere, flat);
    xRow("second x not a number", 0.0, NaN, 5.0, nowhere, flat);
    xRow("nowhere, over the axis", NaN, NaN, -5.0, nowhere, nowhere);
    xRow("to the far right", 0.0, inf, 5.0, {NaN, inf, inf}, flat);
    // 10^-infinity is 0, and t is 1.
    xRow("to the far left", 0.0, -inf, 5.0, {NaN, -inf, -inf}, flat);
    xRow("to the far left, over the axis", 0.0, -inf, -5.0, {NaN, -inf, -inf}, {NaN, 8.0, 8.0});
    xRow("from the far right", inf, inf, 5.0, nowhere, flat);
    xRow("too wide", -largest, largest, 5.0, {NaN, inf, inf}, flat);
}

void tst_CurvePoints::extremeEnds()
{
    QFETCH(QPointF, p1);
    QFETCH(QPointF, p2);
    QFETCH(QList<double>, x);
    QFETCH(QList<double>, y);
    QList<QPointF> expected;
    for (qsizetype i = 0; i < x.size(); ++i)
        expected.append({x.at(i), y.at(i)});
    QVERIFY(haveSamePoints(bent(1.0, 3, p1, p2), expected));
}

QTEST_APPLESS_MAIN(tst_CurvePoints)

#include "tst_curvepoints.moc"
