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
    // A program that does not end has not answered, whatever it printed.
    if (!p.waitForFinished(60000)) {
        // Not running any more: it never started, or the wait failed; the
        // reason is Qt's.
        const QByteArray why = p.state() == QProcess::NotRunning ? p.errorString().toUtf8()
                                                                 : QByteArrayLiteral("it did not end within 60 s");
        p.kill();
        p.waitForFinished();
        // Said here too: the assertion that fails next may not print it.
        qWarning("%s %s: no answer (%s)", qPrintable(program), qPrintable(args.join(QLatin1Char(' '))),
                 why.constData());
        return { -1, p.readAllStandardOutput(), p.readAllStandardError() + "\n(" + why + ")" };
    }
    return { p.exitCode(), p.readAllStandardOutput(), p.readAllStandardError() };
}

// A line of text as a console program prints it: on Windows its standard
// output is in text mode, so a line ends in CR LF as text files do there.
inline QByteArray printedLine(const QByteArray &text)
{
#ifdef Q_OS_WIN
    return text + "\r\n";
#else
    return text + '\n';
#endif
}
