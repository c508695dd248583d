// SPDX-License-Identifier: MIT
#include "MouseLog.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QThread>

#include <utility>

QStringList MouseLog::take()
{
    QStringList texts;
    for (const MouseSignal &signal : takeSignals())
        texts.append(signal.sender + u' ' + signal.name);
    return texts;
}

std::vector<MouseSignal> MouseLog::takeSignals()
{
    return std::exchange(m_signals, {});
}

void MouseLog::note(const QString &sender, const QString &name, Charts::ChartMouseEvent &event)
{
    const MouseSignal signal = {.sender = sender,
            .name = name,
            .position = {event.x(), event.y()},
            .button = event.button(),
            .buttons = event.buttons(),
            .modifiers = event.modifiers(),
            .source = event.source(),
            .flags = event.flags(),
            .accepted = event.isAccepted(),
            .onGuiThread = QThread::currentThread() == QCoreApplication::instance()->thread(),
            .event = &event};
    m_signals.push_back(signal);
    if (onSignal)
        onSignal(signal, event);
}
