// SPDX-License-Identifier: MIT
#ifndef CHARTS_SIGNALTRACE_H
#define CHARTS_SIGNALTRACE_H

#include "SignalSource.h"

#include <ChartsLibrary/AbstractTrace.h>
#include <ChartsLibrary/TraceData.h>

/*! A trace of the benchmark, as an application would write it: updateData() writes what is new and
    marks it. */
class SignalTrace : public Charts::AbstractTrace
{
    Q_OBJECT

public:
    SignalTrace(const BenchmarkOptions &options, int index, QObject *parent);

    Charts::TraceData *traceData() override { return &m_data; }
    void updateData() override;

private:
    void apply(const SignalSource::Frame &frame);

    SignalSource m_source;
    Charts::TraceData m_data;
    /*! Changes its colour each time, which makes the chart draw its picture anew. */
    bool m_isBlinking;
};

#endif
