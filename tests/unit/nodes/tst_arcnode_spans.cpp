// SPDX-License-Identifier: MIT
#include "DirtyMarks.h"
#include "SmoothVertices.h"

#include <ChartsLibrary/ArcNode.h>

#include <QtCore/QRegularExpression>
#include <QtTest/QTest>

#include <cmath>
#include <limits>
#include <numbers>

using namespace Charts;

namespace {

constexpr double pi = std::numbers::pi;
constexpr double twoPi = 6.283185307179586;

const QColor blue(0, 0, 255);
constexpr ColorBytes blueBytes = {0, 0, 255, 255};
constexpr ColorBytes clear = {0, 0, 0, 0};

/*! At most one step of float apart: the sine of a library may be off by its last bit. */
bool isNear(float actual, long double expected)
{
    const auto nearest = static_cast<float>(expected);
    const float infinite = std::numeric_limits<float>::infinity();
    return actual >= std::nextafter(nearest, -infinite)
           && actual <= std::nextafter(nearest, infinite);
}

/*!
    \a expected is the sum of a centre and what lies around it. Near 0 it is what was cancelled that
    counts: the sum is as exact as double can hold the larger of the two.
*/
bool isNear(float actual, double center, long double around)
{
    const long double expected = center + around;
    return isNear(actual, expected)
           || std::abs(actual - expected)
                      <= 0x1p-50L * std::max<long double>(std::abs(center), std::abs(around));
}

int segmentsOf(const ArcNode &node)
{
    return node.geometry()->vertexCount() / 2 - 1;
}

/*! From the first to the last sample, as seen from the centre; once around counts as 0. */
double turnOf(const QList<Vertex> &vertices)
{
    // Outer points, of a circle around the origin.
    const Vertex &first = vertices.first();
    const Vertex &last = vertices.at(vertices.size() - 2);
    const double turn = std::atan2(last.y, last.x) - std::atan2(first.y, first.x);
    return turn < -1e-6 ? turn + twoPi : turn;
}

} // namespace

class tst_ArcNodeSpans : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();

    void spans_data();
    void spans();
    void segments_data();
    void segments();
    void samples_data();
    void samples();
    void fullCircleCloses_data();
    void fullCircleCloses();
};

void tst_ArcNodeSpans::init()
{
    QTest::failOnWarning(QRegularExpression(QStringLiteral(".*")));
}

void tst_ArcNodeSpans::spans_data()
{
    QTest::addColumn<double>("start");
    QTest::addColumn<double>("end");
    QTest::addColumn<double>("span");

    QTest::newRow("quarter") << 0.0 << pi / 2 << pi / 2;
    QTest::newRow("half") << 0.0 << pi << pi;
    QTest::newRow("from the left") << -1.0 << 1.0 << 2.0;
    QTest::newRow("the long way") << 1.0 << -1.0 << twoPi - 2.0;
    QTest::newRow("backwards, nearly around") << pi / 2 << 0.0 << 3 * pi / 2;
    QTest::newRow("a hair backwards") << 0.0 << -1e-20 << twoPi;
    QTest::newRow("once around and more") << 0.0 << 3 * pi << pi;
    QTest::newRow("many times around") << 0.0 << 21 * pi << pi;
    QTest::newRow("many times backwards") << 0.0 << -20.5 * pi << 1.5 * pi;
    QTest::newRow("nearly full") << 0.0 << twoPi - 1e-9 << twoPi - 1e-9;

    // A span of nothing is a full circle if, and only if, it ends at 2 pi.
    QTest::newRow("full circle") << 0.0 << twoPi << twoPi;
    QTest::newRow("full circle from the end") << twoPi << twoPi << twoPi;
    QTest::newRow("full circle from twice the end") << 2 * twoPi << twoPi << twoPi;
    QTest::newRow("full circle from before") << -twoPi << twoPi << twoPi;
    QTest::newRow("a hair before the end") << 0.0 << std::nextafter(twoPi, 0.0) << twoPi;
    QTest::newRow("a hair behind the end") << 0.0 << std::nextafter(twoPi, 7.0) << twoPi;
    QTest::newRow("just fuzzy enough") << 0.0 << twoPi + 0.9e-12 << twoPi;
    QTest::newRow("no longer fuzzy") << 0.0 << twoPi + 1.5e-12 << 1.5e-12;
    QTest::newRow("start just fuzzy enough") << twoPi - 0.9e-12 << twoPi << twoPi;
    QTest::newRow("start no longer fuzzy") << twoPi - 1.5e-12 << twoPi << 1.5e-12;
    QTest::newRow("none at 0") << 0.0 << 0.0 << 0.0;
    QTest::newRow("none at pi") << pi << pi << 0.0;
    QTest::newRow("around from pi") << pi << 3 * pi << 0.0;
    QTest::newRow("around from 1") << 1.0 << 1.0 + twoPi << 0.0;
    QTest::newRow("around to 0") << -twoPi << 0.0 << 0.0;
    QTest::newRow("back to 0") << twoPi << 0.0 << 0.0;
    QTest::newRow("twice around") << 0.0 << 2 * twoPi << 0.0;
    QTest::newRow("around to -2 pi") << 0.0 << -twoPi << 0.0;
}

void tst_ArcNodeSpans::spans()
{
    QFETCH(double, start);
    QFETCH(double, end);
    QFETCH(double, span);

    // A segment for each thousandth of a radian, so that their number tells the span.
    constexpr double radius = 5000.0;
    ArcNode node;
    node.update({{0.0, 0.0}, radius, start, end}, 2.0F, blue, false);
    const int expected = std::max(1, int(std::ceil(span * 1000.0)));
    QVERIFY2(std::abs(segmentsOf(node) - expected) <= (span == std::floor(span) ? 0 : 1),
            QByteArray::number(segmentsOf(node)));

    const QList<Vertex> vertices = verticesOf(node);
    QVERIFY(std::abs(vertices.at(0).x - 5001.0 * std::cos(start)) < 1e-3);
    QVERIFY(std::abs(vertices.at(0).y - 5001.0 * std::sin(start)) < 1e-3);
    const double turn = turnOf(vertices);
    const double expectedTurn = span > twoPi - 1e-6 ? 0.0 : span;
    QVERIFY2(std::abs(turn - expectedTurn) < 1e-6, QByteArray::number(turn));
}

void tst_ArcNodeSpans::segments_data()
{
    QTest::addColumn<double>("radius");
    QTest::addColumn<double>("end");
    QTest::addColumn<int>("segments");

    // One radian: as long as the radius.
    QTest::newRow("5 pixels") << 5.0 << 1.0 << 1;
    QTest::newRow("just over 5") << std::nextafter(5.0, 6.0) << 1.0 << 2;
    QTest::newRow("just under 5") << std::nextafter(5.0, 4.0) << 1.0 << 1;
    QTest::newRow("10 pixels") << 10.0 << 1.0 << 2;
    QTest::newRow("just over 10") << std::nextafter(10.0, 11.0) << 1.0 << 3;
    QTest::newRow("1000 pixels") << 1000.0 << 1.0 << 200;
    QTest::newRow("1001 pixels") << 1001.0 << 1.0 << 201;
    QTest::newRow("tiny radius") << 1e-300 << 1.0 << 1;
    QTest::newRow("no radius") << 0.0 << 1.0 << 1;
    QTest::newRow("negative radius") << -1000.0 << 1.0 << 1;
    QTest::newRow("half a radian") << 1000.0 << 0.5 << 100;
    QTest::newRow("short arc of a large circle") << 1e9 << 0x1p-26 << 3; // 14.9 pixels
    QTest::newRow("no span") << 1000.0 << 0.0 << 1;
    // 2 pi times 100 are 628.3 pixels, times 1000 6283.2, times 0.5 3.1, times 1 6.3.
    QTest::newRow("circle of 0.5") << 0.5 << twoPi << 1;
    QTest::newRow("circle of 1") << 1.0 << twoPi << 2;
    QTest::newRow("circle of 100") << 100.0 << twoPi << 126;
    QTest::newRow("circle of 1000") << 1000.0 << twoPi << 1257;
    QTest::newRow("circle of 10000") << 10000.0 << twoPi << 12567;
}

void tst_ArcNodeSpans::segments()
{
    QFETCH(double, radius);
    QFETCH(double, end);
    QFETCH(int, segments);

    ArcNode node;
    node.update({{3.0, 4.0}, radius, 0.0, end}, 1.0F, blue, false);
    QCOMPARE(node.geometry()->vertexCount(), 2 * (segments + 1));
    QCOMPARE(node.geometry()->indexCount(), 2 * (segments + 1));
    node.update({{3.0, 4.0}, radius, 0.0, end}, 1.0F, blue, true);
    QCOMPARE(node.geometry()->vertexCount(), 4 * (segments + 1));
    QCOMPARE(node.geometry()->indexCount(), 6 * (segments + 1));
}

void tst_ArcNodeSpans::samples_data()
{
    QTest::addColumn<ArcShape>("arc");
    QTest::addColumn<double>("span");
    QTest::addColumn<int>("segments");
    QTest::addColumn<float>("width");

    const auto row = [](const char *name, const ArcShape &arc, double span, int segments,
                             float width) {
        QTest::newRow(name) << arc << span << segments << width;
    };
    row("one radian", {{100.0, 200.0}, 50.0, 0.0, 1.0}, 1.0, 10, 1.0F);
    row("full circle", {{0.0, 0.0}, 100.0, 0.0, twoPi}, twoPi, 126, 2.0F);
    row("from 1 to 3", {{-10.25, 7.75}, 37.5, 1.0, 3.0}, 2.0, 15, 1.5F);
    row("from the left", {{320.0, 240.0}, 60.0, -1.0, 0.5}, 1.5, 18, 3.3F);
    row("the long way", {{320.0, 240.0}, 60.0, 2.0, 1.0}, twoPi - 1.0, 64, 1.0F);
    row("large circle", {{1e6, 1e6}, 1e6, 4.0, 4.0001220703125}, 0x1p-13, 25, 1.0F);
    row("tiny circle", {{10.0, 10.0}, 0.1, 0.0, twoPi}, twoPi, 1, 0.5F);
    row("wider than the circle", {{10.0, 10.0}, 5.0, 0.0, 1.0}, 1.0, 1, 30.0F);
    row("negative width", {{10.0, 10.0}, 50.0, 0.0, 1.0}, 1.0, 10, -2.0F);
    row("negative radius", {{10.0, 10.0}, -50.0, 0.5, 1.5}, 1.0, 1, 2.0F);
}

void tst_ArcNodeSpans::samples()
{
    QFETCH(ArcShape, arc);
    QFETCH(double, span);
    QFETCH(int, segments);
    QFETCH(float, width);

    ArcNode plain;
    plain.update(arc, width, blue, false);
    ArcNode smooth;
    smooth.update(arc, width, blue, true);
    const QList<Vertex> plainVertices = verticesOf(plain);
    const QList<Vertex> vertices = verticesOf(smooth);
    QCOMPARE(plainVertices.size(), 2 * (segments + 1));
    QCOMPARE(vertices.size(), 4 * (segments + 1));

    using Exact = long double;
    const Exact outer = Exact(arc.radius) + Exact(width) / 2;
    const Exact inner = Exact(arc.radius) - Exact(width) / 2;
    const Exact reach = Exact(0.4) * Exact(width);
    for (int i = 0; i <= segments; ++i) {
        const double angle = arc.startAngle + i * (span / segments);
        const Exact x = std::cos(Exact(angle));
        const Exact y = std::sin(Exact(angle));
        for (int k = 0; k < 4; ++k) {
            const Vertex &vertex = vertices.at(4 * i + k);
            const Exact radius = k % 2 ? inner : outer;
            const int sign = k == 1 || k == 2 ? 1 : -1;
            const bool isRight = isNear(vertex.x, arc.center.x(), radius * x)
                                 && isNear(vertex.y, arc.center.y(), radius * y)
                                 && isNear(vertex.dx, sign * reach * x)
                                 && isNear(vertex.dy, sign * reach * y)
                                 && vertex.color == (k < 2 ? blueBytes : clear);
            if (!isRight) {
                QFAIL(qPrintable(QStringLiteral("sample %1, vertex %2: %3")
                                         .arg(i)
                                         .arg(k)
                                         .arg(QLatin1String(toString(vertex)))));
            }
            // Without the fringes: the same places, but nothing to be moved by.
            if (k < 2) {
                const float none = k == 0 ? -0.0F : 0.0F;
                QCOMPARE(plainVertices.at(2 * i + k),
                        (Vertex{vertex.x, vertex.y, blueBytes, none, none}));
            }
        }
    }
}

void tst_ArcNodeSpans::fullCircleCloses_data()
{
    QTest::addColumn<double>("radius");
    QTest::newRow("small") << 3.0;
    QTest::newRow("medium") << 150.0;
    QTest::newRow("large") << 20000.0;
}

void tst_ArcNodeSpans::fullCircleCloses()
{
    QFETCH(double, radius);

    ArcNode node;
    node.update({{0.0, 0.0}, radius, 0.0, twoPi}, 1.0F, blue, false);
    const QList<Vertex> vertices = verticesOf(node);
    const Vertex &first = vertices.at(0);
    const Vertex &last = vertices.at(vertices.size() - 2);
    QVERIFY(std::abs(first.x - last.x) <= radius * 1e-7);
    QVERIFY(std::abs(first.y - last.y) <= radius * 1e-7);
    // Once around: the steps add up.
    double sum = 0.0;
    for (qsizetype i = 2; i < vertices.size(); i += 2) {
        const Vertex &a = vertices.at(i - 2);
        const Vertex &b = vertices.at(i);
        sum += std::atan2(
                double(a.x) * b.y - double(a.y) * b.x, double(a.x) * b.x + double(a.y) * b.y);
    }
    QVERIFY2(std::abs(sum - twoPi) < 1e-3, QByteArray::number(sum));
}

QTEST_APPLESS_MAIN(tst_ArcNodeSpans)

#include "tst_arcnode_spans.moc"
