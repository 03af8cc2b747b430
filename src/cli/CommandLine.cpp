// SPDX-License-Identifier: MIT
#include "CommandLine.h"

#include "UiFileReader.h"

#include <QCommandLineParser>

#include <cstdio>

namespace CommandLine {

void printOut(const QByteArray &bytes)
{
    fwrite(bytes.constData(), 1, size_t(bytes.size()), stdout);
    fflush(stdout);
}

void printErr(const QString &text)
{
    const QByteArray bytes = text.toLocal8Bit() + '\n';
    fwrite(bytes.constData(), 1, size_t(bytes.size()), stderr);
}

int usageError(const QString &text)
{
    printErr(QStringLiteral("korvi: ") + text);
    printErr(QStringLiteral("Run \"korvi help\" for the list of subcommands."));
    return 2;
}

int parseArguments(QCommandLineParser &parser, const QStringList &args, const QString &usage, int least,
                   int most)
{
    if (!parser.parse(QStringList{ QStringLiteral("korvi") } + args))
        return usageError(parser.errorText() + QLatin1Char('\n') + usage);
    const qsizetype count = parser.positionalArguments().size();
    if (count < least || count > most)
        return usageError(usage);
    return 0;
}

void addImportedOption(QCommandLineParser &parser)
{
    parser.addOption(QCommandLineOption(QStringLiteral("i"), QStringLiteral("A shared file of the skin."),
                                        QStringLiteral("IMPORTED.ui")));
}

QStringList importedFiles(const QCommandLineParser &parser)
{
    return parser.values(QStringLiteral("i"));
}

void readSkinFiles(clsKorviInterface &document, const QStringList &imported, const QString &file)
{
    for (const QString &path : imported)
        ReadUiFile(document, path, true);
    ReadUiFile(document, file, false);
}

} // namespace CommandLine
