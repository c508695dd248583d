// SPDX-License-Identifier: MIT
#include "RandomWalk.h"

#include "MouseInput.h"

using namespace Charts;

namespace {

const char *nameOf(QEvent::Type type)
{
    switch (type) {
    case QEvent::MouseButtonPress:
        return "press";
    case QEvent::MouseButtonRelease:
        return "release";
    case QEvent::MouseButtonDblClick:
        return "double click";
    case QEvent::MouseMove:
        return "drag";
    case QEvent::HoverEnter:
        return "enter";
    case QEvent::HoverMove:
        return "hover";
    default:
        return "leave";
    }
}

} // namespace

/*! In the chart, most often; in quarters of a pixel. */
QPointF RandomWalk::anyPosition()
{
    const auto within = [this](double extent) {
        return below(4 * (static_cast<int>(extent) + 6)) / 4.0 - 3.0;
    };
    const double x = within(m_model.size.width());
    return {x, within(m_model.size.height())};
}

void RandomWalk::send(
        QEvent::Type type, const QPointF &position, Qt::MouseButton button, bool isSecondPress)
{
    note(QStringLiteral("%1%2 at %3, %4 button %5")
                    .arg(QString::fromLatin1(nameOf(type)))
                    .arg(isSecondPress ? u" of a double click" : u"")
                    .arg(position.x())
                    .arg(position.y())
                    .arg(int(button)));
    Chart &chart = m_stage.chart;
    switch (type) {
    case QEvent::HoverEnter:
    case QEvent::HoverMove:
    case QEvent::HoverLeave:
        m_model.hover(type, position);
        HoverInput(type, position).sendTo(chart);
        return;
    case QEvent::MouseMove:
        m_model.drag(position);
        break;
    case QEvent::MouseButtonPress:
        if (!isSecondPress)
            m_model.press({type, position, button});
        break;
    case QEvent::MouseButtonRelease:
        m_model.release({type, position, button});
        break;
    default:
        m_model.doubleClick({type, position, button});
        break;
    }
    const bool isHeld = type != QEvent::MouseButtonRelease;
    MouseInput input(type, position, type == QEvent::MouseMove ? Qt::NoButton : button,
            isHeld ? Qt::MouseButtons(button) : Qt::MouseButtons());
    if (isSecondPress)
        input.setCreatedDoubleClick();
    input.sendTo(chart);
}

void RandomWalk::mouse()
{
    constexpr QEvent::Type types[] = {QEvent::MouseButtonPress, QEvent::MouseButtonRelease,
            QEvent::MouseButtonDblClick, QEvent::MouseMove};
    const Qt::MouseButton button = chance(70) ? Qt::LeftButton : Qt::RightButton;
    send(types[below(4)], anyPosition(), button, chance(5));
}

void RandomWalk::drag()
{
    const Qt::MouseButton button = chance(80) ? Qt::LeftButton : Qt::RightButton;
    send(QEvent::MouseButtonPress, anyPosition(), button);
    for (int moves = below(3); moves > 0; --moves)
        send(QEvent::MouseMove, anyPosition(), button);
    if (chance(80))
        send(QEvent::MouseButtonRelease, anyPosition(), button);
}

void RandomWalk::clickOrDoubleClick()
{
    const QPointF position = anyPosition();
    send(QEvent::MouseButtonPress, position, Qt::LeftButton);
    send(QEvent::MouseButtonRelease, position, Qt::LeftButton);
    if (chance(50))
        return;
    send(QEvent::MouseButtonPress, position, Qt::LeftButton, true);
    send(QEvent::MouseButtonDblClick, position, Qt::LeftButton);
    send(QEvent::MouseButtonRelease, position, Qt::LeftButton);
}

void RandomWalk::hover()
{
    constexpr QEvent::Type types[] = {QEvent::HoverEnter, QEvent::HoverMove, QEvent::HoverMove,
            QEvent::HoverMove, QEvent::HoverLeave};
    // Of these only the last one is a move.
    constexpr double steps[] = {0.0, 1e-14, 1e-11};
    if (chance(25))
        m_hoverPosition *= 1.0 + steps[below(3)];
    else
        m_hoverPosition = anyPosition();
    send(types[below(5)], m_hoverPosition, Qt::NoButton);
}
