// SPDX-License-Identifier: MIT
#include "ChartWindow.h"
#include "Graphics.h"
#include "LinesItem.h"

#include <QtCore/QRegularExpression>
#include <QtGui/QImage>
#include <QtTest/QTest>

#include <algorithm>
#include <cmath>
#include <limits>

using namespace Charts;

namespace {

constexpr double twoPi = 6.283185307179586;

/*!
    How much of a smooth line shows at a distance from its middle.

    The opaque vertices are half a width from the middle, moved inwards by two fifths of the width,
    their transparent twins are moved outwards by as much. In between the colour fades evenly.

    That the whole offset is used, not just half a pixel of it, comes from the pixel size that the
    shader reads: (2 / height of the view port, 0). Whatever the direction, the shader divides by
    the 0, and what it gets is not a number; its limit does not hold then.
*/
double coverage(double distance, double width)
{
    return std::clamp((0.9 * width - std::abs(distance)) / (0.8 * width), 0.0, 1.0);
}

/*! Black on white. */
int shade(double coverage)
{
    return static_cast<int>(std::lround(255.0 * (1.0 - coverage)));
}

QString difference(const QImage &picture, QPoint pixel, QColor expected, int tolerance)
{
    const QColor actual = picture.pixelColor(pixel);
    const int distance = std::max(
            {std::abs(actual.red() - expected.red()), std::abs(actual.green() - expected.green()),
                    std::abs(actual.blue() - expected.blue())});
    return distance <= tolerance ? QString()
                                 : QStringLiteral("(%1, %2) is %3, expected %4")
                                           .arg(pixel.x())
                                           .arg(pixel.y())
                                           .arg(actual.name(), expected.name());
}

QColor gray(int value)
{
    return {value, value, value};
}

} // namespace

/*! Pixels of lines and arcs in a window of 200 times 100. */
class tst_SmoothLine : public QObject
{
    Q_OBJECT

public:
    static void initMain() { Graphics::setUp(); }

private Q_SLOTS:
    void init();

    void profiles_data();
    void profiles();
    void slanted_data();
    void slanted();
    void plainEdges();
    void scaled();
    void opacity();
    void translucent_data();
    void translucent();
    void polylineJoints();
    void nothingToSee();
    void circle();
    void arc();

private:
    static constexpr QSize size = {200, 100};
};

void tst_SmoothLine::init()
{
    QTest::failOnWarning(QRegularExpression(QStringLiteral(".*")));
}

void tst_SmoothLine::profiles_data()
{
    QTest::addColumn<bool>("isUpright");
    QTest::addColumn<bool>("isReversed");
    QTest::addColumn<float>("width");
    QTest::addColumn<double>("place");
    for (const bool isUpright : {false, true}) {
        for (const bool isReversed : {false, true}) {
            for (const float width : {1.0F, 2.0F, 4.0F, 10.0F}) {
                for (const double place : {50.0, 50.25, 50.5}) {
                    QTest::addRow("%s%s, %g wide, at %g", isUpright ? "upright" : "level",
                            isReversed ? ", reversed" : "", double(width), place)
                            << isUpright << isReversed << width << place;
                }
            }
        }
    }
}

void tst_SmoothLine::profiles()
{
    QFETCH(bool, isUpright);
    QFETCH(bool, isReversed);
    QFETCH(float, width);
    QFETCH(double, place);

    QList<QPointF> points = isUpright ? QList<QPointF>{{place, 10.0}, {place, 90.0}}
                                      : QList<QPointF>{{20.0, place}, {180.0, place}};
    if (isReversed)
        std::reverse(points.begin(), points.end());
    ChartWindow window(size, ChartWindow::Content::Nothing);
    QVERIFY2(window.start(), window.error());
    LinesItem item(window.contentItem());
    item.setLines({{points, width, Qt::black, true}});
    const QImage picture = window.picture();
    QCOMPARE(picture.size(), size);

    // Every pixel across, at three places along. The middle of pixel n is n + 0.5, and so is that
    // of a smooth line at n.
    const int count = isUpright ? size.width() : size.height();
    for (int across = 0; across < count; ++across) {
        const int expected = shade(coverage(across - place, double(width)));
        for (const int along : {30, 47, 70}) {
            const QPoint pixel = isUpright ? QPoint(across, along) : QPoint(along, across);
            const QString text = difference(picture, pixel, gray(expected), 2);
            QVERIFY2(text.isEmpty(), qPrintable(text));
        }
    }
}

void tst_SmoothLine::slanted_data()
{
    QTest::addColumn<QLineF>("line");
    QTest::addColumn<float>("width");
    QTest::newRow("45 degrees") << QLineF(30.0, 10.0, 100.0, 80.0) << 3.0F;
    QTest::newRow("rising") << QLineF(20.0, 80.0, 180.0, 20.0) << 4.0F;
    QTest::newRow("steep") << QLineF(90.0, 5.0, 110.0, 95.0) << 2.0F;
    QTest::newRow("back") << QLineF(150.0, 80.0, 30.0, 20.0) << 6.0F;
    QTest::newRow("thin") << QLineF(20.0, 30.0, 180.0, 60.0) << 1.0F;
}

void tst_SmoothLine::slanted()
{
    QFETCH(QLineF, line);
    QFETCH(float, width);

    ChartWindow window(size, ChartWindow::Content::Nothing);
    QVERIFY2(window.start(), window.error());
    LinesItem item(window.contentItem());
    item.setLines({{{line.p1(), line.p2()}, width, Qt::black, true}});
    const QImage picture = window.picture();
    QCOMPARE(picture.size(), size);

    const QPointF way = (line.p2() - line.p1()) / line.length();
    int seen = 0;
    for (int y = 0; y < size.height(); ++y) {
        for (int x = 0; x < size.width(); ++x) {
            const QPointF from = QPointF(x, y) - line.p1();
            const double along = QPointF::dotProduct(from, way);
            const double across = from.y() * way.x() - from.x() * way.y();
            // The ends are cut straight, give or take a pixel.
            if (std::abs(along) < 1.0 || std::abs(along - line.length()) < 1.0)
                continue;
            const bool isBeside = along > 0.0 && along < line.length();
            const double covered = isBeside ? coverage(across, double(width)) : 0.0;
            // Positions of vertices are rounded to fractions of a pixel, so is the slope.
            const int tolerance = static_cast<int>(3.0 + 255.0 / (0.8 * double(width)) * 0.02);
            const QString text = difference(picture, {x, y}, gray(shade(covered)), tolerance);
            QVERIFY2(text.isEmpty(), qPrintable(text));
            if (covered > 0.0)
                ++seen;
        }
    }
    QVERIFY(seen > 70);
}

void tst_SmoothLine::plainEdges()
{
    ChartWindow window(size, ChartWindow::Content::Nothing);
    QVERIFY2(window.start(), window.error());
    LinesItem item(window.contentItem());
    item.setLines({{{{20.0, 50.0}, {180.0, 50.0}}, 4.0F, Qt::black, false},
            {{{100.0, 5.0}, {100.0, 30.0}}, 3.0F, Qt::red, false}});
    const QImage picture = window.picture();
    QCOMPARE(picture.size(), size);

    for (int y = 0; y < size.height(); ++y) {
        for (int x = 0; x < size.width(); ++x) {
            QColor expected = Qt::white;
            if (x >= 20 && x < 180 && y >= 48 && y < 52)
                expected = Qt::black;
            // 3 wide around 100: the pixels with middles between 98.5 and 101.5.
            if (y >= 5 && y < 30 && (x == 99 || x == 100))
                expected = Qt::red;
            // Where edges run through middles, either is right.
            if (y >= 5 && y < 30 && (x == 98 || x == 101))
                continue;
            const QString text = difference(picture, {x, y}, expected, 0);
            QVERIFY2(text.isEmpty(), qPrintable(text));
        }
    }
}

// Coordinates and offsets are those of the item.
void tst_SmoothLine::scaled()
{
    ChartWindow window(size, ChartWindow::Content::Nothing);
    QVERIFY2(window.start(), window.error());
    LinesItem item(window.contentItem());
    item.setTransformOrigin(QQuickItem::TopLeft);
    item.setScale(2.0);
    item.setLines({{{{10.0, 20.0}, {90.0, 20.0}}, 2.0F, Qt::black, true}});
    const QImage picture = window.picture();
    QCOMPARE(picture.size(), size);
    for (int y = 0; y < size.height(); ++y) {
        // The middle is at twice 20.5, that of the pixel at y + 0.5.
        const int expected = shade(coverage(y + 0.5 - 41.0, 4.0));
        const QString text = difference(picture, {100, y}, gray(expected), 2);
        QVERIFY2(text.isEmpty(), qPrintable(text));
    }
}

void tst_SmoothLine::opacity()
{
    ChartWindow window(size, ChartWindow::Content::Nothing);
    window.setColor(Qt::black);
    QVERIFY2(window.start(), window.error());
    LinesItem item(window.contentItem());
    item.setLines({{{{20.0, 50.0}, {180.0, 50.0}}, 10.0F, Qt::white, true}});
    for (const double opacity : {0.5, 1.0, 0.25, 0.0, 0.75}) {
        item.setOpacity(opacity);
        const QImage picture = window.picture();
        QCOMPARE(picture.size(), size);
        for (int y = 30; y < 70; ++y) {
            const int expected = 255 - shade(opacity * coverage(y - 50.0, 10.0));
            const QString text = difference(picture, {100, y}, gray(expected), 2);
            QVERIFY2(text.isEmpty(), qPrintable(text));
        }
    }
}

void tst_SmoothLine::translucent_data()
{
    QTest::addColumn<QColor>("background");
    QTest::addColumn<QColor>("color");
    QTest::addColumn<QColor>("expected");
    const QColor halfBlue(0, 0, 255, 128);
    QTest::newRow("blue on white") << QColor(Qt::white) << halfBlue << QColor(127, 127, 255);
    QTest::newRow("blue on black") << QColor(Qt::black) << halfBlue << QColor(0, 0, 128);
    QTest::newRow("white on red") << QColor(Qt::red) << QColor(255, 255, 255, 51)
                                  << QColor(255, 51, 51);
    QTest::newRow("nothing on red")
            << QColor(Qt::red) << QColor(255, 255, 255, 0) << QColor(Qt::red);
    QTest::newRow("everything on red") << QColor(Qt::red) << QColor(9, 8, 7) << QColor(9, 8, 7);
}

void tst_SmoothLine::translucent()
{
    QFETCH(QColor, background);
    QFETCH(QColor, color);
    QFETCH(QColor, expected);

    ChartWindow window(size, ChartWindow::Content::Nothing);
    window.setColor(background);
    QVERIFY2(window.start(), window.error());
    LinesItem item(window.contentItem());
    for (const bool isSmooth : {false, true}) {
        item.setLines({{{{20.0, 50.0}, {180.0, 50.0}}, 20.0F, color, isSmooth}});
        item.setArcs({{{{100.0, 10.0}, 6.0, 0.0, 3.0}, 12.0F, color, isSmooth}});
        const QImage picture = window.picture();
        QCOMPARE(picture.size(), size);
        for (const QPoint pixel : {QPoint(100, 50), QPoint(60, 51), QPoint(100, 16)}) {
            const QString text = difference(picture, pixel, expected, 2);
            QVERIFY2(text.isEmpty(), qPrintable(text));
        }
        QCOMPARE(picture.pixelColor(100, 90), background);
    }
}

// Between the lines of a polyline the strip goes on; away from the joints each is as if alone.
void tst_SmoothLine::polylineJoints()
{
    ChartWindow window(size, ChartWindow::Content::Nothing);
    QVERIFY2(window.start(), window.error());
    LinesItem item(window.contentItem());
    item.setLines(
            {{{{20.0, 20.0}, {80.0, 20.0}, {80.0, 80.0}, {180.0, 80.0}}, 4.0F, Qt::black, true}});
    const QImage picture = window.picture();
    QCOMPARE(picture.size(), size);
    const auto isRight = [&](QPoint pixel, double distance) {
        return difference(picture, pixel, gray(shade(coverage(distance, 4.0))), 2);
    };
    for (int k = -8; k <= 8; ++k) {
        for (const QString &text :
                {isRight({50, 20 + k}, k), isRight({80 + k, 50}, k), isRight({130, 80 + k}, k)})
            QVERIFY2(text.isEmpty(), qPrintable(text));
    }
}

void tst_SmoothLine::nothingToSee()
{
    ChartWindow window(size, ChartWindow::Content::Nothing);
    QVERIFY2(window.start(), window.error());
    LinesItem item(window.contentItem());
    const double NaN = std::numeric_limits<double>::quiet_NaN();
    item.setLines({{{{50.0, 50.0}}, 4.0F, Qt::black, true},
            {{{50.0, 50.0}, {50.0, 50.0}}, 4.0F, Qt::black, true},
            {{{50.0, 50.0}, {50.0, 50.0}}, 4.0F, Qt::black, false},
            {{{50.0, 50.0}, {100.0, 50.0}}, 0.0F, Qt::black, true},
            {{{50.0, 50.0}, {100.0, 50.0}}, 4.0F, Qt::transparent, true},
            {{{NaN, 50.0}, {NaN, 50.0}}, 4.0F, Qt::black, true}});
    item.setArcs({{{{100.0, 50.0}, 30.0, 1.0, 1.0 + twoPi}, 4.0F, Qt::black, true},
            {{{100.0, 50.0}, 30.0, 1.0, 1.0}, 4.0F, Qt::black, false},
            {{{100.0, 50.0}, 0.0, 0.0, 1.0}, 0.0F, Qt::black, true}, {{}, 0.0F, Qt::black, false}});
    const QImage picture = window.picture();
    QCOMPARE(picture.size(), size);
    for (int y = 0; y < size.height(); ++y) {
        for (int x = 0; x < size.width(); ++x) {
            const QString text = difference(picture, {x, y}, Qt::white, 0);
            QVERIFY2(text.isEmpty(), qPrintable(text));
        }
    }
}

void tst_SmoothLine::circle()
{
    ChartWindow window(size, ChartWindow::Content::Nothing);
    QVERIFY2(window.start(), window.error());
    LinesItem item(window.contentItem());
    constexpr double radius = 40.0;
    item.setArcs({{{{100.0, 50.0}, radius, 0.0, twoPi}, 4.0F, Qt::black, true}});
    const QImage picture = window.picture();
    QCOMPARE(picture.size(), size);

    // A chord of five pixels leaves the circle by 25 / (8 * 40) = 0.08 pixels.
    const int tolerance = 3 + int(255.0 / (0.8 * 4.0) * 0.08);
    for (int y = 0; y < size.height(); ++y) {
        for (int x = 0; x < size.width(); ++x) {
            const double distance = std::hypot(x + 0.5 - 100.0, y + 0.5 - 50.0) - radius;
            const int expected = shade(coverage(distance, 4.0));
            const QString text = difference(picture, {x, y}, gray(expected), tolerance);
            QVERIFY2(text.isEmpty(), qPrintable(text));
        }
    }
}

// Clockwise, y being downwards: from the right to the bottom.
void tst_SmoothLine::arc()
{
    ChartWindow window(size, ChartWindow::Content::Nothing);
    QVERIFY2(window.start(), window.error());
    LinesItem item(window.contentItem());
    for (const bool isSmooth : {false, true}) {
        item.setArcs({{{{100.0, 50.0}, 40.0, 0.0, twoPi / 4}, 6.0F, Qt::black, isSmooth}});
        const QImage picture = window.picture();
        QCOMPARE(picture.size(), size);
        const auto isDark = [&](double angle) {
            const QPointF place(100.0 + 40.0 * std::cos(angle), 50.0 + 40.0 * std::sin(angle));
            return qGray(picture.pixel(int(place.x()), int(place.y()))) < 100;
        };
        for (int degree = -175; degree <= 180; degree += 5) {
            if (degree == 0 || degree == 90)
                continue;
            QCOMPARE(isDark(degree * twoPi / 360.0), degree > 0 && degree < 90);
        }
    }
}

QTEST_MAIN(tst_SmoothLine)

#include "tst_smoothline.moc"
