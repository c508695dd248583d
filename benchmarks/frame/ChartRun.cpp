// SPDX-License-Identifier: MIT
#include "ChartRun.h"

#include "FrameMeter.h"
#include "QuickFrames.h"
#include "SignalTrace.h"

#include <ChartsLibrary/Chart.h>
#include <ChartsLibrary/XYGrid.h>

#include <QtCore/QCoreApplication>
#include <QtCore/QElapsedTimer>
#include <QtCore/QTimer>
#include <QtGui/QMouseEvent>
#include <QtGui/QOpenGLContext>
#include <QtGui/QOpenGLFunctions>
#include <QtGui/QPointingDevice>
#include <QtQuick/QQuickWindow>

#include <optional>
#include <vector>

using namespace Charts;

namespace {

using Mode = BenchmarkOptions::Mode;

/*! What is in the window, and what becomes of it from frame to frame. */
class Scene
{
public:
    Scene(const BenchmarkOptions &options, QQuickWindow &window)
        : m_options(options)
        , m_window(window)
    {
        if (options.mode == Mode::Grid)
            addGrid();
        else
            addChart();
    }

    void advance()
    {
        if (m_options.mode == Mode::Hover)
            movePointer();
        if (m_grid)
            moveGrid();
        if (m_chart)
            m_chart->updateTraces();
    }

    /*! Before the first measured frame of resting data with a pointer over them: draws the picture
        that picking reads, for which an event and a change have to come together. */
    [[nodiscard]] bool prepare(QuickFrames &frames)
    {
        if (m_options.mode != Mode::Hover || m_traces.empty())
            return true;
        m_traces.front()->traceData()->dirtyRange().push({0, 1});
        advance();
        return frames.draw();
    }

private:
    void addChart()
    {
        m_chart = new Chart(m_window.contentItem());
        m_chart->setSize(m_options.size);
        m_chart->setAntialiasing(m_options.samples);
        // The benchmark ticks itself.
        m_chart->findChild<QTimer *>()->stop();
        for (int i = 0; i < m_options.traces; ++i) {
            m_traces.push_back(new SignalTrace(m_options, i, m_chart));
            m_chart->addTrace(m_traces.back());
        }
    }

    /*! 45 lines upright, 51 across and the border. */
    void addGrid()
    {
        m_grid = new XYGrid(m_window.contentItem());
        m_grid->setSize(m_options.size);
        m_grid->setAntialiasing(m_options.samples);
        m_grid->setXLayout(XYGrid::LogGrid);
        m_grid->setYCount(52);
        moveGrid();
    }

    void moveGrid()
    {
        m_step = (m_step + 1) % 100;
        m_grid->setXRange({0.0, 4.995 + 0.00001 * m_step});
    }

    void movePointer()
    {
        m_step = (m_step + 1) % m_options.size.width();
        const QPointF position(m_step, m_options.size.height() / 2.0);
        QMouseEvent event(QEvent::MouseMove, position, m_window.mapToGlobal(position), Qt::NoButton,
                Qt::NoButton, Qt::NoModifier, QPointingDevice::primaryPointingDevice());
        QCoreApplication::sendEvent(&m_window, &event);
    }

    const BenchmarkOptions &m_options;
    QQuickWindow &m_window;
    Chart *m_chart = nullptr;
    XYGrid *m_grid = nullptr;
    std::vector<SignalTrace *> m_traces;
    int m_step = 0;
};

/*! What the driver says it is. Asked on the render thread, with the context current. */
QString rendererName()
{
    QOpenGLContext *context = QOpenGLContext::currentContext();
    if (!context)
        return QStringLiteral("none");
    const auto *name = context->functions()->glGetString(GL_RENDERER);
    return QString::fromLatin1(reinterpret_cast<const char *>(name));
}

} // namespace

QByteArray runChart(const BenchmarkOptions &options, bool empty)
{
    constexpr int warmUpFrames = 3;

    QElapsedTimer sinceStart;
    sinceStart.start();
    QQuickWindow window;
    window.resize(options.size);
    window.setColor(Qt::white);
    std::optional<Scene> scene;
    if (!empty)
        scene.emplace(options, window);

    QString renderer;
    QObject::connect(
            &window, &QQuickWindow::beforeRendering, &window,
            [&renderer] {
                if (renderer.isEmpty())
                    renderer = rendererName();
            },
            Qt::DirectConnection);

    QuickFrames frames(window);
    const auto drawFrame = [&] {
        if (scene)
            scene->advance();
        return frames.draw();
    };
    if (!frames.show())
        return {};
    const double firstFrame = static_cast<double>(sinceStart.nsecsElapsed()) / 1e6;
    for (int i = 0; i < warmUpFrames; ++i) {
        if (!drawFrame())
            return {};
    }
    if (scene && !scene->prepare(frames))
        return {};

    const GlCounters callsBefore = GlCounters::now();
    const GlCounters ownBefore = frames.synchronisation();
    FrameMeter meter(options);
    if (!meter.run(drawFrame, [&frames] { return frames.renderTime(); }))
        return {};
    const GlCounters all = GlCounters::now() - callsBefore;
    GlCounters own = frames.synchronisation() - ownBefore;
    // The scene graph itself never reads back; the chart does so after synchronisation.
    own.readBacks = all.readBacks;

    QJsonObject more = own.perFrame(options.frames);
    more.insert(QStringLiteral("program"),
            empty ? QStringLiteral("empty window") : QStringLiteral("charts"));
    more.insert(
            QStringLiteral("all_draw_calls"), static_cast<double>(all.drawCalls) / options.frames);
    more.insert(QStringLiteral("samples"), GlCounters::samples());
    more.insert(QStringLiteral("renderer"), renderer);
    more.insert(QStringLiteral("threaded"), frames.isThreaded());
    more.insert(QStringLiteral("first_frame_ms"), firstFrame);
    return meter.report(more);
}
