// SPDX-License-Identifier: MIT
#ifndef CHARTS_TRACEPROGRAM_H
#define CHARTS_TRACEPROGRAM_H

#include <QtOpenGL/QOpenGLShaderProgram>

QT_BEGIN_NAMESPACE
class QMatrix4x4;
class QVector3D;
QT_END_NAMESPACE

namespace Charts {

/*!
    \internal
    The shader program that draws traces, with its uniforms by name. Lives on the render thread;
    made, used and destroyed with the OpenGL context current. Compile errors are not reported:
    the sources are fixed, and a driver that refuses them shows no traces.
*/
class TraceProgram
{
public:
    /*! Attribute locations of the vertex layout (TracePoint). */
    static constexpr int PointsLocation = 0;
    static constexpr int OpacityLocation = 1;

    /*! Compiles the variant that fits the current context, links it and leaves it bound. */
    TraceProgram();

    /*! Whether the driver took it. Binding one that it refused would compile it again each time. */
    [[nodiscard]] bool isUsable() const { return m_program.isLinked(); }
    void bind() { m_program.bind(); }
    void release() { m_program.release(); }

    // The program must be bound.
    void setColor(const QVector3D &color);
    void setMatrix(const QMatrix4x4 &matrix);
    void setPointSize(float diameter);
    void enableBoundingX(bool enabled);
    void enableBoundingY(bool enabled);
    void setBoundsX(float min, float max);
    void setBoundsY(float min, float max);

private:
    QOpenGLShaderProgram m_program;
    int m_color = -1;
    int m_matrix = -1;
    int m_minY = -1;
    int m_maxY = -1;
    int m_enableBoundingY = -1;
    int m_minX = -1;
    int m_maxX = -1;
    int m_enableBoundingX = -1;
    int m_pointSize = -1;
};

} // namespace Charts

#endif
