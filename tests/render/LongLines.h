// SPDX-License-Identifier: MIT
#ifndef CHARTS_TEST_LONGLINES_H
#define CHARTS_TEST_LONGLINES_H

#include <QtGui/QImage>
#include <QtGui/QOffscreenSurface>
#include <QtGui/QOpenGLContext>
#include <QtGui/QOpenGLFunctions>
#include <QtOpenGL/QOpenGLFramebufferObject>
#include <QtOpenGL/QOpenGLShaderProgram>

/*!
    Whether the driver draws a vertical line that ends \a distance pixels above and below a picture,
    asked with a few bare calls. That of Mesa 25.0 (llvmpipe) leaves out lines of more than about
    50000 pixels altogether, that of Mesa 22.3 draws what is to be seen of them.
*/
inline bool driverDrawsLinesOf(double distance)
{
    constexpr int side = 16;
    QSurfaceFormat format;
    format.setVersion(2, 1);
    format.setRenderableType(QSurfaceFormat::OpenGL);
    QOpenGLContext context;
    context.setFormat(format);
    QOffscreenSurface surface;
    surface.setFormat(format);
    surface.create();
    if (!context.create() || !context.makeCurrent(&surface))
        return false;

    QOpenGLFramebufferObject framebuffer(side, side);
    framebuffer.bind();
    QOpenGLFunctions &gl = *context.functions();
    gl.glViewport(0, 0, side, side);
    gl.glClearColor(0.0F, 0.0F, 0.0F, 1.0F);
    gl.glClear(GL_COLOR_BUFFER_BIT);
    QOpenGLShaderProgram program;
    program.addShaderFromSourceCode(QOpenGLShader::Vertex,
            "attribute highp vec2 corner;\n"
            "void main() { gl_Position = vec4(corner, 0.0, 1.0); }");
    program.addShaderFromSourceCode(
            QOpenGLShader::Fragment, "void main() { gl_FragColor = vec4(1.0); }");
    program.bindAttributeLocation("corner", 0);
    if (!program.link() || !program.bind())
        return false;
    const auto end = static_cast<GLfloat>(distance * 2.0 / side);
    const GLfloat corners[] = {0.0F, end, 0.0F, -end};
    gl.glLineWidth(2.0F);
    program.enableAttributeArray(0);
    program.setAttributeArray(0, corners, 2);
    gl.glDrawArrays(GL_LINES, 0, 2);
    const QColor drawn = framebuffer.toImage().pixelColor(side / 2, side / 2);
    program.release();
    framebuffer.release();
    return drawn == QColor(Qt::white);
}

#endif
