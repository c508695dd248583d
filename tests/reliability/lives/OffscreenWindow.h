// SPDX-License-Identifier: MIT
#ifndef CHARTS_TEST_OFFSCREENWINDOW_H
#define CHARTS_TEST_OFFSCREENWINDOW_H

#include <QtCore/QSize>
#include <QtCore/QString>
#include <QtGui/QImage>
#include <QtGui/QOffscreenSurface>
#include <QtGui/QOpenGLContext>
#include <QtOpenGL/QOpenGLFramebufferObject>
#include <QtQuick/QQuickRenderControl>
#include <QtQuick/QQuickWindow>

#include <memory>

/*!
    A window that is on no screen: QQuickRenderControl draws it into a texture, on the GUI thread,
    with a context that belongs to this object and not to Qt. White. Synchronisations are sections of
    GlProbe, as they are in a ChartWindow.
*/
class OffscreenWindow
{
public:
    explicit OffscreenWindow(const QSize &size);
    ~OffscreenWindow();
    OffscreenWindow(const OffscreenWindow &) = delete;
    OffscreenWindow &operator=(const OffscreenWindow &) = delete;

    /*! Makes the scene graph. */
    [[nodiscard]] bool initialize();
    /*! The scene graph goes, the context stays: Qt cannot go on in another one. */
    void invalidate();
    /*! Another texture from now on. The items are as large as they were. */
    void resize(const QSize &size);

    [[nodiscard]] QQuickWindow &window() { return m_window; }
    [[nodiscard]] bool frame();
    /*! A frame, then the texture's pixels. */
    [[nodiscard]] QImage picture();

private:
    bool makeCurrent() { return m_context.makeCurrent(&m_surface); }
    void makeTarget();

    QSize m_size;
    bool m_isInitialized = false;
    QOffscreenSurface m_surface;
    // Destroyed from the bottom up: the context outlives all that uses it.
    QOpenGLContext m_context;
    std::unique_ptr<QOpenGLFramebufferObject> m_target;
    QQuickRenderControl m_control;
    QQuickWindow m_window;
};

#endif
