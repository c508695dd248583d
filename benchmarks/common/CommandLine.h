// SPDX-License-Identifier: MIT
#ifndef CHARTS_COMMANDLINE_H
#define CHARTS_COMMANDLINE_H

#include "BenchmarkOptions.h"

#include <QtCore/QCommandLineParser>

#include <optional>

/*! The command line of a frame benchmark: the options that all share, --empty, and switches of its
    own. Read before the application object exists, which needs the graphics that are asked for. */
class CommandLine
{
public:
    /*! \a program is what messages begin with. */
    explicit CommandLine(const char *program);

    void addSwitch(const QString &name, const QString &description);

    /*! Reads the arguments. Returns the exit code when the program is to end here: with the help, or
        because of an error, of which one line is written. */
    [[nodiscard]] std::optional<int> read(int argc, char **argv);

    [[nodiscard]] const BenchmarkOptions &options() const { return m_options; }
    /*! Whether the window is to be left empty. */
    [[nodiscard]] bool isEmpty() const { return isSet(QStringLiteral("empty")); }
    [[nodiscard]] bool isSet(const QString &name) const { return m_parser.isSet(name); }

    /*! Says what is wrong with the arguments. Returns the exit code for it. */
    int refuse(const QString &message) const;
    /*! Writes the report; or, when it is empty, says that there is none and \a why. Returns the exit
        code. */
    int finish(const QByteArray &report, const QString &why) const;

private:
    int fail(int code, const QString &message) const;

    const char *m_program;
    QCommandLineParser m_parser;
    BenchmarkOptions m_options;
};

#endif
