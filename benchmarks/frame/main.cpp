// SPDX-License-Identifier: MIT
#include "ChartScene.h"
#include "CommandLine.h"
#include "FloorRun.h"
#include "GridScene.h"

#include <QtGui/QGuiApplication>

namespace {

using Mode = BenchmarkOptions::Mode;

QByteArray runScene(const CommandLine &commandLine, bool decimated)
{
    const BenchmarkOptions &options = commandLine.options();
    if (commandLine.isEmpty())
        return runInWindow(options, QStringLiteral("empty window"), {});
    if (options.mode == Mode::Grid) {
        return runInWindow(options, QStringLiteral("charts"), [&options](QQuickWindow &window) {
            return std::make_unique<GridScene>(options, window);
        });
    }
    const QString program =
            decimated ? QStringLiteral("charts, decimated") : QStringLiteral("charts");
    return runInWindow(options, program, [&options, decimated](QQuickWindow &window) {
        return std::make_unique<ChartScene>(options, decimated, window);
    });
}

} // namespace

int main(int argc, char **argv)
{
    CommandLine commandLine("frame_benchmark");
    const QString floor = QStringLiteral("floor");
    const QString decimated = QStringLiteral("decimated");
    commandLine.addSwitch(
            floor, QStringLiteral("Draw the same with bare OpenGL calls, without Qt Quick."));
    commandLine.addSwitch(decimated,
            QStringLiteral("Draw the smallest and the largest point of each column of pixels."));
    if (const std::optional<int> exitCode = commandLine.read(argc, argv))
        return *exitCode;
    const BenchmarkOptions &options = commandLine.options();
    if (commandLine.isSet(floor) && (options.mode == Mode::Hover || options.mode == Mode::Grid)) {
        return commandLine.refuse(
                QStringLiteral("--floor: there is none of mode '%1'").arg(options.modeName()));
    }
    if (commandLine.isSet(decimated) && options.mode == Mode::Grid)
        return commandLine.refuse(QStringLiteral("--decimated: a grid has no points"));
    if (commandLine.isSet(floor) && commandLine.isSet(decimated))
        return commandLine.refuse(QStringLiteral("--floor and --decimated exclude each other"));

    options.requestGraphics();
    const QGuiApplication application(argc, argv);
    const QByteArray report = commandLine.isSet(floor)
                                      ? runFloor(options, commandLine.isEmpty())
                                      : runScene(commandLine, commandLine.isSet(decimated));
    return commandLine.finish(report, QStringLiteral("no frame was drawn"));
}
