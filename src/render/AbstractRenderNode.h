// SPDX-License-Identifier: MIT
#ifndef CHARTS_ABSTRACTRENDERNODE_H
#define CHARTS_ABSTRACTRENDERNODE_H

#include "ChartsExport.h"
#include "MouseEventResponse.h"

#include <QtCore/QRectF>
#include <QtCore/QSize>
#include <QtQuick/QSGNode>

#include <memory>
#include <vector>

namespace Charts {

class AbstractTrace;

/*!
    \class Charts::AbstractRenderNode
    \brief What a chart asks of its trace renderer.

    A renderer is a node of the scene graph itself and shows its picture through a child node. The
    node tree owns it. Every operation runs on the render thread, during synchronisation, while
    the GUI thread is blocked.
*/
class CHARTS_EXPORT AbstractRenderNode : public QSGRootNode
{
public:
    /*! Constructs a node without children. */
    AbstractRenderNode();
    ~AbstractRenderNode() override;

    /*! Makes \a size, in pixels, that of the off-screen picture. */
    virtual void setTextureSize(const QSize &size) = 0;
    [[nodiscard]] virtual QSize textureSize() const = 0;
    /*! Makes \a rect, in item coordinates, the place where the picture is shown. */
    virtual void setRect(const QRectF &rect) = 0;
    /*! Hands over the traces in drawing order. \a tracesDirty tells that the list itself is not the
        one handed over before. */
    virtual void setTraceData(bool tracesDirty, const std::vector<AbstractTrace *> &traces) = 0;
    /*! Makes the picture smooth if \a enabled. */
    virtual void setAntialiasing(bool enabled) = 0;
    /*! Takes \a events, none of them null, over to be answered in their order. The vector is left
        empty. Events alone request no new selection image. */
    virtual void pushMouseEvents(std::vector<std::unique_ptr<QMouseEvent>> &&events) = 0;
    /*! Hands out the answers gathered so far; the renderer keeps none of them. */
    virtual std::vector<MouseEventResponse> takeMouseEventResponses() = 0;
    /*! Draws when something changed. */
    virtual void render() = 0;
};

} // namespace Charts

#endif
