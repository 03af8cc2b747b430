#include "CommandLine.h"
#include "Commands.h"

#include "DocumentJson.h"
#include "SkinReadError.h"
#include "clsKorviInterface.h"

// korvi dump [-i IMPORTED.ui]... FILE.ui
int runDump(const QStringList &arguments)
{
    QStringList args = arguments;
    QStringList imported;
    if (!CommandLine::takeImportedFiles(args, imported))
        return 2;
    if (args.size() != 1)
        return CommandLine::usageError(QStringLiteral("usage: korvi dump [-i IMPORTED.ui]... FILE.ui"));

    clsKorviInterface document;
    try {
        CommandLine::readSkinFiles(document, imported, args.first());
    } catch (const SkinReadError &error) {
        // What was read up to the error is printed all the same.
        CommandLine::printOut(DocumentToJson(document, &error));
        return 1;
    }
    CommandLine::printOut(DocumentToJson(document, nullptr));
    return 0;
}
