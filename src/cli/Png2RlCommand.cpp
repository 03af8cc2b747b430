// SPDX-License-Identifier: MIT
#include "CommandLine.h"
#include "Commands.h"

#include "RlEncoder.h"

#include <QCommandLineParser>
#include "FileReading.h"

#include <QBuffer>
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
    if (int exitCode = 0; CommandLine::refuseSameFile(args.at(0), args.at(1), exitCode))
        return exitCode;
    QByteArray bytes;
    QString error;
    if (!FileReading::readWhole(args.at(0), bytes, error)) {
        CommandLine::printErr(QStringLiteral("korvi: cannot read ") + error);
        return 1;
    }
    QBuffer device(&bytes);
    QImageReader reader(&device);
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
    return CommandLine::writeFile(args.at(1), result.bytes) ? 0 : 1;
}
