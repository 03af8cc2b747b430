#include "CommandLine.h"

#include "UiFileReader.h"

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

bool takeImportedFiles(QStringList &args, QStringList &imported)
{
    QStringList rest;
    for (int i = 0; i < args.size(); ++i) {
        if (args.at(i) == QLatin1String("-i")) {
            if (i + 1 >= args.size()) {
                usageError(QStringLiteral("-i needs a file"));
                return false;
            }
            imported << args.at(++i);
        } else {
            rest << args.at(i);
        }
    }
    args = rest;
    return true;
}

void readSkinFiles(clsKorviInterface &document, const QStringList &imported, const QString &file)
{
    for (const QString &path : imported)
        ReadUiFile(document, path, true);
    ReadUiFile(document, file, false);
}

} // namespace CommandLine
