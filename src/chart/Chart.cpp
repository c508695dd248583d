// SPDX-License-Identifier: MIT
#include "Chart.h"

#include "AbstractRenderNode.h"
#include "AbstractTrace.h"
#include "ChartNode.h"
#include "MouseResponseDispatcher.h"
#include "PointerEventQueue.h"
#include "Rounding.h"
#include "ThreadCheck.h"
#include "TraceDomain.h"
#include "TraceList.h"

#include <QtConcurrent/QtConcurrentMap>
#include <QtCore/QThreadPool>
#include <QtCore/QTimer>

#include <chrono>
#include <map>
#include <utility>

namespace Charts {

namespace {

constexpr std::chrono::milliseconds updateInterval(33);

bool hasArea(const QRectF &rect)
{
    return rect.width() > 0.0 && rect.height() > 0.0;
}

} // namespace

Chart::Chart(QQuickItem *parent)
    : ChartItem(parent)
    , m_eventQueue(std::make_unique<PointerEventQueue>())
    , m_updateTimer(new QTimer(this))
    , m_traces(std::make_unique<TraceList>())
    , m_dispatcher(std::make_shared<MouseResponseDispatcher>(*this, *m_traces))
{
    setFlag(ItemHasContents);
    setAntialiasing(true);
    // Emitted by the render thread, or by the GUI thread in the middle of a synchronisation:
    // handlers may run only after it.
    connect(this, &Chart::mouseEventResponsesReceived, this, &Chart::handleMouseEventResponses,
            Qt::QueuedConnection);
    setAcceptedMouseButtons(Qt::AllButtons);
    setAcceptHoverEvents(true);

    connect(m_updateTimer, &QTimer::timeout, this, &Chart::updateTraces);
    m_updateTimer->setTimerType(Qt::PreciseTimer);
    m_updateTimer->start(updateInterval);
}

Chart::~Chart() = default;

void Chart::addTrace(AbstractTrace *trace)
{
    Q_ASSERT(isOnThreadOf(this));
    if (!trace)
        return;
    // Handlers of the domain's signals may destroy either.
    const QPointer<Chart> guard(this);
    const QPointer<AbstractTrace> traceGuard(trace);
    trace->domain()->setSize(size());
    if (!guard || !traceGuard)
        return;
    // One that is gone unheard of may have had the same address.
    forgetDestroyedTraces();
    m_traces->append(trace);
    connect(trace, &AbstractTrace::zChanged, this, &Chart::resortTraces);
    connect(trace, &QObject::destroyed, this, [this, trace] {
        // Every entry at once: removing the first one drops the connections of the others too.
        while (m_traces->contains(trace))
            detach(trace);
    });
    m_traces->sort();
    m_tracesDirty = true;
}

void Chart::removeTrace(AbstractTrace *trace)
{
    Q_ASSERT(isOnThreadOf(this));
    if (m_traces->containsLiving(trace))
        detach(trace);
}

void Chart::detach(AbstractTrace *trace)
{
    m_traces->removeFirst(trace);
    // All receivers, not only this chart: a removed trace is silent in both signals.
    disconnect(trace, &AbstractTrace::zChanged, nullptr, nullptr);
    disconnect(trace, &QObject::destroyed, nullptr, nullptr);
    m_tracesDirty = true;
}

bool Chart::includes(AbstractTrace *trace) const
{
    Q_ASSERT(isOnThreadOf(this));
    return m_traces->containsLiving(trace);
}

void Chart::resortTraces()
{
    Q_ASSERT(isOnThreadOf(this));
    forgetDestroyedTraces();
    m_traces->sort();
}

void Chart::updateTraces()
{
    Q_ASSERT(isOnThreadOf(this));
    forgetDestroyedTraces();
    if (m_traces->hasRepeated()) {
        // As often as it is listed, but never beside itself.
        std::map<AbstractTrace *, int> entryCounts;
        for (AbstractTrace *trace : m_traces->traces())
            ++entryCounts[trace];
        QtConcurrent::blockingMap(
                QThreadPool::globalInstance(), entryCounts, [](const auto &entry) {
                    for (int i = 0; i < entry.second; ++i)
                        entry.first->updateData();
                });
    } else if (!m_traces->isEmpty()) {
        QtConcurrent::blockingMap(QThreadPool::globalInstance(), m_traces->traces(),
                [](AbstractTrace *trace) { trace->updateData(); });
    }
    update();
}

void Chart::forgetDestroyedTraces()
{
    if (m_traces->dropDestroyed())
        m_tracesDirty = true;
}

void Chart::geometryUpdate(const QRectF &newGeometry, const QRectF &oldGeometry)
{
    if (hasArea(newGeometry)) {
        forgetDestroyedTraces();
        const bool isAlive = m_traces->forEach(
                this, [&](AbstractTrace &trace) { trace.domain()->setSize(newGeometry.size()); });
        if (!isAlive)
            return;
    }
    ChartItem::geometryUpdate(newGeometry, oldGeometry);
}

QSGNode *Chart::updatePaintNode(QSGNode *oldNode, UpdatePaintNodeData *)
{
    const QRectF rect = boundingRect();
    if (!hasArea(rect)) {
        delete oldNode;
        return nullptr;
    }
    auto *node = static_cast<ChartNode *>(oldNode);
    if (!node)
        node = new ChartNode(window());
    AbstractRenderNode *renderNode = node->renderNode();
    if (!renderNode) {
        // Nobody will ever answer them.
        m_eventQueue->events().clear();
        return node;
    }

    forgetDestroyedTraces();
    if (!m_traces->isEmpty() || m_tracesDirty) {
        const QSize textureSize(roundToInt(rect.width()), roundToInt(rect.height()));
        if (textureSize != renderNode->textureSize())
            renderNode->setTextureSize(textureSize);
        renderNode->setRect(rect);
        renderNode->setTraceData(m_tracesDirty, m_traces->traces());
        renderNode->setAntialiasing(antialiasing());
        if (!m_eventQueue->isEmpty())
            renderNode->pushMouseEvents(std::move(m_eventQueue->events()));
        renderNode->render();
        m_tracesDirty = false;
    }

    m_mouseEventResponses = renderNode->takeMouseEventResponses();
    m_hitTraces.clear();
    for (const MouseEventResponse &response : m_mouseEventResponses)
        m_hitTraces.emplace_back(response.trace);
    if (!m_mouseEventResponses.empty())
        Q_EMIT mouseEventResponsesReceived();
    return node;
}

// --- Mouse events: queued here, resolved by the renderer, answered one synchronisation later

void Chart::mousePressEvent(QMouseEvent *event)
{
    // The second press of a double click: the double click that follows stands for it.
    if (event->flags().testFlag(Qt::MouseEventCreatedDoubleClick))
        return;
    if (m_isZoomEnabled && m_rubberBand && event->button() == Qt::LeftButton) {
        const QPointer<Chart> guard(this);
        m_rubberBand->startResize(
                QPointF(roundToInt(event->position().x()), roundToInt(event->position().y())));
        if (!guard)
            return;
    }
    m_eventQueue->notePress(*event);
    queueMouseEvent(event);
    forceActiveFocus();
}

void Chart::mouseMoveEvent(QMouseEvent *event)
{
    const QPointer<Chart> guard(this);
    if (isRubberBandShown())
        m_rubberBand->updatePoint(event->position());
    if (guard)
        ChartItem::mouseMoveEvent(event);
}

void Chart::mouseReleaseEvent(QMouseEvent *event)
{
    if (isRubberBandShown() && event->button() == Qt::LeftButton) {
        const QPointer<Chart> guard(this);
        m_rubberBand->stopResize();
        if (guard && m_rubberBand && m_rubberBand->isAreaValid())
            zoomIn(m_rubberBand->resizeArea());
        if (!guard)
            return;
    }
    m_eventQueue->noteRelease(*event);
    queueMouseEvent(event);
}

void Chart::mouseDoubleClickEvent(QMouseEvent *event)
{
    m_eventQueue->notePress(*event);
    queueMouseEvent(event);
}

void Chart::mouseUngrabEvent()
{
    const QPointer<Chart> guard(this);
    // Newer versions of Qt count the band as hidden already when the chart has left its window; it
    // would come back with the chart.
    constexpr bool mayBeHiddenWithChart = QT_VERSION >= QT_VERSION_CHECK(6, 5, 0);
    if (m_rubberBand && (mayBeHiddenWithChart || m_rubberBand->isVisible()))
        m_rubberBand->stopResize();
    if (guard)
        ChartItem::mouseUngrabEvent();
}

void Chart::hoverEnterEvent(QHoverEvent *event)
{
    m_eventQueue->noteHover(*event);
    queueHoverEvent(QEvent::HoverEnter, event);
}

void Chart::hoverMoveEvent(QHoverEvent *event)
{
    if (m_eventQueue->noteHover(*event))
        queueHoverEvent(QEvent::MouseMove, event);
}

void Chart::hoverLeaveEvent(QHoverEvent *event)
{
    m_eventQueue->noteHover(*event);
    queueHoverEvent(QEvent::HoverLeave, event);
}

void Chart::queueMouseEvent(QMouseEvent *event)
{
    forgetDestroyedTraces();
    if (m_traces->isEmpty())
        return;
    m_eventQueue->push(*event);
    update();
}

void Chart::queueHoverEvent(QEvent::Type type, QHoverEvent *event)
{
    forgetDestroyedTraces();
    if (m_traces->isEmpty())
        return;
    m_eventQueue->push(type, *event);
    update();
}

void Chart::handleMouseEventResponses()
{
    Q_ASSERT(isOnThreadOf(this));
    // All outlive the chart, which a handler may destroy.
    const auto dispatcher = m_dispatcher;
    const auto responses = std::exchange(m_mouseEventResponses, {});
    const auto hitTraces = std::exchange(m_hitTraces, {});
    dispatcher->dispatch(responses, hitTraces);
}

// --- Zoom

bool Chart::isRubberBandShown() const
{
    return m_rubberBand && m_rubberBand->isVisible();
}

void Chart::setIsZoomed(bool isZoomed)
{
    if (isZoomed == m_isZoomed)
        return;
    m_isZoomed = isZoomed;
    Q_EMIT isZoomedChanged(isZoomed);
}

void Chart::setIsZoomEnabled(bool enabled)
{
    Q_ASSERT(isOnThreadOf(this));
    if (enabled == m_isZoomEnabled)
        return;
    m_isZoomEnabled = enabled;
    const QPointer<Chart> guard(this);
    Q_EMIT isZoomEnabledChanged();
    if (guard && !m_isZoomEnabled && m_isZoomed)
        zoomReset();
}

void Chart::setRubberBand(ZoomDelegate *rubberBand)
{
    Q_ASSERT(isOnThreadOf(this));
    // One that was destroyed can still be taken away.
    if (rubberBand == m_rubberBand && (rubberBand || !m_hasRubberBand))
        return;
    const QPointer<Chart> guard(this);
    if (!rubberBand)
        zoomReset();
    if (!guard)
        return;
    m_rubberBand = rubberBand;
    m_hasRubberBand = rubberBand != nullptr;
    Q_EMIT rubberBandChanged(rubberBand);
}

void Chart::zoomIn(QRectF rect)
{
    Q_ASSERT(isOnThreadOf(this));
    if (!zoomTraces(true, [&](AbstractTrace &trace) { trace.domain()->zoomIn(rect); }))
        return;
    Q_EMIT zoomedIn();
}

void Chart::zoomReset()
{
    Q_ASSERT(isOnThreadOf(this));
    if (!m_isZoomed)
        return;
    zoomTraces(false, [](AbstractTrace &trace) { trace.domain()->zoomReset(); });
}

template<typename Visit>
bool Chart::zoomTraces(bool isZoomed, Visit &&visit)
{
    // Handlers of the signals may destroy the chart.
    const QPointer<Chart> guard(this);
    setIsZoomed(isZoomed);
    if (!guard)
        return false;
    forgetDestroyedTraces();
    if (!m_traces->forEach(this, std::forward<Visit>(visit)))
        return false;
    updateTraces();
    return true;
}

} // namespace Charts
