// SPDX-License-Identifier: MIT
#ifndef CHARTS_TEST_RENDERNODEITEM_H
#define CHARTS_TEST_RENDERNODEITEM_H

#include <ChartsLibrary/OpenGLRenderNode.h>

#include <QtQuick/QQuickItem>

#include <functional>

class ChartWindow;

/*!
    Stands where a chart would stand, but lets the test itself call the renderer: a script runs on
    the render thread during synchronisation, while the GUI thread is blocked. It should collect
    what it sees; the test compares afterwards on its own thread.
*/
class RenderNodeItem : public QQuickItem
{
    Q_OBJECT

public:
    using Script = std::function<void(Charts::OpenGLRenderNode &)>;

    /*! Fills \a window. */
    explicit RenderNodeItem(ChartWindow &window);

    /*! Draws one frame and runs \a script within it. The first one finds a new renderer. */
    [[nodiscard]] bool run(const Script &script);
    /*! The same with a new renderer; the old one is deleted. */
    [[nodiscard]] bool runAfresh(const Script &script);

protected:
    QSGNode *updatePaintNode(QSGNode *oldNode, UpdatePaintNodeData *data) override;

private:
    ChartWindow &m_window;
    Script m_script;
    bool m_isAfresh = false;
};

#endif
