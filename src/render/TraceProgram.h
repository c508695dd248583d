// SPDX-License-Identifier: MIT
#ifndef CHARTS_TRACEPROGRAM_H
#define CHARTS_TRACEPROGRAM_H

#include <QtGui/QMatrix4x4>
#include <QtGui/QVector3D>
#include <QtOpenGL/QOpenGLShaderProgram>

#include <optional>

namespace Charts {

/*!
    \internal
    The shader program that draws traces, with its uniforms by name. Lives on the render thread;
    made, used and destroyed with the OpenGL context current. Compile errors are not reported:
    the sources are fixed, and a driver that refuses them shows no traces.

    Most traces of a chart differ in their colour only, so that what a uniform holds already is not sent
    to the driver again.
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
    void setColor(const QVector3D &color) { m_color.set(m_program, color); }
    void setMatrix(const QMatrix4x4 &matrix) { m_matrix.set(m_program, matrix); }
    void setPointSize(float diameter) { m_pointSize.set(m_program, diameter); }
    void enableBoundingX(bool enabled) { m_enableBoundingX.set(m_program, enabled); }
    void enableBoundingY(bool enabled) { m_enableBoundingY.set(m_program, enabled); }
    void setBoundsX(float min, float max);
    void setBoundsY(float min, float max);

private:
    /*! A uniform and the value that it holds, once it has been set. */
    template<typename Value>
    class Uniform
    {
    public:
        void locate(const QOpenGLShaderProgram &program, const char *name)
        {
            m_location = program.uniformLocation(name);
        }

        void set(QOpenGLShaderProgram &program, const Value &value)
        {
            if (m_value == value)
                return;
            m_value = value;
            program.setUniformValue(m_location, value);
        }

    private:
        int m_location = -1;
        std::optional<Value> m_value;
    };

    QOpenGLShaderProgram m_program;
    Uniform<QVector3D> m_color;
    Uniform<QMatrix4x4> m_matrix;
    Uniform<float> m_minY;
    Uniform<float> m_maxY;
    Uniform<GLint> m_enableBoundingY;
    Uniform<float> m_minX;
    Uniform<float> m_maxX;
    Uniform<GLint> m_enableBoundingX;
    Uniform<float> m_pointSize;
};

} // namespace Charts

#endif
