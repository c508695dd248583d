// SPDX-License-Identifier: MIT
#ifndef CHARTS_TEST_MOUSELOG_H
#define CHARTS_TEST_MOUSELOG_H

#include <ChartsLibrary/AbstractTrace.h>
#include <ChartsLibrary/Chart.h>
#include <ChartsLibrary/ChartMouseEvent.h>

#include <QtCore/QObject>
#include <QtCore/QPointF>
#include <QtCore/QString>
#include <QtCore/QStringList>

#include <functional>
#include <vector>

/*! One mouse signal of a chart or a trace, with what its event held when it arrived. */
struct MouseSignal
{
    QString sender;
    /*! "pressed", "released", "clicked", "doubleClicked", "hovered true" or "hovered false". */
    QString name;
    QPointF position;
    int button = 0;
    int buttons = 0;
    int modifiers = 0;
    int source = 0;
    int flags = 0;
    bool accepted = false;
    bool onGuiThread = false;
    /*! Only to be compared: the event lives no longer than its signal. */
    const Charts::ChartMouseEvent *event = nullptr;
};

/*! Writes down the mouse signals of charts and traces, in the order of their arrival. */
class MouseLog : public QObject
{
    Q_OBJECT

public:
    void watch(Charts::Chart &chart, const QString &name = QStringLiteral("chart"))
    {
        watchAny(chart, name);
    }
    void watch(Charts::AbstractTrace &trace, const QString &name) { watchAny(trace, name); }

    /*! What came since the last call, as "A pressed", "chart hovered true". */
    [[nodiscard]] QStringList take();
    /*! The same with everything that is known. */
    [[nodiscard]] std::vector<MouseSignal> takeSignals();

    /*! Called in each signal, after it was written down. */
    std::function<void(const MouseSignal &, Charts::ChartMouseEvent &)> onSignal;

private:
    template<typename Sender>
    void watchAny(Sender &sender, const QString &name)
    {
        using Event = Charts::ChartMouseEvent;
        const auto noteAs = [this, name](const char *signal) {
            return [this, name, signal](
                           Event *event) { note(name, QString::fromLatin1(signal), *event); };
        };
        // Direct, so that an emission on another thread is seen there.
        connect(&sender, &Sender::pressed, this, noteAs("pressed"), Qt::DirectConnection);
        connect(&sender, &Sender::released, this, noteAs("released"), Qt::DirectConnection);
        connect(&sender, &Sender::clicked, this, noteAs("clicked"), Qt::DirectConnection);
        connect(&sender, &Sender::doubleClicked, this, noteAs("doubleClicked"),
                Qt::DirectConnection);
        connect(
                &sender, &Sender::hovered, this,
                [this, name](Event *event, bool state) {
                    note(name, QString::fromLatin1(state ? "hovered true" : "hovered false"),
                            *event);
                },
                Qt::DirectConnection);
    }
    void note(const QString &sender, const QString &name, Charts::ChartMouseEvent &event);

    std::vector<MouseSignal> m_signals;
};

#endif
