// SPDX-License-Identifier: MIT
#ifndef CHARTS_ABSTRACTTRACE_H
#define CHARTS_ABSTRACTTRACE_H

#include "ChartsExport.h"
#include "TraceDomain.h"

#include <QtCore/QObject>
#include <QtCore/QString>
#include <QtGui/QColor>
#include <QtQml/qqmlregistration.h>

Q_MOC_INCLUDE("ChartsLibrary/ChartMouseEvent.h")

namespace Charts {

class ChartMouseEvent;
class TraceData;

/*!
    \qmltype AbstractTrace
    \inqmlmodule zel.charts
    \brief What all traces have in common: name, colour, width, stacking order, mouse signals.

    Applications derive their own traces in C++ and attach them with Chart::addTrace().
*/
/*!
    \class Charts::AbstractTrace
    \brief Base of the application's traces.

    The application creates and owns its traces; a chart only points to them and forgets a trace
    that is destroyed. The properties belong to the GUI thread. Two operations are the subclass's
    own: traceData() is called on the render thread while the GUI thread is blocked, updateData()
    on a thread of the global pool while the GUI thread waits.
*/
class CHARTS_EXPORT AbstractTrace : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("")

    /*! \qmlproperty bool AbstractTrace::visible
        Whether the application wants the trace shown, default true. A subclass carries it into its
        data. */
    Q_PROPERTY(bool visible READ isVisible WRITE setVisible NOTIFY visibleChanged)
    /*! \qmlproperty string AbstractTrace::name
        Display name, default empty. */
    Q_PROPERTY(QString name READ name WRITE setName NOTIFY nameChanged)
    /*! \qmlproperty real AbstractTrace::z
        Stacking order among the traces of a chart, default 0; a greater z is drawn on top, a NaN
        above all. The list is sorted at once, the picture follows with the next change of data. */
    Q_PROPERTY(double z READ z WRITE setZ NOTIFY zChanged)
    /*! \qmlproperty color AbstractTrace::color
        Colour, default invalid. */
    Q_PROPERTY(QColor color READ color WRITE setColor NOTIFY colorChanged)
    /*! \qmlproperty real AbstractTrace::lineWidth
        Line width in pixels, default 1.5, stored as given. A relative change of at most 1e-12 is
        ignored. A subclass carries it into its data. The notify signal is spelled
        \c lineWidthChaned. */
    Q_PROPERTY(double lineWidth READ lineWidth WRITE setLineWidth NOTIFY lineWidthChaned)
    /*! \qmlproperty TraceDomain AbstractTrace::domain
        The trace's coordinate system. Constant, never null. */
    Q_PROPERTY(Charts::TraceDomain *domain READ domain CONSTANT)

public:
    explicit AbstractTrace(QObject *parent = nullptr);
    ~AbstractTrace() override;

    [[nodiscard]] QString name() const { return m_name; }
    [[nodiscard]] bool isVisible() const { return m_visible; }
    [[nodiscard]] double z() const { return m_z; }
    [[nodiscard]] QColor color() const { return m_color; }
    [[nodiscard]] double lineWidth() const { return m_lineWidth; }
    /*! Owned by the trace. */
    [[nodiscard]] TraceDomain *domain() const { return m_domain; }

    virtual void setName(const QString &name);
    void setVisible(bool visible);
    void setZ(double z);
    /*! A subclass may override it to take note of the colour, and calls the base then; its data
        it writes in updateData(). */
    virtual void setColor(const QColor &color);
    void setLineWidth(double lineWidth);

    /*! The trace's render data, owned by the subclass: never null and the same object at all
        times. Render thread, GUI thread blocked. */
    virtual TraceData *traceData() = 0;
    /*!
        Brings traceData() up to date. Called every 33 ms while the trace is attached, on a thread
        of the global pool, beside the same call on the chart's other traces and while the GUI
        thread waits: write the own TraceData only, touch neither other traces nor QML objects.
    */
    virtual void updateData() = 0;

Q_SIGNALS:
    void nameChanged();
    void visibleChanged();
    /*! \qmlsignal AbstractTrace::clicked(ChartMouseEvent event)
        Pressed and released on this trace. Like the other mouse signals it is emitted by the chart
        on the GUI thread; \a event lives for the call only. A handler that sets \c event.accepted
        to false lets the chart's own signal follow. */
    void clicked(Charts::ChartMouseEvent *event);
    /*! \qmlsignal AbstractTrace::hovered(ChartMouseEvent event, bool state)
        The pointer came onto the trace, \a state true, or left it, false. */
    void hovered(Charts::ChartMouseEvent *event, bool state);
    /*! \qmlsignal AbstractTrace::pressed(ChartMouseEvent event) */
    void pressed(Charts::ChartMouseEvent *event);
    /*! \qmlsignal AbstractTrace::released(ChartMouseEvent event)
        Released on this trace, wherever it was pressed. */
    void released(Charts::ChartMouseEvent *event);
    /*! \qmlsignal AbstractTrace::doubleClicked(ChartMouseEvent event)
        Double-clicked on this trace, which the press before has hit, too. */
    void doubleClicked(Charts::ChartMouseEvent *event);
    void zChanged(double z);
    void colorChanged(QColor color);
    /*! The name is part of the published interface as it stands. */
    void lineWidthChaned(double lineWidth);

private:
    QString m_name;
    bool m_visible = true;
    double m_z = 0.0;
    double m_lineWidth = 1.5;
    QColor m_color;
    TraceDomain *m_domain = nullptr;
};

} // namespace Charts

#endif
