// SPDX-License-Identifier: MIT
#include "CommandLine.h"
#include "Commands.h"

#include "ImageLoader.h"

#include <QCommandLineParser>

// korvi rl2png IN OUT.png: transparent pixels stay magenta in the PNG, so that
// the picture can be edited and brought back with png2rl.
int runRl2Png(const QStringList &arguments)
{
    QCommandLineParser parser;
    if (const int usage = CommandLine::parseArguments(parser, arguments, QStringLiteral("usage: korvi rl2png IN OUT.png"), 2, 2))
        return usage;
    const QStringList args = parser.positionalArguments();
    QImage buffer;
    const QSize size = ImageLoader::LoadImageFile(args.at(0), buffer);
    if (buffer.isNull()) {
        CommandLine::printErr(QStringLiteral("korvi: nothing decoded from %1 (%2 x %3); no file written")
                                  .arg(args.at(0)).arg(size.width()).arg(size.height()));
        return 1;
    }
    if (!buffer.save(args.at(1), "PNG")) {
        CommandLine::printErr(QStringLiteral("korvi: cannot write %1").arg(args.at(1)));
        return 1;
    }
    return 0;
}
