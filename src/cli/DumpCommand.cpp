// SPDX-License-Identifier: MIT
#include "CommandLine.h"
#include "Commands.h"

#include "DocumentJson.h"
#include "SkinReadError.h"
#include "clsKorviInterface.h"

#include <QCommandLineParser>

// korvi dump [-i IMPORTED.ui]... FILE.ui
int runDump(const QStringList &arguments)
{
    QCommandLineParser parser;
    CommandLine::addImportedOption(parser);
    if (const int usage = CommandLine::parseArguments(
            parser, arguments, QStringLiteral("usage: korvi dump [-i IMPORTED.ui]... FILE.ui"), 1, 1))
        return usage;

    clsKorviInterface document;
    try {
        CommandLine::readSkinFiles(document, CommandLine::importedFiles(parser),
                                   parser.positionalArguments().first());
    } catch (const SkinReadError &error) {
        // What was read up to the error is printed all the same.
        CommandLine::printOut(DocumentToJson(document, &error));
        return 1;
    }
    CommandLine::printOut(DocumentToJson(document, nullptr));
    return 0;
}
