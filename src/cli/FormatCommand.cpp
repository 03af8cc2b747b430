#include "CommandLine.h"
#include "Commands.h"

#include "SkinReadError.h"
#include "UiFileWriter.h"
#include "clsKorviInterface.h"

// korvi format [-i IMPORTED.ui]... FILE.ui OUT.ui
int runFormat(const QStringList &arguments)
{
    QStringList args = arguments;
    QStringList imported;
    if (!CommandLine::takeImportedFiles(args, imported))
        return 2;
    if (args.size() != 2)
        return CommandLine::usageError(
            QStringLiteral("usage: korvi format [-i IMPORTED.ui]... FILE.ui OUT.ui"));

    clsKorviInterface document;
    try {
        CommandLine::readSkinFiles(document, imported, args.at(0));
    } catch (const SkinReadError &error) {
        CommandLine::printErr(QString::fromStdString(error.what()));
        return 1;
    }
    const bool saved = WriteUiFile(document, args.at(1), [](const QString &message) {
        CommandLine::printErr(message);
    });
    return saved ? 0 : 1;
}
