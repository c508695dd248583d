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

const QStringList &themes()
{
    static const QStringList names = {
            QStringLiteral("light"), QStringLiteral("dark"), QStringLiteral("system")};
    return names;
}

/*! The one of \a names that is \a name in letters of any case; empty if there is none. */
QString find(const QStringList &names, const QString &name)
{
    const auto found = std::find_if(names.begin(), names.end(), [&name](const QString &known) {
        return known.compare(name, Qt::CaseInsensitive) == 0;
    });
    return found == names.end() ? QString() : *found;
}

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
    const QCommandLineOption theme(QStringLiteral("theme"),
            QStringLiteral("light, dark or system, which follows the desktop (default)."),
            QStringLiteral("THEME"), QStringLiteral("system"));
    parser.addOptions({help, page, screenshot, theme});
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

    CommandLine commandLine{parser.value(page), parser.value(screenshot),
            find(themes(), parser.value(theme)), parser.positionalArguments()};
    if (parser.isSet(screenshot) && commandLine.screenshotDirectory.isEmpty())
        return fail(QStringLiteral("--screenshot needs a folder"));
    if (parser.isSet(page)) {
        commandLine.page = find(pages, parser.value(page));
        if (commandLine.page.isEmpty()) {
            return fail(QStringLiteral("unknown page '%1', there are: %2")
                                .arg(parser.value(page), pages.join(QStringLiteral(", "))));
        }
    }
    if (commandLine.theme.isEmpty()) {
        return fail(QStringLiteral("unknown theme '%1', there are: %2")
                            .arg(parser.value(theme), themes().join(QStringLiteral(", "))));
    }
    for (const QString &file : commandLine.files) {
        if (!QFileInfo::exists(file))
            return fail(QStringLiteral("%1: no such file").arg(file));
    }
    return commandLine;
}

} // namespace Gallery
