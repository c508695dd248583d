// SPDX-License-Identifier: MIT
#ifndef CHARTS_TEST_WALKDATA_H
#define CHARTS_TEST_WALKDATA_H

#include <ChartsLibrary/TraceData.h>

#include <QtCore/QList>
#include <QtCore/QRect>
#include <QtCore/QSize>
#include <QtGui/QColor>

#include <cstdint>
#include <vector>

/*! What a trace looks like, apart from its vertices. */
struct Look
{
    Charts::DrawType drawType = Charts::DrawType::LineStrip;
    QColor color;
    float width = 1.5F;
    bool isVisible = true;
    bool isSquared = false;
    Charts::ViewPort viewPort;
    Charts::BoundingMethod boundingX = Charts::BoundingMethod::Unbounded;
    Charts::BoundingMethod boundingY = Charts::BoundingMethod::Unbounded;
};

/*! One thing that a trace does to its data. Trace and model each follow it on their own. */
struct DataStep
{
    enum Kind {
        /*! The array gets \c count points and both sets of ranges are told so. */
        Resize,
        /*! The same, but the ranges are not told: a mistake that must do no harm. */
        ResizeSilently,
        /*! \c points are written from \c first on. */
        Write,
        MarkDirty,
        MarkFilled,
        /*! Nothing is filled any more. */
        Unfill,
        /*! \c look replaces all attributes except colour, width and visibility. */
        Restyle,
    };

    Kind kind = Resize;
    int first = 0;
    int count = 0;
    std::vector<Charts::TracePoint> points = {};
    Look look = {};
};

/*! A trace in an image, as it was when the image was drawn. */
struct Sketch
{
    /*! Only to be compared: the trace may be gone. */
    const void *trace = nullptr;
    /*! Those that were in the buffer and drawn. */
    std::vector<Charts::TracePoint> points;
    Look look;
};

/*! An image of the renderer: its traces from the lowest to the topmost. */
struct Sketches
{
    QSize size;
    std::vector<Sketch> traces;
};

/*! A figure that is not fixed exactly. */
struct Bounds
{
    std::int64_t least = 0;
    std::int64_t most = 0;

    [[nodiscard]] bool include(std::int64_t value) const { return value >= least && value <= most; }
    Bounds &operator+=(const Bounds &other)
    {
        least += other.least;
        most += other.most;
        return *this;
    }
};

/*! What the renderer has to do in a frame. */
struct Work
{
    int drawCalls = 0;
    /*! One for each trace drawn, unless the one before had the same. */
    QList<QRect> viewports;
    /*! Multisampled images become plain ones. */
    Bounds blits;
    Bounds uploadedBytes;

    Work &operator+=(const Work &other)
    {
        drawCalls += other.drawCalls;
        viewports += other.viewports;
        blits += other.blits;
        uploadedBytes += other.uploadedBytes;
        return *this;
    }
};

#endif
