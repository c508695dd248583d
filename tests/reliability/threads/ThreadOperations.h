// SPDX-License-Identifier: MIT
#ifndef CHARTS_TEST_THREADOPERATIONS_H
#define CHARTS_TEST_THREADOPERATIONS_H

#include "TestTrace.h"

#include <ChartsLibrary/Chart.h>
#include <ChartsLibrary/ChartMouseEvent.h>
#include <ChartsLibrary/FillRectProvider.h>
#include <ChartsLibrary/GradientCurve.h>
#include <ChartsLibrary/LinearCurveTransform.h>
#include <ChartsLibrary/LogarithmicCurveTransform.h>
#include <ChartsLibrary/OpenGLRenderNode.h>
#include <ChartsLibrary/PolarGrid.h>
#include <ChartsLibrary/SmithGrid.h>
#include <ChartsLibrary/TraceDomain.h>
#include <ChartsLibrary/XYGrid.h>
#include <ChartsLibrary/ZoomDelegate.h>

#include <QtGui/QMouseEvent>

#include <functional>
#include <vector>

/*! One of everything that belongs to the GUI thread. */
struct ThreadObjects
{
    ThreadObjects();

    TestTrace trace;
    TestTrace otherTrace;
    Charts::TraceDomain &domain;
    Charts::Chart chart;
    Charts::ZoomDelegate rubberBand;
    Charts::XYGrid xyGrid;
    Charts::PolarGrid polarGrid;
    Charts::SmithGrid smithGrid;
    Charts::Curve curve;
    Charts::GradientCurve gradientCurve;
    Charts::LinearCurveTransform line;
    Charts::LogarithmicCurveTransform logarithm;
    Charts::FillRectProvider fill;
    QMouseEvent press;
    Charts::ChartMouseEvent mouseEvent;
};

/*! An operation that is documented for one thread: that of the GUI or, for the renderer, the one that
    draws. It changes something each time it is called. */
struct ThreadOperation
{
    /*! "Class::function", with the number of its arguments where there are several. */
    QString name;
    /*! The function that refuses the call, if it is another one. */
    QString assertedIn;
    std::function<void(ThreadObjects &)> onGui;
    std::function<void(Charts::OpenGLRenderNode &)> onRenderer;
    /*! Whether it stands for others in what takes long to try. */
    bool isExample = false;
};

[[nodiscard]] const std::vector<ThreadOperation> &threadOperations();

#endif
