// SPDX-License-Identifier: MIT
#include "TraceDrawPass.h"

#include "TraceData.h"
#include "TraceMatrices.h"
#include "TraceProgram.h"

#include <QtGui/QMatrix4x4>
#include <QtGui/QOpenGLFunctions>
#include <QtGui/QVector3D>

#include <algorithm>
#include <cstddef>

namespace Charts {

TraceDrawPass::TraceDrawPass(QOpenGLFunctions &gl, TraceProgram &program, const QSize &textureSize)
    : m_gl(gl)
    , m_program(program)
    , m_textureSize(textureSize)
    , m_mainMatrix(TraceMatrices::main(m_viewPort))
{
}

TraceDrawPass::~TraceDrawPass()
{
    TraceBuffers::releaseAny();
}

void TraceDrawPass::draw(TraceBuffers::Buffer &buffer, TraceData &data, const QVector3D &color)
{
    const ViewPort &viewPort = data.viewPort();
    const PixelSize pixel = applyViewport(data);
    m_program.setColor(color);

    const QMatrix4x4 &main = mainMatrix(viewPort);
    Outside outsideY;
    Outside outsideX;

    // Clamping stops one pixel inside the edge, so that what lies outside stays visible on it.
    m_program.enableBoundingY(data.boundingY() == BoundingMethod::Clamp);
    if (data.boundingY() == BoundingMethod::Clamp)
        m_program.setBoundsY(viewPort.y + pixel.y, viewPort.y + viewPort.height - pixel.y);
    else if (data.boundingY() == BoundingMethod::ExtraMatrices)
        outsideY = TraceMatrices::boundingY(main, viewPort, pixel.y);

    m_program.enableBoundingX(data.boundingX() == BoundingMethod::Clamp);
    if (data.boundingX() == BoundingMethod::Clamp)
        m_program.setBoundsX(viewPort.x + pixel.x, viewPort.x + viewPort.width - pixel.x);
    else if (data.boundingX() == BoundingMethod::ExtraMatrices)
        outsideX = TraceMatrices::boundingX(main, viewPort, pixel.x);

    buffer.update(data);
    m_gl.glVertexAttribPointer(TraceProgram::PointsLocation, 2, GL_FLOAT, GL_FALSE,
            sizeof(TracePoint), reinterpret_cast<const void *>(offsetof(TracePoint, x)));
    m_gl.glVertexAttribPointer(TraceProgram::OpacityLocation, 1, GL_FLOAT, GL_FALSE,
            sizeof(TracePoint), reinterpret_cast<const void *>(offsetof(TracePoint, opacity)));

    const Vertices vertices = filledVertices(data, buffer.pointCount());
    draw(vertices, main);
    for (const Outside *outside : {&outsideY, &outsideX}) {
        if (!*outside)
            continue;
        for (const QMatrix4x4 &matrix : **outside)
            draw(vertices, matrix);
    }
}

const QMatrix4x4 &TraceDrawPass::mainMatrix(const ViewPort &viewPort)
{
    if (viewPort != m_viewPort) {
        m_viewPort = viewPort;
        m_mainMatrix = TraceMatrices::main(viewPort);
    }
    return m_mainMatrix;
}

TraceDrawPass::PixelSize TraceDrawPass::applyViewport(const TraceData &data)
{
    QRect area(QPoint(0, 0), m_textureSize);
    if (data.squaredViewPort()) {
        const int side = std::min(area.width(), area.height());
        area = QRect((area.width() - side) / 2, (area.height() - side) / 2, side, side);
    }
    if (area != m_area) {
        m_area = area;
        m_gl.glViewport(area.x(), area.y(), area.width(), area.height());
    }
    const ViewPort &viewPort = data.viewPort();
    return {viewPort.width / static_cast<float>(area.width()),
            viewPort.height / static_cast<float>(area.height())};
}

void TraceDrawPass::setLineWidth(float width)
{
    // Others are an error, which leaves the width before in effect.
    const bool isPossible = width > 0.0F;
    if (!isPossible || width == m_lineWidth)
        return;
    m_lineWidth = width;
    m_gl.glLineWidth(width);
}

TraceDrawPass::Vertices TraceDrawPass::filledVertices(const TraceData &data, int pointCount)
{
    const bool isLine = data.drawType() == DrawType::LineStrip;
    if (data.drawType() == DrawType::Points)
        m_program.setPointSize(data.width());

    // Whatever the filled ranges are, the whole array is drawn in one call; but never more of it
    // than the buffer holds, should a writer have forgotten to set the size.
    const int count = std::min(data.filledRange().size(), pointCount);
    if (data.filledRange().isEmpty() || count <= 0)
        return {};
    if (isLine)
        setLineWidth(data.width() + m_extraLineWidth);
    return {isLine ? GLenum{GL_LINE_STRIP} : GLenum{GL_POINTS}, count};
}

void TraceDrawPass::draw(const Vertices &vertices, const QMatrix4x4 &matrix)
{
    if (vertices.count == 0)
        return;
    m_program.setMatrix(matrix);
    m_gl.glDrawArrays(vertices.mode, 0, vertices.count);
}

} // namespace Charts
