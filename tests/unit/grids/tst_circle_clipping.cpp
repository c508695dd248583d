// SPDX-License-Identifier: MIT
#include <ChartsLibrary/Circle.h>

#include <QtCore/QRandomGenerator>
#include <QtCore/QRegularExpression>
#include <QtTest/QTest>

#include <cmath>
#include <numbers>

using namespace Charts;

namespace {

constexpr int sampleCount = 3600;
constexpr double turn = 2.0 * std::numbers::pi;
constexpr double step = turn / sampleCount;

/*! From 0 to a full turn. */
double positive(double angle)
{
    const double rest = std::fmod(angle, turn);
    return rest < 0.0 ? rest + turn : rest;
}

/*! The angle of \a arc, growing from its start to its end. */
double spanOf(const ArcShape &arc)
{
    return arc.endAngle == turn ? turn : positive(arc.endAngle - arc.startAngle);
}

QByteArray text(const Circle &circle)
{
    return "x " + QByteArray::number(circle.center.x()) + " y "
           + QByteArray::number(circle.center.y()) + " r " + QByteArray::number(circle.radius);
}

} // namespace

// An arc of a circle against points of that circle, each of which is inside the other circle or
// not.
class tst_CircleClipping : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void samples_data();
    void samples();
    void chords();

private:
    /*! Empty when the arc of \a a is right, sample by sample. */
    QByteArray mistake(const Circle &a, const Circle &b);

    int m_noneCount = 0;
    int m_wholeCount = 0;
    int m_partialCount = 0;
};

void tst_CircleClipping::init()
{
    QTest::failOnWarning(QRegularExpression(QStringLiteral(".*")));
}

QByteArray tst_CircleClipping::mistake(const Circle &a, const Circle &b)
{
    const ArcShape arc = circledCircle(a, b);
    const double span = spanOf(arc);
    const bool isNone = arc.radius == 0.0;
    const bool isWhole = !isNone && arc.startAngle == 0.0 && arc.endAngle == turn;
    ++(isNone ? m_noneCount : isWhole ? m_wholeCount : m_partialCount);
    if (!isNone && (arc.center != QPointF(a.center) || arc.radius != a.radius))
        return "another circle";

    int unclearCount = 0;
    for (int i = 0; i < sampleCount; ++i) {
        const double angle = (i + 0.5) * step;
        const double x = a.center.x() + std::cos(angle) * a.radius - b.center.x();
        const double y = a.center.y() + std::sin(angle) * a.radius - b.center.y();
        const double depth = b.radius - std::hypot(x, y);
        const double fromStart = positive(angle - arc.startAngle);
        const bool isInArc = !isNone && (isWhole || fromStart <= span);
        // Touching points, and the samples on both sides of an end, may be either.
        const bool isAtEnd = !isNone && !isWhole
                             && (std::abs(fromStart - span) < step || fromStart < step
                                     || turn - fromStart < step);
        if (std::abs(depth) < 1e-9 || isAtEnd) {
            ++unclearCount;
            continue;
        }
        if (isInArc != (depth > 0.0))
            return "at the angle " + QByteArray::number(angle);
    }
    // Two neighbours on each side of both ends, and a touching point; everything else was compared.
    return unclearCount <= 9 ? QByteArray() : "too many samples at the ends";
}

void tst_CircleClipping::samples_data()
{
    QTest::addColumn<int>("reach");
    QTest::addColumn<int>("greatestRadius");
    QTest::addColumn<int>("pairCount");
    QTest::newRow("a few pixels") << 3 << 5 << 400;
    QTest::newRow("as in a chart") << 200 << 200 << 400;
    QTest::newRow("large and flat") << 1000 << 1'000'000 << 200;
}

void tst_CircleClipping::samples()
{
    QFETCH(int, reach);
    QFETCH(int, greatestRadius);
    QFETCH(int, pairCount);
    m_noneCount = 0;
    m_wholeCount = 0;
    m_partialCount = 0;
    QRandomGenerator random(1939);
    const auto draw = [&] {
        return Circle{QPoint(random.bounded(-reach, reach + 1), random.bounded(-reach, reach + 1)),
                random.bounded(1, greatestRadius + 1)};
    };
    for (int i = 0; i < pairCount; ++i) {
        const Circle a = draw();
        Circle b = draw();
        if (a == b)
            continue;
        // Large circles next to each other hardly ever cross unless they are of one size.
        if (greatestRadius > 10 * reach)
            b.radius = std::max(1, a.radius + random.bounded(-2 * reach, 2 * reach + 1));
        const QByteArray message = mistake(a, b);
        QVERIFY2(message.isEmpty(), (text(a) + " in " + text(b) + ": " + message).constData());
    }
    QVERIFY2(std::min({m_noneCount, m_wholeCount, m_partialCount}) > pairCount / 20,
            "each kind of result has to be among the pairs");
}

void tst_CircleClipping::chords()
{
    // The ends of a chord are on the circle and on the line; between them it is inside, beyond them
    // outside. A line that is said to miss the circle does.
    QRandomGenerator random(1944);
    const auto coordinate = [&] { return random.bounded(-300, 301); };
    int missCount = 0;
    for (int i = 0; i < 2000; ++i) {
        const QLine line(coordinate(), coordinate(), coordinate(), coordinate());
        const Circle circle = {QPoint(coordinate(), coordinate()), random.bounded(1, 300)};
        if (line.p1() == line.p2())
            continue;
        const QPointF direction = QPointF(line.p2()) - QPointF(line.p1());
        const QPointF normal =
                QPointF(-direction.y(), direction.x()) / std::hypot(direction.x(), direction.y());
        const double offset =
                QPointF::dotProduct(QPointF(line.p1()) - QPointF(circle.center), normal);
        const QLineF chord = circledLine(line, circle);
        if (chord == QLineF()) {
            ++missCount;
            QVERIFY(std::abs(offset) > circle.radius - 1e-9);
            continue;
        }
        for (const QPointF &end : {chord.p1(), chord.p2()}) {
            const QPointF fromCenter = end - QPointF(circle.center);
            // Where the line only grazes the circle an end is not well defined along the line.
            QVERIFY(std::abs(std::hypot(fromCenter.x(), fromCenter.y()) - circle.radius) < 1e-6);
            QVERIFY(std::abs(QPointF::dotProduct(end - QPointF(line.p1()), normal)) < 1e-9);
        }
        const double length =
                2.0
                * std::sqrt(std::max(0.0, circle.radius * double(circle.radius) - offset * offset));
        QVERIFY(std::abs(chord.length() - length) < 1e-4);
        QVERIFY(QPointF::dotProduct(chord.p1() - chord.p2(), direction) >= 0.0);
    }
    QVERIFY(missCount > 200 && missCount < 1800);
}

QTEST_GUILESS_MAIN(tst_CircleClipping)
#include "tst_circle_clipping.moc"
