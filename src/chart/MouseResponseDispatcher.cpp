// SPDX-License-Identifier: MIT
#include "MouseResponseDispatcher.h"

#include "AbstractTrace.h"
#include "Chart.h"
#include "ChartMouseEvent.h"
#include "MouseEventResponse.h"
#include "TraceList.h"

namespace Charts {

namespace {

/*!
    Offers \a event to \a trace, where there is one, and to the chart when there is none or the
    trace's handler has passed it on.
*/
template<typename TraceSignal, typename ChartSignal>
void offer(ChartMouseEvent &event, AbstractTrace *trace, TraceSignal traceSignal,
        const QPointer<Chart> &chart, ChartSignal chartSignal)
{
    if (trace)
        Q_EMIT(trace->*traceSignal)(&event);
    else
        event.setAccepted(false);
    if (chart && !event.isAccepted())
        Q_EMIT(chart->*chartSignal)(&event);
}

} // namespace

MouseResponseDispatcher::MouseResponseDispatcher(Chart &chart, const TraceList &traces)
    : m_chart(&chart)
    , m_traces(traces)
{
}

void MouseResponseDispatcher::dispatch(const std::vector<MouseEventResponse> &responses,
        const std::vector<QPointer<AbstractTrace>> &hitTraces)
{
    // A trace that was removed meanwhile is forgotten without a leave signal.
    if (!m_traces.containsLiving(m_hoveredTrace))
        m_hoveredTrace = nullptr;
    if (!m_traces.containsLiving(m_pressedTrace))
        m_pressedTrace = nullptr;
    for (std::size_t i = 0; i < responses.size() && m_chart; ++i)
        dispatch(responses[i].event.get(), hitTraces[i]);
}

void MouseResponseDispatcher::dispatch(QMouseEvent *event, const Guard &hit)
{
    const Guard trace = m_traces.containsLiving(hit) ? hit : nullptr;
    switch (event->type()) {
    case QEvent::MouseButtonPress:
        press(event, trace);
        break;
    case QEvent::MouseButtonRelease:
        release(event, trace);
        break;
    case QEvent::MouseButtonDblClick:
        doubleClick(event, trace);
        break;
    case QEvent::MouseMove:
        move(event, hit);
        break;
    case QEvent::HoverEnter:
        hoverEnter(event, trace);
        break;
    case QEvent::HoverLeave:
        hoverLeave(event, trace);
        break;
    default:
        break;
    }
}

void MouseResponseDispatcher::hoverEnter(QMouseEvent *event, AbstractTrace *trace)
{
    ChartMouseEvent chartEvent(event, nullptr);
    if (trace) {
        m_hoveredTrace = trace;
        Q_EMIT trace->hovered(&chartEvent, true);
    }
    if (m_chart)
        Q_EMIT m_chart->hovered(&chartEvent, true);
}

void MouseResponseDispatcher::hoverLeave(QMouseEvent *event, AbstractTrace *trace)
{
    ChartMouseEvent chartEvent(event, nullptr);
    if (trace) {
        m_hoveredTrace = nullptr;
        Q_EMIT trace->hovered(&chartEvent, false);
    }
    if (m_chart)
        Q_EMIT m_chart->hovered(&chartEvent, false);
}

void MouseResponseDispatcher::move(QMouseEvent *event, const Guard &hit)
{
    if (hit == m_hoveredTrace)
        return;
    ChartMouseEvent chartEvent(event, nullptr);
    if (m_hoveredTrace)
        Q_EMIT m_hoveredTrace->hovered(&chartEvent, false);
    if (!m_chart)
        return;
    if (m_traces.containsLiving(hit)) {
        m_hoveredTrace = hit;
        Q_EMIT hit->hovered(&chartEvent, true);
    } else {
        m_hoveredTrace = nullptr;
    }
}

void MouseResponseDispatcher::press(QMouseEvent *event, AbstractTrace *trace)
{
    ChartMouseEvent chartEvent(event, nullptr);
    m_pressedTrace = trace;
    offer(chartEvent, trace, &AbstractTrace::pressed, m_chart, &Chart::pressed);
}

void MouseResponseDispatcher::release(QMouseEvent *event, const Guard &trace)
{
    ChartMouseEvent releaseEvent(event, nullptr);
    offer(releaseEvent, trace, &AbstractTrace::released, m_chart, &Chart::released);
    if (!m_chart)
        return;

    // The handlers may have removed the trace.
    AbstractTrace *clicked =
            m_traces.containsLiving(trace) && trace == m_pressedTrace ? trace : nullptr;
    ChartMouseEvent clickEvent(event, nullptr);
    if (clicked)
        Q_EMIT clicked->clicked(&clickEvent);
    else
        clickEvent.setAccepted(false);
    if (m_chart && !clickEvent.isAccepted()) {
        // The trace's handler may have kept changes in its event: the chart gets one of its own.
        ChartMouseEvent chartEvent(event, nullptr);
        Q_EMIT m_chart->clicked(&chartEvent);
    }
}

void MouseResponseDispatcher::doubleClick(QMouseEvent *event, AbstractTrace *trace)
{
    ChartMouseEvent chartEvent(event, nullptr);
    AbstractTrace *pressed = trace && trace == m_pressedTrace ? trace : nullptr;
    offer(chartEvent, pressed, &AbstractTrace::doubleClicked, m_chart, &Chart::doubleClicked);
}

} // namespace Charts
