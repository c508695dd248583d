// SPDX-License-Identifier: MIT
#include "FloorRenderer.h"

#include "SignalPoints.h"

#include <QtGui/QOpenGLContext>

#include <array>
#include <cstddef>

namespace {

using Mode = BenchmarkOptions::Mode;

constexpr int samples = 8;
constexpr GLuint positionLocation = 0;
constexpr GLuint opacityLocation = 1;

const char *const traceVertexShader = R"(
in vec2 position;
in float opacity;
out float seen;
uniform mat4 matrix;
void main() {
    seen = opacity;
    gl_Position = matrix * vec4(position, 0.0, 1.0);
})";

const char *const traceFragmentShader = R"(
in float seen;
out vec4 fragment;
uniform vec3 color;
void main() {
    if (seen < 0.1)
        discard;
    fragment = vec4(color, 1.0);
})";

const char *const imageVertexShader = R"(
in vec2 position;
out vec2 place;
void main() {
    place = position * 0.5 + 0.5;
    gl_Position = vec4(position, 0.0, 1.0);
})";

const char *const imageFragmentShader = R"(
in vec2 place;
out vec4 fragment;
uniform sampler2D image;
void main() {
    fragment = texture(image, place);
})";

constexpr std::array<float, 8> quadCorners = {-1.0F, -1.0F, 1.0F, -1.0F, -1.0F, 1.0F, 1.0F, 1.0F};

} // namespace

FloorRenderer::Trace::Trace(const BenchmarkOptions &options, int index)
    : source(options, index)
    , color(SignalSource::colorOf(index, false))
    , points(static_cast<std::size_t>(options.points))
    , frame(source.begin())
{
    writePoints(points, frame.written[0], source);
    // Uploaded as a whole when the buffer is made.
    frame.written = {};
}

FloorRenderer::FloorRenderer(const BenchmarkOptions &options)
    : m_options(options)
{
    initializeOpenGLFunctions();
    QOpenGLFramebufferObjectFormat format;
    format.setSamples(options.samples ? samples : 0);
    m_render = std::make_unique<QOpenGLFramebufferObject>(options.size, format);
    if (options.samples)
        m_resolve = std::make_unique<QOpenGLFramebufferObject>(options.size);
    // As the scene graph shows it.
    glBindTexture(GL_TEXTURE_2D, (m_resolve ? m_resolve : m_render)->texture());
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, GL_LINEAR);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, GL_LINEAR);

    build(m_traceProgram, traceVertexShader, traceFragmentShader);
    m_color = m_traceProgram.uniformLocation("color");
    m_matrix = m_traceProgram.uniformLocation("matrix");
    build(m_imageProgram, imageVertexShader, imageFragmentShader);

    glGenVertexArrays(1, &m_quadArray);
    glBindVertexArray(m_quadArray);
    glGenBuffers(1, &m_quad);
    glBindBuffer(GL_ARRAY_BUFFER, m_quad);
    glBufferData(GL_ARRAY_BUFFER, sizeof(quadCorners), quadCorners.data(), GL_STATIC_DRAW);
    glVertexAttribPointer(positionLocation, 2, GL_FLOAT, GL_FALSE, 0, nullptr);
    glEnableVertexAttribArray(positionLocation);

    m_traces.reserve(static_cast<std::size_t>(options.traces));
    for (int i = 0; i < options.traces; ++i)
        make(m_traces.emplace_back(options, i));
}

FloorRenderer::~FloorRenderer()
{
    for (const Trace &trace : m_traces) {
        glDeleteVertexArrays(1, &trace.vertexArray);
        glDeleteBuffers(1, &trace.buffer);
    }
    glDeleteVertexArrays(1, &m_quadArray);
    glDeleteBuffers(1, &m_quad);
}

void FloorRenderer::build(QOpenGLShaderProgram &program, const char *vertex, const char *fragment)
{
    const QByteArray head = QOpenGLContext::currentContext()->isOpenGLES()
                                    ? QByteArrayLiteral("#version 300 es\nprecision highp float;")
                                    : QByteArrayLiteral("#version 150");
    program.addShaderFromSourceCode(QOpenGLShader::Vertex, head + vertex);
    program.addShaderFromSourceCode(QOpenGLShader::Fragment, head + fragment);
    program.bindAttributeLocation("position", positionLocation);
    program.bindAttributeLocation("opacity", opacityLocation);
    program.link();
}

void FloorRenderer::make(Trace &trace)
{
    glGenVertexArrays(1, &trace.vertexArray);
    glBindVertexArray(trace.vertexArray);
    glGenBuffers(1, &trace.buffer);
    glBindBuffer(GL_ARRAY_BUFFER, trace.buffer);
    const auto bytes = static_cast<GLsizeiptr>(trace.points.size() * sizeof(Charts::TracePoint));
    glBufferData(GL_ARRAY_BUFFER, bytes, trace.points.data(), GL_DYNAMIC_DRAW);
    glVertexAttribPointer(positionLocation, 2, GL_FLOAT, GL_FALSE, sizeof(Charts::TracePoint),
            reinterpret_cast<const void *>(offsetof(Charts::TracePoint, x)));
    glVertexAttribPointer(opacityLocation, 1, GL_FLOAT, GL_FALSE, sizeof(Charts::TracePoint),
            reinterpret_cast<const void *>(offsetof(Charts::TracePoint, opacity)));
    glEnableVertexAttribArray(positionLocation);
    glEnableVertexAttribArray(opacityLocation);
}

void FloorRenderer::advance()
{
    if (m_options.mode == Mode::Idle)
        return;
    m_isDirty = true;
    for (Trace &trace : m_traces) {
        trace.frame = trace.source.next();
        for (const SignalSource::Piece &piece : trace.frame.written)
            writePoints(trace.points, piece, trace.source);
    }
    if (m_options.mode == Mode::Static && !m_traces.empty()) {
        QColor &color = m_traces.front().color;
        color = SignalSource::colorOf(0, color == SignalSource::colorOf(0, false));
    }
}

void FloorRenderer::upload(Trace &trace)
{
    for (SignalSource::Piece &piece : trace.frame.written) {
        if (piece.length == 0)
            continue;
        constexpr auto pointSize = static_cast<GLsizeiptr>(sizeof(Charts::TracePoint));
        glBindBuffer(GL_ARRAY_BUFFER, trace.buffer);
        glBufferSubData(GL_ARRAY_BUFFER, piece.first * pointSize, piece.length * pointSize,
                &trace.points[static_cast<std::size_t>(piece.first)]);
        piece.length = 0;
    }
}

void FloorRenderer::drawPicture()
{
    if (!m_isDirty)
        return;
    m_isDirty = false;
    m_render->bind();
    glViewport(0, 0, m_options.size.width(), m_options.size.height());
    glDisable(GL_BLEND);
    glClearColor(0.0F, 0.0F, 0.0F, 0.0F);
    glClear(GL_COLOR_BUFFER_BIT);
    m_traceProgram.bind();
    glLineWidth(SignalSource::lineWidth);
    if (!m_traces.empty()) {
        // All traces have one view port.
        const SignalSource::Frame &frame = m_traces.front().frame;
        QMatrix4x4 matrix;
        matrix.viewport(static_cast<float>(frame.visibleFirst), -1.0F,
                static_cast<float>(frame.visibleLength), 2.0F, 0.0F, 1.0F);
        m_traceProgram.setUniformValue(m_matrix, matrix.inverted());
    }
    for (Trace &trace : m_traces) {
        upload(trace);
        glBindVertexArray(trace.vertexArray);
        m_traceProgram.setUniformValue(
                m_color, trace.color.redF(), trace.color.greenF(), trace.color.blueF());
        glDrawArrays(GL_LINE_STRIP, 0, static_cast<GLsizei>(trace.points.size()));
    }
    if (!m_resolve)
        return;
    glBindFramebuffer(GL_READ_FRAMEBUFFER, m_render->handle());
    glBindFramebuffer(GL_DRAW_FRAMEBUFFER, m_resolve->handle());
    const int width = m_options.size.width();
    const int height = m_options.size.height();
    glBlitFramebuffer(0, 0, width, height, 0, 0, width, height, GL_COLOR_BUFFER_BIT, GL_NEAREST);
}

void FloorRenderer::showPicture(GLuint framebuffer)
{
    glBindFramebuffer(GL_FRAMEBUFFER, framebuffer);
    glViewport(0, 0, m_options.size.width(), m_options.size.height());
    glClearColor(1.0F, 1.0F, 1.0F, 1.0F);
    glClear(GL_COLOR_BUFFER_BIT);
    glEnable(GL_BLEND);
    glBlendFunc(GL_ONE, GL_ONE_MINUS_SRC_ALPHA);
    m_imageProgram.bind();
    glBindTexture(GL_TEXTURE_2D, (m_resolve ? m_resolve : m_render)->texture());
    glBindVertexArray(m_quadArray);
    glDrawArrays(GL_TRIANGLE_STRIP, 0, 4);
}
