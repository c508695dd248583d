// SPDX-License-Identifier: MIT
#include "PaintedGrid.h"

#include <ChartsLibrary/PolarGrid.h>

#include <QtCore/QRegularExpression>
#include <QtTest/QTest>

#include <array>
#include <limits>
#include <numbers>

using namespace Charts;

namespace {

// In the order of their drawing.
enum Container { Spokes, Rings, Axes, Boundary };

// Of vertices, which are floats, in pixels.
constexpr double tolerance = 1e-3;

bool isNear(double a, double b)
{
    return std::abs(a - b) < tolerance;
}

bool isNear(const QPointF &a, const QPointF &b)
{
    return distanceOf(a, b) < tolerance;
}

bool isNear(const QLineF &a, const QLineF &b)
{
    return isNear(a.p1(), b.p1()) && isNear(a.p2(), b.p2());
}

/*! Whether \a actual is a whole pixel next to \a exact. */
bool isRounded(const QPointF &actual, const QPointF &exact)
{
    return isNear(actual, QPointF(actual.toPoint()))
           && std::abs(actual.x() - exact.x()) < 0.5 + tolerance
           && std::abs(actual.y() - exact.y()) < 0.5 + tolerance;
}

/*! Whether \a arc is drawn as a full circle of these, half a pixel out and in. */
bool isRing(const DrawnArc &arc, const QPointF &center, double radius)
{
    return arc.isClosed() && isNear(arc.center(), center)
           && isNear(arc.radius(arc.outer), radius + 0.5)
           && isNear(arc.radius(arc.inner), radius - 0.5)
           && arc.deviation(center, radius) < tolerance;
}

/*! A circle without radius: its first and its last sample, both at the angle 0, are at the centre. */
bool isPoint(const DrawnArc &arc, const QPointF &center)
{
    return arc.middle.size() == 2 && arc.deviation(center, 0.0) < tolerance;
}

QByteArray text(const DrawnLine &line)
{
    return QByteArray::number(line.line.x1()) + ", " + QByteArray::number(line.line.y1()) + " to "
           + QByteArray::number(line.line.x2()) + ", " + QByteArray::number(line.line.y2());
}

} // namespace

// Lines and circles read back from the vertices.
class tst_PolarGridShapes : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void boundary_data();
    void boundary();
    void boundaryOfNaN();
    void rings_data();
    void rings();
    void axes_data();
    void axes();
    void spokes_data();
    void spokes();
    void spokesOfOneSize();
    void smoothIsTheSame();
    void scaleOnlyMovesTheReference();
};

void tst_PolarGridShapes::init()
{
    QTest::failOnWarning(QRegularExpression(QStringLiteral(".*")));
}

void tst_PolarGridShapes::boundary_data()
{
    QTest::addColumn<QSizeF>("size");
    QTest::addColumn<double>("scale");
    QTest::addColumn<QList<double>>("radii");
    const auto row = [](const char *name, const QSizeF &size, double scale,
                             const QList<double> &radii) {
        QTest::newRow(name) << size << scale << radii;
    };
    const QSizeF wide(200, 100);
    const double infinity = std::numeric_limits<double>::infinity();
    row("scale 1", wide, 1.0, {50});
    row("scale 2", wide, 2.0, {25, 50});
    row("scale 2, high", {100, 200}, 2.0, {25, 50});
    row("scale 3", wide, 3.0, {17, 50});
    row("scale 4: half a pixel goes up", wide, 4.0, {13, 50});
    row("scale 0.5", wide, 0.5, {50});
    row("scale 0", wide, 0.0, {50});
    row("negative", wide, -3.0, {50});
    row("next to nothing", wide, 1e-300, {50});
    row("negative infinity", wide, -infinity, {50});
    row("rounded to the boundary", wide, 1.01, {50});
    row("a pixel inside", wide, 1.02, {49, 50});
    row("just below 1", wide, 0.99, {50});
    row("half a pixel left", wide, 90.0, {1, 50});
    row("nothing left", wide, 1000.0, {0, 50});
    row("infinity", wide, infinity, {0, 50});
    row("odd", {51, 53}, 1.0, {25.5});
    row("odd, half a pixel inside", {51, 53}, 1.02, {25, 25.5});
    row("odd, scale 3", {51, 53}, 3.0, {9, 25.5});
    // Whole pixels of the reference circle show inside a boundary at a fraction just above them.
    row("fractional, rounded down", {50.8, 60}, 1.0, {25, 25.4});
    row("fractional, rounded up", {51.2, 60}, 1.0, {25.6});
    row("large", {8000, 6000}, 1.5, {2000, 3000});
}

void tst_PolarGridShapes::boundary()
{
    QFETCH(QSizeF, size);
    QFETCH(double, scale);
    QFETCH(QList<double>, radii);
    PaintedGrid<PolarGrid> grid(size);
    grid.setScale(scale);
    grid.paint();
    const QList<DrawnArc> arcs = grid.arcs(Boundary);
    const QPointF center(size.width() / 2.0, size.height() / 2.0);
    QCOMPARE(arcs.size(), radii.size());
    for (qsizetype i = 0; i < arcs.size(); ++i) {
        const bool isRight =
                radii[i] > 0.0 ? isRing(arcs[i], center, radii[i]) : isPoint(arcs[i], center);
        QVERIFY2(isRight, QByteArray::number(arcs[i].radius(arcs[i].middle)).constData());
    }
}

void tst_PolarGridShapes::boundaryOfNaN()
{
    PaintedGrid<PolarGrid> grid(QSizeF(200, 100));
    grid.setScale(std::numeric_limits<double>::quiet_NaN());
    grid.paint();
    QList<DrawnArc> arcs = grid.arcs(Boundary);
    QVERIFY(!arcs.isEmpty());
    QVERIFY(isRing(arcs.takeLast(), {100, 50}, 50.0));
    for (const DrawnArc &arc : arcs)
        QVERIFY2(isPoint(arc, {100, 50}), "no circle can be seen that stands for it");
}

void tst_PolarGridShapes::rings_data()
{
    QTest::addColumn<QSizeF>("size");
    QTest::addColumn<QList<double>>("radii");
    QTest::newRow("wide") << QSizeF(200, 100) << QList<double>{0, 12.5, 25, 37.5};
    QTest::newRow("high") << QSizeF(100, 200) << QList<double>{0, 12.5, 25, 37.5};
    QTest::newRow("odd") << QSizeF(51, 53) << QList<double>{0, 6.375, 12.75, 19.125};
    QTest::newRow("fractional") << QSizeF(50.8, 60) << QList<double>{0, 6.35, 12.7, 19.05};
    QTest::newRow("large") << QSizeF(8000, 6000) << QList<double>{0, 750, 1500, 2250};
}

void tst_PolarGridShapes::rings()
{
    QFETCH(QSizeF, size);
    QFETCH(QList<double>, radii);
    PaintedGrid<PolarGrid> grid(size);
    grid.paint();
    const QList<DrawnArc> arcs = grid.arcs(Rings);
    const QPointF center(size.width() / 2.0, size.height() / 2.0);
    QCOMPARE(arcs.size(), 4);
    QVERIFY(isPoint(arcs[0], center));
    for (qsizetype i = 1; i < 4; ++i)
        QVERIFY(isRing(arcs[i], center, radii[i]));
}

void tst_PolarGridShapes::axes_data()
{
    QTest::addColumn<QSizeF>("size");
    QTest::addColumn<QLineF>("vertical");
    QTest::addColumn<QLineF>("horizontal");
    QTest::newRow("wide") << QSizeF(200, 100) << QLineF(100, 0, 100, 100)
                          << QLineF(50, 50, 150, 50);
    QTest::newRow("high") << QSizeF(100, 200) << QLineF(50, 50, 50, 150)
                          << QLineF(0, 100, 100, 100);
    QTest::newRow("odd") << QSizeF(201, 101) << QLineF(100, 0, 100, 101) << QLineF(50, 50, 151, 50);
    QTest::newRow("odd, high") << QSizeF(37, 53) << QLineF(18, 8, 18, 45) << QLineF(0, 26, 37, 26);
    // The fraction is dropped, not rounded: 25.9 and 29.9, 55.8 and 51.8.
    QTest::newRow("fractional") << QSizeF(51.8, 59.8) << QLineF(25, 4, 25, 55)
                                << QLineF(0, 29, 51, 29);
    // As a float, the radius is larger than half the width. That little is dropped towards 0.
    QTest::newRow("a fraction of a pixel")
            << QSizeF(0.2, 0.2) << QLineF(0, 0, 0, 0) << QLineF(0, 0, 0, 0);
    QTest::newRow("one pixel") << QSizeF(1, 1) << QLineF(0, 0, 0, 1) << QLineF(0, 0, 1, 0);
}

void tst_PolarGridShapes::axes()
{
    QFETCH(QSizeF, size);
    QFETCH(QLineF, vertical);
    QFETCH(QLineF, horizontal);
    // They end at the boundary and not at the reference circle.
    for (const double scale : {1.0, 2.0, 0.5}) {
        PaintedGrid<PolarGrid> grid(size);
        grid.setScale(scale);
        grid.paint();
        const QList<DrawnLine> lines = grid.lines(Axes);
        QCOMPARE(lines.size(), 2);
        QVERIFY2(isNear(lines[0].line, vertical), text(lines[0]).constData());
        QVERIFY2(isNear(lines[1].line, horizontal), text(lines[1]).constData());
    }
}

void tst_PolarGridShapes::spokes_data()
{
    QTest::addColumn<QSizeF>("size");
    // Where the spokes of each pass begin: quarters of the radius, without their fractions.
    QTest::addColumn<QList<int>>("starts");
    QTest::newRow("wide") << QSizeF(200, 100) << QList<int>{12, 25, 37};
    QTest::newRow("high") << QSizeF(100, 200) << QList<int>{12, 25, 37};
    QTest::newRow("odd") << QSizeF(201, 103) << QList<int>{12, 25, 38};
    QTest::newRow("fractional") << QSizeF(63.9, 70.4) << QList<int>{7, 15, 23};
    QTest::newRow("large") << QSizeF(4000, 2998) << QList<int>{374, 749, 1124};
    QTest::newRow("tiny") << QSizeF(3, 3) << QList<int>{0, 0, 1};
}

void tst_PolarGridShapes::spokes()
{
    QFETCH(QSizeF, size);
    QFETCH(QList<int>, starts);
    PaintedGrid<PolarGrid> grid(size);
    grid.paint();
    const QList<DrawnLine> lines = grid.lines(Spokes);
    QCOMPARE(lines.size(), 28);
    const QPointF center(size.width() / 2.0, size.height() / 2.0);
    const double radius = std::min(center.x(), center.y());
    qsizetype index = 0;
    for (qsizetype pass = 0; pass < 3; ++pass) {
        const int count = std::array{4, 8, 16}[std::size_t(pass)];
        for (int i = 0; i < count; ++i, ++index) {
            const double angle = (i + 0.5) * 2.0 * std::numbers::pi / count;
            const QPointF direction(std::cos(angle), std::sin(angle));
            const QLineF &line = lines[index].line;
            QVERIFY2(isRounded(line.p1(), center + direction * starts[pass]),
                    text(lines[index]).constData());
            QVERIFY2(isRounded(line.p2(), center + direction * radius),
                    text(lines[index]).constData());
        }
    }
}

void tst_PolarGridShapes::spokesOfOneSize()
{
    // 100 / sqrt(2) = 70.7, 25 / sqrt(2) = 17.7; cos and sin of 22.5 degrees are 0.924 and 0.383,
    // of 11.25 degrees 0.981 and 0.195.
    PaintedGrid<PolarGrid> grid(QSizeF(200, 200));
    grid.paint();
    const QList<DrawnLine> lines = grid.lines(Spokes);
    QCOMPARE(lines.size(), 28);
    QVERIFY(isNear(lines[0].line, QLineF(118, 118, 171, 171)));
    QVERIFY(isNear(lines[1].line, QLineF(82, 118, 29, 171)));
    QVERIFY(isNear(lines[2].line, QLineF(82, 82, 29, 29)));
    QVERIFY(isNear(lines[3].line, QLineF(118, 82, 171, 29)));
    QVERIFY(isNear(lines[4].line, QLineF(146, 119, 192, 138)));
    QVERIFY(isNear(lines[11].line, QLineF(146, 81, 192, 62)));
    QVERIFY(isNear(lines[12].line, QLineF(174, 115, 198, 120)));
    QVERIFY(isNear(lines[27].line, QLineF(174, 85, 198, 80)));
}

void tst_PolarGridShapes::smoothIsTheSame()
{
    PaintedGrid<PolarGrid> plain(QSizeF(201, 103));
    PaintedGrid<PolarGrid> smooth(QSizeF(201, 103));
    smooth.setAntialiasing(true);
    for (auto *grid : {&plain, &smooth}) {
        grid->setScale(2.0);
        grid->paint();
    }
    for (const Container container : {Spokes, Axes}) {
        const QList<DrawnLine> lines = smooth.lines(container);
        for (qsizetype i = 0; i < lines.size(); ++i) {
            QVERIFY(lines[i].isSmooth);
            const QLineF expected = plain.lines(container)[i].line;
            QVERIFY(isNear(lines[i].line, expected));
        }
    }
    for (const Container container : {Rings, Boundary}) {
        const QList<DrawnArc> arcs = smooth.arcs(container);
        for (qsizetype i = 0; i < arcs.size(); ++i) {
            QVERIFY(arcs[i].isSmooth);
            QCOMPARE(arcs[i].outer, plain.arcs(container)[i].outer);
            QCOMPARE(arcs[i].inner, plain.arcs(container)[i].inner);
        }
    }
}

void tst_PolarGridShapes::scaleOnlyMovesTheReference()
{
    PaintedGrid<PolarGrid> grid(QSizeF(201, 103));
    grid.paint();
    const QList<QByteArray> before = grid.picture();
    grid.setScale(2.0);
    grid.paint();
    QList<QByteArray> after = grid.picture();
    QCOMPARE(after.size(), before.size() + 1);
    after.removeAt(after.size() - 2);
    QCOMPARE(after, before);
}

QTEST_GUILESS_MAIN(tst_PolarGridShapes)
#include "tst_polargrid_shapes.moc"
