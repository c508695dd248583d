// SPDX-License-Identifier: MIT
#ifndef CHARTS_POINTEREVENTQUEUE_H
#define CHARTS_POINTEREVENTQUEUE_H

#include <QtCore/QPointF>
#include <QtGui/QMouseEvent>

#include <memory>
#include <vector>

QT_BEGIN_NAMESPACE
class QHoverEvent;
QT_END_NAMESPACE

namespace Charts {

/*!
    \internal
    Copies of the input events that wait for the renderer's answer, and what has to be remembered
    of the pointer to make them. Filled on the GUI thread, emptied on the render thread while the
    GUI thread is blocked.
*/
class PointerEventQueue
{
public:
    /*! Remembers position and buttons of a press or double click. */
    void notePress(const QMouseEvent &event);
    /*! Remembers the buttons left after a release. */
    void noteRelease(const QMouseEvent &event);
    /*! Remembers the position of a hover event; returns whether it is another one. */
    bool noteHover(const QHoverEvent &event);

    /*! Queues a copy of \a event with its position rounded to whole pixels. */
    void push(const QMouseEvent &event);
    /*! Queues a mouse event of \a type made from the hover event. Of more moves than can wait
        between two frames the older ones are forgotten. */
    void push(QEvent::Type type, const QHoverEvent &event);

    [[nodiscard]] bool isEmpty() const { return m_events.empty(); }
    /*! To be emptied, or moved from. */
    [[nodiscard]] std::vector<std::unique_ptr<QMouseEvent>> &events()
    {
        m_waitingMoves = 0;
        return m_events;
    }

private:
    std::vector<std::unique_ptr<QMouseEvent>> m_events;
    int m_waitingMoves = 0;
    QPointF m_lastPosition;
    Qt::MouseButton m_lastButton = Qt::NoButton;
    Qt::MouseButtons m_lastButtons = Qt::NoButton;
};

} // namespace Charts

#endif
