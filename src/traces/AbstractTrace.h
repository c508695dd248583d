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

    Applications derive their own traces in C++ and attach them with \l{Chart::addTrace()}. What QML
    sets here is a wish: each class of traces decides what of it to take over into its data, and
    when. Where nothing else is said below, the picture follows with the trace's next update, within
    33 ms.

    \sa {Your first trace}
*/
/*!
    \class Charts::AbstractTrace
    \brief Base of the application's traces.

    The application creates and owns its traces; a chart only points to them and forgets a trace
    that is destroyed. The properties belong to the GUI thread. Two operations are the subclass's
    own: traceData() is called on the render thread while the GUI thread is blocked, updateData()
    on a thread of the global pool while the GUI thread waits.

    The base class touches no render data. A subclass takes isVisible(), color(), lineWidth() and
    the ranges of its domain() over into its TraceData in updateData(), as far as it cares for them:

    \snippet LineTrace.cpp attributes

    \sa {Your first trace}, {Which thread calls what}
*/
class CHARTS_EXPORT AbstractTrace : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("")

    /*! \qmlproperty bool AbstractTrace::visible
        Whether the application wants the trace shown, default true. The trace's class takes it over
        into its data; one that does not stays visible. */
    Q_PROPERTY(bool visible READ isVisible WRITE setVisible NOTIFY visibleChanged)
    /*! \qmlproperty string AbstractTrace::name
        Display name, default empty. The library shows it nowhere. */
    Q_PROPERTY(QString name READ name WRITE setName NOTIFY nameChanged)
    /*! \qmlproperty real AbstractTrace::z
        Stacking order among the traces of a chart, default 0; a greater z is drawn on top and hit
        first, a NaN above all; of equal ones the order is not defined. Every other value is a
        change, without a tolerance. The list is sorted at once, but that alone draws nothing: the
        picture follows with the next change of some trace's data. */
    Q_PROPERTY(double z READ z WRITE setZ NOTIFY zChanged)
    /*! \qmlproperty color AbstractTrace::color
        Colour, default invalid, which is drawn black once the trace's class has taken it over. The
        alpha is not drawn: traces are opaque. */
    Q_PROPERTY(QColor color READ color WRITE setColor NOTIFY colorChanged)
    /*! \qmlproperty real AbstractTrace::lineWidth
        Line width, or diameter of points, in pixels, default 1.5, stored as given: how wide a line
        can be is up to the graphics driver, see \l{Troubleshooting}. A relative change of at most
        1e-12 is ignored. The trace's class takes it over into its data. The notify signal is
        misspelled: C++ connects to \c lineWidthChaned, and so does JavaScript. Handlers in documents
        go by either name, \c onLineWidthChaned or \c onLineWidthChanged. */
    Q_PROPERTY(double lineWidth READ lineWidth WRITE setLineWidth NOTIFY lineWidthChaned)
    /*! \qmlproperty TraceDomain AbstractTrace::domain
        The trace's coordinate system, owned by the trace. Never null. */
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

    /*! Sets \a name. Virtual like setColor(), for a subclass that takes note of it. */
    virtual void setName(const QString &name);
    void setVisible(bool visible);
    void setZ(double z);
    /*! Sets \a color. A subclass may override it to take note of the colour, and calls the base
        then; its data it writes in updateData(). */
    virtual void setColor(const QColor &color);
    void setLineWidth(double lineWidth);

    /*! The trace's render data, owned by the subclass: never null and the same object at all
        times. Render thread, GUI thread blocked. */
    virtual TraceData *traceData() = 0;
    /*!
        Brings traceData() up to date. Called every 33 ms while the trace is attached, on a thread
        of the global pool, beside the same call on the chart's other traces and while the GUI
        thread waits: write the own TraceData only, touch neither other traces nor QML objects, and
        emit no signal. As the GUI waits, what takes long belongs on a thread of the application.
        Invisible traces are called, too.
    */
    virtual void updateData() = 0;

Q_SIGNALS:
    void nameChanged();
    void visibleChanged();
    /*! \qmlsignal AbstractTrace::clicked(ChartMouseEvent event)
        Released on this trace, which the press before has hit, too; \a event tells where. Like the
        other mouse signals it is emitted by the chart on the GUI thread, in a later frame than the
        mouse event itself, and \a event lives for the call only. A handler that sets
        \c event.accepted to false lets the chart's own signal follow.

        \sa {Hit-testing} */
    void clicked(Charts::ChartMouseEvent *event);
    /*! \qmlsignal AbstractTrace::hovered(ChartMouseEvent event, bool state)
        The pointer came onto the trace, \a state true, or left it, false; \a event tells where it
        is now. A trace that is removed, or from which the pointer leaves the chart at once, is not
        told. Setting \c event.accepted has no effect. */
    void hovered(Charts::ChartMouseEvent *event, bool state);
    /*! \qmlsignal AbstractTrace::pressed(ChartMouseEvent event)
        A mouse button went down on this trace; \a event tells where and which. The second press of
        a double click is not reported. */
    void pressed(Charts::ChartMouseEvent *event);
    /*! \qmlsignal AbstractTrace::released(ChartMouseEvent event)
        A mouse button went up on this trace, wherever it was pressed; \a event tells where and
        which. Comes before \l clicked(). */
    void released(Charts::ChartMouseEvent *event);
    /*! \qmlsignal AbstractTrace::doubleClicked(ChartMouseEvent event)
        Double-clicked on this trace, which the press before has hit, too; \a event tells where. */
    void doubleClicked(Charts::ChartMouseEvent *event);
    void zChanged(double z);
    void colorChanged(QColor color);
    /*! The width is \a lineWidth now. The name is part of the published interface as it stands. */
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
