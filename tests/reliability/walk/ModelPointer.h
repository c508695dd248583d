// SPDX-License-Identifier: MIT
#ifndef CHARTS_TEST_MODELPOINTER_H
#define CHARTS_TEST_MODELPOINTER_H

#include <QtCore/QEvent>
#include <QtCore/QPointF>
#include <QtCore/QStringList>

#include <functional>
#include <optional>
#include <vector>

/*! A mouse event on its way through renderer and chart. */
struct PointerEvent
{
    QEvent::Type type = QEvent::None;
    QPointF position;
    Qt::MouseButton button = Qt::NoButton;
};

/*! An event with the traces of which one is under it; null stands for none. */
struct Answer
{
    PointerEvent event;
    std::vector<const void *> traces;
};

/*!
    Which signals answers to mouse events become.

    Where an answer is uncertain by a pixel, each possibility is followed until the signals that came
    tell which one it was.
*/
class ModelPointer
{
public:
    struct Listed
    {
        QString name;
        bool passesOn = false;
    };
    /*! What is known of a trace that is in the chart's list; nothing of another one. */
    using Find = std::function<std::optional<Listed>(const void *)>;

    /*! A trace was destroyed: it is neither hovered nor pressed any more. */
    void forget(const void *trace);
    /*! Checks that \a log is what \a answers lead to; returns what is wrong, or an empty text. */
    [[nodiscard]] QString check(
            const std::vector<Answer> &answers, const Find &find, const QStringList &log);

    /*! How many answers there were, and how many of these named a trace or were uncertain. */
    int answerCount = 0;
    int hitCount = 0;
    int uncertainCount = 0;

private:
    struct State
    {
        const void *hovered = nullptr;
        const void *pressed = nullptr;
        qsizetype logged = 0; // signals that are accounted for

        friend bool operator==(const State &, const State &) = default;
    };

    [[nodiscard]] static QStringList signalsOf(
            State &state, const PointerEvent &event, const void *trace, const Find &find);

    std::vector<State> m_states = {State()};
};

/*! How a signal stands in the log. */
[[nodiscard]] QString signalText(
        const QString &sender, const char *signal, const PointerEvent &event);

#endif
