// SPDX-License-Identifier: MIT
#include "CommandLine.h"
#include "ComputedSignal.h"
#include "ScreenshotTour.h"
#include "SignalPlayer.h"

#include "readers/ReadError.h"
#include "readers/SampleTable.h"

#include <QtCore/QDir>
#include <QtCore/QFileInfo>
#include <QtGui/QGuiApplication>
#include <QtQml/QQmlApplicationEngine>
#include <QtQuick/QQuickWindow>
#include <QtQuickControls2/QQuickStyle>

#include <cstdio>
#include <memory>
#include <vector>

namespace {

constexpr int ioError = 1;
constexpr int badFile = 2;

const QStringList pages = {
        QStringLiteral("Live"), QStringLiteral("Signal"), QStringLiteral("Picking")};

std::vector<Gallery::SignalPlayer::Source> readSources(const QStringList &files)
{
    using Charts::Readers::SampleTable;
    std::vector<Gallery::SignalPlayer::Source> sources;
    for (const QString &file : files) {
        sources.push_back({QFileInfo(file).fileName(),
                std::make_shared<const SampleTable>(
                        Charts::Readers::readSamples(file.toStdString()))});
    }
    if (sources.empty()) {
        sources.push_back({QStringLiteral("computed signal"),
                std::make_shared<const SampleTable>(Gallery::computedSignal())});
    }
    return sources;
}

} // namespace

int main(int argc, char *argv[])
{
    // Before there is an application object: a wrong call is answered without a display, too.
    QStringList arguments;
    for (int i = 0; i < argc; ++i)
        arguments.append(QString::fromLocal8Bit(argv[i]));
    int exitCode = 0;
    const auto commandLine = Gallery::CommandLine::parse(arguments, pages, exitCode);
    if (!commandLine)
        return exitCode;
    try {
        Gallery::SignalPlayer::setSources(readSources(commandLine->files));
    } catch (const Charts::Readers::ReadError &error) {
        std::fprintf(stderr, "gallery: %s\n", error.what());
        return badFile;
    }

    // Nor does a folder that cannot be made take a display to be told.
    if (const QString &folder = commandLine->screenshotDirectory;
            !folder.isEmpty() && !QDir().mkpath(folder)) {
        std::fprintf(stderr, "gallery: %s: cannot create the folder\n", qPrintable(folder));
        return ioError;
    }

    // Traces are drawn with OpenGL, so the scene graph has to use it too.
    QQuickWindow::setGraphicsApi(QSGRendererInterface::OpenGL);
    QQuickStyle::setStyle(QStringLiteral("Basic"));
    const QGuiApplication application(argc, argv);

    QString page = commandLine->page;
    if (page.isEmpty())
        page = commandLine->files.isEmpty() ? pages.first() : QStringLiteral("Signal");
    QQmlApplicationEngine engine;
    engine.addImportPath(QStringLiteral(":/qt/qml"));
    engine.setInitialProperties(
            {{QStringLiteral("pages"), pages}, {QStringLiteral("currentPage"), page}});
    engine.load(QUrl(QStringLiteral("qrc:/qt/qml/Gallery/Main.qml")));
    if (engine.rootObjects().isEmpty())
        return 1;
    if (commandLine->screenshotDirectory.isEmpty())
        return QGuiApplication::exec();

    Gallery::ScreenshotTour tour(qobject_cast<QQuickWindow *>(engine.rootObjects().constFirst()),
            commandLine->page.isEmpty() ? pages : QStringList{page},
            commandLine->screenshotDirectory);
    QObject::connect(
            &tour, &Gallery::ScreenshotTour::finished, &application,
            [](int code) { QCoreApplication::exit(code); }, Qt::QueuedConnection);
    tour.start();
    return QGuiApplication::exec();
}
