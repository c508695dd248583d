// SPDX-License-Identifier: MIT
#include "ChartWindow.h"
#include "Graphics.h"
#include "ItemPicture.h"
#include "RoundGrid.h"

#include <ChartsLibrary/PolarGrid.h>

#include <QtCore/QRegularExpression>
#include <QtTest/QTest>

#include <algorithm>
#include <cmath>
#include <vector>

using namespace Charts;
using namespace RoundGrid;

namespace {

constexpr double pi = 3.141592653589793;

double degrees(double angle)
{
    return angle * pi / 180.0;
}

/*! A line from somewhere towards the boundary, the angle growing clockwise. */
struct Spoke
{
    double angle = 0.0;
    double start = 0.0;

    [[nodiscard]] bool isNear(const QPointF &fromCenter, double distance) const
    {
        const double along = fromCenter.x() * std::cos(angle) + fromCenter.y() * std::sin(angle);
        const double across = fromCenter.y() * std::cos(angle) - fromCenter.x() * std::sin(angle);
        return along > start - distance && std::abs(across) < distance;
    }
};

/*! Those of a polar diagram without its axes: each ring adds some between those from inside it. */
std::vector<Spoke> polarSpokes()
{
    std::vector<Spoke> spokes;
    for (int i = 0; i < 4; ++i)
        spokes.push_back({degrees(45.0 + 90.0 * i), 0.25 * radius});
    for (int i = 0; i < 8; ++i)
        spokes.push_back({degrees(22.5 + 45.0 * i), 0.5 * radius});
    for (int i = 0; i < 16; ++i)
        spokes.push_back({degrees(11.25 + 22.5 * i), 0.75 * radius});
    return spokes;
}

// Half way between two lines. Circles are walked round from here.
constexpr double firstAngle = 28.1 / 180.0 * pi;

/*! The angles at which lines of a colour cross a circle. */
template<typename IsLine>
std::vector<double> crossings(const ItemPicture &picture, double circle, IsLine &&isLine)
{
    const double step = 0.2 / circle;
    constexpr double gap = 2.0;
    struct Run
    {
        double first = 0.0;
        double last = 0.0;
    };
    std::vector<Run> runs;
    for (double angle = firstAngle; angle < firstAngle + 2.0 * pi; angle += step) {
        const QPointF place = center + circle * QPointF(std::cos(angle), std::sin(angle));
        if (!isLine(picture.colorAt(place)))
            continue;
        if (runs.empty() || (angle - runs.back().last) * circle > gap)
            runs.push_back({angle, angle});
        runs.back().last = angle;
    }
    std::vector<double> angles;
    for (const Run &run : runs)
        angles.push_back((run.first + run.last) / 2.0);
    return angles;
}

QString difference(
        const std::vector<double> &angles, std::vector<double> expected, double tolerance)
{
    for (double &angle : expected)
        angle += angle < firstAngle ? 2.0 * pi : 0.0;
    std::sort(expected.begin(), expected.end());
    if (angles.size() != expected.size())
        return QStringLiteral("%1 lines, expected %2").arg(angles.size()).arg(expected.size());
    for (std::size_t i = 0; i < angles.size(); ++i) {
        if (std::abs(angles[i] - expected[i]) > tolerance) {
            return QStringLiteral("line %1 is at %2, expected at %3")
                    .arg(i)
                    .arg(angles[i])
                    .arg(expected[i]);
        }
    }
    return {};
}

} // namespace

/*! Pixels of a polar diagram in a window without a chart. Run also with two device pixels for each
    pixel of an item, by way of QT_SCALE_FACTOR. */
class tst_GridsPolar : public QObject
{
    Q_OBJECT

public:
    static void initMain() { Graphics::setUp(); }

private Q_SLOTS:
    void init();

    void circles_data();
    void circles();
    void straightLines();
    void insideTheBoundary_data();
    void insideTheBoundary();
};

void tst_GridsPolar::init()
{
    QTest::failOnWarning(QRegularExpression(QStringLiteral(".*")));
}

void tst_GridsPolar::circles_data()
{
    QTest::addColumn<double>("scale");
    QTest::addColumn<double>("reference");
    QTest::newRow("2, at half the radius") << 2.0 << 36.0;
    QTest::newRow("4, at a quarter") << 4.0 << 18.0;
    QTest::newRow("1.5, between rings") << 1.5 << 48.0;
    QTest::newRow("1.6, at the next whole pixel") << 1.6 << 45.0;
    QTest::newRow("1.1, near the boundary") << 1.1 << 65.0;
    QTest::newRow("1") << 1.0 << 0.0;
    QTest::newRow("0.5") << 0.5 << 0.0;
    QTest::newRow("0") << 0.0 << 0.0;
    QTest::newRow("negative") << -2.0 << 0.0;
}

void tst_GridsPolar::circles()
{
    QFETCH(double, scale);
    QFETCH(double, reference);

    ChartWindow window(windowSize, ChartWindow::Content::Nothing);
    QVERIFY2(window.start(), window.error());
    PolarGrid grid(window.contentItem());
    place(grid);
    grid.setScale(scale);
    const ItemPicture picture(window, grid);
    QVERIFY2(picture.isComplete(), window.error());

    // All pixels but those near straight lines, whose ends are at whole pixels and thus up to a
    // pixel and a half aside.
    std::vector<Spoke> lines = polarSpokes();
    for (int i = 0; i < 4; ++i)
        lines.push_back({degrees(90.0 * i), 0.0});
    Mismatches mismatches;
    picture.forEachPixel([&](QPoint pixel, const QPointF &place) {
        const QPointF away = place - center;
        if (std::any_of(lines.begin(), lines.end(),
                    [&](const Spoke &line) { return line.isNear(away, 3.3); }))
            return;
        PixelBlend blend(Qt::white);
        double tolerance = 3.0;
        const auto draw = [&](double circle, const QColor &color) {
            const double distance = std::hypot(away.x(), away.y()) - circle;
            blend.add(color, smoothCoverage(distance, lineWidth));
            if (std::abs(distance) < lineWidth + 0.5)
                tolerance += levelsPerPixel(lineWidth) * chordError(circle);
        };
        for (const double ring : {18.0, 36.0, 54.0})
            draw(ring, Qt::blue);
        if (reference > 0.0)
            draw(reference, Qt::red);
        draw(radius, Qt::red);
        mismatches.check(pixel, picture.image().pixelColor(pixel), blend.color(), tolerance);
    });
    QVERIFY(mismatches.checked() > 14000 * picture.ratio() * picture.ratio());
    QCOMPARE(mismatches.text(), QString());
}

// Half way between the rings all lines that start further inside are crossed, and no other.
void tst_GridsPolar::straightLines()
{
    ChartWindow window(windowSize, ChartWindow::Content::Nothing);
    QVERIFY2(window.start(), window.error());
    PolarGrid grid(window.contentItem());
    place(grid);
    const ItemPicture picture(window, grid);
    QVERIFY2(picture.isComplete(), window.error());

    std::vector<double> axes;
    for (int i = 0; i < 4; ++i)
        axes.push_back(degrees(90.0 * i));
    for (const double circle : {9.0, 27.0, 45.0, 63.0}) {
        std::vector<double> spokes;
        for (const Spoke &spoke : polarSpokes()) {
            if (spoke.start < circle)
                spokes.push_back(spoke.angle);
        }
        const double tolerance = 2.0 / circle;
        QCOMPARE(difference(crossings(picture, circle, isBlue), spokes, tolerance), QString());
        QCOMPARE(difference(crossings(picture, circle, isRed), axes, tolerance), QString());
    }
}

void tst_GridsPolar::insideTheBoundary_data()
{
    addOutsideRows();
}

void tst_GridsPolar::insideTheBoundary()
{
    QFETCH(QSizeF, itemSize);
    QFETCH(double, scale);

    ChartWindow window(windowSize, ChartWindow::Content::Nothing);
    QVERIFY2(window.start(), window.error());
    PolarGrid grid(window.contentItem());
    place(grid);
    grid.setSize(itemSize);
    grid.setScale(scale);
    QCOMPARE(nothingOutside(window, grid), QString());
}

QTEST_MAIN(tst_GridsPolar)

#include "tst_grids_polar.moc"
