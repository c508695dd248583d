// SPDX-License-Identifier: MIT
#ifndef CHARTS_TRACEDRAWPASS_H
#define CHARTS_TRACEDRAWPASS_H

#include "TraceBuffers.h"
#include "ViewPort.h"

#include <QtCore/QRect>
#include <QtCore/QSize>
#include <QtGui/QMatrix4x4>
#include <QtGui/qopengl.h>

#include <array>
#include <optional>

QT_BEGIN_NAMESPACE
class QOpenGLFunctions;
class QVector3D;
QT_END_NAMESPACE

namespace Charts {

class TraceData;
class TraceProgram;

/*!
    \internal
    Draws traces one by one into the bound framebuffer: viewport, colour, bounding, upload, one draw
    call a matrix. A short-lived object on the render thread; program and vertex array are bound.

    Traces that follow each other are mostly alike. What they share is set once.
*/
class TraceDrawPass
{
public:
    TraceDrawPass(QOpenGLFunctions &gl, TraceProgram &program, const QSize &textureSize);
    ~TraceDrawPass();
    TraceDrawPass(const TraceDrawPass &) = delete;
    TraceDrawPass &operator=(const TraceDrawPass &) = delete;

    /*! Pixels by which every line is drawn wider than its trace says. */
    void setExtraLineWidth(float pixels) { m_extraLineWidth = pixels; }

    void draw(TraceBuffers::Buffer &buffer, TraceData &data, const QVector3D &color);

private:
    struct PixelSize
    {
        float x = 0.0F;
        float y = 0.0F;
    };

    struct Vertices
    {
        GLenum mode = 0;
        int count = 0; // 0 for none
    };

    /*! The matrices for what lies beyond the two edges of an axis, where it is drawn. */
    using Outside = std::optional<std::array<QMatrix4x4, 2>>;

    PixelSize applyViewport(const TraceData &data);
    [[nodiscard]] const QMatrix4x4 &mainMatrix(const ViewPort &viewPort);
    void setLineWidth(float width);
    /*! What is to be drawn, and sets how. */
    [[nodiscard]] Vertices filledVertices(const TraceData &data, int pointCount);
    void draw(const Vertices &vertices, const QMatrix4x4 &matrix);

    QOpenGLFunctions &m_gl;
    TraceProgram &m_program;
    QSize m_textureSize;
    float m_extraLineWidth = 0.0F;

    // What is set at the driver, and what the matrix was made for. At first nothing is.
    QRect m_area;
    float m_lineWidth = 0.0F;
    ViewPort m_viewPort;
    QMatrix4x4 m_mainMatrix;
};

} // namespace Charts

#endif
