// SPDX-License-Identifier: MIT
#include "PaintedGrid.h"

#include <ChartsLibrary/SmithGrid.h>

#include <QtCore/QRegularExpression>
#include <QtTest/QTest>

#include <limits>

using namespace Charts;

namespace {

// In the order of their drawing.
enum Container { InnerArcs, Marker, OuterArcs, RealAxis };

constexpr double infinity = std::numeric_limits<double>::infinity();

QByteArray textOf(const QLineF &line)
{
    return QByteArray::number(line.x1()) + ", " + QByteArray::number(line.y1()) + " to "
           + QByteArray::number(line.x2()) + ", " + QByteArray::number(line.y2());
}

bool isNear(const QLineF &a, const QLineF &b)
{
    return distanceOf(a.p1(), b.p1()) < 1e-3 && distanceOf(a.p2(), b.p2()) < 1e-3;
}

} // namespace

// Boundary, unit circle and the two straight lines, read back from the vertices.
class tst_SmithOutlines : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void outerArcs_data();
    void outerArcs();
    void marker_data();
    void marker();
    void realAxis_data();
    void realAxis();
    void withoutArea();
    void withoutNumber();
    void fractionalSize();
};

void tst_SmithOutlines::init()
{
    QTest::failOnWarning(QRegularExpression(QStringLiteral(".*")));
}

void tst_SmithOutlines::withoutNumber()
{
    for (const QSizeF &size : {QSizeF(200, 200), QSizeF(200, 100), QSizeF(37, 53), QSizeF(1, 1),
                 QSizeF(4000, 3000)}) {
        PaintedGrid<SmithGrid> grid(size);
        grid.setScale(std::numeric_limits<double>::quiet_NaN());
        grid.paint();
        QCOMPARE(grid.arcs(InnerArcs).size(), 0);
        QCOMPARE(grid.arcs(OuterArcs).size(), 1);
        const QPointF center(std::floor(size.width() / 2.0), std::floor(size.height() / 2.0));
        const double radius = std::min(center.x(), center.y());
        QVERIFY(grid.arcs(OuterArcs)[0].deviation(center, radius) < 1e-3);
        QCOMPARE(grid.lines(Marker).size(), 1);
        QCOMPARE(grid.lines(RealAxis).size(), 1);
    }
}

void tst_SmithOutlines::outerArcs_data()
{
    QTest::addColumn<QSizeF>("size");
    QTest::addColumn<double>("scale");
    QTest::addColumn<QPointF>("center");
    QTest::addColumn<QList<double>>("radii");
    const auto row = [](const char *name, const QSizeF &size, double scale, const QPointF &center,
                             const QList<double> &radii) {
        QTest::newRow(name) << size << scale << center << radii;
    };
    row("scale 1: twice the same", {200, 200}, 1.0, {100, 100}, {100, 100});
    row("scale 4", {200, 200}, 4.0, {100, 100}, {100, 25});
    row("not rounded", {200, 100}, 3.0, {100, 50}, {50, 50.0 / 3.0});
    row("just below 1", {200, 200}, 0.9999, {100, 100}, {100});
    row("just above 1", {200, 200}, 1.0001, {100, 100}, {100, 99.990001});
    row("scale 0.5", {200, 200}, 0.5, {100, 100}, {100});
    row("scale 0", {200, 200}, 0.0, {100, 100}, {100});
    row("negative", {200, 200}, -4.0, {100, 100}, {100});
    row("odd", {37, 53}, 2.0, {18, 26}, {18, 9});
    row("large", {4000, 3000}, 1.5, {2000, 1500}, {1500, 1000});
}

void tst_SmithOutlines::outerArcs()
{
    QFETCH(QSizeF, size);
    QFETCH(double, scale);
    QFETCH(QPointF, center);
    QFETCH(QList<double>, radii);
    for (const bool isFlipped : {false, true}) {
        PaintedGrid<SmithGrid> grid(size);
        grid.setScale(scale);
        grid.setFlip(isFlipped);
        grid.paint();
        const QList<DrawnArc> arcs = grid.arcs(OuterArcs);
        QCOMPARE(arcs.size(), radii.size());
        for (qsizetype i = 0; i < arcs.size(); ++i) {
            QVERIFY(arcs[i].isClosed());
            QVERIFY(distanceOf(arcs[i].center(), center) < 1e-3);
            QVERIFY(std::abs(arcs[i].radius(arcs[i].middle) - radii[i]) < 1e-3);
            QVERIFY(arcs[i].deviation(center, radii[i]) < 1e-3);
        }
    }
}

void tst_SmithOutlines::marker_data()
{
    QTest::addColumn<QSizeF>("size");
    QTest::addColumn<double>("scale");
    QTest::addColumn<bool>("isFlipped");
    QTest::addColumn<QLineF>("line");
    const auto row = [](const char *name, const QSizeF &size, double scale, bool isFlipped,
                             const QLineF &line) {
        QTest::newRow(name) << size << scale << isFlipped << line;
    };
    const QSizeF square(200, 200);
    row("tangent", square, 1.0, false, {200, 100, 200, 100});
    row("tangent, flipped", square, 1.0, true, {0, 100, 0, 100});
    row("tangent, wide", {200, 100}, 1.0, false, {150, 50, 150, 50});
    // At 60 of 100 pixels the chord reaches 80 up and down. It runs upwards.
    row("inside", square, 100.0 / 60.0, false, {160, 180, 160, 20});
    row("inside, flipped", square, 100.0 / 60.0, true, {40, 180, 40, 20});
    row("rounded to a whole pixel", square, 100.0 / 59.6, false, {160, 180, 160, 20});
    row("half a pixel, to the right", {200, 100}, 4.0, false,
            {113, 50 + std::sqrt(2331.0), 113, 50 - std::sqrt(2331.0)});
    row("half a pixel, flipped", {200, 100}, 4.0, true,
            {88, 50 + std::sqrt(2356.0), 88, 50 - std::sqrt(2356.0)});
    row("rounded to the boundary", square, 1.004, false, {200, 100, 200, 100});
    row("at the centre", square, 1000.0, false, {100, 200, 100, 0});
    row("at the centre, infinity", square, infinity, true, {100, 200, 100, 0});
    row("outside by less than half a pixel", square, 0.996, false, {200, 100, 200, 100});
    row("missing by a pixel", square, 0.993, false, {});
    row("missing", square, 0.5, false, {});
    row("missing, flipped", square, 0.5, true, {});
    row("missing by far", {4000, 3000}, 0.0, false, {});
}

void tst_SmithOutlines::marker()
{
    QFETCH(QSizeF, size);
    QFETCH(double, scale);
    QFETCH(bool, isFlipped);
    QFETCH(QLineF, line);
    for (const bool isSmooth : {false, true}) {
        PaintedGrid<SmithGrid> grid(size);
        grid.setAntialiasing(isSmooth);
        grid.setScale(scale);
        grid.setFlip(isFlipped);
        grid.paint();
        const QList<DrawnLine> lines = grid.lines(Marker);
        QCOMPARE(lines.size(), 1);
        QVERIFY2(isNear(lines[0].line, line), textOf(lines[0].line).constData());
    }
}

void tst_SmithOutlines::withoutArea()
{
    // A boundary without radius: neither line has a direction.
    PaintedGrid<SmithGrid> grid(QSizeF(1, 1));
    grid.paint();
    QCOMPARE(grid.arcs(InnerArcs).size(), 0);
    QCOMPARE(grid.arcs(OuterArcs).size(), 2);
    for (const Container container : {Marker, RealAxis}) {
        const QLineF line = grid.lines(container).at(0).line;
        QVERIFY(std::isnan(line.x1()) && std::isnan(line.y2()));
    }
}

void tst_SmithOutlines::realAxis_data()
{
    QTest::addColumn<QSizeF>("size");
    QTest::addColumn<QLineF>("line");
    QTest::newRow("square") << QSizeF(200, 200) << QLineF(200, 100, 0, 100);
    QTest::newRow("wide") << QSizeF(200, 100) << QLineF(150, 50, 50, 50);
    QTest::newRow("high") << QSizeF(37, 53) << QLineF(36, 26, 0, 26);
    QTest::newRow("large") << QSizeF(4000, 3000) << QLineF(3500, 1500, 500, 1500);
}

void tst_SmithOutlines::realAxis()
{
    QFETCH(QSizeF, size);
    QFETCH(QLineF, line);
    for (const double scale : {0.5, 1.0, 4.0}) {
        for (const bool isFlipped : {false, true}) {
            PaintedGrid<SmithGrid> grid(size);
            grid.setScale(scale);
            grid.setFlip(isFlipped);
            grid.paint();
            const QList<DrawnLine> lines = grid.lines(RealAxis);
            QCOMPARE(lines.size(), 1);
            QVERIFY2(isNear(lines[0].line, line), textOf(lines[0].line).constData());
        }
    }
}

void tst_SmithOutlines::fractionalSize()
{
    // The size is rounded, halves upwards, before anything is made of it.
    const std::pair<QSizeF, QSizeF> sizes[] = {
            {{199.5, 120.4}, {200, 120}}, {{36.5, 53.49}, {37, 53}}, {{0.5, 7}, {1, 7}}};
    for (const auto &[fractional, whole] : sizes) {
        PaintedGrid<SmithGrid> first(fractional);
        PaintedGrid<SmithGrid> second(whole);
        first.paint();
        second.paint();
        QCOMPARE(first.picture(), second.picture());
    }
}

QTEST_GUILESS_MAIN(tst_SmithOutlines)
#include "tst_smithoutlines.moc"
