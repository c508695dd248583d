// SPDX-License-Identifier: MIT
#include "TraceFramebuffers.h"

#include <QtGui/QOpenGLContext>
#include <QtQuick/QQuickWindow>

namespace Charts {

namespace {

constexpr int antialiasingSamples = 8;

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
    QOpenGLFramebufferObjectFormat format;
    format.setAttachment(QOpenGLFramebufferObject::NoAttachment);
    format.setSamples(sampleCount(antialiasing));

    m_render.reset();
    m_resolve.reset();
    m_selection.reset();
    m_render = std::make_unique<QOpenGLFramebufferObject>(size, format);
    if (format.samples() != 0)
        m_resolve = std::make_unique<QOpenGLFramebufferObject>(size, GL_TEXTURE_2D);
    m_selection = std::make_unique<QOpenGLFramebufferObject>(size, GL_TEXTURE_2D);

    const auto &shown = m_resolve ? m_resolve : m_render;
    m_oldTexture = std::move(m_texture);
    m_texture.reset(QNativeInterface::QSGOpenGLTexture::fromNative(
            shown->texture(), window, size, QQuickWindow::TextureHasAlphaChannel));
    return m_texture.get();
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
