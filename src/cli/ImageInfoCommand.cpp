// SPDX-License-Identifier: MIT
#include "CommandLine.h"
#include "Commands.h"

#include "ImageLoader.h"
#include "FileReading.h"
#include "PictureProblem.h"
#include "RlHeader.h"

#include <QBuffer>
#include <QCommandLineParser>
#include <QImageReader>

namespace {

QString rlInfo(const QByteArray &bytes)
{
    RlHeader header;
    if (!RlHeader::read(bytes, header))
        return QStringLiteral("header: shorter than %1 bytes\n").arg(RlHeader::kSize);
    return QStringLiteral("size: %1 x %2\nflags: %3\npalette entries: %4\nrow-table entries: %5\n")
        .arg(header.width).arg(header.height).arg(header.flags).arg(header.paletteCount).arg(header.rowCount);
}

QString readerInfo(const QByteArray &bytes)
{
    QByteArray copy = bytes;
    QBuffer buffer(&copy);
    QImageReader reader(&buffer);
    const QSize size = reader.size();
    if (!size.isValid())
        return QStringLiteral("size: unreadable\n");
    return QStringLiteral("size: %1 x %2\n").arg(size.width()).arg(size.height());
}

} // namespace

// korvi image-info FILE
int runImageInfo(const QStringList &arguments)
{
    QCommandLineParser parser;
    if (const int usage = CommandLine::parseArguments(parser, arguments, QStringLiteral("usage: korvi image-info FILE"), 1, 1))
        return usage;
    const QStringList args = parser.positionalArguments();
    QByteArray bytes;
    QString error;
    if (!FileReading::readWhole(args.first(), bytes, error)) {
        CommandLine::printErr(QStringLiteral("korvi: cannot read ") + error);
        return 1;
    }
    const QString kind = ImageLoader::Kind(args.first(), bytes);
    if (kind.isEmpty()) {
        CommandLine::printText(QStringLiteral("kind: none\nbytes: %1\n").arg(bytes.size()));
        return 1;
    }
    QString text = QStringLiteral("kind: ") + kind + QLatin1Char('\n');
    text += kind == QLatin1String("RL") ? rlInfo(bytes) : readerInfo(bytes);
    text += QStringLiteral("bytes: %1\n").arg(bytes.size());
    CommandLine::printText(text);
    // A picture that ends early, or cannot be decoded, is said so.
    QImage decoded;
    PictureProblem problem;
    ImageLoader::LoadImageBytes(args.first(), bytes, decoded, &problem);
    if (problem.isProblem())
        CommandLine::printErr(QStringLiteral("korvi: %1: %2").arg(args.first(), problem.what));
    return 0;
}
