// SPDX-License-Identifier: MIT
#include "PointerEventQueue.h"

#include "FuzzyCompare.h"
#include "Rounding.h"

#include <QtGui/QHoverEvent>
#include <QtGui/QPointingDevice>

namespace Charts {

namespace {

// More than any mouse sends between two frames. Nobody takes the events of a chart that is not drawn,
// and an application that goes on handing on moves would fill the memory with them.
constexpr int maxWaitingMoves = 10000;

QPointF rounded(const QPointF &point)
{
    return QPointF(roundToInt(point.x()), roundToInt(point.y()));
}

} // namespace

void PointerEventQueue::notePress(const QMouseEvent &event)
{
    m_lastPosition = rounded(event.position());
    m_lastButton = event.button();
    m_lastButtons = event.buttons();
}

void PointerEventQueue::noteRelease(const QMouseEvent &event)
{
    m_lastButton = Qt::NoButton;
    m_lastButtons = event.buttons();
}

bool PointerEventQueue::noteHover(const QHoverEvent &event)
{
    const QPointF previous = m_lastPosition;
    m_lastPosition = event.position();
    return !isFuzzyEqual(m_lastPosition.x(), previous.x())
           || !isFuzzyEqual(m_lastPosition.y(), previous.y());
}

// The events of a device share the data of its points, among them the one that is still being
// delivered. So a copy states all positions: one left out would be set in the original, too.

void PointerEventQueue::push(const QMouseEvent &event)
{
    m_events.push_back(std::make_unique<QMouseEvent>(event.type(), rounded(event.position()),
            event.scenePosition(), event.globalPosition(), event.button(), event.buttons(),
            event.modifiers(), QPointingDevice::primaryPointingDevice()));
}

void PointerEventQueue::push(QEvent::Type type, const QHoverEvent &event)
{
    if (type == QEvent::MouseMove && ++m_waitingMoves > maxWaitingMoves) {
        // The last one tells where the pointer is. Clicks are never forgotten.
        std::erase_if(
                m_events, [](const auto &waiting) { return waiting->type() == QEvent::MouseMove; });
        m_waitingMoves = 1;
    }
    m_events.push_back(std::make_unique<QMouseEvent>(type, event.position(), event.scenePosition(),
            event.globalPosition(), m_lastButton, m_lastButtons, event.modifiers(),
            QPointingDevice::primaryPointingDevice()));
}

} // namespace Charts
