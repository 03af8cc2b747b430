// SPDX-License-Identifier: MIT
#include "CommandLine.h"
#include "Commands.h"

#include "ProblemCodes.h"
#include "SkinChecker.h"
#include "SkinContext.h"
#include "SkinOpenPlan.h"
#include "clsKorviInterface.h"

#include <QCommandLineParser>
#include <QDir>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

namespace {

const QString kUsage = QStringLiteral(
    "usage: korvi lint [--skin-dir D] [--format R] [--code-page NAME] (FILE.ui | FOLDER) [--json] [--werror] "
    "[--disable CODE,...] [--files]");

struct LintOptions
{
    QString target;
    QString skinDirectory;
    QString format;
    bool json = false;
    bool warningsAreErrors = false;
    bool listFiles = false;
    QStringList disabled;
    SkinCodec codec;
};

// Returns 0 when the arguments are good, else the usage exit code (printed).
int parse(const QStringList &args, LintOptions &o)
{
    QCommandLineParser parser;
    const QCommandLineOption skinDir(QStringLiteral("skin-dir"), QStringLiteral("the skin directory"), QStringLiteral("D"));
    const QCommandLineOption format(QStringLiteral("format"), QStringLiteral("the skin format"), QStringLiteral("R"));
    const QCommandLineOption json(QStringLiteral("json"), QStringLiteral("print the problems as JSON"));
    const QCommandLineOption werror(QStringLiteral("werror"), QStringLiteral("count warnings as errors"));
    const QCommandLineOption disable(QStringLiteral("disable"), QStringLiteral("leave out these codes"), QStringLiteral("CODE,..."));
    const QCommandLineOption files(QStringLiteral("files"),
                                   QStringLiteral("list the files the skin is read from, in reading order, and check nothing"));
    parser.addOptions({ skinDir, format, json, werror, disable, files });
    CommandLine::addCodePageOption(parser);
    if (!parser.parse(QStringList { QStringLiteral("korvi lint") } + args))
        return CommandLine::usageError(parser.errorText() + QLatin1Char('\n') + kUsage);
    if (parser.positionalArguments().size() != 1)
        return CommandLine::usageError(kUsage);
    const std::optional<SkinCodec> codec = CommandLine::codePage(parser);
    if (!codec)
        return 2;
    o.codec = *codec;
    o.target = parser.positionalArguments().first();
    o.skinDirectory = parser.value(skinDir);
    o.format = parser.value(format);
    o.json = parser.isSet(json);
    o.warningsAreErrors = parser.isSet(werror);
    o.listFiles = parser.isSet(files);
    const QStringList known = ProblemCodes::all();
    for (const QString &list : parser.values(disable)) {
        for (const QString &code : list.split(QLatin1Char(','), Qt::SkipEmptyParts)) {
            if (!known.contains(code.trimmed()))
                return CommandLine::usageError(QStringLiteral("unknown problem code \"%1\"; the codes are: %2")
                                                   .arg(code.trimmed(), known.join(QStringLiteral(", "))));
            o.disabled << code.trimmed();
        }
    }
    return 0;
}

// Paths under the current folder are printed relative to it, as compilers
// print the files they were given.
QString shownPath(const QString &path)
{
    if (path.isEmpty())
        return path;
    const QString relative = QDir::current().relativeFilePath(path);
    return relative.startsWith(QLatin1String("..")) ? QDir::cleanPath(path) : relative;
}

// "FILE:LINE:COL: warning: message [code]", leaving out what is not known.
QString compilerLine(const Problem &p)
{
    QString where = p.file.isEmpty() ? QStringLiteral("korvi") : shownPath(p.file);
    if (p.line > 0) {
        where += QStringLiteral(":%1").arg(p.line);
        if (p.column > 0)
            where += QStringLiteral(":%1").arg(p.column);
    }
    return QStringLiteral("%1: %2: %3 [%4]\n").arg(where, Problem::severityName(p.severity), p.message, p.code);
}

QByteArray jsonOf(const QVector<Problem> &problems)
{
    QJsonArray list;
    for (const Problem &p : problems) {
        QJsonObject o;
        o.insert(QStringLiteral("severity"), Problem::severityName(p.severity));
        o.insert(QStringLiteral("code"), p.code);
        o.insert(QStringLiteral("file"), shownPath(p.file));
        o.insert(QStringLiteral("line"), p.line);
        o.insert(QStringLiteral("column"), p.column);
        o.insert(QStringLiteral("node_key"), SkinCodec::wordText(p.nodeKey));
        o.insert(QStringLiteral("message"), p.message);
        list.append(o);
    }
    return QJsonDocument(list).toJson(QJsonDocument::Indented);
}

QString summary(qsizetype errors, qsizetype warnings)
{
    const auto count = [](qsizetype n, const char *what) {
        return QStringLiteral("%1 %2%3").arg(n).arg(QLatin1String(what)).arg(n == 1 ? QString() : QStringLiteral("s"));
    };
    return count(errors, "error") + QStringLiteral(" and ") + count(warnings, "warning");
}

// One line per file of the plan, in reading order: its path, and " (imported)"
// for a file read as shared templates only.
QString fileList(const SkinOpenPlan &plan)
{
    QString text;
    for (const SkinOpenPlan::File &file : plan.files)
        text += QDir::toNativeSeparators(file.path) + (file.imported ? QStringLiteral(" (imported)\n") : QStringLiteral("\n"));
    return text;
}

} // namespace

// korvi lint [--skin-dir D] [--format R] [--code-page NAME] (FILE.ui | FOLDER) [--json] [--werror]
//            [--disable CODE,...] [--files]
// A file is read as Open reads it (with its template files and the shared
// scheme), a folder as All does. Exit 0 without errors, 1 with errors (or with
// warnings under --werror), 2 on a usage error.
int runLint(const QStringList &args)
{
    LintOptions o;
    if (const int usage = parse(args, o))
        return usage;
    // A file that is not there is a failure of the work, as for every other
    // subcommand, not a usage error.
    if (!QFileInfo::exists(o.target)) {
        CommandLine::printErr(QStringLiteral("korvi: %1: No such file or folder").arg(o.target));
        return 1;
    }
    const bool folder = QFileInfo(o.target).isDir();
    const SkinOpenPlan plan = folder ? SkinOpenPlan::forFolder(o.target) : SkinOpenPlan::forFile(o.target);
    if (o.listFiles) {
        CommandLine::printText(fileList(plan));
        return 0;
    }
    clsKorviInterface document;
    document.setCodec(o.codec);
    const QVector<SkinReadError> errors = plan.readInto(document);
    SkinContext context;
    context.UiFilePath = plan.uiFilePath;
    context.SkinDirectory = o.skinDirectory;
    context.SkinFormat = o.format.isEmpty() ? plan.skinFormat : o.format;

    QVector<Problem> problems;
    for (const Problem &p : SkinChecker::check(document, context, errors, plan.wholeFolder)) {
        if (!o.disabled.contains(p.code))
            problems << p;
    }
    const qsizetype errorCount = std::count_if(problems.begin(), problems.end(), [](const Problem &p) { return p.isError(); });
    const qsizetype warningCount = problems.size() - errorCount;
    if (o.json) {
        CommandLine::printOut(jsonOf(problems));
        CommandLine::printErr(summary(errorCount, warningCount));
    } else {
        QString text;
        for (const Problem &p : problems)
            text += compilerLine(p);
        text += summary(errorCount, warningCount) + QLatin1Char('\n');
        CommandLine::printText(text);
    }
    const bool failed = errorCount > 0 || (o.warningsAreErrors && warningCount > 0);
    return failed ? 1 : 0;
}
