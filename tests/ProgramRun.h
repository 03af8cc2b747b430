// SPDX-License-Identifier: MIT
#pragma once

#include <QProcess>
#include <QStringList>

// A program of the build, run as a user runs it, and what it answered.
struct ProgramRun
{
    int exitCode = -1;
    QByteArray out;
    QByteArray err;
};

inline ProgramRun runProgram(const QString &program, const QStringList &args,
                             const QProcessEnvironment &environment = QProcessEnvironment::systemEnvironment())
{
    QProcess p;
    p.setProcessEnvironment(environment);
    p.start(program, args);
    p.waitForFinished(60000);
    return { p.exitCode(), p.readAllStandardOutput(), p.readAllStandardError() };
}
