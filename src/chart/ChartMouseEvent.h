// SPDX-License-Identifier: MIT
#ifndef CHARTS_CHARTMOUSEEVENT_H
#define CHARTS_CHARTMOUSEEVENT_H

#include "ChartsExport.h"

#include <QtCore/QObject>
#include <QtQml/qqmlregistration.h>

QT_BEGIN_NAMESPACE
class QMouseEvent;
QT_END_NAMESPACE

namespace Charts {

/*!
    \qmltype ChartMouseEvent
    \inqmlmodule zel.charts
    \brief The argument of the mouse signals of charts and traces.

    Documents do not create it. It exists only while the signal is being handled: read what is
    needed, keep nothing. One that is kept nevertheless is an empty wrapper afterwards, whose
    properties are undefined.

    \sa {Hit-testing}
*/
/*!
    \class Charts::ChartMouseEvent
    \brief A mouse event as signal handlers see it.

    The chart makes it on its stack for one signal; a pointer that was kept leads nowhere
    afterwards. GUI thread.
*/
class CHARTS_EXPORT ChartMouseEvent : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("")

    /*! \qmlproperty real ChartMouseEvent::x
        Position from the left of the chart, in whole pixels of the item. */
    Q_PROPERTY(double x READ x CONSTANT)
    /*! \qmlproperty real ChartMouseEvent::y
        Position from the top of the chart, in whole pixels of the item. */
    Q_PROPERTY(double y READ y CONSTANT)
    /*! \qmlproperty int ChartMouseEvent::button
        The Qt::MouseButton that caused the event, for example \c Qt.LeftButton. In hover signals it
        is that of the last press, or 0 after its release. */
    Q_PROPERTY(int button READ button CONSTANT)
    /*! \qmlproperty int ChartMouseEvent::buttons
        The Qt::MouseButtons that are held, combined by bitwise or. */
    Q_PROPERTY(int buttons READ buttons CONSTANT)
    /*! \qmlproperty int ChartMouseEvent::modifiers
        The Qt::KeyboardModifiers that are held, combined by bitwise or. */
    Q_PROPERTY(int modifiers READ modifiers CONSTANT)
    /*! \qmlproperty bool ChartMouseEvent::accepted
        Initially true. A handler of a trace sets it to false to pass the event on to the chart;
        handlers of the chart and of hover signals set it without effect. It tells nobody when it
        changes. */
    Q_PROPERTY(bool accepted READ isAccepted WRITE setAccepted)
    /*! \qmlproperty int ChartMouseEvent::flags
        The Qt::MouseEventFlags, combined by bitwise or. They are those of the chart's own copy of
        the event: 0. */
    Q_PROPERTY(int flags READ flags CONSTANT)

public:
    /*! Takes position, buttons, modifiers and flags from \a event. Charts give none a \a parent. */
    ChartMouseEvent(QMouseEvent *event, QObject *parent);
    ~ChartMouseEvent() override;

    [[nodiscard]] double x() const { return m_x; }
    [[nodiscard]] double y() const { return m_y; }
    [[nodiscard]] int button() const { return m_button; }
    [[nodiscard]] int buttons() const { return m_buttons; }
    [[nodiscard]] int modifiers() const { return m_modifiers; }
    /*! Always 0: not synthesised. */
    [[nodiscard]] int source() const { return m_source; }
    [[nodiscard]] bool isAccepted() const { return m_accepted; }
    void setAccepted(bool accepted);
    [[nodiscard]] int flags() const { return m_flags; }

    /*! Sets all fields: the position \a x and \a y, \a button, \a buttons, \a modifiers and
        \a flags. The event is accepted again and its source 0. */
    void reset(double x, double y, Qt::MouseButton button, Qt::MouseButtons buttons,
            Qt::KeyboardModifiers modifiers, Qt::MouseEventFlags flags);

private:
    double m_x = 0.0;
    double m_y = 0.0;
    int m_button = 0;
    int m_buttons = 0;
    int m_modifiers = 0;
    int m_source = 0;
    bool m_accepted = true;
    int m_flags = 0;
};

} // namespace Charts

#endif
