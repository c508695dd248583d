// SPDX-License-Identifier: MIT
#pragma once

#include "PlaybackClock.h"
#include "readers/SampleTable.h"

#include <ChartsLibrary/AbstractTrace.h>
#include <ChartsLibrary/TraceData.h>

#include <QtQml/qqmlregistration.h>

#include <cstddef>
#include <memory>

namespace Gallery {

/*! How a table is played: sweeps of \a length seconds of data, \a speed of them a second. */
struct SweepSettings
{
    double length = 4.0;
    double speed = 1.0;
};

/*!
    One column of a table as an oscilloscope shows it: the beam writes from left to right over what
    the sweep before has left, and in front of it a gap runs along.

        vertex    0 ... head - 1 |  head  ...  gapEnd - 1  |  gapEnd ...
                  this sweep     |  gap, hidden            |  the sweep before

    Each update uploads the samples that came due and the vertices that fell into the gap.
*/
class SweepTrace : public Charts::AbstractTrace
{
    Q_OBJECT
    QML_ANONYMOUS

public:
    using Table = std::shared_ptr<const Charts::Readers::SampleTable>;

    SweepTrace(Table table, std::size_t column, const SweepSettings &settings,
            const PlaybackClock &clock, QObject *parent);

    Charts::TraceData *traceData() override { return &m_data; }
    void updateData() override;

private:
    [[nodiscard]] std::size_t firstSampleOf(long long sweep) const;
    void beginSweep(long long sweep);
    /*! Writes what is due up to \a position, in seconds from the left, and moves the gap. */
    void advanceTo(double position);
    void mark(std::size_t first, std::size_t end);

    Table m_table;
    std::size_t m_column = 0;
    SweepSettings m_settings;
    const PlaybackClock &m_clock;
    Charts::TraceData m_data;

    long long m_sweepCount = 1; // of the whole table
    long long m_sweep = 0;      // the one being written, counted on and on
    std::size_t m_nextSample = 0;
    std::size_t m_endSample = 0;
    std::size_t m_head = 0;
    std::size_t m_gapEnd = 0;
};

} // namespace Gallery
