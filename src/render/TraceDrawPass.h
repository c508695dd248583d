// SPDX-License-Identifier: MIT
#ifndef CHARTS_TRACEDRAWPASS_H
#define CHARTS_TRACEDRAWPASS_H

#include <QtCore/QSize>

QT_BEGIN_NAMESPACE
class QOpenGLFunctions;
class QVector3D;
QT_END_NAMESPACE

namespace Charts {

class AbstractTrace;
class TraceBuffers;
class TraceData;
class TraceProgram;

/*!
    \internal
    Draws traces one by one into the bound framebuffer: viewport, colour, bounding, upload, one draw
    call a matrix. A short-lived object on the render thread; program and vertex array are bound.
*/
class TraceDrawPass
{
public:
    TraceDrawPass(QOpenGLFunctions &gl, TraceProgram &program, TraceBuffers &buffers,
            const QSize &textureSize);

    /*! Pixels by which every line is drawn wider than its trace says. */
    void setExtraLineWidth(float pixels) { m_extraLineWidth = pixels; }

    void draw(const AbstractTrace *trace, TraceData &data, const QVector3D &color);

private:
    struct PixelSize
    {
        float x = 0.0F;
        float y = 0.0F;
    };

    PixelSize applyViewport(const TraceData &data);
    template<typename Matrices>
    void drawFilled(const TraceData &data, const Matrices &matrices, int pointCount);

    QOpenGLFunctions &m_gl;
    TraceProgram &m_program;
    TraceBuffers &m_buffers;
    QSize m_textureSize;
    float m_extraLineWidth = 0.0F;
};

} // namespace Charts

#endif
