// SPDX-License-Identifier: MIT
#ifndef CHARTS_TEST_BACKEND_H
#define CHARTS_TEST_BACKEND_H

#include <ChartsLibrary/AbstractTrace.h>
#include <ChartsLibrary/Chart.h>
#include <ChartsLibrary/ChartMouseEvent.h>
#include <ChartsLibrary/Span.h>
#include <ChartsLibrary/TraceDomain.h>

#include <QtGui/QMouseEvent>

/*! The C++ side of an application, as far as the documents of this test need one. */
class Backend : public QObject
{
    Q_OBJECT
    Q_PROPERTY(Charts::Span span READ span WRITE setSpan NOTIFY spanChanged)
    Q_PROPERTY(QList<Charts::Span> spans READ spans WRITE setSpans NOTIFY spansChanged)

public:
    using QObject::QObject;

    [[nodiscard]] Charts::Span span() const { return m_span; }
    void setSpan(Charts::Span span)
    {
        if (span == m_span)
            return;
        m_span = span;
        Q_EMIT spanChanged();
    }

    [[nodiscard]] QList<Charts::Span> spans() const { return m_spans; }
    void setSpans(const QList<Charts::Span> &spans)
    {
        if (spans == m_spans)
            return;
        m_spans = spans;
        Q_EMIT spansChanged();
    }

    Q_INVOKABLE double totalLength(const QList<Charts::Span> &spans) const
    {
        double length = 0.0;
        for (const Charts::Span &span : spans)
            length += span.length();
        return length;
    }
    Q_INVOKABLE bool equal(Charts::Span a, Charts::Span b) const { return a == b; }
    Q_INVOKABLE void setFormat(Charts::TraceDomain *domain, Charts::TraceDomain::TraceFormat format)
    {
        domain->setFormat(format);
    }
    Q_INVOKABLE void setRanges(Charts::TraceDomain *domain, Charts::Span x, Charts::Span y)
    {
        domain->setRangeXY(x, y);
    }
    Q_INVOKABLE bool includes(Charts::Chart *chart, Charts::AbstractTrace *trace) const
    {
        return chart->includes(trace);
    }

    /*! Has \a trace tell of a click at (3.6, 4.2); whether the handlers left the event accepted. */
    Q_INVOKABLE bool click(Charts::AbstractTrace *trace)
    {
        QMouseEvent input = release();
        Charts::ChartMouseEvent event(&input, nullptr);
        Q_EMIT trace->clicked(&event);
        return event.isAccepted();
    }
    Q_INVOKABLE void hover(Charts::Chart *chart, bool state)
    {
        QMouseEvent input = release();
        Charts::ChartMouseEvent event(&input, nullptr);
        Q_EMIT chart->hovered(&event, state);
    }

Q_SIGNALS:
    void spanChanged();
    void spansChanged();

private:
    static QMouseEvent release()
    {
        return QMouseEvent(QEvent::MouseButtonRelease, QPointF(3.6, 4.2), QPointF(100.0, 100.0),
                Qt::RightButton, Qt::LeftButton, Qt::ControlModifier);
    }

    Charts::Span m_span;
    QList<Charts::Span> m_spans;
};

#endif
