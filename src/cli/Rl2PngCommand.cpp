// SPDX-License-Identifier: MIT
#include "CommandLine.h"
#include "Commands.h"

#include "ImageLoader.h"
#include "PictureProblem.h"

#include <QCommandLineParser>

// korvi rl2png IN OUT.png: transparent pixels stay magenta in the PNG, so that
// the picture can be edited and brought back with png2rl. A picture whose data
// ends early is written as far as it goes, and said so on stderr.
int runRl2Png(const QStringList &arguments)
{
    QCommandLineParser parser;
    if (const int usage = CommandLine::parseArguments(parser, arguments, QStringLiteral("usage: korvi rl2png IN OUT.png"), 2, 2))
        return usage;
    const QStringList args = parser.positionalArguments();
    if (int exitCode = 0; CommandLine::refuseSameFile(args.at(0), args.at(1), exitCode))
        return exitCode;
    QImage buffer;
    PictureProblem problem;
    const QSize size = ImageLoader::LoadImageFile(args.at(0), buffer, &problem);
    if (buffer.isNull()) {
        const QString why = problem.isProblem() ? problem.what : QStringLiteral("nothing decoded (%1 x %2)").arg(size.width()).arg(size.height());
        CommandLine::printErr(QStringLiteral("korvi: %1: %2; no file written").arg(args.at(0), why));
        return 1;
    }
    if (problem.isProblem())
        CommandLine::printErr(QStringLiteral("korvi: %1: %2").arg(args.at(0), problem.what));
    return CommandLine::writePng(args.at(1), buffer, args.at(0)) ? 0 : 1;
}
