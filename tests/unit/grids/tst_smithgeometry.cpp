// SPDX-License-Identifier: MIT
#include "PaintedGrid.h"
#include "SmithReference.h"

#include <ChartsLibrary/SmithGrid.h>

#include <QtCore/QRegularExpression>
#include <QtTest/QTest>

#include <limits>

using namespace Charts;

namespace {

// In the order of their drawing.
enum Container { InnerArcs, Marker, OuterArcs, RealAxis };

constexpr double infinity = std::numeric_limits<double>::infinity();

/*! Of vertices, which are floats. In pixels. */
double toleranceOf(const QSizeF &size)
{
    return 1e-6 * std::max(size.width(), size.height()) + 1e-4;
}

/*!
    Says what is wrong with \a arc, drawn for \a circle inside the boundary \a frame: nothing when
    all of it lies on the circle and inside the boundary, and it is closed or its two ends are on
    the boundary. There is only one such arc.
*/
QByteArray mistakeIn(const DrawnArc &arc, const ReferenceCircle &circle,
        const ReferenceFrame &frame, double tolerance)
{
    const QPointF center(double(frame.x), double(frame.y));
    const double boundary = double(frame.radius);
    // The squares of both radii are subtracted from each other to find the ends; of the larger one
    // fifteen digits are left.
    const double radius = double(circle.radius);
    const double endTolerance = tolerance + 1e-15 * radius * radius / boundary;
    const double deviation = arc.deviation({double(circle.x), double(circle.y)}, radius);
    if (!(deviation < tolerance))
        return "off the circle by " + QByteArray::number(deviation);
    for (const QPointF &point : arc.middle) {
        if (distanceOf(point, center) > boundary + endTolerance)
            return "outside of the boundary";
    }
    const bool isClosed = distanceOf(arc.middle.first(), arc.middle.last()) < tolerance;
    // So little may be cut off that both ends are one point of the boundary.
    const bool isPoint = arc.middle.size() == 2;
    if (isClosed != circle.isWhole && !(isClosed && isPoint))
        return isClosed ? "closed" : "open";
    if (isClosed && !isPoint && !arc.isClosed())
        return "without extent";
    for (const QPointF &end : {arc.middle.first(), arc.middle.last()}) {
        if (!circle.isWhole && std::abs(distanceOf(end, center) - boundary) > endTolerance)
            return "not cut at the boundary";
    }
    return {};
}

bool isNear(const QLineF &a, const QLineF &b)
{
    return distanceOf(a.p1(), b.p1()) < 1e-3 && distanceOf(a.p2(), b.p2()) < 1e-3;
}

} // namespace

// The lists of circles inside the boundary, read back from the vertices.
class tst_SmithGeometry : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();

    void reference_data();
    void reference();
    void innerArcs_data();
    void innerArcs();
    void beyondIntegers();
    void flipMirrors_data();
    void flipMirrors();
    void fittedArcs_data();
    void fittedArcs();
};

void tst_SmithGeometry::init()
{
    QTest::failOnWarning(QRegularExpression(QStringLiteral(".*")));
}

void tst_SmithGeometry::reference_data()
{
    QTest::addColumn<QSize>("size");
    QTest::addColumn<double>("scale");
    QTest::addColumn<bool>("isFlipped");
    QTest::addColumn<QByteArrayList>("circles");
    QTest::newRow("scale 1") << QSize(200, 200) << 1.0 << false
                             << QByteArrayList{"117 100 83 whole", "133 100 67 whole",
                                        "150 100 50 whole", "167 100 33 whole", "183 100 17 whole",
                                        "200 -273 373 cut", "200 473 373 cut", "200 -73 173 cut",
                                        "200 273 173 cut", "200 0 100 cut", "200 200 100 cut",
                                        "200 42 58 cut", "200 158 58 cut", "200 73 27 cut",
                                        "200 127 27 cut"};
    QTest::newRow("scale 0.2") << QSize(200, 200) << 0.2 << false
                               << QByteArrayList{"317 100 283 cut", "333 100 267 cut",
                                          "350 100 250 cut", "367 100 233 cut", "383 100 217 cut",
                                          "600 -3366 3466 cut", "600 3566 3466 cut",
                                          "600 -1690 1790 cut", "600 1890 1790 cut",
                                          "600 -1200 1300 cut", "600 1400 1300 cut"};
    QTest::newRow("scale 0.5") << QSize(200, 200) << 0.5 << false
                               << QByteArrayList{"167 100 133 cut", "183 100 117 cut",
                                          "200 100 100 cut", "217 100 83 cut", "233 100 67 cut",
                                          "300 -746 846 cut", "300 946 846 cut", "300 -304 404 cut",
                                          "300 504 404 cut", "300 -150 250 cut", "300 350 250 cut",
                                          "300 -73 173 cut", "300 273 173 cut"};
    QTest::newRow("scale 1.5") << QSize(200, 200) << 1.5 << false
                               << QByteArrayList{"33 100 133 cut", "300 100 133 cut",
                                          "83 100 83 whole", "250 100 83 cut", "100 100 67 whole",
                                          "233 100 67 cut", "117 100 50 whole", "217 100 50 cut",
                                          "133 100 33 whole", "200 100 33 cut", "150 100 17 whole",
                                          "183 100 17 whole", "167 -160 260 cut", "167 360 260 cut",
                                          "167 -22 122 cut", "167 222 122 cut", "167 28 72 cut",
                                          "167 172 72 cut", "167 55 45 cut", "167 145 45 cut",
                                          "167 72 28 cut", "167 128 28 cut", "233 100 67 cut"};
    QTest::newRow("scale 2") << QSize(200, 200) << 2.0 << false
                             << QByteArrayList{"25 100 125 cut", "275 100 125 cut",
                                        "75 100 75 whole", "225 100 75 cut", "92 100 58 whole",
                                        "208 100 58 cut", "108 100 42 whole", "192 100 42 cut",
                                        "125 100 25 whole", "175 100 25 whole", "150 -112 212 cut",
                                        "150 312 212 cut", "150 -1 101 cut", "150 201 101 cut",
                                        "150 38 63 cut", "150 163 63 cut", "150 57 43 cut",
                                        "150 143 43 cut", "150 73 27 whole", "150 127 27 whole",
                                        "200 100 50 cut"};
    QTest::newRow("scale 4") << QSize(200, 200) << 4.0 << false
                             << QByteArrayList{"13 100 113 cut", "238 100 113 cut",
                                        "63 100 63 whole", "188 100 63 cut", "79 100 46 whole",
                                        "171 100 46 cut", "96 100 29 whole", "154 100 29 whole",
                                        "125 -50 150 cut", "125 250 150 cut", "125 24 76 cut",
                                        "125 176 76 cut", "125 47 53 cut", "125 153 53 cut",
                                        "125 57 43 whole", "125 143 43 whole", "125 81 19 whole",
                                        "125 119 19 whole", "150 100 25 whole"};
    QTest::newRow("scale 4, flipped")
            << QSize(200, 200) << 4.0 << true
            << QByteArrayList{"188 100 113 cut", "-38 100 113 cut", "138 100 63 cut",
                       "13 100 63 cut", "121 100 46 whole", "29 100 46 cut", "104 100 29 whole",
                       "46 100 29 whole", "75 -50 150 cut", "75 250 150 cut", "75 24 76 cut",
                       "75 176 76 cut", "75 47 53 cut", "75 153 53 cut", "75 57 43 whole",
                       "75 143 43 whole", "75 81 19 whole", "75 119 19 whole", "50 100 25 whole"};
    QTest::newRow("odd") << QSize(37, 53) << 1.0 << false
                         << QByteArrayList{"21 26 15 whole", "24 26 12 whole", "27 26 9 whole",
                                    "30 26 6 whole", "33 26 3 whole", "36 -41 67 cut",
                                    "36 93 67 cut", "36 -5 31 cut", "36 57 31 cut", "36 8 18 cut",
                                    "36 44 18 cut", "36 16 10 cut", "36 36 10 cut", "36 21 5 cut",
                                    "36 31 5 cut"};
    QTest::newRow("wide, flipped")
            << QSize(200, 100) << 2.5 << true
            << QByteArrayList{"140 50 60 cut", "20 50 60 cut", "115 50 35 whole", "45 50 35 cut",
                       "107 50 27 whole", "53 50 27 cut", "98 50 18 whole", "62 50 18 cut",
                       "90 50 10 whole", "70 50 10 whole", "80 -43 93 cut", "80 143 93 cut",
                       "80 5 45 cut", "80 95 45 cut", "80 21 29 cut", "80 79 29 cut",
                       "80 28 22 cut", "80 72 22 cut", "80 38 12 whole", "80 62 12 whole",
                       "60 50 20 cut"};
    QTest::newRow("large") << QSize(4000, 3000) << 1.01 << false
                           << QByteArrayList{"1243 1500 2243 cut", "5728 1500 2243 cut",
                                      "1993 1500 1493 whole", "4978 1500 1493 cut",
                                      "2243 1500 1243 whole", "4728 1500 1243 cut",
                                      "2493 1500 993 whole", "4478 1500 993 cut",
                                      "2743 1500 743 whole", "4228 1500 743 cut",
                                      "2993 1500 493 whole", "3978 1500 493 cut",
                                      "3485 -4043 5543 cut", "3485 7043 5543 cut",
                                      "3485 -1072 2572 cut", "3485 4072 2572 cut",
                                      "3485 15 1485 cut", "3485 2985 1485 cut", "3485 642 858 cut",
                                      "3485 2358 858 cut", "3485 1102 398 cut", "3485 1898 398 cut",
                                      "4970 1500 1485 cut"};
}

void tst_SmithGeometry::reference()
{
    // The reference against lists worked out in exact fractions.
    QFETCH(QSize, size);
    QFETCH(double, scale);
    QFETCH(bool, isFlipped);
    QFETCH(QByteArrayList, circles);
    QByteArrayList actual;
    for (const ReferenceCircle &circle : referenceCircles(size, scale, isFlipped))
        actual.append(textOf(circle));
    QCOMPARE(actual, circles);
}

void tst_SmithGeometry::innerArcs_data()
{
    QTest::addColumn<QSize>("size");
    QTest::addColumn<double>("scale");
    const QSize sizes[] = {{200, 200}, {200, 100}, {37, 53}, {1, 1}, {4000, 3000}};
    const double scales[] = {0.2, 0.3, 0.5, 0.6, 1, 1.01, 1.45, 1.5, 2, 2.5, 4, 1000, 0, infinity,
            // Just off the scales at which arcs come and go.
            -2, 0.2999, 0.5999, 0.9999, 1.0001, 1.4501, 1.9999, 2.0001, 13, 0.05};
    for (const QSize &size : sizes) {
        for (const double scale : scales) {
            QTest::addRow("%d x %d, scale %g", size.width(), size.height(), scale) << size << scale;
        }
    }
    // Flipped, centres at half a pixel are rounded towards the boundary, so that a mirrored circle
    // would show if it were drawn.
    QTest::newRow("odd radius, scale 1") << QSize(400, 102) << 1.0;
    // One of few sizes where the fitted radius, which it is not yet, is another whole number.
    QTest::newRow("just not fitted") << QSize(2138, 2138) << 1.45;
}

void tst_SmithGeometry::innerArcs()
{
    QFETCH(QSize, size);
    QFETCH(double, scale);
    const ReferenceFrame frame(size);
    for (const bool isFlipped : {false, true}) {
        PaintedGrid<SmithGrid> grid{QSizeF(size)};
        grid.setScale(scale);
        grid.setFlip(isFlipped);
        grid.paint();
        const QList<DrawnArc> arcs = grid.arcs(InnerArcs);
        const QList<ReferenceCircle> circles = referenceCircles(size, scale, isFlipped);
        QCOMPARE(arcs.size(), circles.size());
        for (qsizetype i = 0; i < arcs.size(); ++i) {
            const QByteArray message = mistakeIn(arcs[i], circles[i], frame, toleranceOf(size));
            QVERIFY2(message.isEmpty(), (textOf(circles[i]) + ": " + message).constData());
        }
    }
}

void tst_SmithGeometry::beyondIntegers()
{
    // Some circles are larger than an int can say. Nothing of them is shown where they are not.
    PaintedGrid<SmithGrid> grid(QSizeF(16000, 16000));
    grid.setScale(0.0);
    grid.paint();
    for (const DrawnArc &arc : grid.arcs(InnerArcs)) {
        for (const QPointF &point : arc.middle)
            QVERIFY(distanceOf(point, {8000, 8000}) < 8000.01);
    }
    QCOMPARE(grid.arcs(OuterArcs).size(), 1);
}

void tst_SmithGeometry::flipMirrors_data()
{
    QTest::addColumn<QSize>("size");
    QTest::addColumn<double>("scale");
    // The centre's x is 100 and the circles' are no halves: rounding is mirrored, too.
    QTest::newRow("scale 1") << QSize(200, 200) << 1.0;
    QTest::newRow("scale 0.5") << QSize(200, 200) << 0.5;
    QTest::newRow("scale 1.5, wide") << QSize(200, 120) << 1.5;
    QTest::newRow("scale 3.1") << QSize(200, 200) << 3.1;
}

void tst_SmithGeometry::flipMirrors()
{
    QFETCH(QSize, size);
    QFETCH(double, scale);
    PaintedGrid<SmithGrid> straight{QSizeF(size)};
    PaintedGrid<SmithGrid> flipped{QSizeF(size)};
    flipped.setFlip(true);
    for (auto *grid : {&straight, &flipped}) {
        grid->setScale(scale);
        grid->paint();
    }
    const auto mirrored = [&](const QPointF &point) {
        return QPointF(size.width() - point.x(), point.y());
    };
    const QList<DrawnArc> arcs = straight.arcs(InnerArcs);
    const QList<DrawnArc> mirrorArcs = flipped.arcs(InnerArcs);
    QVERIFY(!arcs.isEmpty());
    QCOMPARE(arcs.size(), mirrorArcs.size());
    for (qsizetype i = 0; i < arcs.size(); ++i) {
        const DrawnArc &arc = arcs[i];
        const DrawnArc &mirror = mirrorArcs[i];
        // Mirrored, an arc runs from its end to its start. A circle starts at its right in both.
        if (arc.isClosed()) {
            QVERIFY(distanceOf(mirrored(arc.center()), mirror.center()) < 1e-3);
            QVERIFY(std::abs(arc.radius(arc.middle) - mirror.radius(mirror.middle)) < 1e-3);
            continue;
        }
        QCOMPARE(arc.middle.size(), mirror.middle.size());
        for (qsizetype j = 0; j < arc.middle.size(); ++j) {
            const QPointF &counterpart = mirror.middle[arc.middle.size() - 1 - j];
            QVERIFY(distanceOf(mirrored(arc.middle[j]), counterpart) < 1e-3);
        }
    }
    const QLineF marker = straight.lines(Marker)[0].line;
    const bool isMissing = marker.p1().isNull(); // outside of the boundary, mirrored or not
    QVERIFY(isNear(flipped.lines(Marker)[0].line,
            isMissing ? QLineF() : QLineF(mirrored(marker.p1()), mirrored(marker.p2()))));
    QVERIFY(isNear(flipped.lines(RealAxis)[0].line, straight.lines(RealAxis)[0].line));
    QCOMPARE(flipped.arcs(OuterArcs).size(), straight.arcs(OuterArcs).size());
    for (qsizetype i = 0; i < straight.arcs(OuterArcs).size(); ++i)
        QCOMPARE(flipped.arcs(OuterArcs)[i].middle, straight.arcs(OuterArcs)[i].middle);
}

void tst_SmithGeometry::fittedArcs_data()
{
    QTest::addColumn<double>("scale");
    QTest::addColumn<int>("fourth");
    QTest::addColumn<int>("fifth");
    // Of a boundary of 1500 pixels. The fourth pair is fitted above the scale 2, the fifth above
    // 1.45; up to there they meet the boundary at 60 and 30 degrees.
    QTest::newRow("1.45: neither") << 1.45 << 681 << 422;
    QTest::newRow("1.5: the fifth") << 1.5 << 674 << 421;
    QTest::newRow("2: the fifth") << 2.0 << 650 << 399;
    QTest::newRow("2.5: both") << 2.5 << 663 << 361;
    QTest::newRow("2.92: the fourth at its largest") << 2.92 << 667 << 333;
    QTest::newRow("4") << 4.0 << 643 << 290;
    QTest::newRow("10") << 10.0 << 520 << 255;
    QTest::newRow("infinity") << infinity << 500 << 250;
}

void tst_SmithGeometry::fittedArcs()
{
    QFETCH(double, scale);
    QFETCH(int, fourth);
    QFETCH(int, fifth);
    PaintedGrid<SmithGrid> grid(QSizeF(4000, 3000));
    grid.setScale(scale);
    grid.paint();
    // The last two pairs, followed by nothing but the mirrored unit circle, if there is one.
    QList<DrawnArc> arcs = grid.arcs(InnerArcs);
    if (arcs.size() % 2 == 1)
        arcs.removeLast();
    const double x = std::round(2000 + 1500 / scale);
    for (const auto &[radius, offset] : {std::pair(fourth, 4), std::pair(fifth, 2)}) {
        const DrawnArc &upper = arcs[arcs.size() - offset];
        const DrawnArc &lower = arcs[arcs.size() - offset + 1];
        QVERIFY2(upper.deviation({x, 1500.0 - radius}, radius) < 1e-2,
                QByteArray::number(upper.deviation({x, 1500.0 - radius}, radius)).constData());
        QVERIFY(lower.deviation({x, 1500.0 + radius}, radius) < 1e-2);
    }
}

QTEST_GUILESS_MAIN(tst_SmithGeometry)
#include "tst_smithgeometry.moc"
