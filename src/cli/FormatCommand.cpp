// SPDX-License-Identifier: MIT
#include "CommandLine.h"
#include "Commands.h"

#include "SkinReadError.h"
#include "UiFileWriter.h"
#include "clsKorviInterface.h"

#include <QCommandLineParser>

// korvi format [-i IMPORTED.ui]... FILE.ui OUT.ui
int runFormat(const QStringList &arguments)
{
    QCommandLineParser parser;
    CommandLine::addImportedOption(parser);
    if (const int usage = CommandLine::parseArguments(
            parser, arguments, QStringLiteral("usage: korvi format [-i IMPORTED.ui]... FILE.ui OUT.ui"), 2, 2))
        return usage;
    const QStringList args = parser.positionalArguments();

    clsKorviInterface document;
    try {
        CommandLine::readSkinFiles(document, CommandLine::importedFiles(parser), args.at(0));
    } catch (const SkinReadError &error) {
        CommandLine::printErr(QString::fromStdString(error.what()));
        return 1;
    }
    const bool saved = WriteUiFile(document, args.at(1), [](const QString &message) {
        CommandLine::printErr(message);
    });
    return saved ? 0 : 1;
}
