// SPDX-License-Identifier: MIT
#include "CommandLine.h"
#include "PeerScene.h"

#include <QtWidgets/QApplication>

int main(int argc, char **argv)
{
    CommandLine commandLine("peer_benchmark");
    const QString openGL = QStringLiteral("opengl");
    commandLine.addSwitch(openGL,
            QStringLiteral(
                    "Draw the lines with OpenGL (LineSeries.useOpenGL), not into an image."));
    if (const std::optional<int> exitCode = commandLine.read(argc, argv))
        return *exitCode;
    const BenchmarkOptions &options = commandLine.options();
    if (options.mode == BenchmarkOptions::Mode::Grid)
        return commandLine.refuse(QStringLiteral("--mode 'grid': Qt Charts has no such grid"));

    options.requestGraphics();
    // Charts of Qt Quick, too, need the application of widgets.
    const QApplication application(argc, argv);
    QString error = QStringLiteral("no frame was drawn");
    QString program = QStringLiteral("empty window");
    MakeScene makeScene;
    if (!commandLine.isEmpty()) {
        const bool useOpenGL = commandLine.isSet(openGL);
        program = useOpenGL ? QStringLiteral("qt charts opengl") : QStringLiteral("qt charts");
        makeScene = [&options, useOpenGL, &error](QQuickWindow &window) {
            return PeerScene::make(options, useOpenGL, window, error);
        };
    }
    return commandLine.finish(runInWindow(options, program, makeScene), error);
}
