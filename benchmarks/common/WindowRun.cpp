// SPDX-License-Identifier: MIT
#include "WindowRun.h"

#include "FrameMeter.h"
#include "QuickFrames.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QElapsedTimer>
#include <QtGui/QMouseEvent>
#include <QtGui/QOpenGLContext>
#include <QtGui/QOpenGLFunctions>
#include <QtGui/QPointingDevice>
#include <QtQuick/QQuickWindow>

namespace {

/*! What the driver says it is. Asked on the render thread, with the context current. */
QString rendererName()
{
    QOpenGLContext *context = QOpenGLContext::currentContext();
    if (!context)
        return QStringLiteral("none");
    const auto *name = context->functions()->glGetString(GL_RENDERER);
    return QString::fromLatin1(reinterpret_cast<const char *>(name));
}

} // namespace

QByteArray runInWindow(
        const BenchmarkOptions &options, const QString &program, const MakeScene &makeScene)
{
    constexpr int warmUpFrames = 3;

    QElapsedTimer sinceStart;
    sinceStart.start();
    const double cpuAtStart = CpuTime::ofProcess().total();
    QQuickWindow window;
    window.resize(options.size);
    window.setColor(Qt::white);

    QString renderer;
    QObject::connect(
            &window, &QQuickWindow::beforeRendering, &window,
            [&renderer] {
                if (renderer.isEmpty())
                    renderer = rendererName();
            },
            Qt::DirectConnection);
    QuickFrames frames(window);

    std::unique_ptr<WindowScene> scene;
    if (makeScene) {
        scene = makeScene(window);
        if (!scene)
            return {};
    }
    const auto drawFrame = [&] {
        if (scene)
            scene->advance();
        return frames.draw();
    };
    if (!frames.show())
        return {};
    const double firstFrame = static_cast<double>(sinceStart.nsecsElapsed()) / 1e6;
    const double firstFrameCpu = CpuTime::ofProcess().total() - cpuAtStart;
    for (int i = 0; i < warmUpFrames; ++i) {
        if (!drawFrame())
            return {};
    }
    if (scene && !scene->prepare(frames))
        return {};

    const GlCounters allBefore = GlCounters::now();
    const GlCounters ownBefore = frames.contents();
    FrameMeter meter(options);
    if (!meter.run(drawFrame, [&frames] { return frames.renderTime(); }))
        return {};
    const GlCounters all = GlCounters::now() - allBefore;
    const GlCounters own = frames.contents() - ownBefore;

    const auto each = [&options](
                              qint64 count) { return static_cast<double>(count) / options.frames; };
    QJsonObject more = own.perFrame(options.frames);
    more.insert(QStringLiteral("program"), program);
    more.insert(QStringLiteral("all_draw_calls"), each(all.drawCalls));
    more.insert(QStringLiteral("all_texture_bytes"), each(all.textureBytes));
    more.insert(QStringLiteral("samples"), GlCounters::samples());
    more.insert(
            QStringLiteral("buffer_bytes"), static_cast<double>(frames.contents().allocatedBytes));
    more.insert(QStringLiteral("renderer"), renderer);
    more.insert(QStringLiteral("threaded"), frames.isThreaded());
    more.insert(QStringLiteral("first_frame_ms"), firstFrame);
    more.insert(QStringLiteral("first_frame_cpu_ms"), firstFrameCpu);
    return meter.report(more);
}

void movePointer(QQuickWindow &window, int step)
{
    const QPointF position(step % window.width(), window.height() / 2.0);
    QMouseEvent event(QEvent::MouseMove, position, window.mapToGlobal(position), Qt::NoButton,
            Qt::NoButton, Qt::NoModifier, QPointingDevice::primaryPointingDevice());
    QCoreApplication::sendEvent(&window, &event);
}
