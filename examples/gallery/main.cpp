// SPDX-License-Identifier: MIT
#include "CommandLine.h"
#include "ComputedSignal.h"
#include "LadderFilter.h"
#include "NetworkPlot.h"
#include "ScreenshotTour.h"
#include "SignalPlayer.h"

#include "readers/ReadError.h"
#include "readers/SampleTable.h"
#include "readers/Touchstone.h"

#include <QtCore/QDir>
#include <QtCore/QFileInfo>
#include <QtCore/QRegularExpression>
#include <QtGui/QGuiApplication>
#include <QtQml/QQmlApplicationEngine>
#include <QtQuick/QQuickWindow>
#include <QtQuickControls2/QQuickStyle>

#include <cstdio>
#include <memory>
#include <utility>
#include <vector>

namespace {

constexpr int ioError = 1;
constexpr int badFile = 2;

const QStringList pages = {QStringLiteral("Live"), QStringLiteral("Signal"), QStringLiteral("Bode"),
        QStringLiteral("Network"), QStringLiteral("Limits"), QStringLiteral("Picking"),
        QStringLiteral("Large")};

bool isTouchstone(const QString &file)
{
    static const QRegularExpression suffix(
            QStringLiteral("\\.(s\\d+p|ts)$"), QRegularExpression::CaseInsensitiveOption);
    return suffix.match(file).hasMatch();
}

/*! A filter to look at where no file is given. */
Charts::Readers::NetworkData computedNetwork()
{
    std::vector<double> frequencies;
    for (int i = 1; i <= 500; ++i)
        frequencies.push_back(i * 4e6);
    return Gallery::LadderFilter::butterworth(5, 800e6).measuredAt(std::move(frequencies));
}

/*! Throws ReadError. */
void readSources(const QStringList &files)
{
    using namespace Charts::Readers;
    std::vector<Gallery::SignalPlayer::Source> tables;
    std::vector<Gallery::NetworkPlot::Source> networks;
    for (const QString &file : files) {
        const QString name = QFileInfo(file).fileName();
        if (isTouchstone(file)) {
            networks.push_back({name,
                    std::make_shared<const NetworkData>(readTouchstone(file.toStdString()))});
        } else {
            tables.push_back(
                    {name, std::make_shared<const SampleTable>(readSamples(file.toStdString()))});
        }
    }
    if (tables.empty()) {
        tables.push_back({QStringLiteral("computed signal"),
                std::make_shared<const SampleTable>(Gallery::computedSignal())});
    }
    if (networks.empty()) {
        networks.push_back({QStringLiteral("computed filter"),
                std::make_shared<const NetworkData>(computedNetwork())});
    }
    Gallery::SignalPlayer::setSources(std::move(tables));
    Gallery::NetworkPlot::setSources(std::move(networks));
}

/*! The page to begin with. */
QString pageFor(const Gallery::CommandLine &commandLine)
{
    if (!commandLine.page.isEmpty())
        return commandLine.page;
    if (commandLine.files.isEmpty())
        return pages.first();
    return isTouchstone(commandLine.files.first()) ? QStringLiteral("Network")
                                                   : QStringLiteral("Signal");
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
        readSources(commandLine->files);
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

    QQmlApplicationEngine engine;
    engine.addImportPath(QStringLiteral(":/qt/qml"));
    engine.setInitialProperties({{QStringLiteral("pages"), pages},
            {QStringLiteral("currentPage"), pageFor(*commandLine)},
            {QStringLiteral("theme"), commandLine->theme}});
    engine.load(QUrl(QStringLiteral("qrc:/qt/qml/Gallery/Main.qml")));
    if (engine.rootObjects().isEmpty())
        return 1;
    if (commandLine->screenshotDirectory.isEmpty())
        return QGuiApplication::exec();

    Gallery::ScreenshotTour tour(qobject_cast<QQuickWindow *>(engine.rootObjects().constFirst()),
            commandLine->page.isEmpty() ? pages : QStringList{commandLine->page},
            commandLine->screenshotDirectory);
    QObject::connect(
            &tour, &Gallery::ScreenshotTour::finished, &application,
            [](int code) { QCoreApplication::exit(code); }, Qt::QueuedConnection);
    tour.start();
    return QGuiApplication::exec();
}
