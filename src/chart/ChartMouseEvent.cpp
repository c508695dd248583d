// SPDX-License-Identifier: MIT
#include "ChartMouseEvent.h"

#include "Rounding.h"
#include "ThreadCheck.h"

#include <QtGui/QMouseEvent>

namespace Charts {

ChartMouseEvent::ChartMouseEvent(QMouseEvent *event, QObject *parent)
    : QObject(parent)
{
    const QPointF position = event->points().first().position();
    reset(roundToInt(position.x()), roundToInt(position.y()), event->button(), event->buttons(),
            event->modifiers(), event->flags());
}

ChartMouseEvent::~ChartMouseEvent() = default;

void ChartMouseEvent::setAccepted(bool accepted)
{
    Q_ASSERT(isOnThreadOf(this));
    m_accepted = accepted;
}

void ChartMouseEvent::reset(double x, double y, Qt::MouseButton button, Qt::MouseButtons buttons,
        Qt::KeyboardModifiers modifiers, Qt::MouseEventFlags flags)
{
    Q_ASSERT(isOnThreadOf(this));
    m_x = x;
    m_y = y;
    m_button = static_cast<int>(button);
    m_buttons = static_cast<int>(buttons.toInt());
    m_modifiers = static_cast<int>(modifiers.toInt());
    m_source = 0;
    m_accepted = true;
    m_flags = static_cast<int>(flags.toInt());
}

} // namespace Charts
