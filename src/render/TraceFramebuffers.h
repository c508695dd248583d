// SPDX-License-Identifier: MIT
#ifndef CHARTS_TRACEFRAMEBUFFERS_H
#define CHARTS_TRACEFRAMEBUFFERS_H

#include <QtCore/QSize>
#include <QtOpenGL/QOpenGLFramebufferObject>
#include <QtQuick/QSGTexture>

#include <memory>

QT_BEGIN_NAMESPACE
class QQuickWindow;
QT_END_NAMESPACE

namespace Charts {

/*!
    \internal
    The off-screen images of a chart and the scene-graph texture that shows one of them:

        render  --resolve, when multisampled-->  resolve  --texture-->  image node
        selection (one sample a pixel, so that picked colours are exact)

    Lives on the render thread; used and destroyed with the OpenGL context current.
*/
class TraceFramebuffers
{
public:
    /*! Samples per pixel that the current context is asked for. */
    [[nodiscard]] static int sampleCount(bool antialiasing);

    /*! Replaces all images by new ones of \a size. Returns the texture to show; it replaces the
        one returned before, which is deleted with the next call of releaseOldTexture(). Where the
        driver has no samples to give, the images have one for each pixel; where it has no images of
        such a size, the texture is transparent and there are none. */
    QSGTexture *create(QQuickWindow *window, const QSize &size, bool antialiasing);
    void releaseOldTexture() { m_oldTexture.reset(); }

    [[nodiscard]] bool isUsable() const { return m_isUsable; }
    /*! The images to draw into: null unless isUsable(). */
    [[nodiscard]] QOpenGLFramebufferObject *render() const { return m_render.get(); }
    [[nodiscard]] QOpenGLFramebufferObject *selection() const { return m_selection.get(); }
    /*! Copies the multisampled image into the shown one, where they are two. */
    void resolve();

private:
    bool makeImages(const QSize &size, int samples);
    void deleteImages();

    bool m_isUsable = false;
    std::unique_ptr<QSGTexture> m_oldTexture;
    std::unique_ptr<QSGTexture> m_texture;
    std::unique_ptr<QOpenGLFramebufferObject> m_selection;
    std::unique_ptr<QOpenGLFramebufferObject> m_resolve;
    std::unique_ptr<QOpenGLFramebufferObject> m_render;
};

} // namespace Charts

#endif
