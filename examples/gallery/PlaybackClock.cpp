// SPDX-License-Identifier: MIT
#include "PlaybackClock.h"

#include <chrono>
#include <utility>

namespace Gallery {

namespace {

double steadySeconds()
{
    const auto sinceBoot = std::chrono::steady_clock::now().time_since_epoch();
    return std::chrono::duration<double>(sinceBoot).count();
}

} // namespace

PlaybackClock::PlaybackClock()
    : PlaybackClock(steadySeconds)
{
}

PlaybackClock::PlaybackClock(TimeSource now)
    : m_now(std::move(now))
    , m_resumedAt(m_now())
{
}

double PlaybackClock::seconds() const
{
    return m_isPaused ? m_secondsBefore : m_secondsBefore + (m_now() - m_resumedAt);
}

void PlaybackClock::setPaused(bool paused)
{
    if (paused == m_isPaused)
        return;
    if (paused)
        m_secondsBefore = seconds();
    else
        m_resumedAt = m_now();
    m_isPaused = paused;
}

void PlaybackClock::restart()
{
    m_secondsBefore = 0.0;
    m_resumedAt = m_now();
}

} // namespace Gallery
