// SPDX-License-Identifier: MIT
#pragma once

#include <functional>

namespace Gallery {

/*!
    Seconds since a start, with the pauses taken out. Changed on the GUI thread; traces read it in
    updateData(), while the GUI thread waits.
*/
class PlaybackClock
{
public:
    /*! Gives the seconds since some instant, which never grow fewer. Called by seconds(), on
        whichever thread that one is called, also on several at a time. */
    using TimeSource = std::function<double()>;

    /*! A running clock. */
    PlaybackClock();
    /*! A running clock that takes the time from \a now instead of the machine. */
    explicit PlaybackClock(TimeSource now);

    [[nodiscard]] double seconds() const;
    [[nodiscard]] bool isPaused() const { return m_isPaused; }
    void setPaused(bool paused);
    /*! Starts again at 0; a paused clock stays paused. */
    void restart();

private:
    TimeSource m_now;
    double m_resumedAt = 0.0;     // by the time source
    double m_secondsBefore = 0.0; // when it was resumed
    bool m_isPaused = false;
};

} // namespace Gallery
