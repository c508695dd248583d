// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QElapsedTimer>

namespace Gallery {

/*!
    Seconds since a start, with the pauses taken out. Changed on the GUI thread; traces read it in
    updateData(), while the GUI thread waits.
*/
class PlaybackClock
{
public:
    PlaybackClock();

    [[nodiscard]] double seconds() const;
    [[nodiscard]] bool isPaused() const { return !m_timer.isValid(); }
    void setPaused(bool paused);
    /*! Starts again at 0; a paused clock stays paused. */
    void restart();

private:
    QElapsedTimer m_timer;
    double m_secondsBefore = 0.0;
};

} // namespace Gallery
