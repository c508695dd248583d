// SPDX-License-Identifier: MIT
#pragma once

#include "CpuTimes.h"
#include "LoadTrace.h"
#include "PlaybackClock.h"

#include <QtCore/QObject>
#include <QtCore/QTimer>
#include <QtQml/qqmlregistration.h>

#include <vector>

namespace Gallery {

/*! Samples the load of each core of the machine ten times a second and offers it as traces. */
class CpuLoad : public QObject
{
    Q_OBJECT
    QML_ELEMENT

    Q_PROPERTY(QList<Gallery::LoadTrace *> traces READ traces CONSTANT)
    Q_PROPERTY(bool paused READ isPaused WRITE setPaused NOTIFY pausedChanged)

public:
    explicit CpuLoad(QObject *parent = nullptr);

    [[nodiscard]] QList<LoadTrace *> traces() const { return m_traces; }
    [[nodiscard]] bool isPaused() const { return m_clock.isPaused(); }
    void setPaused(bool paused);

Q_SIGNALS:
    void pausedChanged();

private:
    void sample();

    PlaybackClock m_clock;
    QTimer m_timer;
    std::vector<CpuTimes> m_lastTimes;
    QList<LoadTrace *> m_traces;
};

} // namespace Gallery
