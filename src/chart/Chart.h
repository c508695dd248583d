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
    \inherits ChartItem
    \brief Shows the application's traces, refreshes them every 33 ms and tells which one lies
    under the mouse.

    \quotefromfile examples/minimal/Main.qml
    \skipto Chart {
    \printto }
    \printline }

    Traces are drawn where the scene graph uses OpenGL; with another graphics API the chart shows
    none and emits no mouse signals. They are smooth if the item's \c antialiasing is on, which is
    the default here. The picture has the item's size rounded to whole pixels, and a pixel of it is
    one of the item, whatever the device pixel ratio is. A chart without width or height draws
    nothing.

    The items inside a chart are drawn over its traces; one with a negative \c z is drawn under
    them, which is the place for a grid.

    Mouse and hover signals tell what the pointer is on, see \l{Hit-testing}. A mouse event is
    answered from an image of the traces that is drawn for this alone and never shown. The event
    requests no new one: a trace is found where it was when data last changed while an event was
    waiting. An application that wants hits on resting data marks one of its traces changed while
    the pointer moves over the chart. A change of the chart's size and switching the item's
    \c antialiasing drop the image: nothing is hit until data changes while an event is waiting.

    \sa {Your first trace}, {Zoom}, {Performance}
*/
/*!
    \class Charts::Chart
    \brief The item that holds traces.

    The chart owns neither its traces nor its rubber band. A trace that is destroyed leaves the
    chart by itself. Everything public is for the GUI thread. Each tick of the timer, updateData()
    of all traces runs on the global thread pool while the GUI thread waits; updatePaintNode() runs
    on the render thread while the GUI thread is blocked. That is why nothing here is locked.

    Handlers of its signals may remove and destroy traces and the chart itself. Only while Qt
    delivers a mouse event to it, as in zoomedIn() at the end of a drag, a chart has to be destroyed
    by \c deleteLater() or, in QML, \c destroy().

    \sa {Which thread calls what}
*/
class CHARTS_EXPORT Chart : public ChartItem
{
    Q_OBJECT
    QML_ELEMENT

    /*! \qmlproperty bool Chart::isZoomed
        Whether zoomIn() has been applied and not been reset, also to a chart whose traces do not
        zoom or that has none. Read only, default false. */
    Q_PROPERTY(bool isZoomed READ isZoomed NOTIFY isZoomedChanged)
    /*! \qmlproperty bool Chart::isZoomEnabled
        Whether a drag with the left mouse button opens the \l rubberBand, if there is one. Default
        false. Switching it off resets a zoom, behind its own signal. Methods do not ask for it. */
    Q_PROPERTY(bool isZoomEnabled READ isZoomEnabled WRITE setIsZoomEnabled NOTIFY
                    isZoomEnabledChanged)
    /*! \qmlproperty ZoomDelegate Chart::rubberBand
        The item that shows the rectangle of a zoom drag, usually a child of the chart. Default
        null. Not owned. Setting null resets a zoom before the signal; another item leaves it. One
        that is destroyed meanwhile does not open any more. While it is visible drags move it, also
        if the application itself has shown it. */
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
        Attaches \a trace, which the chart does not own, and gives its domain the chart's size. Null
        is ignored. A trace that is attached twice is listed, updated and drawn twice. A zoom that
        is in force is not applied to it. Attach a trace to one chart at a time: what it marks as
        changed is used up by the first chart that draws it. */
    Q_INVOKABLE void addTrace(Charts::AbstractTrace *trace);
    /*! \qmlmethod void Chart::removeTrace(AbstractTrace trace)
        Detaches the first entry of \a trace; one that is not attached is ignored. A trace that is
        destroyed leaves by itself. All connections to the trace's \c zChanged and \c destroyed
        signals are dropped, the application's own and those of other charts included: connect again
        what is still wanted. */
    Q_INVOKABLE void removeTrace(Charts::AbstractTrace *trace);
    /*! \qmlmethod void Chart::zoomIn(rect rect)
        Zooms the domains of all traces to \a rect, in pixels of the chart, updates all traces at
        once and emits \l zoomedIn(), whether zooming by mouse is enabled or not. A second call
        zooms further in. Round domains do not zoom. The rectangle is not checked: one without size
        gives ranges without length. */
    Q_INVOKABLE void zoomIn(QRectF rect);
    /*! \qmlmethod void Chart::zoomReset()
        Returns all traces to the ranges from before the zoom and updates them at once. Does nothing
        without a zoom of the chart, and emits the signal of \l isZoomed only. */
    Q_INVOKABLE void zoomReset();

    /*! Whether \a trace is attached; null never is. */
    [[nodiscard]] bool includes(AbstractTrace *trace) const;
    /*! Sorts the traces by ascending z; the order of equal ones is not defined. Called by itself
        when a trace's z changes. */
    void resortTraces();
    /*! Runs updateData() of all traces on the global thread pool, waits for them and requests a
        repaint. Called by the timer every 33 ms, and by zoomIn() and zoomReset(). Call it where a
        change has to be in the very next frame. */
    void updateTraces();

Q_SIGNALS:
    /*! \qmlsignal Chart::mouseEventResponsesReceived()
        Emitted on the render thread, in the middle of a synchronisation, when answers to mouse
        events have come back: for the chart itself. Use the mouse signals. */
    void mouseEventResponsesReceived();
    void rubberBandChanged(QQuickItem *rubberBand);
    void isZoomedChanged(bool isZoomed);
    void isZoomEnabledChanged();
    /*! \qmlsignal Chart::zoomedIn()
        A zoom has been applied to all traces, by mouse or by \l zoomIn(). Not emitted by a reset.
        */
    void zoomedIn();
    /*! \qmlsignal Chart::clicked(ChartMouseEvent event)
        A mouse button went up and no trace got its signal \c clicked, or the trace's handler has
        set \c event.accepted to false; \a event tells where. A press on one trace and a release on
        another one or beside it comes here, too. No mouse signal comes from a chart without traces.
        */
    void clicked(Charts::ChartMouseEvent *event);
    /*! \qmlsignal Chart::hovered(ChartMouseEvent event, bool state)
        The pointer came into the chart, \a state true, or left it, false; \a event tells where.
        Moves inside emit the signals of traces only. */
    void hovered(Charts::ChartMouseEvent *event, bool state);
    /*! \qmlsignal Chart::pressed(ChartMouseEvent event)
        A mouse button went down on no trace, or the trace's handler has set \c event.accepted to
        false; \a event tells where and which. */
    void pressed(Charts::ChartMouseEvent *event);
    /*! \qmlsignal Chart::released(ChartMouseEvent event)
        A mouse button went up on no trace, or the trace's handler has set \c event.accepted to
        false; \a event tells where and which. */
    void released(Charts::ChartMouseEvent *event);
    /*! \qmlsignal Chart::doubleClicked(ChartMouseEvent event)
        Double-clicked where no trace got its signal \c doubleClicked, or the trace's handler has
        set \c event.accepted to false; \a event tells where. */
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
