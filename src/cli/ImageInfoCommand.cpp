// SPDX-License-Identifier: MIT
#include "CommandLine.h"
#include "Commands.h"

#include "ImageLoader.h"
#include "RlHeader.h"

#include <QBuffer>
#include <QCommandLineParser>
#include <QFile>
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
    QFile file(args.first());
    if (!file.open(QIODevice::ReadOnly)) {
        CommandLine::printErr(QStringLiteral("korvi: cannot read %1").arg(args.first()));
        return 1;
    }
    const QByteArray bytes = file.readAll();
    const QString kind = ImageLoader::Kind(args.first(), bytes);
    if (kind.isEmpty()) {
        CommandLine::printOut(QStringLiteral("kind: none\nbytes: %1\n").arg(bytes.size()).toUtf8());
        return 1;
    }
    QString text = QStringLiteral("kind: ") + kind + QLatin1Char('\n');
    text += kind == QLatin1String("RL") ? rlInfo(bytes) : readerInfo(bytes);
    text += QStringLiteral("bytes: %1\n").arg(bytes.size());
    CommandLine::printOut(text.toUtf8());
    return 0;
}
