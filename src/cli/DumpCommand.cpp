// SPDX-License-Identifier: MIT
#include "CommandLine.h"
#include "Commands.h"

#include "DocumentJson.h"
#include "SkinReadError.h"
#include "clsKorviInterface.h"

#include <QCommandLineParser>

// korvi dump [-i IMPORTED.ui]... [--code-page NAME] FILE.ui
// Byte for byte by default (each byte as the character of its number), so
// the output says exactly what the file holds; decoded with --code-page.
int runDump(const QStringList &arguments)
{
    QCommandLineParser parser;
    CommandLine::addImportedOption(parser);
    CommandLine::addCodePageOption(parser);
    if (const int usage = CommandLine::parseArguments(
            parser, arguments, QStringLiteral("usage: korvi dump [-i IMPORTED.ui]... [--code-page NAME] FILE.ui"), 1, 1))
        return usage;
    std::optional<SkinCodec> decodeWith;
    if (parser.isSet(QStringLiteral("code-page"))) {
        decodeWith = CommandLine::codePage(parser);
        if (!decodeWith)
            return 2;
    }
    const SkinCodec *codec = decodeWith ? &*decodeWith : nullptr;

    clsKorviInterface document;
    try {
        CommandLine::readSkinFiles(document, CommandLine::importedFiles(parser),
                                   parser.positionalArguments().first());
    } catch (const SkinReadError &error) {
        // What was read up to the error is printed all the same.
        CommandLine::printOut(documentToJson(document, &error, codec));
        return 1;
    }
    CommandLine::printOut(documentToJson(document, nullptr, codec));
    return 0;
}
