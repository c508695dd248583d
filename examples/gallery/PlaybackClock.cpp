// SPDX-License-Identifier: MIT
#include "PlaybackClock.h"

namespace Gallery {

PlaybackClock::PlaybackClock()
{
    m_timer.start();
}

double PlaybackClock::seconds() const
{
    const double running = isPaused() ? 0.0 : static_cast<double>(m_timer.nsecsElapsed()) * 1e-9;
    return m_secondsBefore + running;
}

void PlaybackClock::setPaused(bool paused)
{
    if (paused == isPaused())
        return;
    if (paused) {
        m_secondsBefore = seconds();
        m_timer.invalidate();
    } else {
        m_timer.start();
    }
}

void PlaybackClock::restart()
{
    m_secondsBefore = 0.0;
    if (!isPaused())
        m_timer.start();
}

} // namespace Gallery
