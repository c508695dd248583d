// SPDX-License-Identifier: MIT
#ifndef CHARTS_TEST_WATCHEDSCENE_H
#define CHARTS_TEST_WATCHEDSCENE_H

#include "WatchedTrace.h"
#include "WatchedWindow.h"

#include <ChartsLibrary/AbstractCurveTransform.h>
#include <ChartsLibrary/Chart.h>
#include <ChartsLibrary/GradientCurve.h>
#include <ChartsLibrary/XYGrid.h>
#include <ChartsLibrary/ZoomDelegate.h>

#include <QtCore/QPointer>
#include <QtCore/QRandomGenerator>

#include <memory>
#include <vector>

/*! Notes on which thread its node is updated, and that the renderer lives there. */
class WatchedChart : public Charts::Chart
{
    Q_OBJECT

public:
    WatchedChart(WatchedWindow &window, QQuickItem *parent);

protected:
    QSGNode *updatePaintNode(QSGNode *oldNode, UpdatePaintNodeData *data) override;

private:
    void watchMouse();

    WatchedWindow &m_window;
};

/*! A straight line that notes on which thread it is asked for. */
class WatchedTransform : public Charts::AbstractCurveTransform
{
    Q_OBJECT

public:
    explicit WatchedTransform(WatchedWindow &window)
        : m_window(window)
    {
    }
    QList<QPointF> points(QPointF p1, QPointF p2) override;

private:
    WatchedWindow &m_window;
};

/*! A window with grid, chart, traces and curve, in which everything moves at random. */
class WatchedScene
{
public:
    WatchedScene(ThreadWatch &watch, const QPoint &position, quint32 seed);
    ~WatchedScene();

    [[nodiscard]] bool start();
    /*! Does one thing that an application or its user does, on the GUI thread. */
    void act();
    [[nodiscard]] WatchedWindow &window() { return m_window; }
    [[nodiscard]] Charts::Chart &chart() { return *m_chart; }

private:
    int below(int bound) { return static_cast<int>(m_random.bounded(bound)); }
    void makeChart();
    void addTrace();
    void changeTrace(WatchedTrace &trace);
    void useMouse();
    void drag();

    WatchedWindow m_window;
    QRandomGenerator m_random;
    Charts::XYGrid *m_grid = nullptr;
    Charts::GradientCurve *m_curve = nullptr;
    WatchedTransform m_transform;
    std::vector<std::unique_ptr<WatchedTrace>> m_traces;
    WatchedChart *m_chart = nullptr;
};

#endif
