// SPDX-License-Identifier: MIT
#include "ModelPointer.h"

#include <algorithm>
#include <cmath>

QString signalText(const QString &sender, const char *signal, const PointerEvent &event)
{
    return QStringLiteral("%1 %2 at %3, %4 button %5")
            .arg(sender, QString::fromLatin1(signal))
            .arg(std::lround(event.position.x()))
            .arg(std::lround(event.position.y()))
            .arg(int(event.button));
}

void ModelPointer::forget(const void *trace)
{
    for (State &state : m_states) {
        if (state.hovered == trace)
            state.hovered = nullptr;
        if (state.pressed == trace)
            state.pressed = nullptr;
    }
}

QString ModelPointer::check(
        const std::vector<Answer> &answers, const Find &find, const QStringList &log)
{
    if (answers.empty())
        return log.isEmpty() ? QString()
                             : QStringLiteral("signals without an event: ") + log.join(u"; ");
    std::vector<State> states = m_states;
    for (State &state : states) {
        if (!find(state.hovered))
            state.hovered = nullptr;
        if (!find(state.pressed))
            state.pressed = nullptr;
    }

    for (const Answer &answer : answers) {
        ++answerCount;
        if (answer.traces.size() > 1)
            ++uncertainCount;
        else if (answer.traces.front())
            ++hitCount;
        QStringList expectations;
        std::vector<State> next;
        for (const State &before : states) {
            for (const void *trace : answer.traces) {
                State state = before;
                const QStringList expected = signalsOf(state, answer.event, trace, find);
                expectations.append(expected.join(u"; "));
                if (log.mid(state.logged, expected.size()) != expected)
                    continue;
                state.logged += expected.size();
                if (std::find(next.begin(), next.end(), state) == next.end())
                    next.push_back(state);
            }
        }
        if (next.empty()) {
            return QStringLiteral("signals: [%1], but after %2 of them [%3] was expected")
                    .arg(log.join(u"; "))
                    .arg(states.front().logged)
                    .arg(expectations.join(u"] or ["));
        }
        states = std::move(next);
    }

    std::erase_if(states, [&log](const State &state) { return state.logged != log.size(); });
    if (states.empty())
        return QStringLiteral("more signals than expected: ") + log.join(u"; ");
    for (State &state : states)
        state.logged = 0;
    m_states = std::move(states);
    return {};
}

QStringList ModelPointer::signalsOf(
        State &state, const PointerEvent &event, const void *trace, const Find &find)
{
    const std::optional<Listed> listed = find(trace);
    QStringList log;
    const auto chart = [&](const char *signal) {
        log.append(signalText(QStringLiteral("chart"), signal, event));
    };
    // To the trace first; to the chart if there is none, or the trace passes it on.
    const auto offer = [&](const char *signal, bool isForTrace) {
        if (isForTrace)
            log.append(signalText(listed->name, signal, event));
        if (!isForTrace || listed->passesOn)
            chart(signal);
    };

    switch (event.type) {
    case QEvent::HoverEnter:
    case QEvent::HoverLeave: {
        const bool isEnter = event.type == QEvent::HoverEnter;
        const char *signal = isEnter ? "hovered true" : "hovered false";
        if (listed) {
            log.append(signalText(listed->name, signal, event));
            state.hovered = isEnter ? trace : nullptr;
        }
        chart(signal);
        break;
    }
    case QEvent::MouseMove:
        if (trace == state.hovered)
            break;
        if (state.hovered)
            log.append(signalText(find(state.hovered)->name, "hovered false", event));
        if (listed)
            log.append(signalText(listed->name, "hovered true", event));
        state.hovered = listed ? trace : nullptr;
        break;
    case QEvent::MouseButtonPress:
        state.pressed = listed ? trace : nullptr;
        offer("pressed", listed.has_value());
        break;
    case QEvent::MouseButtonRelease:
        offer("released", listed.has_value());
        offer("clicked", listed && trace == state.pressed);
        break;
    case QEvent::MouseButtonDblClick:
        offer("doubleClicked", listed && trace == state.pressed);
        break;
    default:
        break;
    }
    return log;
}
