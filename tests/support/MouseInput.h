// SPDX-License-Identifier: MIT
#ifndef CHARTS_TEST_MOUSEINPUT_H
#define CHARTS_TEST_MOUSEINPUT_H

#include <QtCore/QCoreApplication>
#include <QtCore/QPointF>
#include <QtGui/QHoverEvent>
#include <QtGui/QMouseEvent>
#include <QtGui/QPointingDevice>
#include <QtQuick/QQuickItem>

/*! A mouse event that can say that it is the second press of a double click. The positions in the
    scene and on the screen are other ones than that in the item. */
class MouseInput : public QMouseEvent
{
public:
    MouseInput(QEvent::Type type, const QPointF &position, Qt::MouseButton button = Qt::LeftButton,
            Qt::MouseButtons buttons = Qt::LeftButton,
            Qt::KeyboardModifiers modifiers = Qt::NoModifier,
            const QPointingDevice *device = QPointingDevice::primaryPointingDevice())
        : QMouseEvent(type, position, position + QPointF(1000.0, 2000.0),
                position + QPointF(3000.0, 4000.0), button, buttons, modifiers, device)
    {
    }

    void setCreatedDoubleClick() { m_doubleClick = true; }

    /*! Gives the event straight to \a item. */
    void sendTo(QQuickItem &item) { QCoreApplication::sendEvent(&item, this); }
};

/*! The same for hover events, whose positions a window never leaves unrounded for long. */
class HoverInput : public QHoverEvent
{
public:
    HoverInput(QEvent::Type type, const QPointF &position,
            Qt::KeyboardModifiers modifiers = Qt::NoModifier,
            const QPointingDevice *device = QPointingDevice::primaryPointingDevice())
        // The position in the item is that in the scene until a window maps it.
        : QHoverEvent(type, position, position + QPointF(3000.0, 4000.0), QPointF(-1.0, -1.0),
                modifiers, device)
    {
    }

    void sendTo(QQuickItem &item) { QCoreApplication::sendEvent(&item, this); }
};

#endif
