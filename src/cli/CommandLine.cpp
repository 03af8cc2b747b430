// SPDX-License-Identifier: MIT
#include "CommandLine.h"

#include "AtomicFileWriter.h"
#include "FileFaults.h"
#include "StandardStreams.h"
#include "UiFileReader.h"

#include <QBuffer>
#include <QCommandLineParser>

#include <QDir>
#include <QFileInfo>
#include <QImage>

#include <cerrno>
#include <cstdio>
#include <cstring>

namespace CommandLine {

namespace {

// Standard output is one for the whole process: so is the memory of its
// first failure.
QString &firstOutputFailure()
{
    static QString reason;
    return reason;
}

void noteOutputFailure()
{
    if (firstOutputFailure().isEmpty())
        firstOutputFailure() = QString::fromLocal8Bit(strerror(errno));
}

} // namespace

void printOut(const QByteArray &bytes)
{
    if (const QString fault = FileFaults::writeFault(QStringLiteral("-")); !fault.isEmpty()) {
        if (firstOutputFailure().isEmpty())
            firstOutputFailure() = fault;
        return;
    }
    errno = 0;
    if (fwrite(bytes.constData(), 1, size_t(bytes.size()), stdout) != size_t(bytes.size()) || fflush(stdout) != 0)
        noteOutputFailure();
}

void printText(const QString &text)
{
    if (const QString fault = FileFaults::writeFault(QStringLiteral("-")); !fault.isEmpty()) {
        if (firstOutputFailure().isEmpty())
            firstOutputFailure() = fault;
        return;
    }
    errno = 0;
    if (!StandardStreams::writeText(stdout, text))
        noteOutputFailure();
}

QString outputFailure()
{
    errno = 0;
    if (fflush(stdout) != 0 || ferror(stdout))
        noteOutputFailure();
    return firstOutputFailure();
}

bool writeFile(const QString &path, const QByteArray &bytes)
{
    QString error;
    if (AtomicFileWriter::writeWhole(path, bytes, error))
        return true;
    printErr(QStringLiteral("korvi: cannot write ") + error);
    return false;
}

bool writePng(const QString &path, const QImage &picture, const QString &what)
{
    QByteArray png;
    QBuffer device(&png);
    device.open(QIODevice::WriteOnly);
    if (!picture.save(&device, "PNG")) {
        printErr(QStringLiteral("korvi: cannot encode %1 as PNG; no file written").arg(what));
        return false;
    }
    return writeFile(path, png);
}

bool refuseSameFile(const QString &input, const QString &output, int &exitCode)
{
    const QFileInfo in(input);
    const QFileInfo out(output);
    const bool same = in.exists() && out.exists()
        ? in.canonicalFilePath() == out.canonicalFilePath()
        : QDir::cleanPath(in.absoluteFilePath()) == QDir::cleanPath(out.absoluteFilePath());
    if (same)
        exitCode = usageError(QStringLiteral("the output %1 is the input; it would be written over").arg(output));
    return same;
}

void printErr(const QString &text)
{
    StandardStreams::writeText(stderr, text + QLatin1Char('\n'));
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

void addCodePageOption(QCommandLineParser &parser)
{
    parser.addOption(QCommandLineOption(
        QStringLiteral("code-page"),
        QStringLiteral("The code page the skin's text is in (windows-1251, utf-8, iso-8859-5, koi8-r, ibm866, cp1250...)."),
        QStringLiteral("NAME")));
}

std::optional<SkinCodec> codePage(const QCommandLineParser &parser)
{
    if (!parser.isSet(QStringLiteral("code-page")))
        return SkinCodec::hostDefault();
    const QString name = parser.value(QStringLiteral("code-page"));
    const std::optional<SkinCodec> codec = SkinCodec::named(name);
    if (!codec) {
        usageError(QStringLiteral("%1; use one of %2")
                       .arg(SkinCodec::whyUnavailable(name), SkinCodec::availableNames().join(QStringLiteral(", "))));
    }
    return codec;
}

void readSkinFiles(clsKorviInterface &document, const QStringList &imported, const QString &file)
{
    for (const QString &path : imported)
        ReadUiFile(document, path, true);
    ReadUiFile(document, file, false);
}

} // namespace CommandLine
