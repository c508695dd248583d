// SPDX-License-Identifier: MIT
#pragma once

#include "PlaybackClock.h"

#include <ChartsLibrary/AbstractTrace.h>
#include <ChartsLibrary/TraceData.h>

#include <QtQml/qqmlregistration.h>

#include <random>

namespace Gallery {

/*!
    What a spectrum analyser shows beside the carrier of a transmitter, in dBm over MHz: the
    carrier's noise, which falls with the distance, a few spurious lines of which one swells and one
    wanders, and the noise of the instrument. An average over some sweeps of the levels in decibels,
    so that noise stands 2.5 dB below its power.

    Each sweep depends on its number only, never on when it is drawn.
*/
class SpectrumTrace : public Charts::AbstractTrace
{
    Q_OBJECT
    QML_ANONYMOUS

public:
    static constexpr double FirstFrequency = 97.0; // MHz
    static constexpr double LastFrequency = 107.0;
    static constexpr int PointCount = 1001;
    static constexpr double SweepsPerSecond = 30.0;
    static constexpr double CarrierFrequency = 98.0; // MHz
    static constexpr double CarrierLevel = -10.0;    // dBm
    static constexpr double FloorLevel = -88.0;      // dBm, the power of the instrument's noise

    SpectrumTrace(const PlaybackClock &clock, QObject *parent);

    Charts::TraceData *traceData() override { return &m_data; }
    void updateData() override;

private:
    /*! The next one, mixed into the average with the weight \a share. */
    void sweep(float share);

    const PlaybackClock &m_clock;
    Charts::TraceData m_data;
    std::mt19937 m_random; // gives the same numbers with every standard library
    long long m_sweepCount = 0;
};

} // namespace Gallery
