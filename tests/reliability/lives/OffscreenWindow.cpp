// SPDX-License-Identifier: MIT
#include "OffscreenWindow.h"

#include "GlProbe.h"
#include "Graphics.h"

#include <QtCore/QCoreApplication>
#include <QtQuick/QQuickGraphicsDevice>
#include <QtQuick/QQuickItem>
#include <QtQuick/QQuickRenderTarget>

OffscreenWindow::OffscreenWindow(const QSize &size)
    : m_size(size)
    , m_window(&m_control)
{
    m_surface.create();
    m_context.create();
    m_window.setColor(Qt::white);
    QObject::connect(
            &m_window, &QQuickWindow::beforeSynchronizing, [] { GlProbe::beginSection(); });
    QObject::connect(&m_window, &QQuickWindow::afterSynchronizing, [] { GlProbe::endSection(); });
    resize(size);
}

OffscreenWindow::~OffscreenWindow()
{
    invalidate();
    makeCurrent();
}

bool OffscreenWindow::initialize()
{
    if (!makeCurrent())
        return false;
    m_window.setGraphicsDevice(QQuickGraphicsDevice::fromOpenGLContext(&m_context));
    m_isInitialized = m_control.initialize();
    if (!m_isInitialized || !Graphics::verify(m_window).isEmpty())
        return false;
    makeTarget();
    return true;
}

void OffscreenWindow::invalidate()
{
    if (!m_isInitialized || !makeCurrent())
        return;
    m_control.invalidate();
    m_isInitialized = false;
    // Or newer versions of Qt take the next one for the same, which may get its name.
    m_window.setRenderTarget(QQuickRenderTarget());
    m_target.reset();
}

void OffscreenWindow::resize(const QSize &size)
{
    m_size = size;
    m_window.setGeometry(QRect(QPoint(0, 0), size));
    m_window.contentItem()->setSize(size);
    if (m_isInitialized && makeCurrent())
        makeTarget();
}

void OffscreenWindow::makeTarget()
{
    m_target = std::make_unique<QOpenGLFramebufferObject>(
            m_size, QOpenGLFramebufferObject::CombinedDepthStencil);
    m_window.setRenderTarget(QQuickRenderTarget::fromOpenGLTexture(m_target->texture(), m_size));
}

bool OffscreenWindow::frame()
{
    if (!m_isInitialized)
        return false;
    QCoreApplication::processEvents();
    m_control.polishItems();
    m_control.beginFrame();
    const bool isDone = m_control.sync();
    m_control.render();
    m_control.endFrame();
    return isDone;
}

QImage OffscreenWindow::picture()
{
    if (!frame() || !makeCurrent())
        return {};
    return m_target->toImage().convertToFormat(QImage::Format_RGB32);
}
