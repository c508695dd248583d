// SPDX-License-Identifier: MIT
#ifndef SNIPPETS_SWEEPTRACE_H
#define SNIPPETS_SWEEPTRACE_H

#include <ChartsLibrary/AbstractTrace.h>
#include <ChartsLibrary/TraceData.h>

#include <mutex>
#include <span>
#include <vector>

//! [class]
/*! The last samples of a signal as an oscilloscope shows them: new ones replace the oldest, from left to
    right and over again. */
class SweepTrace : public Charts::AbstractTrace
{
    Q_OBJECT

public:
    explicit SweepTrace(int pointCount, QObject *parent = nullptr);

    /*! Any thread. */
    void append(std::span<const float> samples);

    Charts::TraceData *traceData() override { return &m_data; }
    void updateData() override;

private:
    void write(int index, const Charts::TracePoint &point);

    std::mutex m_mutex;
    std::vector<float> m_waiting; // guarded by the mutex
    std::vector<float> m_arrived; // of updateData() alone
    Charts::TraceData m_data;
    int m_next = 0;
};
//! [class]

#endif
