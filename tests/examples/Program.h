// SPDX-License-Identifier: MIT
#ifndef CHARTS_TEST_PROGRAM_H
#define CHARTS_TEST_PROGRAM_H

#include <QtCore/QProcess>
#include <QtCore/QProcessEnvironment>
#include <QtCore/QString>
#include <QtCore/QStringList>

/*! What a program left when it ended. */
struct ProgramResult
{
    int exitCode = -1; // -1: it could not be started, crashed or did not end
    QString output;
    QString errors;
};

/*! Runs \a program in \a folder and waits for its end, at most two minutes. */
inline ProgramResult runProgram(const QString &program, const QStringList &arguments,
        const QString &folder, const QProcessEnvironment &environment)
{
    QProcess process;
    process.setProcessEnvironment(environment);
    process.setWorkingDirectory(folder);
    process.start(program, arguments);
    const bool hasEnded = process.waitForFinished(120'000);
    if (!hasEnded) {
        process.kill();
        process.waitForFinished();
    }
    const bool isGood = hasEnded && process.exitStatus() == QProcess::NormalExit;
    return {isGood ? process.exitCode() : -1, QString::fromUtf8(process.readAllStandardOutput()),
            QString::fromUtf8(process.readAllStandardError())};
}

/*! This program's environment without anything that leads to a display. */
inline QProcessEnvironment environmentWithoutDisplay()
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    for (const QString &name : {QStringLiteral("DISPLAY"), QStringLiteral("WAYLAND_DISPLAY"),
                 QStringLiteral("QT_QPA_PLATFORM")})
        environment.remove(name);
    return environment;
}

#endif
