// SPDX-License-Identifier: MIT
#include "TraceProgram.h"

#include <QtGui/QOpenGLContext>

namespace Charts {

namespace {

// clang-format off
constexpr const char *desktopVertexSource =
        "#version 150\n"
        "in vec2 points;\n"
        "in float opacity;\n"
        "out float _opacity;\n"
        "uniform mat4 matrix;\n"
        "uniform float minX;\n"
        "uniform float maxX;\n"
        "uniform bool enableBoundingX;\n"
        "uniform float minY;\n"
        "uniform float maxY;\n"
        "uniform bool enableBoundingY;\n"
        "uniform float pointSize;\n"
        "void main() {\n"
        "  vec2 normalPoint = points;\n"
        "  _opacity = opacity;\n"
        "  if (enableBoundingX) \n"
        "\t\tnormalPoint.x = clamp(normalPoint.x, minX, maxX);\n"
        "  if (enableBoundingY) \n"
        "\t\tnormalPoint.y = clamp(normalPoint.y, minY, maxY);\n"
        "  gl_Position = matrix * vec4(normalPoint, 0, 1);\n"
        "  gl_Position.z = min(gl_Position.z, 1.);\n"
        "  gl_PointSize = pointSize;\n"
        "}";

constexpr const char *desktopFragmentSource =
        "#version 150\n"
        "uniform vec3 color;\n"
        "in float _opacity;\n"
        "out vec4 fragColor;\n"
        "void main() {\n"
        "  if (_opacity < 0.1)\n"
        "    discard;\n"
        "  fragColor = vec4(color,1);\n"
        "}\n";

constexpr const char *esVertexSource =
        "attribute highp vec2 points;\n"
        "attribute highp float opacity;\n"
        "varying highp float _opacity;\n"
        "uniform highp mat4 matrix;\n"
        "uniform highp float minX;\n"
        "uniform highp float maxX;\n"
        "uniform bool enableBoundingX;\n"
        "uniform highp float minY;\n"
        "uniform highp float maxY;\n"
        "uniform bool enableBoundingY;\n"
        "uniform highp float pointSize;\n"
        "void main() {\n"
        "  vec2 normalPoint = points;\n"
        "  _opacity = opacity;\n"
        "  if (enableBoundingX) \n"
        "\t\tnormalPoint.x = clamp(normalPoint.x, minX, maxX);\n"
        "  if (enableBoundingY) \n"
        "\t\tnormalPoint.y = clamp(normalPoint.y, minY, maxY);\n"
        "  gl_Position = matrix * vec4(normalPoint, 0, 1);\n"
        "  gl_Position.z = min(gl_Position.z, 1.);\n"
        "  gl_PointSize = pointSize;\n"
        "}";

constexpr const char *esFragmentSource =
        "uniform highp vec3 color;\n"
        "varying highp float _opacity;\n"
        "void main() {\n"
        "  if (_opacity < 0.1)\n"
        "    discard;\n"
        "  gl_FragColor = vec4(color, 1);\n"
        "}\n";
// clang-format on

} // namespace

TraceProgram::TraceProgram()
{
    // Only a core profile lacks the old GLSL; everything else, ES included, takes the ES form.
    const auto profile = QOpenGLContext::currentContext()->format().profile();
    const bool isCore = profile == QSurfaceFormat::CoreProfile;
    m_program.addShaderFromSourceCode(
            QOpenGLShader::Vertex, isCore ? desktopVertexSource : esVertexSource);
    m_program.addShaderFromSourceCode(
            QOpenGLShader::Fragment, isCore ? desktopFragmentSource : esFragmentSource);
    m_program.bindAttributeLocation("points", PointsLocation);
    m_program.bindAttributeLocation("opacity", OpacityLocation);
    if (!m_program.link())
        return;
    m_program.bind();

    m_color.locate(m_program, "color");
    m_matrix.locate(m_program, "matrix");
    m_minY.locate(m_program, "minY");
    m_maxY.locate(m_program, "maxY");
    m_enableBoundingY.locate(m_program, "enableBoundingY");
    m_minX.locate(m_program, "minX");
    m_maxX.locate(m_program, "maxX");
    m_enableBoundingX.locate(m_program, "enableBoundingX");
    m_pointSize.locate(m_program, "pointSize");
}

void TraceProgram::setBoundsX(float min, float max)
{
    m_minX.set(m_program, min);
    m_maxX.set(m_program, max);
}

void TraceProgram::setBoundsY(float min, float max)
{
    m_minY.set(m_program, min);
    m_maxY.set(m_program, max);
}

} // namespace Charts
