// SPDX-License-Identifier: MIT
#ifndef CHARTS_DECIMATEDTRACE_H
#define CHARTS_DECIMATEDTRACE_H

#include "SignalSource.h"

#include "decimation/LineDecimation.h"

#include <ChartsLibrary/AbstractTrace.h>
#include <ChartsLibrary/TraceData.h>

#include <vector>

/*! A trace that keeps its samples to itself and draws two vertices for each column of pixels. */
class DecimatedTrace : public Charts::AbstractTrace
{
    Q_OBJECT

public:
    DecimatedTrace(const BenchmarkOptions &options, int index, QObject *parent);

    Charts::TraceData *traceData() override { return &m_data; }
    void updateData() override;

private:
    void apply(const SignalSource::Frame &frame);
    void fill(const SignalSource::Frame &frame);

    SignalSource m_source;
    int m_columnCount;
    double m_visibleFirst = 0.0;
    std::vector<float> m_samples; // a ring
    Charts::Decimation::MinMaxPyramid m_pyramid;
    Charts::Decimation::LineDecimation m_line;
    Charts::TraceData m_data;
    bool m_isBlinking; // as SignalTrace does
    bool m_isOther = false;
};

#endif
