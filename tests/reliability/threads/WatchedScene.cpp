// SPDX-License-Identifier: MIT
#include "WatchedScene.h"

#include "MouseInput.h"

#include <ChartsLibrary/ChartMouseEvent.h>
#include <ChartsLibrary/ChartNode.h>
#include <ChartsLibrary/FillRectProvider.h>
#include <ChartsLibrary/OpenGLRenderNode.h>

#include <QtTest/QTest>

namespace {

constexpr QSize size = {200, 120};
constexpr std::size_t mostTraces = 6;

} // namespace

WatchedChart::WatchedChart(WatchedWindow &window, QQuickItem *parent)
    : Chart(parent)
    , m_window(window)
{
    watchMouse();
    // Documented for the thread that draws, in a synchronisation.
    connect(
            this, &Chart::mouseEventResponsesReceived, this,
            [this] { m_window.watch().answers.note(m_window.isHere()); }, Qt::DirectConnection);
    const auto noteZoom = [this] {
        m_window.watch().zoomSignals.note(isGuiThread() && !m_window.isSynchronising());
    };
    connect(this, &Chart::isZoomedChanged, this, noteZoom, Qt::DirectConnection);
    connect(this, &Chart::zoomedIn, this, noteZoom, Qt::DirectConnection);
}

void WatchedChart::watchMouse()
{
    const auto note = [this] {
        m_window.watch().guiSteps.note();
        m_window.watch().mouseSignals.note(isGuiThread() && !m_window.isSynchronising());
    };
    connect(this, &Chart::pressed, this, note, Qt::DirectConnection);
    connect(this, &Chart::released, this, note, Qt::DirectConnection);
    connect(this, &Chart::clicked, this, note, Qt::DirectConnection);
    connect(this, &Chart::doubleClicked, this, note, Qt::DirectConnection);
    connect(this, &Chart::hovered, this, note, Qt::DirectConnection);
}

QSGNode *WatchedChart::updatePaintNode(QSGNode *oldNode, UpdatePaintNodeData *data)
{
    QSGNode *node = Chart::updatePaintNode(oldNode, data);
    bool isRight = m_window.isHere();
    if (node) {
        auto *renderer = dynamic_cast<Charts::OpenGLRenderNode *>(
                static_cast<Charts::ChartNode *>(node)->renderNode());
        // What it connects to the window's signals runs on its thread.
        isRight = isRight && renderer && renderer->thread() == m_window.renderThread();
    }
    m_window.watch().paintNodes.note(isRight);
    return node;
}

QList<QPointF> WatchedTransform::points(QPointF p1, QPointF p2)
{
    // The GUI thread asks where the pointer is over the curve.
    if (!isGuiThread())
        m_window.watch().curvePoints.note(m_window.isHere());
    return {p1, p2};
}

WatchedScene::WatchedScene(ThreadWatch &watch, const QPoint &position, quint32 seed)
    : m_window(watch)
    , m_random(seed)
    , m_transform(m_window)
{
    m_window.resize(size);
    m_window.setPosition(position);
    m_window.setColor(Qt::white);
    m_grid = new Charts::XYGrid(m_window.contentItem());
    m_grid->setSize(size);
    m_curve = new Charts::GradientCurve(m_window.contentItem());
    m_curve->setSize(size);
    m_curve->setGeometryTransform(&m_transform);
    m_curve->setShape(new Charts::FillRectProvider(m_curve));
    m_curve->setP1({10.0, 10.0});
    m_curve->setP2({180.0, 60.0});
    makeChart();
    for (int i = 0; i < 4; ++i)
        addTrace();
}

WatchedScene::~WatchedScene()
{
    // Traces last: the renderer of a closing window may still look at them.
    m_window.close();
    delete m_chart;
}

bool WatchedScene::start()
{
    m_window.show();
    return QTest::qWaitForWindowExposed(&m_window)
           && QTest::qWaitFor([this] { return m_window.renderThread() != nullptr; });
}

void WatchedScene::makeChart()
{
    delete m_chart;
    m_chart = new WatchedChart(m_window, m_window.contentItem());
    m_chart->setSize(size);
    m_chart->setIsZoomEnabled(true);
    m_chart->setRubberBand(new Charts::ZoomDelegate(m_chart));
    for (const auto &trace : m_traces)
        m_chart->addTrace(trace.get());
}

void WatchedScene::addTrace()
{
    if (m_traces.size() == mostTraces)
        return;
    auto trace = std::make_unique<WatchedTrace>(m_window, 0.1 + 0.8 * m_random.generateDouble());
    const auto note = [this](Charts::ChartMouseEvent *event) {
        m_window.watch().guiSteps.note();
        m_window.watch().hits.note(isGuiThread() && !m_window.isSynchronising());
        event->setAccepted(below(2) == 0);
    };
    QObject::connect(trace.get(), &WatchedTrace::pressed, &m_window, note, Qt::DirectConnection);
    QObject::connect(trace.get(), &WatchedTrace::released, &m_window, note, Qt::DirectConnection);
    QObject::connect(trace.get(), &WatchedTrace::clicked, &m_window, note, Qt::DirectConnection);
    QObject::connect(trace.get(), &WatchedTrace::hovered, &m_window, note, Qt::DirectConnection);
    m_chart->addTrace(trace.get());
    m_traces.push_back(std::move(trace));
}

void WatchedScene::changeTrace(WatchedTrace &trace)
{
    switch (below(5)) {
    case 0:
        trace.setZ(below(10));
        break;
    case 1:
        trace.setColor(QColor::fromHsv(below(360), 255, 128));
        break;
    case 2:
        trace.setLineWidth(1.0 + below(9));
        break;
    case 3:
        trace.setVisible(!trace.isVisible());
        break;
    default:
        trace.setName(QString::number(below(1000)));
        break;
    }
}

void WatchedScene::useMouse()
{
    const QPointF position(below(size.width()), below(size.height()));
    switch (below(4)) {
    case 0:
        HoverInput(QEvent::HoverEnter, position).sendTo(*m_chart);
        break;
    case 1:
        MouseInput(QEvent::MouseButtonPress, position).sendTo(*m_chart);
        MouseInput(QEvent::MouseButtonRelease, position, Qt::LeftButton, Qt::NoButton)
                .sendTo(*m_chart);
        break;
    default:
        HoverInput(QEvent::HoverMove, position).sendTo(*m_chart);
        break;
    }
}

void WatchedScene::drag()
{
    MouseInput(QEvent::MouseButtonPress, {20.0, 20.0}).sendTo(*m_chart);
    MouseInput(QEvent::MouseMove, {150.0, 90.0}).sendTo(*m_chart);
    MouseInput(QEvent::MouseButtonRelease, {150.0, 90.0}, Qt::LeftButton, Qt::NoButton)
            .sendTo(*m_chart);
}

void WatchedScene::act()
{
    m_window.watch().guiSteps.note();
    const int what = below(100);
    if (what < 55) {
        useMouse();
    } else if (what < 75) {
        if (!m_traces.empty())
            changeTrace(
                    *m_traces[static_cast<std::size_t>(below(static_cast<int>(m_traces.size())))]);
    } else if (what < 82) {
        addTrace();
    } else if (what < 86) {
        if (m_traces.size() > 2)
            m_traces.erase(m_traces.begin());
    } else if (what < 89) {
        m_chart->removeTrace(m_traces.front().get());
        m_chart->addTrace(m_traces.front().get());
    } else if (what < 92) {
        drag();
    } else if (what < 94) {
        m_chart->zoomReset();
    } else if (what < 96) {
        m_chart->setSize(QSizeF(size) - QSizeF(below(40), below(40)));
        m_chart->setAntialiasing(below(2) == 0);
    } else if (what < 98) {
        m_grid->setLineWidth(1.0 + below(3));
        m_curve->setP2({180.0, 10.0 + below(100)});
    } else if (what < 99) {
        m_chart->setVisible(!m_chart->isVisible());
    } else {
        makeChart();
    }
    m_window.watch().guiSteps.note();
}
