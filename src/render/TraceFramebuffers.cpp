// SPDX-License-Identifier: MIT
#include "TraceFramebuffers.h"

#include <QtGui/QImage>
#include <QtGui/QOpenGLContext>
#include <QtGui/QOpenGLFunctions>
#include <QtQuick/QQuickWindow>

namespace Charts {

namespace {

constexpr int antialiasingSamples = 8;

/*! Whether there are textures of \a size. Mesa does not survive being asked for one whose bytes it
    cannot count. */
bool isPossible(const QSize &size)
{
    GLint largest = 0;
    QOpenGLContext::currentContext()->functions()->glGetIntegerv(GL_MAX_TEXTURE_SIZE, &largest);
    return !size.isEmpty() && size.width() <= largest && size.height() <= largest;
}

} // namespace

int TraceFramebuffers::sampleCount(bool antialiasing)
{
    if (!antialiasing)
        return 0;
    const QOpenGLContext *context = QOpenGLContext::currentContext();
    // OpenGL ES 2 has no multisampled framebuffers.
    if (context->isOpenGLES() && context->format().majorVersion() <= 2)
        return 0;
    return antialiasingSamples;
}

QSGTexture *TraceFramebuffers::create(QQuickWindow *window, const QSize &size, bool antialiasing)
{
    const int samples = sampleCount(antialiasing);
    m_isUsable = isPossible(size);
    if (m_isUsable) {
        // Hard edges are better than nothing where the driver has no memory for samples.
        m_isUsable = makeImages(size, samples) || (samples != 0 && makeImages(size, 0));
    }

    m_oldTexture = std::move(m_texture);
    if (m_isUsable) {
        const auto &shown = m_resolve ? m_resolve : m_render;
        m_texture.reset(QNativeInterface::QSGOpenGLTexture::fromNative(
                shown->texture(), window, size, QQuickWindow::TextureHasAlphaChannel));
    } else {
        deleteImages();
        QImage transparent(1, 1, QImage::Format_ARGB32_Premultiplied);
        transparent.fill(Qt::transparent);
        m_texture.reset(
                window->createTextureFromImage(transparent, QQuickWindow::TextureHasAlphaChannel));
    }
    return m_texture.get();
}

bool TraceFramebuffers::makeImages(const QSize &size, int samples)
{
    QOpenGLFramebufferObjectFormat format;
    format.setAttachment(QOpenGLFramebufferObject::NoAttachment);
    format.setSamples(samples);

    deleteImages();
    m_render = std::make_unique<QOpenGLFramebufferObject>(size, format);
    if (format.samples() != 0)
        m_resolve = std::make_unique<QOpenGLFramebufferObject>(size, GL_TEXTURE_2D);
    m_selection = std::make_unique<QOpenGLFramebufferObject>(size, GL_TEXTURE_2D);
    return m_render->isValid() && (!m_resolve || m_resolve->isValid()) && m_selection->isValid();
}

void TraceFramebuffers::deleteImages()
{
    m_render.reset();
    m_resolve.reset();
    m_selection.reset();
}

void TraceFramebuffers::resolve()
{
    if (!m_resolve)
        return;
    const QRect rect(QPoint(0, 0), m_render->size());
    QOpenGLFramebufferObject::blitFramebuffer(
            m_resolve.get(), rect, m_render.get(), rect, GL_COLOR_BUFFER_BIT, GL_NEAREST);
}

} // namespace Charts
