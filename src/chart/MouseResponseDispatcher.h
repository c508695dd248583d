// SPDX-License-Identifier: MIT
#ifndef CHARTS_MOUSERESPONSEDISPATCHER_H
#define CHARTS_MOUSERESPONSEDISPATCHER_H

#include <QtCore/QPointer>

#include <vector>

QT_BEGIN_NAMESPACE
class QMouseEvent;
QT_END_NAMESPACE

namespace Charts {

class AbstractTrace;
class Chart;
class TraceList;
struct MouseEventResponse;

/*!
    \internal
    Turns the renderer's answers into the mouse signals of the traces and of the chart, and keeps
    which trace is hovered and which was pressed. GUI thread.

    Any handler may destroy the chart, and with it \c traces: whoever calls dispatch() keeps the
    dispatcher, which then emits nothing more.
*/
class MouseResponseDispatcher
{
public:
    MouseResponseDispatcher(Chart &chart, const TraceList &traces);

    /*! \a hitTraces are the traces of \a responses, null where they exist no more: their addresses
        may be those of other traces by now. */
    void dispatch(const std::vector<MouseEventResponse> &responses,
            const std::vector<QPointer<AbstractTrace>> &hitTraces);

private:
    using Guard = QPointer<AbstractTrace>;

    void dispatch(QMouseEvent *event, const Guard &hit);
    // Each takes the listed trace under the event, or null.
    void hoverEnter(QMouseEvent *event, AbstractTrace *trace);
    void hoverLeave(QMouseEvent *event, AbstractTrace *trace);
    void press(QMouseEvent *event, AbstractTrace *trace);
    void release(QMouseEvent *event, const Guard &trace);
    void doubleClick(QMouseEvent *event, AbstractTrace *trace);
    // Takes the trace that was hit, whether it is listed or not.
    void move(QMouseEvent *event, const Guard &hit);

    QPointer<Chart> m_chart;
    const TraceList &m_traces; // as long as the chart exists
    QPointer<AbstractTrace> m_hoveredTrace;
    QPointer<AbstractTrace> m_pressedTrace;
};

} // namespace Charts

#endif
