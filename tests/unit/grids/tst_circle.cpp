// SPDX-License-Identifier: MIT
#include <ChartsLibrary/Circle.h>

#include <QtCore/QRegularExpression>
#include <QtTest/QTest>

#include <cmath>
#include <limits>
#include <type_traits>

using namespace Charts;

Q_DECLARE_METATYPE(Charts::Circle)
Q_DECLARE_METATYPE(Charts::ArcShape)

namespace {

constexpr int greatest = std::numeric_limits<int>::max();
constexpr int least = std::numeric_limits<int>::min();
constexpr double pi = 3.141592653589793;

constexpr Circle circle(int x, int y, int radius)
{
    return {QPoint(x, y), radius};
}

bool isClose(double actual, double expected, double tolerance)
{
    return std::abs(actual - expected) <= tolerance;
}

/*! Exactly; -0 is 0. */
bool isNoLine(const QLineF &line)
{
    return line.x1() == 0.0 && line.y1() == 0.0 && line.x2() == 0.0 && line.y2() == 0.0;
}

QByteArray text(const QLineF &line)
{
    return QByteArray::number(line.x1(), 'g', 17) + ", " + QByteArray::number(line.y1(), 'g', 17)
           + " to " + QByteArray::number(line.x2(), 'g', 17) + ", "
           + QByteArray::number(line.y2(), 'g', 17);
}

} // namespace

class tst_Circle : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();

    void valueType();
    void containment_data();
    void containment();

    void chord_data();
    void chord();
    void chordReversed();
    void chordMissed_data();
    void chordMissed();
    void chordWithoutDirection_data();
    void chordWithoutDirection();
    void chordFarAway();

    void arcNone_data();
    void arcNone();
    void arcWhole_data();
    void arcWhole();
    void arcPartial_data();
    void arcPartial();
};

void tst_Circle::init()
{
    QTest::failOnWarning(QRegularExpression(QStringLiteral(".*")));
}

void tst_Circle::valueType()
{
    static_assert(std::is_trivially_copyable_v<Circle>);
    static_assert(sizeof(Circle) == 3 * sizeof(qint32));
    const Circle none;
    QCOMPARE(none.center, QPoint());
    QCOMPARE(none.radius, 0);
    QVERIFY(circle(1, 2, 3) == circle(1, 2, 3));
    QVERIFY(circle(1, 2, 3) != circle(0, 2, 3));
    QVERIFY(circle(1, 2, 3) != circle(1, 0, 3));
    QVERIFY(circle(1, 2, 3) != circle(1, 2, 0));
}

void tst_Circle::containment_data()
{
    QTest::addColumn<Circle>("one");
    QTest::addColumn<Circle>("other");
    QTest::addColumn<bool>("includes");
    QTest::addColumn<bool>("isIncluded");
    QTest::addColumn<bool>("excludes");

    const auto row = [](const char *name, Circle one, Circle other, bool includes, bool isIncluded,
                             bool excludes) {
        QTest::newRow(name) << one << other << includes << isIncluded << excludes;
    };
    row("same", circle(7, -3, 5), circle(7, -3, 5), true, true, false);
    row("concentric", circle(7, -3, 5), circle(7, -3, 4), true, false, false);
    row("well inside", circle(0, 0, 10), circle(2, 3, 1), true, false, false);
    // 3, 4, 5: the distance is a whole number.
    row("touching from inside", circle(10, 10, 15), circle(13, 14, 10), true, false, false);
    row("a pixel too far for it", circle(10, 10, 14), circle(13, 14, 10), false, false, false);
    row("overlapping", circle(0, 0, 10), circle(12, 0, 5), false, false, false);
    row("touching from outside", circle(-3, -4, 3), circle(0, 0, 2), false, false, true);
    row("a pixel too near for it", circle(-3, -4, 3), circle(0, 0, 3), false, false, false);
    row("apart", circle(0, 0, 3), circle(100, 100, 4), false, false, true);
    row("irrational distance, inside", circle(0, 0, 9), circle(5, 5, 1), true, false, false);
    row("irrational distance, not inside", circle(0, 0, 8), circle(5, 5, 1), false, false, false);
    row("irrational distance, apart", circle(0, 0, 4), circle(5, 5, 3), false, false, true);
    row("irrational distance, not apart", circle(0, 0, 4), circle(5, 5, 4), false, false, false);
    row("point in a circle", circle(0, 0, 5), circle(3, 3, 0), true, false, false);
    // Both touching from inside and from outside.
    row("point on a circle", circle(0, 0, 5), circle(3, 4, 0), true, false, true);
    row("point outside", circle(0, 0, 5), circle(4, 4, 0), false, false, true);
    row("the same point", circle(1, 1, 0), circle(1, 1, 0), true, true, true);
    row("two points", circle(1, 1, 0), circle(2, 1, 0), false, false, true);

    row("sum of radii at the limit", circle(0, 0, greatest), circle(3, 0, 0), true, false, false);
    // The sum is negative once it exceeds 32 bits: less than any distance. In include() it is not
    // taken in integers.
    row("sum of radii beyond the limit", circle(0, 0, greatest), circle(3, 0, 1), true, false,
            true);
    row("sum of equal radii beyond the limit", circle(0, 0, 1 << 30), circle(10, 0, 1 << 30), false,
            false, true);
    row("sum of radii wrapped to a positive number", circle(0, 0, least), circle(0, 0, -5), false,
            true, false);
    row("in a circle as large as it gets", circle(0, 0, 10), circle(0, 1, greatest), false, true,
            true);
    // 2^31 - 1 and -2^31 differ by 2^32 - 1, which is -1 in 32 bits.
    row("distance wrapped in x", circle(greatest, 0, 5), circle(least, 0, 3), true, false, false);
    row("distance wrapped in y", circle(0, least, 5), circle(0, greatest, 3), true, false, false);
    row("distance wrapped, not inside", circle(greatest, 0, 5), circle(least, 0, 5), false, false,
            false);
    // 2^31 is -2^31: as far.
    row("distance wrapped to its negative", circle(1 << 30, 0, greatest), circle(-(1 << 30), 0, 0),
            false, false, true);
}

void tst_Circle::containment()
{
    QFETCH(Circle, one);
    QFETCH(Circle, other);
    QTEST(one.include(other), "includes");
    QTEST(other.include(one), "isIncluded");
    QTEST(one.exclude(other), "excludes");
    QTEST(other.exclude(one), "excludes");
}

void tst_Circle::chord_data()
{
    QTest::addColumn<QLine>("line");
    QTest::addColumn<Circle>("circle");
    QTest::addColumn<QLineF>("expected");

    const Circle hundred = circle(100, 100, 100);
    QTest::newRow("vertical, down")
            << QLine(100, 0, 100, 200) << hundred << QLineF(100, 200, 100, 0);
    QTest::newRow("vertical, up") << QLine(100, 200, 100, 0) << hundred << QLineF(100, 0, 100, 200);
    QTest::newRow("horizontal, to the right")
            << QLine(0, 100, 200, 100) << hundred << QLineF(200, 100, 0, 100);
    QTest::newRow("horizontal, to the left")
            << QLine(200, 100, 0, 100) << hundred << QLineF(0, 100, 200, 100);
    QTest::newRow("off the centre")
            << QLine(13, -7, 13, 20) << circle(10, 20, 5) << QLineF(13, 24, 13, 16);
    // The ends matter for the direction only.
    QTest::newRow("ends inside") << QLine(12, 23, 11, 23) << circle(10, 20, 5)
                                 << QLineF(6, 23, 14, 23);
    QTest::newRow("ends beyond") << QLine(1000, 23, 999, 23) << circle(10, 20, 5)
                                 << QLineF(6, 23, 14, 23);
    QTest::newRow("ends short of it")
            << QLine(-500, 23, -400, 23) << circle(10, 20, 5) << QLineF(14, 23, 6, 23);
    QTest::newRow("oblique through the centre")
            << QLine(0, 0, 3, 4) << circle(0, 0, 10) << QLineF(6, 8, -6, -8);
    QTest::newRow("oblique") << QLine(0, 5, 5, 0) << circle(0, 0, 5) << QLineF(5, 0, 0, 5);
    QTest::newRow("tangent") << QLine(200, 0, 200, 200) << hundred << QLineF(200, 100, 200, 100);
    QTest::newRow("tangent on the left")
            << QLine(0, 0, 0, 200) << hundred << QLineF(0, 100, 0, 100);
    QTest::newRow("oblique tangent")
            << QLine(0, 25, 100, -50) << circle(0, 0, 20) << QLineF(12, 16, 12, 16);
    QTest::newRow("through a point") << QLine(0, 0, 4, 4) << circle(9, 9, 0) << QLineF(9, 9, 9, 9);
    QTest::newRow("a radius counts by its square")
            << QLine(0, 3, 1, 3) << circle(0, 0, -5) << QLineF(4, 3, -4, 3);
    QTest::newRow("ends as far apart as they get") << QLine(least, 0, greatest,
            0) << circle(0, 0, 1 << 30) << QLineF(1 << 30, 0, -(1 << 30), 0);
}

void tst_Circle::chord()
{
    QFETCH(QLine, line);
    QFETCH(QLineF, expected);
    QFETCH(Circle, circle);
    const QLineF actual = circledLine(line, circle);
    // Relative to the line's own extent: the ends are at a fraction of it.
    const double tolerance = 1e-12 * (1.0 + QLineF(line).length());
    QVERIFY2(isClose(actual.x1(), expected.x1(), tolerance)
                     && isClose(actual.y1(), expected.y1(), tolerance)
                     && isClose(actual.x2(), expected.x2(), tolerance)
                     && isClose(actual.y2(), expected.y2(), tolerance),
            text(actual).constData());
}

void tst_Circle::chordReversed()
{
    // Oblique, and the square root irrational: both ends on the circle and on the line, the first
    // further along.
    const Circle ring = circle(-31, 12, 77);
    for (const QLine &line : {QLine(-90, 40, 51, -23), QLine(51, -23, -90, 40)}) {
        const QLineF result = circledLine(line, ring);
        const QPointF direction = QPointF(line.p2()) - QPointF(line.p1());
        for (const QPointF &end : {result.p1(), result.p2()}) {
            const QPointF fromCenter = end - QPointF(ring.center);
            const QPointF fromStart = end - QPointF(line.p1());
            QVERIFY(isClose(std::hypot(fromCenter.x(), fromCenter.y()), 77.0, 1e-11));
            QVERIFY(isClose(
                    fromStart.x() * direction.y() - fromStart.y() * direction.x(), 0.0, 1e-9));
        }
        QVERIFY(QPointF::dotProduct(result.p1() - result.p2(), direction) > 0.0);
    }
}

void tst_Circle::chordMissed_data()
{
    QTest::addColumn<QLine>("line");
    QTest::addColumn<Circle>("circle");
    QTest::newRow("a pixel outside") << QLine(201, 0, 201, 200) << circle(100, 100, 100);
    QTest::newRow("on the other side") << QLine(-1, 0, -1, 200) << circle(100, 100, 100);
    QTest::newRow("oblique") << QLine(0, 10, 10, 0) << circle(0, 0, 7);
    QTest::newRow("far away") << QLine(5, 100'000, 6, 100'000) << circle(0, 0, 3);
    QTest::newRow("beside a point") << QLine(0, 0, 4, 4) << circle(9, 8, 0);
}

void tst_Circle::chordMissed()
{
    QFETCH(QLine, line);
    QFETCH(Circle, circle);
    const QLineF actual = circledLine(line, circle);
    QVERIFY2(isNoLine(actual), text(actual).constData());
}

void tst_Circle::chordWithoutDirection_data()
{
    QTest::addColumn<QPoint>("point");
    QTest::addColumn<Circle>("circle");
    QTest::newRow("at the centre") << QPoint(9, 9) << circle(9, 9, 4);
    QTest::newRow("inside") << QPoint(10, 9) << circle(9, 9, 4);
    QTest::newRow("on the circle") << QPoint(13, 9) << circle(9, 9, 4);
    QTest::newRow("outside") << QPoint(50, 60) << circle(9, 9, 4);
    QTest::newRow("point and point") << QPoint() << Circle();
}

void tst_Circle::chordWithoutDirection()
{
    QFETCH(QPoint, point);
    QFETCH(Circle, circle);
    const QLineF actual = circledLine(QLine(point, point), circle);
    QVERIFY2(std::isnan(actual.x1()) && std::isnan(actual.y1()) && std::isnan(actual.x2())
                     && std::isnan(actual.y2()),
            text(actual).constData());
}

void tst_Circle::chordFarAway()
{
    // The squares of the coordinates are taken before their difference. At 2^30 + 1 they have lost
    // their last digits, so that the line's start counts as on the centre's height: the equation is
    // t^2 + 6 t - 25 = 0 rather than t^2 + 6 t - 16 = 0, whose solutions 2 and -8 would be exact.
    const int far = (1 << 30) + 1;
    const QLineF actual = circledLine(QLine(far, 3, far, 4), circle(far, 0, 5));
    QCOMPARE(actual.x1(), double(far));
    QCOMPARE(actual.x2(), double(far));
    QVERIFY2(isClose(actual.y1(), std::sqrt(34.0), 1e-9), text(actual).constData());
    QVERIFY2(isClose(actual.y2(), -std::sqrt(34.0), 1e-9), text(actual).constData());
}

void tst_Circle::arcNone_data()
{
    QTest::addColumn<Circle>("a");
    QTest::addColumn<Circle>("b");
    QTest::newRow("same circle") << circle(4, 5, 6) << circle(4, 5, 6);
    QTest::newRow("same point") << circle(4, 5, 0) << circle(4, 5, 0);
    QTest::newRow("apart") << circle(0, 0, 3) << circle(10, 0, 4);
    QTest::newRow("touching from outside") << circle(0, 0, 2) << circle(3, 4, 3);
    QTest::newRow("around the other") << circle(1, 2, 30) << circle(3, 4, 5);
    QTest::newRow("around, same centre") << circle(1, 2, 30) << circle(1, 2, 29);
    QTest::newRow("around, touching") << circle(0, 0, 10) << circle(3, 4, 5);
    QTest::newRow("around a point") << circle(0, 0, 10) << circle(3, 4, 0);
    QTest::newRow("through a point") << circle(0, 0, 5) << circle(3, 4, 0);
    QTest::newRow("a point on the other") << circle(3, 4, 0) << circle(0, 0, 5);
    QTest::newRow("a point outside") << circle(8, 8, 0) << circle(0, 0, 5);
    // They cross, but the sum of their radii is no 32-bit number: they count as apart.
    QTest::newRow("sum of radii wrapped") << circle(0, 0, 1 << 30) << circle(10, 0, 1 << 30);
    QTest::newRow("as large as it gets") << circle(0, 0, greatest) << circle(5, 0, 10);
    // Near each other only as long as distances wrap.
    QTest::newRow("distance wrapped") << circle(least, 0, 10) << circle(greatest, 0, 10);
}

void tst_Circle::arcNone()
{
    QFETCH(Circle, a);
    QFETCH(Circle, b);
    const ArcShape arc = circledCircle(a, b);
    QVERIFY(arc.center.x() == 0.0);
    QVERIFY(arc.center.y() == 0.0);
    QVERIFY(arc.radius == 0.0);
    QVERIFY(arc.startAngle == 0.0);
    QVERIFY(arc.endAngle == 0.0);
}

void tst_Circle::arcWhole_data()
{
    QTest::addColumn<Circle>("a");
    QTest::addColumn<Circle>("b");
    QTest::newRow("inside") << circle(3, -4, 5) << circle(1, -2, 30);
    QTest::newRow("same centre") << circle(3, -4, 5) << circle(3, -4, 6);
    QTest::newRow("touching from inside") << circle(3, 4, 5) << circle(0, 0, 10);
    QTest::newRow("touching on an axis") << circle(183, 100, 17) << circle(100, 100, 100);
    QTest::newRow("a point") << circle(3, 4, 0) << circle(0, 0, 10);
    QTest::newRow("distance wrapped") << circle(least, 0, 10) << circle(greatest, 0, 11);
}

void tst_Circle::arcWhole()
{
    QFETCH(Circle, a);
    QFETCH(Circle, b);
    const ArcShape arc = circledCircle(a, b);
    QVERIFY(arc.center == QPointF(a.center));
    QVERIFY(arc.radius == double(a.radius));
    QVERIFY(arc.startAngle == 0.0);
    QVERIFY(arc.endAngle == 6.283185307179586);
}

void tst_Circle::arcPartial_data()
{
    QTest::addColumn<Circle>("a");
    QTest::addColumn<Circle>("b");
    QTest::addColumn<double>("startAngle");
    QTest::addColumn<double>("endAngle");

    QTest::newRow("unit circles") << circle(0, 0, 1) << circle(1, 0, 1) << -pi / 3 << pi / 3;
    // Triangles 3, 4, 5 and 5, 12, 13 and 12, 16, 20 give chords with ends at whole pixels.
    const double sharp = std::atan2(3.0, 4.0);
    QTest::newRow("to the right") << circle(0, 0, 5) << circle(8, 0, 5) << -sharp << sharp;
    QTest::newRow("below") << circle(0, 0, 5) << circle(0, 8, 5) << pi / 2 - sharp
                           << pi / 2 + sharp;
    QTest::newRow("to the left") << circle(0, 0, 5) << circle(-8, 0, 5) << pi - sharp
                                 << -pi + sharp;
    QTest::newRow("above") << circle(0, 0, 5) << circle(0, -8, 5) << -pi / 2 - sharp
                           << -pi / 2 + sharp;
    QTest::newRow("shifted") << circle(-100, 40, 5) << circle(-92, 40, 5) << -sharp << sharp;
    QTest::newRow("small in large") << circle(0, 0, 13) << circle(21, 0, 20)
                                    << -std::atan2(12.0, 5.0) << std::atan2(12.0, 5.0);
    QTest::newRow("large in small") << circle(0, 0, 20) << circle(21, 0, 13)
                                    << -std::atan2(12.0, 16.0) << std::atan2(12.0, 16.0);
    // The chord lies on the other side of the centre of a: more than half of a is inside b.
    QTest::newRow("more than half") << circle(0, 0, 13) << circle(11, 0, 20)
                                    << -std::atan2(12.0, -5.0) << std::atan2(12.0, -5.0);
    QTest::newRow("oblique") << circle(0, 0, 5) << circle(7, 1, 5) << std::atan2(-3.0, 4.0)
                             << std::atan2(4.0, 3.0);
    QTest::newRow("a quarter turn into the third quadrant") << circle(0, 0,
            5) << circle(-7, -1, 5) << std::atan2(3.0, -4.0) << std::atan2(-4.0, -3.0);
    QTest::newRow("huge") << circle(0, 0, 500'000'000) << circle(800'000'000, 0, 500'000'000)
                          << -sharp << sharp;
}

void tst_Circle::arcPartial()
{
    QFETCH(Circle, a);
    QFETCH(Circle, b);
    QFETCH(double, startAngle);
    QFETCH(double, endAngle);
    const ArcShape arc = circledCircle(a, b);
    QVERIFY(arc.center == QPointF(a.center));
    QVERIFY(arc.radius == double(a.radius));
    QVERIFY2(isClose(arc.startAngle, startAngle, 1e-14),
            QByteArray::number(arc.startAngle, 'g', 17).constData());
    QVERIFY2(isClose(arc.endAngle, endAngle, 1e-14),
            QByteArray::number(arc.endAngle, 'g', 17).constData());
}

QTEST_GUILESS_MAIN(tst_Circle)
#include "tst_circle.moc"
