// SPDX-License-Identifier: MIT
#ifndef CHARTS_TEST_FRAMEWATCH_H
#define CHARTS_TEST_FRAMEWATCH_H

#include <QtCore/QObject>
#include <QtCore/QString>
#include <QtCore/QStringList>

#include <atomic>
#include <functional>

QT_BEGIN_NAMESPACE
class QQuickWindow;
QT_END_NAMESPACE

/*!
    Watches whole frames of a window with GlProbe: the synchronisation, in which the chart draws, and
    the rendering, in which the scene graph draws grids, curves and the chart's image. So objects that
    either of them makes are counted, and errors that either of them raises are found. Of a grabbed
    picture it watches the synchronisation alone: nothing tells when the rest is over, and what Qt does
    after that, such as an unknown capability it enables in each new core profile, is not of interest.

    To be made before the window's first frame, with new: it belongs to the window, so that it also
    sees the window's end.
*/
class FrameWatch : public QObject
{
    Q_OBJECT

public:
    explicit FrameWatch(QQuickWindow &window);

    /*! Errors of OpenGL since the last call, in all windows that are or were watched. */
    [[nodiscard]] static QStringList takeErrors();
    /*! How often the window has lost its scene graph. */
    [[nodiscard]] int losses() const { return m_losses; }

private:
    // Render thread only.
    bool m_isInFrame = false;
    bool m_isRendering = false;
    std::atomic<int> m_losses = 0;
};

/*! What GlProbe knows to live, as "2 buffer, 1 program". */
[[nodiscard]] QString liveObjectCounts();

/*!
    Calls \a round \a shortCount times or, in the long form, \a longCount times, with its number; it
    returns what went wrong. After each round there must be as many objects of OpenGL as after the
    second one, and no errors. Returns what went wrong first; prints a figure in the long form.
*/
[[nodiscard]] QString live(const char *what, const std::function<QString(int)> &round,
        int shortCount = 5, int longCount = 500);

#endif
