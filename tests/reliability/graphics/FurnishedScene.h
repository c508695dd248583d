// SPDX-License-Identifier: MIT
#ifndef CHARTS_TEST_FURNISHEDSCENE_H
#define CHARTS_TEST_FURNISHEDSCENE_H

#include "ChartWindow.h"
#include "PixelTrace.h"

#include <ChartsLibrary/Curve.h>
#include <ChartsLibrary/LinearCurveTransform.h>
#include <ChartsLibrary/XYGrid.h>

#include <QtCore/QPoint>
#include <QtCore/QString>
#include <QtGui/QImage>

/*!
    A chart and what stands beside it in one window:

        +---------------+---------------+
        |               |  grid, blue   |
        |  =========    |  and green    |
        |  trace, red   +---------------+
        |               |  curve, black |
        +---------------+---------------+

    The chart fills the window, its trace the left half.
*/
class FurnishedScene
{
public:
    static constexpr QSize size = {200, 100};
    /*! In the coordinates of the window. */
    static constexpr QPoint onTrace = {50, 49};
    static constexpr QPoint besideTrace = {50, 10};

    explicit FurnishedScene(bool isAntialiased = false);

    /*! Shows the window, takes a picture of what is there without the trace, and adds the trace. The
        chart has been in order till then. */
    [[nodiscard]] bool start();
    [[nodiscard]] const char *error() const { return window.error(); }
    /*! Draws a frame. Says where the window differs from what it has to show: all that is beside the
        chart, if start() has seen it, and the trace or not. */
    [[nodiscard]] QString differenceWith(bool isTraceShown);
    /*! Whether grid and curve are in the picture. */
    [[nodiscard]] bool isFurnished() const;

    ChartWindow window;
    PixelTrace trace;

private:
    bool m_isAntialiased;
    Charts::XYGrid m_grid;
    Charts::LinearCurveTransform m_shape;
    Charts::Curve m_curve;
    QImage m_furniture;
};

#endif
