// SPDX-License-Identifier: MIT
#include "ChartWindow.h"
#include "Graphics.h"
#include "ItemPicture.h"
#include "RoundGrid.h"

#include <ChartsLibrary/SmithGrid.h>

#include <QtCore/QRegularExpression>
#include <QtTest/QTest>

#include <cmath>

using namespace Charts;
using namespace RoundGrid;

/*! Pixels of a Smith chart in a window without a trace chart. Run also with two device pixels for
    each pixel of an item, by way of QT_SCALE_FACTOR. */
class tst_GridsSmith : public QObject
{
    Q_OBJECT

public:
    static void initMain() { Graphics::setUp(); }

private Q_SLOTS:
    void init();

    void unitCircle_data();
    void unitCircle();
    void flipped_data();
    void flipped();
    void marker();
    void insideTheBoundary_data();
    void insideTheBoundary();
};

void tst_GridsSmith::init()
{
    QTest::failOnWarning(QRegularExpression(QStringLiteral(".*")));
}

void tst_GridsSmith::unitCircle_data()
{
    QTest::addColumn<double>("scale");
    QTest::addColumn<double>("unitCircle");
    QTest::newRow("2, at half the radius") << 2.0 << 36.0;
    QTest::newRow("4, at a quarter") << 4.0 << 18.0;
    QTest::newRow("1.6, at a fraction of a pixel") << 1.6 << 45.0;
    QTest::newRow("1.7, at a fraction of a pixel") << 1.7 << 72.0 / 1.7;
    QTest::newRow("1, on the boundary") << 1.0 << 72.0;
    QTest::newRow("0.5") << 0.5 << 0.0;
    QTest::newRow("0") << 0.0 << 0.0;
}

// Outer lines are the boundary, the unit circle and the real axis, drawn over everything else.
void tst_GridsSmith::unitCircle()
{
    QFETCH(double, scale);
    QFETCH(double, unitCircle);

    ChartWindow window(windowSize, ChartWindow::Content::Nothing);
    QVERIFY2(window.start(), window.error());
    SmithGrid grid(window.contentItem());
    place(grid);
    for (const bool isFlipped : {false, true}) {
        grid.setScale(scale);
        grid.setFlip(isFlipped);
        const ItemPicture picture(window, grid);
        QVERIFY2(picture.isComplete(), window.error());
        int onCircles = 0;
        QString text;
        picture.forEachPixel([&](QPoint pixel, const QPointF &place) {
            // A smooth line is half a pixel below its place, an arc is not.
            if (std::abs(place.y() - center.y() - 0.5) < 2.5)
                return;
            double distance = 1000.0;
            for (const double circle : {radius, unitCircle}) {
                const double away =
                        std::hypot(place.x() - center.x(), place.y() - center.y()) - circle;
                if (circle > 0.0 && std::abs(away) < std::abs(distance))
                    distance = away;
            }
            // What is below is not known, but nothing there has any red but the background.
            const double coverage = smoothCoverage(distance, lineWidth);
            const QColor color = picture.image().pixelColor(pixel);
            const double tolerance = 3.0 + levelsPerPixel(lineWidth) * chordError(18.0);
            const bool isCovered = color.green() < 255.0 * (1.0 - coverage) + tolerance
                                   && color.blue() < 255.0 * (1.0 - coverage) + tolerance
                                   && color.red() > 255.0 * coverage - tolerance;
            const bool isRightful = !isRed(color) || std::abs(distance) < 0.9 * lineWidth;
            if (coverage == 1.0)
                ++onCircles;
            if (!isCovered || !isRightful) {
                text = QStringLiteral("(%1, %2) is %3")
                               .arg(pixel.x())
                               .arg(pixel.y())
                               .arg(color.name());
            }
        });
        QCOMPARE(text, QString());
        QVERIFY(onCircles > 100);
    }
}

void tst_GridsSmith::flipped_data()
{
    QTest::addColumn<double>("scale");
    for (const double scale : {0.5, 1.0, 2.0, 4.0})
        QTest::addRow("%g", scale) << scale;
}

// At these scales all centres and radii are whole pixels, so that rounding makes no difference. Not
// everything is mirrored: straight lines are half a pixel to the right of where arcs are, flipped
// or not; the chords that stand for a circle begin on its right.
void tst_GridsSmith::flipped()
{
    QFETCH(double, scale);

    ChartWindow window(windowSize, ChartWindow::Content::Nothing);
    QVERIFY2(window.start(), window.error());
    SmithGrid grid(window.contentItem());
    place(grid);
    grid.setScale(scale);
    const ItemPicture plain(window, grid);
    QVERIFY2(plain.isComplete(), window.error());
    grid.setFlip(true);
    const ItemPicture flipped(window, grid);
    QVERIFY2(flipped.isComplete(), window.error());

    const double marker = center.x() + radius / scale;
    constexpr double reach = 0.9 * lineWidth + 1.0;
    Mismatches mismatches;
    int ownMirror = 0;
    plain.forEachPixel([&](QPoint pixel, const QPointF &place) {
        const QPointF mirrored(2.0 * center.x() - place.x(), place.y());
        if (!QRectF(-8.0, 0.0, 196.0, 144.0).contains(mirrored))
            return;
        const QColor color = plain.image().pixelColor(pixel);
        if (distanceOf(color, plain.colorAt(mirrored)) > 100)
            ++ownMirror;
        const bool isNearMarker = std::abs(place.x() - marker) < reach;
        const bool isAxisEnd = std::abs(place.y() - center.y()) < reach
                               && std::abs(std::abs(place.x() - center.x()) - radius) < reach;
        if (isNearMarker || isAxisEnd)
            return;
        const QColor other = flipped.colorAt(mirrored);
        mismatches.check(pixel, color, other, 3.0 + levelsPerPixel(lineWidth) * chordError(12.0));
    });
    QCOMPARE(mismatches.text(), QString());
    QVERIFY(mismatches.checked() > 20000);
    QVERIFY2(ownMirror > 500, QByteArray::number(ownMirror));
}

// The vertical line through a reflection of 1, on the right or, flipped, on the left.
void tst_GridsSmith::marker()
{
    ChartWindow window(windowSize, ChartWindow::Content::Nothing);
    QVERIFY2(window.start(), window.error());
    SmithGrid grid(window.contentItem());
    place(grid);
    grid.setScale(2.0);
    for (const bool isFlipped : {false, true}) {
        grid.setFlip(isFlipped);
        const ItemPicture picture(window, grid);
        QVERIFY2(picture.isComplete(), window.error());
        for (const bool isRight : {false, true}) {
            const double x = center.x() + (isRight ? 36.5 : -35.5);
            int blue = 0;
            // Half a chord at half the radius is 62 pixels long.
            for (double y = -60.0; y < 60.0; y += 1.0)
                blue += isBlue(picture.colorAt({x, center.y() + y + 0.5}));
            // The axis crosses and the unit circle touches it.
            if (isRight != isFlipped)
                QVERIFY2(blue > 85, QByteArray::number(blue));
            else
                QVERIFY2(blue < 60, QByteArray::number(blue));
        }
    }
}

void tst_GridsSmith::insideTheBoundary_data()
{
    addOutsideRows();
}

void tst_GridsSmith::insideTheBoundary()
{
    QFETCH(QSizeF, itemSize);
    QFETCH(double, scale);

    ChartWindow window(windowSize, ChartWindow::Content::Nothing);
    QVERIFY2(window.start(), window.error());
    SmithGrid grid(window.contentItem());
    place(grid);
    grid.setSize(itemSize);
    grid.setScale(scale);
    QCOMPARE(nothingOutside(window, grid), QString());
    grid.setFlip(true);
    QCOMPARE(nothingOutside(window, grid), QString());
}

QTEST_MAIN(tst_GridsSmith)

#include "tst_grids_smith.moc"
