// SPDX-License-Identifier: MIT
#include "BenchmarkOptions.h"
#include "ChartRun.h"
#include "FloorRun.h"

#include <QtCore/QCommandLineParser>
#include <QtGui/QGuiApplication>

#include <cstdio>

namespace {

QStringList arguments(int argc, char **argv)
{
    QStringList list;
    for (int i = 0; i < argc; ++i)
        list.append(QString::fromLocal8Bit(argv[i]));
    return list;
}

int fail(int code, const QString &message)
{
    std::fprintf(stderr, "frame_benchmark: %s\n", qPrintable(message));
    return code;
}

} // namespace

int main(int argc, char **argv)
{
    QCommandLineParser parser;
    parser.setApplicationDescription(QStringLiteral(
            "Draws frames in a window and prints what they cost, as one line of JSON."));
    const QCommandLineOption help = parser.addHelpOption();
    BenchmarkOptions::addTo(parser);
    const QCommandLineOption floor(QStringLiteral("floor"),
            QStringLiteral("Draw the same with bare OpenGL calls, without Qt Quick."));
    const QCommandLineOption empty(
            QStringLiteral("empty"), QStringLiteral("Leave the window empty."));
    parser.addOption(floor);
    parser.addOption(empty);

    if (!parser.parse(arguments(argc, argv)))
        return fail(2, parser.errorText());
    if (parser.isSet(help)) {
        std::fputs(qPrintable(parser.helpText()), stdout);
        return 0;
    }
    if (!parser.positionalArguments().isEmpty())
        return fail(2, QStringLiteral("unexpected '%1'").arg(parser.positionalArguments().first()));
    QString error;
    const BenchmarkOptions options = BenchmarkOptions::read(parser, error);
    if (!error.isEmpty())
        return fail(2, error);
    const bool hasFloor = options.mode != BenchmarkOptions::Mode::Hover
                          && options.mode != BenchmarkOptions::Mode::Grid;
    if (parser.isSet(floor) && !hasFloor)
        return fail(
                2, QStringLiteral("--floor: there is none of mode '%1'").arg(options.modeName()));

    options.requestGraphics();
    const QGuiApplication application(argc, argv);
    const QByteArray line = parser.isSet(floor) ? runFloor(options, parser.isSet(empty))
                                                : runChart(options, parser.isSet(empty));
    if (line.isEmpty())
        return fail(1, QStringLiteral("no frame was drawn"));
    std::fputs(line.constData(), stdout);
    return 0;
}
