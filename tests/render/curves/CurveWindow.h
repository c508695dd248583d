// SPDX-License-Identifier: MIT
#ifndef CHARTS_TEST_CURVEWINDOW_H
#define CHARTS_TEST_CURVEWINDOW_H

#include "ChartWindow.h"
#include "GlProbe.h"
#include "Graphics.h"
#include "ItemPicture.h"

#include <QtCore/QPointF>
#include <QtCore/QSizeF>
#include <QtCore/QString>
#include <QtCore/QStringList>
#include <QtGui/QColor>
#include <QtGui/QImage>
#include <QtQuick/QQuickItem>

#include <algorithm>

/*!
    A window for curves. They make no OpenGL calls of their own, so each frame is watched as a whole.

    Curves stand away from its edges: they may draw outside of their items.
*/
class CurveWindow : public ChartWindow
{
public:
    // Twice as large it still fits the place on the screen that each test process has.
    static constexpr QSize windowSize = {200, 150};
    static constexpr QPointF curvePosition = {40.0, 50.0};
    static constexpr QSizeF curveSize = {120.0, 60.0};

    CurveWindow()
        : ChartWindow(windowSize, Content::Nothing)
    {
        // Both are emitted by the thread that renders, around all calls of a frame.
        connect(
                this, &QQuickWindow::beforeRendering, this, [] { GlProbe::beginSection(); },
                Qt::DirectConnection);
        connect(
                this, &QQuickWindow::afterFrameEnd, this, [] { GlProbe::endSection(); },
                Qt::DirectConnection);
    }

    void put(QQuickItem &item)
    {
        item.setPosition(curvePosition);
        item.setSize(curveSize);
        item.setParentItem(contentItem());
    }

    /*! Whether OpenGL was watched while it drew something. */
    [[nodiscard]] static bool isWatched()
    {
        return !Graphics::isOpenGL() || GlProbe::totals().drawCalls > 0;
    }
    /*! What OpenGL had to complain about. */
    [[nodiscard]] static QStringList glErrors()
    {
        const QStringList errors = GlProbe::takeErrors();
        // With OpenGL ES Qt raises some itself in every frame, whatever it draws.
        return Graphics::flavour() == Graphics::Flavour::Es ? QStringList() : errors;
    }
    /*! Hides the window, which loses all its nodes if it \a forgets, and shows it again. */
    [[nodiscard]] bool restart(bool forgets)
    {
        setPersistentSceneGraph(!forgets);
        setPersistentGraphics(!forgets);
        hide();
        releaseResources();
        const bool isStarted = start();
        // Qt raises one itself in the first frame of its second context, whatever it draws.
        if (forgets)
            static_cast<void>(GlProbe::takeErrors());
        return isStarted;
    }
};

/*! The number of pixels that are not white. */
inline int drawnPixels(const QImage &picture)
{
    constexpr QRgb white = 0xFFFFFFFF;
    int count = 0;
    for (int y = 0; y < picture.height(); ++y) {
        const auto *line = reinterpret_cast<const QRgb *>(picture.constScanLine(y));
        count += int(std::count_if(
                line, line + picture.width(), [](QRgb pixel) { return pixel != white; }));
    }
    return count;
}

/*! Whether there is a picture that shows nothing. */
inline bool isBlank(const QImage &picture)
{
    return !picture.isNull() && drawnPixels(picture) == 0;
}

#endif
