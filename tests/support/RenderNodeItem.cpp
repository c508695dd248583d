// SPDX-License-Identifier: MIT
#include "RenderNodeItem.h"

#include "ChartWindow.h"

#include <ChartsLibrary/ChartNode.h>

#include <utility>

RenderNodeItem::RenderNodeItem(ChartWindow &window)
    : QQuickItem(window.contentItem())
    , m_window(window)
{
    setFlag(ItemHasContents);
    setSize(window.size());
}

bool RenderNodeItem::run(const Script &script)
{
    m_script = script;
    update();
    return m_window.plainFrame() && !m_script;
}

bool RenderNodeItem::runAfresh(const Script &script)
{
    m_isAfresh = true;
    return run(script);
}

QSGNode *RenderNodeItem::updatePaintNode(QSGNode *oldNode, UpdatePaintNodeData *)
{
    if (std::exchange(m_isAfresh, false)) {
        delete oldNode;
        oldNode = nullptr;
    }
    auto *node = static_cast<Charts::ChartNode *>(oldNode);
    if (!node)
        node = new Charts::ChartNode(window());
    if (const Script script = std::exchange(m_script, {}))
        script(dynamic_cast<Charts::OpenGLRenderNode &>(*node->renderNode()));
    return node;
}
