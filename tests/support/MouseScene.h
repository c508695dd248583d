// SPDX-License-Identifier: MIT
#ifndef CHARTS_TEST_MOUSESCENE_H
#define CHARTS_TEST_MOUSESCENE_H

#include "ChartWindow.h"
#include "MouseLog.h"
#include "PixelTrace.h"

#include <QtCore/QString>
#include <QtCore/QStringList>

#include <memory>

/*! "press A, release A" as its steps; signals likewise. */
[[nodiscard]] QStringList parts(const QString &text);

/*!
    A chart with the two traces A and B, lines across it one above the other, and the log of all
    mouse signals. Input is written as "press A", "move B", "leave off".

          20                       180
        +-----------------------------------+
        |                                   |
     30 |  =============================    |  A
     50 |                                   |  off
     70 |  =============================    |  B
        |                                   |
        +-----------------------------------+
*/
class MouseScene
{
public:
    MouseScene();

    /*! Shows the window, with both traces attached. */
    [[nodiscard]] bool start();
    [[nodiscard]] const char *error() const { return window.error(); }

    /*! Sends one event to the chart: "press", "release", "double", "second" (the flagged press that
        comes before a double click), "enter", "move" or "leave", and where: "A", "B" or "off". Each
        time at another place, so that every move is one. */
    void send(const QString &step);
    /*! Sends \a steps and waits for the signals after them: after each step or after all of them.
        Returns what was logged. */
    [[nodiscard]] QStringList oneByOne(const QStringList &steps);
    [[nodiscard]] QStringList allAtOnce(const QStringList &steps);

    void attach(TestTrace &trace) { chart().addTrace(&trace); }
    void detach(TestTrace &trace) { chart().removeTrace(&trace); }
    [[nodiscard]] Charts::Chart &chart() { return *window.chart(); }

    ChartWindow window;
    MouseLog log;
    std::unique_ptr<PixelTrace> a;
    std::unique_ptr<PixelTrace> b;

private:
    std::unique_ptr<PixelTrace> line(const QString &name, double fromTop);

    int m_steps = 0;
};

#endif
