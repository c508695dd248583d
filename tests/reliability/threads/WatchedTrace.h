// SPDX-License-Identifier: MIT
#ifndef CHARTS_TEST_WATCHEDTRACE_H
#define CHARTS_TEST_WATCHEDTRACE_H

#include "WatchedWindow.h"

#include <ChartsLibrary/AbstractTrace.h>
#include <ChartsLibrary/TraceData.h>

/*!
    A wave across the window that moves with each update, or a part of it does, or it gets another
    number of points. Follows the contract of traces to the letter: no lock, no atomic.
*/
class WatchedTrace : public Charts::AbstractTrace
{
    Q_OBJECT

public:
    /*! \a row is the height of the wave's axis, from 0 at the bottom of the window to 1. */
    WatchedTrace(WatchedWindow &window, double row);

    Charts::TraceData *traceData() override;
    void updateData() override;

private:
    void resize(int count);
    void move(int start, int count);

    WatchedWindow &m_window;
    double m_row = 0.0;
    Charts::TraceData m_data;
    int m_updates = 0;
    float m_sum = 0.0F;
};

#endif
