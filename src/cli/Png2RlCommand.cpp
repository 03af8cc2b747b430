// SPDX-License-Identifier: MIT
#include "CommandLine.h"
#include "Commands.h"

#include "RlEncoder.h"

#include <QCommandLineParser>
#include <QFile>
#include <QImageReader>

// korvi png2rl IN.png OUT.bmp [--wide-palette]
int runPng2Rl(const QStringList &arguments)
{
    QCommandLineParser parser;
    const QCommandLineOption widePalette(QStringLiteral("wide-palette"), QStringLiteral("Palette entries of three bytes (flags bit 0)."));
    parser.addOption(widePalette);
    if (const int usage = CommandLine::parseArguments(
            parser, arguments, QStringLiteral("usage: korvi png2rl IN.png OUT.bmp [--wide-palette]"), 2, 2))
        return usage;
    const bool wide = parser.isSet(widePalette);
    const QStringList args = parser.positionalArguments();
    QImageReader reader(args.at(0));
    const QImage image = reader.read();
    if (image.isNull()) {
        CommandLine::printErr(QStringLiteral("korvi: cannot read %1: %2").arg(args.at(0), reader.errorString()));
        return 1;
    }
    const RlEncoder::Result result = RlEncoder::encode(image, wide);
    if (!result.error.isEmpty()) {
        CommandLine::printErr(QStringLiteral("korvi: cannot encode %1: %2").arg(args.at(0), result.error));
        return 1;
    }
    QFile out(args.at(1));
    if (!out.open(QIODevice::WriteOnly) || out.write(result.bytes) != result.bytes.size()) {
        CommandLine::printErr(QStringLiteral("korvi: cannot write %1").arg(args.at(1)));
        return 1;
    }
    return 0;
}
