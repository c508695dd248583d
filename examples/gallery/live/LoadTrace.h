// SPDX-License-Identifier: MIT
#pragma once

#include "HistoryRing.h"
#include "PlaybackClock.h"

#include <ChartsLibrary/AbstractTrace.h>
#include <ChartsLibrary/TraceData.h>

#include <QtQml/qqmlregistration.h>

#include <vector>

namespace Gallery {

/*!
    The load of one core in percent over the last seconds. New samples are appended to a ring;
    scrolling is a moved view port, which costs no upload at all.
*/
class LoadTrace : public Charts::AbstractTrace
{
    Q_OBJECT
    QML_ANONYMOUS

public:
    static constexpr float ShownSeconds = 10.0F;

    LoadTrace(const PlaybackClock &clock, int historyLength, QObject *parent);

    /*! Hands over the load at \a seconds of the clock. GUI thread. */
    void append(double seconds, float percent);

    Charts::TraceData *traceData() override { return &m_data; }
    void updateData() override;

private:
    const PlaybackClock &m_clock;
    Charts::TraceData m_data;
    HistoryRing m_ring;
    std::vector<Charts::TracePoint> m_newPoints;
};

} // namespace Gallery
