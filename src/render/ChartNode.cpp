// SPDX-License-Identifier: MIT
#include "ChartNode.h"

#include "OpenGLRenderNode.h"

#include <QtQuick/QQuickWindow>
#include <QtQuick/QSGRendererInterface>

namespace Charts {

ChartNode::ChartNode(QQuickWindow *window)
    : m_window(window)
{
    if (m_window->rendererInterface()->graphicsApi() != QSGRendererInterface::OpenGL)
        return;
    m_renderNode = new OpenGLRenderNode(m_window);
    m_renderNode->setFlag(QSGNode::OwnedByParent);
    appendChildNode(m_renderNode);
    m_renderNode->setRect(QRectF());
}

ChartNode::~ChartNode() = default;

} // namespace Charts
