// SPDX-License-Identifier: MIT
#ifndef SNIPPETS_EPOCHTRACE_H
#define SNIPPETS_EPOCHTRACE_H

#include <ChartsLibrary/AbstractTrace.h>
#include <ChartsLibrary/TraceData.h>

#include <vector>

/*! Samples over the time since 1970. The domain's range is in seconds since then, too. */
class EpochTrace : public Charts::AbstractTrace
{
    Q_OBJECT

public:
    struct Sample
    {
        double seconds = 0.0;
        double value = 0.0;
    };

    using AbstractTrace::AbstractTrace;

    /*! GUI thread. */
    void setSamples(std::vector<Sample> samples);

    Charts::TraceData *traceData() override { return &m_data; }
    void updateData() override;

private:
    void writePoints();

    std::vector<Sample> m_samples;
    bool m_hasNewSamples = false;
    double m_origin = 0.0;
    Charts::TraceData m_data;
};

#endif
