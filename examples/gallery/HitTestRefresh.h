// SPDX-License-Identifier: MIT
#pragma once

#include <ChartsLibrary/AbstractTrace.h>
#include <ChartsLibrary/Chart.h>
#include <ChartsLibrary/TraceData.h>

#include <QtCore/QEvent>
#include <QtCore/QPointer>
#include <QtQml/qqmlregistration.h>

namespace Gallery {

/*! Lets traces at rest be hit: marks one of them as changed while the pointer is at work over the
    chart. */
class HitTestRefresh : public QObject
{
    Q_OBJECT
    QML_ELEMENT

    Q_PROPERTY(Charts::Chart *chart READ chart WRITE setChart)
    /*! A visible trace of the chart. */
    Q_PROPERTY(Charts::AbstractTrace *trace READ trace WRITE setTrace)

public:
    Charts::Chart *chart() const { return m_chart; }
    void setChart(Charts::Chart *chart)
    {
        if (m_chart)
            m_chart->removeEventFilter(this);
        m_chart = chart;
        if (m_chart)
            m_chart->installEventFilter(this);
    }
    Charts::AbstractTrace *trace() const { return m_trace; }
    void setTrace(Charts::AbstractTrace *trace) { m_trace = trace; }

    bool eventFilter(QObject *, QEvent *event) override
    {
        const QEvent::Type type = event->type();
        const bool isHover = type >= QEvent::HoverEnter && type <= QEvent::HoverMove;
        const bool isButton =
                type >= QEvent::MouseButtonPress && type <= QEvent::MouseButtonDblClick;
        // Events come on the GUI thread: neither updateData() nor the renderer is at work now.
        if (m_trace && (isHover || isButton))
            m_trace->traceData()->dirtyRange().push({0, 1}); // its first vertex, 12 bytes
        return false;
    }

private:
    QPointer<Charts::Chart> m_chart;
    QPointer<Charts::AbstractTrace> m_trace;
};

} // namespace Gallery
