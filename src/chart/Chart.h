// SPDX-License-Identifier: MIT
#ifndef CHARTS_CHART_H
#define CHARTS_CHART_H

#include "ChartItem.h"
#include "ChartsExport.h"
#include "MouseEventResponse.h"
#include "ZoomDelegate.h"

#include <QtCore/QPointer>

#include <memory>
#include <vector>

QT_BEGIN_NAMESPACE
class QTimer;
QT_END_NAMESPACE

Q_MOC_INCLUDE("ChartsLibrary/AbstractTrace.h")
Q_MOC_INCLUDE("ChartsLibrary/ChartMouseEvent.h")

namespace Charts {

class AbstractTrace;
class ChartMouseEvent;
class MouseResponseDispatcher;
class PointerEventQueue;
class TraceList;

/*!
    \qmltype Chart
    \inqmlmodule zel.charts
    \brief Shows the application's traces, refreshes them every 33 ms and tells which one lies
    under the mouse.

    Traces are drawn where the scene graph uses OpenGL; with another graphics API the chart shows
    none and emits no mouse signals.

    A mouse event is answered from the selection image that exists, and alone it requests no new
    one: a trace is found where it was when data last changed while an event was waiting. An
    application that wants hits on resting data marks one of its traces changed while the pointer
    moves over the chart. Switching the item's \c antialiasing drops the image: nothing is hit until
    data changes while an event is waiting.
*/
/*!
    \class Charts::Chart
    \brief The item that holds traces.

    The chart owns neither its traces nor its rubber band. A trace that is destroyed leaves the
    chart by itself. Everything public is for the GUI thread. Each tick of the timer, updateData()
    of all traces runs on the global thread pool while the GUI thread waits; updatePaintNode() runs
    on the render thread while the GUI thread is blocked. That is why nothing here is locked.
*/
class CHARTS_EXPORT Chart : public ChartItem
{
    Q_OBJECT
    QML_ELEMENT

    /*! \qmlproperty bool Chart::isZoomed
        Whether zoomIn() has been applied and not been reset. Read only, default false. */
    Q_PROPERTY(bool isZoomed READ isZoomed NOTIFY isZoomedChanged)
    /*! \qmlproperty bool Chart::isZoomEnabled
        Whether a drag with the left mouse button opens the rubber band. Default false. Switching it
        off resets a zoom. */
    Q_PROPERTY(bool isZoomEnabled READ isZoomEnabled WRITE setIsZoomEnabled NOTIFY
                    isZoomEnabledChanged)
    /*! \qmlproperty ZoomDelegate Chart::rubberBand
        The item that shows the rectangle of a zoom drag, default null. Clearing it resets a zoom. */
    Q_PROPERTY(Charts::ZoomDelegate *rubberBand READ rubberBand WRITE setRubberBand NOTIFY
                    rubberBandChanged)

public:
    explicit Chart(QQuickItem *parent = nullptr);
    ~Chart() override;

    [[nodiscard]] bool isZoomed() const { return m_isZoomed; }
    [[nodiscard]] bool isZoomEnabled() const { return m_isZoomEnabled; }
    void setIsZoomEnabled(bool enabled);
    [[nodiscard]] ZoomDelegate *rubberBand() const { return m_rubberBand; }
    void setRubberBand(ZoomDelegate *rubberBand);

    /*! \qmlmethod void Chart::addTrace(AbstractTrace trace)
        Attaches \a trace and gives its domain the chart's size. Null is ignored. A trace that is
        attached twice is listed, updated and drawn twice. */
    Q_INVOKABLE void addTrace(Charts::AbstractTrace *trace);
    /*! \qmlmethod void Chart::removeTrace(AbstractTrace trace)
        Detaches the first entry of \a trace; one that is not attached is ignored. All connections
        to the trace's \c zChanged and \c destroyed signals are dropped, the application's own
        included. */
    Q_INVOKABLE void removeTrace(Charts::AbstractTrace *trace);
    /*! \qmlmethod void Chart::zoomIn(rect rect)
        Zooms all traces to \a rect, in pixels of the chart, whether zooming by mouse is enabled or
        not. */
    Q_INVOKABLE void zoomIn(QRectF rect);
    /*! \qmlmethod void Chart::zoomReset()
        Returns all traces to the ranges from before the zoom. */
    Q_INVOKABLE void zoomReset();

    /*! Whether \a trace is attached. */
    [[nodiscard]] bool includes(AbstractTrace *trace) const;
    /*! Sorts the traces by ascending z; the order of equal ones is not defined. */
    void resortTraces();
    /*! Runs updateData() of all traces on the global thread pool, waits for them and requests a
        repaint. Called by the timer. */
    void updateTraces();

Q_SIGNALS:
    /*! Emitted on the render thread when answers to mouse events have come back. */
    void mouseEventResponsesReceived();
    void rubberBandChanged(QQuickItem *rubberBand);
    void isZoomedChanged(bool isZoomed);
    void isZoomEnabledChanged();
    /*! \qmlsignal Chart::zoomedIn()
        A zoom has been applied to all traces. */
    void zoomedIn();
    /*! \qmlsignal Chart::clicked(ChartMouseEvent event)
        Released where no trace was both pressed and released, or the trace's handler has set
        \c event.accepted to false. No mouse signal comes from a chart without traces. */
    void clicked(Charts::ChartMouseEvent *event);
    /*! \qmlsignal Chart::hovered(ChartMouseEvent event, bool state)
        The pointer came into the chart, \a state true, or left it, false. Moves inside emit the
        signals of traces only. */
    void hovered(Charts::ChartMouseEvent *event, bool state);
    /*! \qmlsignal Chart::pressed(ChartMouseEvent event)
        Pressed on no trace, or passed on by the trace's handler. */
    void pressed(Charts::ChartMouseEvent *event);
    /*! \qmlsignal Chart::released(ChartMouseEvent event)
        Released on no trace, or passed on by the trace's handler. */
    void released(Charts::ChartMouseEvent *event);
    /*! \qmlsignal Chart::doubleClicked(ChartMouseEvent event)
        Double-clicked on no trace, or passed on by the trace's handler. */
    void doubleClicked(Charts::ChartMouseEvent *event);

protected:
    QSGNode *updatePaintNode(QSGNode *oldNode, UpdatePaintNodeData *data) override;
    void geometryUpdate(const QRectF &newGeometry, const QRectF &oldGeometry) override;

    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void mouseDoubleClickEvent(QMouseEvent *event) override;
    void mouseUngrabEvent() override;
    void hoverEnterEvent(QHoverEvent *event) override;
    void hoverMoveEvent(QHoverEvent *event) override;
    void hoverLeaveEvent(QHoverEvent *event) override;

private:
    /*! Takes the first entry of \a trace out of the list, which has one. */
    void detach(AbstractTrace *trace);
    void handleMouseEventResponses();
    void setIsZoomed(bool isZoomed);
    /*! Returns whether the chart still exists. */
    template<typename Visit>
    bool zoomTraces(bool isZoomed, Visit &&visit);
    void queueMouseEvent(QMouseEvent *event);
    void queueHoverEvent(QEvent::Type type, QHoverEvent *event);
    [[nodiscard]] bool isRubberBandShown() const;
    void forgetDestroyedTraces();

    std::unique_ptr<PointerEventQueue> m_eventQueue;
    std::vector<MouseEventResponse> m_mouseEventResponses;
    std::vector<QPointer<AbstractTrace>> m_hitTraces; // one a response
    QTimer *m_updateTimer = nullptr;
    bool m_tracesDirty = true;
    std::unique_ptr<TraceList> m_traces;
    QPointer<ZoomDelegate> m_rubberBand;
    bool m_hasRubberBand = false; // also after it was destroyed
    std::shared_ptr<MouseResponseDispatcher> m_dispatcher;
    bool m_isZoomed = false;
    bool m_isZoomEnabled = false;
};

} // namespace Charts

#endif
