// SPDX-License-Identifier: MIT
#include "OpenGLRenderNode.h"

#include "AbstractTrace.h"
#include "ThreadCheck.h"
#include "TraceBuffers.h"
#include "TraceData.h"
#include "TraceDrawPass.h"
#include "TraceFramebuffers.h"
#include "TraceMatrices.h"
#include "TracePicker.h"
#include "TraceProgram.h"

#include <QtGui/QOpenGLContext>
#include <QtGui/QVector3D>
#include <QtQuick/QQuickOpenGLUtils>
#include <QtQuick/QQuickWindow>
#include <QtQuick/QSGImageNode>

#include <algorithm>
#include <cmath>

namespace Charts {

namespace {

// Not defined by the OpenGL ES headers.
constexpr GLenum glProgramPointSize = 0x8642;
// Thin lines are hard to hit: in the selection image they are this much wider.
constexpr float selectionExtraLineWidth = 5.0F;

bool isNull(const QRectF &rect)
{
    const auto isZero = [](double value) { return std::abs(value) <= 1e-12; };
    return isZero(rect.x()) && isZero(rect.y()) && isZero(rect.width()) && isZero(rect.height());
}

QVector3D rgb(const QColor &color)
{
    // Once, not for each component.
    const QColor rgb = color.toRgb();
    return {rgb.redF(), rgb.greenF(), rgb.blueF()};
}

} // namespace

OpenGLRenderNode::OpenGLRenderNode(QQuickWindow *window)
    : m_window(window)
    , m_framebuffers(std::make_unique<TraceFramebuffers>())
    , m_buffers(std::make_unique<TraceBuffers>())
    , m_picker(std::make_unique<TracePicker>())
{
    initializeOpenGLFunctions();
    // This object lives on the render thread, where the signal is emitted: the call is direct.
    connect(m_window, &QQuickWindow::beforeRendering, this, &OpenGLRenderNode::handleMouseEvents);
}

OpenGLRenderNode::~OpenGLRenderNode() = default;

void OpenGLRenderNode::setTextureSize(const QSize &size)
{
    Q_ASSERT(isOnThreadOf(this));
    m_textureSize = size;
    m_fboDirty = true;
    m_needsRender = true;
    m_selectionDirty = true;
}

void OpenGLRenderNode::setRect(const QRectF &rect)
{
    Q_ASSERT(isOnThreadOf(this));
    m_rect = rect;
    if (m_imageNode)
        m_imageNode->setRect(rect);
}

void OpenGLRenderNode::setTraceData(bool tracesDirty, const std::vector<AbstractTrace *> &traces)
{
    Q_ASSERT(isOnThreadOf(this));
    if (traces != m_traces) {
        m_buffers->forgetOrder(traces.size());
        m_traces = traces;
    }
    if (tracesDirty) {
        m_buffers->retain(m_traces);
    } else {
        const auto dirty = std::find_if(m_traces.begin(), m_traces.end(), [](AbstractTrace *trace) {
            const TraceData *data = trace->traceData();
            return !data->dirtyRange().isEmpty() || data->isDirty();
        });
        if (dirty == m_traces.end())
            return;
        (*dirty)->traceData()->clearDirty();
    }
    markDirty(QSGNode::DirtyMaterial);
    m_needsRender = true;
    m_selectionDirty = true;
}

void OpenGLRenderNode::setAntialiasing(bool enabled)
{
    Q_ASSERT(isOnThreadOf(this));
    if (enabled == m_antialiasing)
        return;
    m_antialiasing = enabled;
    m_fboDirty = true;
    m_needsRender = true;
}

void OpenGLRenderNode::pushMouseEvents(std::vector<std::unique_ptr<QMouseEvent>> &&events)
{
    Q_ASSERT(isOnThreadOf(this));
    if (events.empty())
        return;
    m_picker->push(std::move(events));
    markDirty(QSGNode::DirtyMaterial);
}

std::vector<MouseEventResponse> OpenGLRenderNode::takeMouseEventResponses()
{
    Q_ASSERT(isOnThreadOf(this));
    return m_picker->takeResponses();
}

void OpenGLRenderNode::render()
{
    Q_ASSERT(isOnThreadOf(this));
    QQuickOpenGLUtils::resetOpenGLState();
    if (m_needsRender) {
        if (m_traces.empty()) {
            if (m_imageNode && !isNull(m_imageNode->rect()))
                hideImage();
        } else {
            if (!m_program)
                initGL();
            if (m_fboDirty)
                recreateFBO();
            renderVisual();
            if (m_picker->hasEvents() && m_selectionDirty)
                renderSelection();
        }
        m_needsRender = false;
    }
    QQuickOpenGLUtils::resetOpenGLState();
}

void OpenGLRenderNode::renderVisual()
{
    Q_ASSERT(isOnThreadOf(this));
    if (m_framebuffers->isUsable()) {
        m_framebuffers->render()->bind();
        renderGL(false);
        m_framebuffers->resolve();
    }
    markDirty(QSGNode::DirtyMaterial);
}

void OpenGLRenderNode::renderSelection()
{
    Q_ASSERT(isOnThreadOf(this));
    m_picker->begin(m_traces.size());
    if (m_framebuffers->isUsable()) {
        m_framebuffers->selection()->bind();
        renderGL(true);
    }
    m_selectionDirty = false;
}

void OpenGLRenderNode::renderGL(bool selection)
{
    Q_ASSERT(isOnThreadOf(this));
    glClearColor(0.0F, 0.0F, 0.0F, 0.0F);
    if (!m_vao.isCreated())
        m_vao.create();
    m_vao.bind();
    if (m_program->isUsable())
        m_program->bind();
    glClear(GL_COLOR_BUFFER_BIT);
    if (!m_program->isUsable()) {
        m_vao.release();
        return;
    }
    glEnableVertexAttribArray(TraceProgram::PointsLocation);
    glEnableVertexAttribArray(TraceProgram::OpacityLocation);

    drawTraces(selection);
    m_vao.release();
}

void OpenGLRenderNode::drawTraces(bool selection)
{
    TraceDrawPass pass(*this, *m_program, m_textureSize);
    if (selection)
        pass.setExtraLineWidth(selectionExtraLineWidth);

    std::size_t drawnCount = 0;
    for (std::size_t i = 0; i < m_traces.size(); ++i) {
        AbstractTrace *trace = m_traces[i];
        TraceData &data = *trace->traceData();
        if (!data.visible())
            continue;
        if (selection)
            m_picker->record(drawnCount, trace);
        pass.draw(m_buffers->bufferOf(trace, i), data,
                selection ? TracePicker::colorOf(drawnCount) : rgb(data.color()));
        ++drawnCount;
    }
}

void OpenGLRenderNode::handleMouseEvents()
{
    Q_ASSERT(isOnThreadOf(this));
    if (!m_picker->hasEvents())
        return;
    m_window->beginExternalCommands();
    m_picker->resolve([this](QMouseEvent *event) { return pick(*event); });
    QOpenGLFramebufferObject::bindDefault();
    m_window->endExternalCommands();
}

AbstractTrace *OpenGLRenderNode::findTraceAtEvent(QMouseEvent *event)
{
    Q_ASSERT(isOnThreadOf(this));
    return pick(*event);
}

QPointer<AbstractTrace> OpenGLRenderNode::pick(const QMouseEvent &event)
{
    if (m_traces.empty() || !m_framebuffers->isUsable())
        return nullptr;
    return m_picker->findTrace(*this, m_framebuffers->selection(), event);
}

QMatrix4x4 OpenGLRenderNode::mainMatrix(const ViewPort &viewPort) const
{
    return TraceMatrices::main(viewPort);
}

std::array<QMatrix4x4, 2> OpenGLRenderNode::boundingXMatricies(
        const ViewPort &viewPort, float pixel) const
{
    return TraceMatrices::boundingX(mainMatrix(viewPort), viewPort, pixel);
}

std::array<QMatrix4x4, 2> OpenGLRenderNode::boundingYMatricies(
        const ViewPort &viewPort, float pixel) const
{
    return TraceMatrices::boundingY(mainMatrix(viewPort), viewPort, pixel);
}

void OpenGLRenderNode::initGL()
{
    Q_ASSERT(isOnThreadOf(this));
    recreateFBO();
    m_program = std::make_unique<TraceProgram>();
    if (m_vao.isCreated() || m_vao.create())
        m_vao.bind();
    // Desktop OpenGL takes the point size from the vertex shader only when told to.
    if (!QOpenGLContext::currentContext()->isOpenGLES())
        glEnable(glProgramPointSize);
    m_program->release();
    m_vao.release();
}

void OpenGLRenderNode::recreateFBO()
{
    Q_ASSERT(isOnThreadOf(this));
    m_picker->forgetImage();
    QSGTexture *texture = m_framebuffers->create(m_window, m_textureSize, m_antialiasing);
    if (!m_imageNode) {
        m_imageNode = m_window->createImageNode();
        m_imageNode->setFiltering(QSGTexture::Linear);
        // Framebuffer rows run bottom-up.
        m_imageNode->setTextureCoordinatesTransform(QSGImageNode::MirrorVertically);
        m_imageNode->setFlag(QSGNode::OwnedByParent);
        if (m_rect.width() > 0.0 && m_rect.height() > 0.0)
            m_imageNode->setRect(m_rect);
        appendChildNode(m_imageNode);
    }
    m_imageNode->setTexture(texture);
    m_framebuffers->releaseOldTexture();
    m_fboDirty = false;
}

void OpenGLRenderNode::hideImage()
{
    if (m_framebuffers->isUsable()) {
        glClearColor(0.0F, 0.0F, 0.0F, 0.0F);
        m_framebuffers->render()->bind();
        glClear(GL_COLOR_BUFFER_BIT);
    }
    setRect(QRectF());
    renderVisual();
}

} // namespace Charts
