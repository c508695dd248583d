// SPDX-License-Identifier: MIT
#ifndef CHARTS_TEST_MOUSEPOINTER_H
#define CHARTS_TEST_MOUSEPOINTER_H

#include <QtCore/QCoreApplication>
#include <QtCore/QPointF>
#include <QtCore/QPointer>
#include <QtGui/QMouseEvent>
#include <QtGui/QWindow>
#include <QtTest/QTest>

/*!
    A mouse over a window.

    Its events take the way of those of the platform: the application tells double clicks, the
    window finds the item. Other than the functions of Qt Test it points between pixels, too, holds
    several buttons and says which press follows quickly enough for a double click. Positions are
    those of the window.
*/
class MousePointer
{
public:
    explicit MousePointer(QWindow &window)
        : m_window(&window)
    {
    }
    /*! Leaves no button held for the test that comes next. */
    ~MousePointer()
    {
        for (const auto button : {Qt::LeftButton, Qt::RightButton, Qt::MiddleButton}) {
            if (m_buttons.testFlag(button))
                release(m_position, button);
        }
    }
    MousePointer(const MousePointer &) = delete;
    MousePointer &operator=(const MousePointer &) = delete;

    /*! Too late after the last press for a double click. */
    void press(const QPointF &position, Qt::MouseButton button = Qt::LeftButton)
    {
        QTest::lastMouseTimestamp += 10 * QTest::mouseDoubleClickInterval;
        pressQuickly(position, button);
    }
    /*! Soon after the last press. */
    void pressQuickly(const QPointF &position, Qt::MouseButton button = Qt::LeftButton)
    {
        m_buttons.setFlag(button, true);
        send(QEvent::MouseButtonPress, position, button);
    }
    /*! A drag while a button is held, else a plain move. */
    void move(const QPointF &position) { send(QEvent::MouseMove, position, Qt::NoButton); }
    void release(const QPointF &position, Qt::MouseButton button = Qt::LeftButton)
    {
        m_buttons.setFlag(button, false);
        send(QEvent::MouseButtonRelease, position, button);
    }
    /*! The platform tells where the pointer is before it tells of a button, so that a move comes
        before a release elsewhere. Here none does. */
    void releaseWithoutMove(const QPointF &position, Qt::MouseButton button = Qt::LeftButton)
    {
        m_buttons.setFlag(button, false);
        QMouseEvent event(QEvent::MouseButtonRelease, position, position, global(position), button,
                m_buttons, Qt::NoModifier);
        event.setTimestamp(static_cast<quint64>(++QTest::lastMouseTimestamp));
        QCoreApplication::sendEvent(m_window, &event);
    }
    void drag(const QPointF &from, const QPointF &to, Qt::MouseButton button = Qt::LeftButton)
    {
        press(from, button);
        move(to);
        release(to, button);
    }

private:
    void send(QEvent::Type type, const QPointF &position, Qt::MouseButton button)
    {
        m_position = position;
        if (!m_window)
            return;
        qt_handleMouseEvent(m_window, position, global(position), m_buttons, button, type,
                Qt::NoModifier, ++QTest::lastMouseTimestamp);
    }
    [[nodiscard]] QPointF global(const QPointF &position) const
    {
        return QPointF(m_window->mapToGlobal(QPoint(0, 0))) + position;
    }

    QPointer<QWindow> m_window;
    Qt::MouseButtons m_buttons;
    QPointF m_position;
};

#endif
