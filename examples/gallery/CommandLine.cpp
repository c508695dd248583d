// SPDX-License-Identifier: MIT
#include "CommandLine.h"

#include "readers/ReadError.h"

#include <QtCore/QCommandLineParser>
#include <QtCore/QFileInfo>

#include <algorithm>
#include <cstdio>

namespace Gallery {

namespace {

constexpr int usageError = 2;

} // namespace

std::optional<CommandLine> CommandLine::parse(
        const QStringList &arguments, const QStringList &pages, int &exitCode)
{
    QCommandLineParser parser;
    parser.setApplicationDescription(
            QStringLiteral("Shows what the chart library draws. Pages: %1.")
                    .arg(pages.join(QStringLiteral(", "))));
    const QCommandLineOption help(
            {QStringLiteral("h"), QStringLiteral("help")}, QStringLiteral("Show this help."));
    const QCommandLineOption page(QStringLiteral("page"),
            QStringLiteral("Open this page, or take the screenshot of this page only."),
            QStringLiteral("NAME"));
    const QCommandLineOption screenshot(QStringLiteral("screenshot"),
            QStringLiteral("Let each page run for two seconds, write a PNG of it into this folder "
                           "and exit."),
            QStringLiteral("DIR"));
    parser.addOptions({help, page, screenshot});
    parser.addPositionalArgument(QStringLiteral("FILE"),
            QStringLiteral(
                    "CSV files of samples for the page Signal: a header row, a time column, "
                    "value columns. Touchstone files (.s2p, .ts, ...) for the page Network."),
            QStringLiteral("[FILE...]"));

    const auto fail = [&exitCode](const QString &message) {
        std::fprintf(
                stderr, "gallery: %s\n", Charts::Readers::oneLine(message.toStdString()).c_str());
        exitCode = usageError;
        return std::nullopt;
    };
    if (!parser.parse(arguments))
        return fail(parser.errorText().simplified());
    if (parser.isSet(help)) {
        std::fputs(qPrintable(parser.helpText()), stdout);
        exitCode = 0;
        return std::nullopt;
    }

    CommandLine commandLine{
            parser.value(page), parser.value(screenshot), parser.positionalArguments()};
    if (parser.isSet(screenshot) && commandLine.screenshotDirectory.isEmpty())
        return fail(QStringLiteral("--screenshot needs a folder"));
    if (parser.isSet(page)) {
        const auto known = std::find_if(pages.begin(), pages.end(), [&](const QString &name) {
            return name.compare(commandLine.page, Qt::CaseInsensitive) == 0;
        });
        if (known == pages.end()) {
            return fail(QStringLiteral("unknown page '%1', there are: %2")
                                .arg(commandLine.page, pages.join(QStringLiteral(", "))));
        }
        commandLine.page = *known;
    }
    for (const QString &file : commandLine.files) {
        if (!QFileInfo::exists(file))
            return fail(QStringLiteral("%1: no such file").arg(file));
    }
    return commandLine;
}

} // namespace Gallery
