// SPDX-License-Identifier: MIT
#ifndef CHARTS_QUICKFRAMES_H
#define CHARTS_QUICKFRAMES_H

#include "GlCounters.h"

#include <QtCore/QObject>
#include <QtCore/QTimer>

#include <atomic>

QT_BEGIN_NAMESPACE
class QQuickWindow;
QT_END_NAMESPACE

/*!
    Draws the frames of a window one by one and tells what they cost.

    What the contents of the window call on their own is told apart from the rest: they do so while the
    scene graph synchronises, or in their receivers of beforeRendering().
*/
class QuickFrames : public QObject
{
    Q_OBJECT

public:
    explicit QuickFrames(QQuickWindow &window);

    /*! Requests a frame and returns when it is on the screen, or false when none came for minutes. */
    [[nodiscard]] bool draw();
    /*! The same for the first frame, which showing the window requests. */
    [[nodiscard]] bool show();

    /*! Processor time in ms of the thread that draws, up to the end of the last frame. */
    [[nodiscard]] double renderTime() const { return m_renderTime; }
    /*! Whether that is another thread than the GUI thread. */
    [[nodiscard]] bool isThreaded() const { return m_isThreaded; }
    /*! What the contents have called on their own since the process began. */
    [[nodiscard]] GlCounters contents() const { return m_contents; }

private:
    void connectLast();
    [[nodiscard]] bool waitForFrame(int after);

    QQuickWindow &m_window;
    QTimer m_alarm;
    GlCounters m_before; // the render thread's
    // Written on the render thread before it tells of the frame.
    GlCounters m_contents;
    double m_renderTime = 0.0;
    bool m_isThreaded = false;
    int m_synchronised = 0;
    std::atomic<int> m_swapped = 0;
};

#endif
