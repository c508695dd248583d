// SPDX-License-Identifier: MIT
#ifndef CHARTS_TEST_PIXELBLOCK_H
#define CHARTS_TEST_PIXELBLOCK_H

#include "PixelTrace.h"

#include <QtCore/QPointF>
#include <QtCore/QRect>

#include <vector>

/*! The centres of the pixels of \a pixels, whose y is the lowest row, counted from the bottom. */
inline std::vector<QPointF> centresOf(const QRect &pixels)
{
    std::vector<QPointF> centres;
    for (int row = 0; row < pixels.height(); ++row) {
        for (int column = 0; column < pixels.width(); ++column)
            centres.emplace_back(pixels.x() + column + 0.5, pixels.y() + row + 0.5);
    }
    return centres;
}

/*! A trace that fills exactly the pixels given: one point for each. No driver disagrees about those
    at the edges. */
class PixelBlock : public PixelTrace
{
public:
    PixelBlock(const QSize &chartSize, const QRect &pixels)
        : PixelTrace(chartSize, Charts::DrawType::Points, 1.0F, QColor(Qt::red))
    {
        setPoints(centresOf(pixels));
    }
};

#endif
