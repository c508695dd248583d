// SPDX-License-Identifier: MIT
#ifndef CHARTS_CHARTNODE_H
#define CHARTS_CHARTNODE_H

#include "ChartsExport.h"

#include <QtQuick/QSGNode>

QT_BEGIN_NAMESPACE
class QQuickWindow;
QT_END_NAMESPACE

namespace Charts {

class AbstractRenderNode;

/*!
    \class Charts::ChartNode
    \brief The chart's node in the scene graph. Carries the trace renderer, where there is one.

    Made and owned by the scene graph on the render thread. Only a scene graph that draws with
    OpenGL gets a renderer; under any other graphics API renderNode() is null and no trace is shown.
*/
class CHARTS_EXPORT ChartNode : public QSGRootNode
{
public:
    /*! Makes the renderer, if \a window draws with OpenGL. Its context has to be current then. */
    explicit ChartNode(QQuickWindow *window);
    ~ChartNode() override;

    /*! The renderer, owned by the node tree, or null. */
    [[nodiscard]] AbstractRenderNode *renderNode() const { return m_renderNode; }

private:
    QQuickWindow *m_window = nullptr;
    AbstractRenderNode *m_renderNode = nullptr;
};

} // namespace Charts

#endif
