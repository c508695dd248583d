// SPDX-License-Identifier: MIT
#ifndef CHARTS_WINDOWRUN_H
#define CHARTS_WINDOWRUN_H

#include "BenchmarkOptions.h"

#include <QtCore/QByteArray>
#include <QtCore/QtGlobal>

#include <functional>
#include <memory>

QT_BEGIN_NAMESPACE
class QQuickWindow;
QT_END_NAMESPACE
class QuickFrames;

/*! What is in a window of Qt Quick, and what becomes of it from frame to frame. */
class WindowScene
{
    Q_DISABLE_COPY_MOVE(WindowScene)

public:
    WindowScene() = default;
    virtual ~WindowScene() = default;

    /*! Changes what the next frame is to show. */
    virtual void advance() = 0;
    /*! Draws what has to be there before the first measured frame; false when it was not drawn. */
    [[nodiscard]] virtual bool prepare(QuickFrames &) { return true; }
};

/*! Fills the window, which is not shown yet. Returns null when it cannot. */
using MakeScene = std::function<std::unique_ptr<WindowScene>(QQuickWindow &)>;

/*! Draws the frames in a window, or, without a scene, with nothing in it. Returns the line of the
    report with \a program in it; it is empty when a frame was not drawn. */
[[nodiscard]] QByteArray runInWindow(
        const BenchmarkOptions &options, const QString &program, const MakeScene &makeScene);

/*! One of the steps of a pointer that moves through the middle of the window, over and over. */
void movePointer(QQuickWindow &window, int step);

#endif
