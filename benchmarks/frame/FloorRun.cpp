// SPDX-License-Identifier: MIT
#include "FloorRun.h"

#include "FloorRenderer.h"
#include "FrameMeter.h"
#include "GlCounters.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QDeadlineTimer>
#include <QtCore/QElapsedTimer>
#include <QtGui/QOpenGLContext>
#include <QtGui/QOpenGLFunctions>
#include <QtGui/QWindow>

#include <chrono>
#include <optional>

using namespace std::chrono_literals;

namespace {

[[nodiscard]] bool waitUntilExposed(const QWindow &window)
{
    const QDeadlineTimer deadline(10s);
    while (!window.isExposed() && !deadline.hasExpired())
        QCoreApplication::processEvents(QEventLoop::AllEvents, 100);
    return window.isExposed();
}

} // namespace

QByteArray runFloor(const BenchmarkOptions &options, bool empty)
{
    constexpr int warmUpFrames = 3;

    QElapsedTimer sinceStart;
    sinceStart.start();
    const double cpuAtStart = CpuTime::ofProcess().total();
    QWindow window;
    window.setSurfaceType(QSurface::OpenGLSurface);
    window.resize(options.size);
    window.show();
    QOpenGLContext context;
    if (!waitUntilExposed(window) || !context.create() || !context.makeCurrent(&window))
        return {};

    std::optional<FloorRenderer> renderer;
    if (!empty)
        renderer.emplace(options);
    GlCounters own;
    const auto drawFrame = [&] {
        QCoreApplication::processEvents();
        context.makeCurrent(&window);
        const GLuint framebuffer = context.defaultFramebufferObject();
        if (renderer) {
            renderer->advance();
            const GlCounters before = GlCounters::now();
            renderer->drawPicture();
            own += GlCounters::now() - before;
            renderer->showPicture(framebuffer);
        } else {
            QOpenGLFunctions &gl = *context.functions();
            gl.glClearColor(1.0F, 1.0F, 1.0F, 1.0F);
            gl.glClear(GL_COLOR_BUFFER_BIT);
        }
        context.swapBuffers(&window);
        return true;
    };
    drawFrame();
    const double firstFrame = static_cast<double>(sinceStart.nsecsElapsed()) / 1e6;
    const double firstFrameCpu = CpuTime::ofProcess().total() - cpuAtStart;
    for (int i = 0; i < warmUpFrames; ++i)
        drawFrame();

    own = {};
    FrameMeter meter(options);
    if (!meter.run(drawFrame, [] { return CpuTime::ofThread().total(); }))
        return {};

    QJsonObject more = own.perFrame(options.frames);
    more.insert(QStringLiteral("program"),
            empty ? QStringLiteral("empty floor") : QStringLiteral("floor"));
    more.insert(QStringLiteral("samples"), GlCounters::samples());
    const auto *name = context.functions()->glGetString(GL_RENDERER);
    more.insert(
            QStringLiteral("renderer"), QString::fromLatin1(reinterpret_cast<const char *>(name)));
    more.insert(QStringLiteral("threaded"), false);
    more.insert(QStringLiteral("first_frame_ms"), firstFrame);
    more.insert(QStringLiteral("first_frame_cpu_ms"), firstFrameCpu);
    const QByteArray line = meter.report(more);
    renderer.reset();
    return line;
}
