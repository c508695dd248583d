// SPDX-License-Identifier: MIT
#ifndef CHARTS_PEERSCENE_H
#define CHARTS_PEERSCENE_H

#include "SignalSource.h"
#include "WindowRun.h"

#include <QtCharts/QValueAxis>
#include <QtCharts/QXYSeries>
#include <QtCore/QList>
#include <QtCore/QPointF>
#include <QtQml/QQmlEngine>

#include <vector>

/*!
    The benchmark's traces in a ChartView of Qt Charts, one LineSeries each, kept up to date in the
    fastest way that Qt Charts documents: all points of a series are replaced at once, which tells of
    the change once.
*/
class PeerScene : public WindowScene
{
public:
    /*! Returns null and says why in \a error when there is no such chart. */
    [[nodiscard]] static std::unique_ptr<WindowScene> make(
            const BenchmarkOptions &options, bool useOpenGL, QQuickWindow &window, QString &error);

    void advance() override;

private:
    struct Trace
    {
        SignalSource source;
        QList<QPointF> points;
        QXYSeries *series;
    };

    PeerScene(const BenchmarkOptions &options, QQuickWindow &window);

    [[nodiscard]] bool addChart(bool useOpenGL, QString &error);
    [[nodiscard]] bool addTrace(QObject *chart);
    static void apply(Trace &trace, const SignalSource::Frame &frame);
    static void drawPicture();

    const BenchmarkOptions &m_options;
    QQuickWindow &m_window;
    QQmlEngine m_engine;
    QValueAxis *m_abscissa = nullptr;
    std::vector<Trace> m_traces;
    int m_step = 0;
};

#endif
