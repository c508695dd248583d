// SPDX-License-Identifier: MIT
#ifndef CHARTS_TEST_ROUNDGRID_H
#define CHARTS_TEST_ROUNDGRID_H

#include "ItemPicture.h"

#include <ChartsLibrary/AbstractGrid.h>

#include <QtTest/QTest>

#include <algorithm>
#include <cmath>

// What the tests of polar and of Smith charts have in common: where the grid is, inner lines in
// blue, outer ones in red.
namespace RoundGrid {

// Twice as large it still fits the place on the screen that each test process has.
inline constexpr QSize windowSize = {200, 150};
inline constexpr QPointF position = {10.0, 3.0};
inline constexpr QSizeF size = {180.0, 144.0};
inline constexpr QPointF center = {90.0, 72.0};
// A twelfth of the side and the quarters of the radius are whole pixels.
inline constexpr double radius = 72.0;
inline constexpr double lineWidth = 2.0;

inline void place(Charts::AbstractGrid &grid)
{
    grid.setPosition(position);
    grid.setSize(size);
    grid.setInnerGridLinesColor(Qt::blue);
    grid.setOuterGridLinesColor(Qt::red);
    grid.setLineWidth(lineWidth);
}

/*! Chords of five pixels stand for a circle, given by its radius; between their ends they leave it
    by as much. */
inline double chordError(double circle)
{
    return 5.0 * 5.0 / (8.0 * circle);
}

inline bool isBlue(const QColor &color)
{
    return color.blue() > 200 && color.red() < 130;
}

inline bool isRed(const QColor &color)
{
    return color.red() > 200 && color.blue() < 130;
}

/*! Columns and rows for nothingOutside(). */
inline void addOutsideRows()
{
    QTest::addColumn<QSizeF>("itemSize");
    QTest::addColumn<double>("scale");
    const auto rows = [](const char *name, const QSizeF &itemSize) {
        for (const double scale : {0.0, 0.3, 0.7, 1.0, 1.5, 2.0, 7.0})
            QTest::addRow("%s, %g", name, scale) << itemSize << scale;
    };
    rows("wide", size);
    rows("high", {70.0, 140.0});
    rows("odd", {101.5, 99.0});
}

/*! Whether all that the grid draws is inside its boundary. Empty if so. */
inline QString nothingOutside(ChartWindow &window, const Charts::AbstractGrid &grid)
{
    const ItemPicture picture(window, grid);
    if (!picture.isComplete())
        return QStringLiteral("no picture: ") + QString::fromUtf8(window.error());
    Mismatches outside;
    int inside = 0;
    const QPointF middle(grid.width() / 2.0, grid.height() / 2.0);
    const double boundary = std::min(middle.x(), middle.y());
    picture.forEachPixel([&](QPoint pixel, const QPointF &place) {
        const double distance = std::hypot(place.x() - middle.x(), place.y() - middle.y());
        const QColor color = picture.image().pixelColor(pixel);
        // Ends at whole pixels may be half a pixel outside, and half a pixel more for being smooth,
        // in both directions.
        if (distance > boundary + 0.9 * lineWidth + 1.5)
            outside.check(pixel, color, Qt::white, 0.0);
        else
            inside += color != QColor(Qt::white);
    });
    if (inside < 300)
        return QStringLiteral("hardly anything is drawn");
    return outside.checked() > 1000 ? outside.text() : QStringLiteral("nothing is outside");
}

} // namespace RoundGrid

#endif
