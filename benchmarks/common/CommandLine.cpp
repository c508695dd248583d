// SPDX-License-Identifier: MIT
#include "CommandLine.h"

#include <cstdio>

namespace {

constexpr int wrongArguments = 2;
constexpr int noReport = 1;

} // namespace

CommandLine::CommandLine(const char *program)
    : m_program(program)
{
    m_parser.setApplicationDescription(QStringLiteral(
            "Draws frames in a window and prints what they cost, as one line of JSON."));
    m_parser.addHelpOption();
    BenchmarkOptions::addTo(m_parser);
    addSwitch(QStringLiteral("empty"), QStringLiteral("Leave the window empty."));
}

void CommandLine::addSwitch(const QString &name, const QString &description)
{
    m_parser.addOption({name, description});
}

std::optional<int> CommandLine::read(int argc, char **argv)
{
    QStringList arguments;
    for (int i = 0; i < argc; ++i)
        arguments.append(QString::fromLocal8Bit(argv[i]));
    if (!m_parser.parse(arguments))
        return refuse(m_parser.errorText());
    if (m_parser.isSet(QStringLiteral("help"))) {
        std::fputs(qPrintable(m_parser.helpText()), stdout);
        return 0;
    }
    if (!m_parser.positionalArguments().isEmpty()) {
        return refuse(
                QStringLiteral("unexpected '%1'").arg(m_parser.positionalArguments().first()));
    }
    QString error;
    m_options = BenchmarkOptions::read(m_parser, error);
    if (!error.isEmpty())
        return refuse(error);
    return std::nullopt;
}

int CommandLine::refuse(const QString &message) const
{
    return fail(wrongArguments, message);
}

int CommandLine::finish(const QByteArray &report, const QString &why) const
{
    if (report.isEmpty())
        return fail(noReport, why);
    std::fputs(report.constData(), stdout);
    return 0;
}

int CommandLine::fail(int code, const QString &message) const
{
    std::fprintf(stderr, "%s: %s\n", m_program, qPrintable(message));
    return code;
}
