// SPDX-License-Identifier: MIT
#ifndef CHARTS_OPENGLRENDERNODE_H
#define CHARTS_OPENGLRENDERNODE_H

#include "AbstractRenderNode.h"
#include "ChartsExport.h"
#include "ViewPort.h"

#include <QtCore/QObject>
#include <QtCore/QPointer>
#include <QtGui/QMatrix4x4>
#include <QtGui/QOpenGLFunctions>
#include <QtOpenGL/QOpenGLVertexArrayObject>

#include <array>

QT_BEGIN_NAMESPACE
class QQuickWindow;
class QSGImageNode;
QT_END_NAMESPACE

namespace Charts {

class TraceBuffers;
class TraceFramebuffers;
class TracePicker;
class TraceProgram;

/*!
    \class Charts::OpenGLRenderNode
    \brief Draws a chart's traces with OpenGL into an off-screen image and shows it.

    Made by ChartNode during synchronisation and owned by the node tree. Everything here runs on the
    render thread with the scene graph's OpenGL context current: the interface's operations while
    the GUI thread is blocked, handleMouseEvents() from QQuickWindow::beforeRendering.

    The GL objects come into being with the first render() that has traces to draw.
*/
class CHARTS_EXPORT OpenGLRenderNode : public QObject,
                                       public AbstractRenderNode,
                                       private QOpenGLFunctions
{
    Q_OBJECT

public:
    /*! Makes a renderer for \a window, whose context has to be current. */
    explicit OpenGLRenderNode(QQuickWindow *window);
    ~OpenGLRenderNode() override;

    /*! Sets \a size and forces new framebuffers, also for the size that is set already. */
    void setTextureSize(const QSize &size) override;
    [[nodiscard]] QSize textureSize() const override { return m_textureSize; }
    void setRect(const QRectF &rect) override;
    /*! Requests a new picture when the list of \a traces changed (\a tracesDirty) or a listed trace
        is dirty. Looks for one dirty trace only and clears that one's flag: the pass draws all of
        them anyway. */
    void setTraceData(bool tracesDirty, const std::vector<AbstractTrace *> &traces) override;
    void setAntialiasing(bool enabled) override;
    void pushMouseEvents(std::vector<std::unique_ptr<QMouseEvent>> &&events) override;
    [[nodiscard]] std::vector<MouseEventResponse> takeMouseEventResponses() override;
    void render() override;

    /*! Makes framebuffers, program and vertex array in the current context. */
    void initGL();
    /*! Replaces the framebuffers by ones of textureSize() and shows them. */
    void recreateFBO();
    /*! Draws the visible image and marks the node for the scene graph to show it. */
    void renderVisual();
    /*! Draws the image that picking reads. */
    void renderSelection();
    /*! Draws every visible trace into the bound framebuffer, in the traces' colours or, for
        \a selection, in colours that stand for their number. */
    void renderGL(bool selection);

    /*! Resolves the queued events against the selection image. */
    void handleMouseEvents();
    /*! The trace under \a event, or null. The position is in pixels of the texture from its top
        left. */
    [[nodiscard]] AbstractTrace *findTraceAtEvent(QMouseEvent *event);

    /*! Maps the data rectangle \a viewPort onto normalised device coordinates. */
    [[nodiscard]] QMatrix4x4 mainMatrix(const ViewPort &viewPort) const;
    /*! The matrices that flatten what lies right and left of \a viewPort onto the lines \a pixel
        (data units) inside its edges. The name is published as it stands. */
    [[nodiscard]] std::array<QMatrix4x4, 2> boundingXMatricies(
            const ViewPort &viewPort, float pixel) const;
    /*! The same for what lies above and below \a viewPort, with \a pixel in the units of y. */
    [[nodiscard]] std::array<QMatrix4x4, 2> boundingYMatricies(
            const ViewPort &viewPort, float pixel) const;

private:
    [[nodiscard]] QPointer<AbstractTrace> pick(const QMouseEvent &event);
    void drawTraces(bool selection);
    void hideImage();

    QQuickWindow *m_window = nullptr;
    QSize m_textureSize = {1, 1};
    QSGImageNode *m_imageNode = nullptr;
    std::vector<AbstractTrace *> m_traces;
    bool m_fboDirty = true;
    QRectF m_rect;
    bool m_needsRender = true;
    bool m_antialiasing = false;
    bool m_selectionDirty = true;

    // Destroyed from the bottom up: events and answers, buffers, vertex array, program, images.
    std::unique_ptr<TraceFramebuffers> m_framebuffers;
    std::unique_ptr<TraceProgram> m_program;
    QOpenGLVertexArrayObject m_vao;
    std::unique_ptr<TraceBuffers> m_buffers;
    std::unique_ptr<TracePicker> m_picker;
};

} // namespace Charts

#endif
