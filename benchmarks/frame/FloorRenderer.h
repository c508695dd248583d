// SPDX-License-Identifier: MIT
#ifndef CHARTS_FLOORRENDERER_H
#define CHARTS_FLOORRENDERER_H

#include "SignalSource.h"

#include <ChartsLibrary/TracePoint.h>

#include <QtCore/QSize>
#include <QtGui/QColor>
#include <QtGui/QMatrix4x4>
#include <QtGui/QOpenGLExtraFunctions>
#include <QtOpenGL/QOpenGLFramebufferObject>
#include <QtOpenGL/QOpenGLShaderProgram>

#include <memory>
#include <vector>

/*!
    The least with which a machine draws the benchmark's traces: one vertex array a trace, set up once;
    what changed is uploaded; then one draw call a trace into a multisampled image, one copy into the
    shown image, and one rectangle that shows it.

    Needs the context current in all of its life.
*/
class FloorRenderer : private QOpenGLExtraFunctions
{
public:
    explicit FloorRenderer(const BenchmarkOptions &options);
    ~FloorRenderer();

    /*! Moves the data on to the next frame. */
    void advance();
    /*! Draws the traces into the image, if they changed. */
    void drawPicture();
    /*! Shows the image in the window's framebuffer. */
    void showPicture(GLuint framebuffer);

private:
    struct Trace
    {
        explicit Trace(const BenchmarkOptions &options, int index);

        SignalSource source;
        QColor color;
        std::vector<Charts::TracePoint> points;
        SignalSource::Frame frame; // what the next picture has to take over
        GLuint buffer = 0;
        GLuint vertexArray = 0;
    };

    void make(Trace &trace);
    void upload(Trace &trace);
    static void build(QOpenGLShaderProgram &program, const char *vertex, const char *fragment);

    BenchmarkOptions m_options;
    std::vector<Trace> m_traces;
    std::unique_ptr<QOpenGLFramebufferObject> m_render;
    std::unique_ptr<QOpenGLFramebufferObject> m_resolve;
    QOpenGLShaderProgram m_traceProgram;
    QOpenGLShaderProgram m_imageProgram;
    int m_color = -1;
    int m_matrix = -1;
    GLuint m_quad = 0;
    GLuint m_quadArray = 0;
    bool m_isDirty = true;
};

#endif
