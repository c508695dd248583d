// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QString>
#include <QtCore/QStringList>

#include <optional>

namespace Gallery {

/*! What the program was asked for. */
struct CommandLine
{
    QString page;                // empty: the one that fits the files
    QString screenshotDirectory; // empty: interactive
    QString theme;               // "light", "dark" or "system"
    QStringList files;

    /*!
        Parses \a arguments, the program's name first. Prints the help or, in one line, what is wrong,
        and returns nothing then; \a exitCode says which.
    */
    [[nodiscard]] static std::optional<CommandLine> parse(
            const QStringList &arguments, const QStringList &pages, int &exitCode);
};

} // namespace Gallery
