#include "CommandLine.h"
#include "Commands.h"

#include "RlEncoder.h"

#include <QFile>
#include <QImageReader>

// korvi png2rl IN.png OUT.bmp [--wide-palette]
int runPng2Rl(const QStringList &arguments)
{
    QStringList args = arguments;
    const bool wide = args.removeAll(QStringLiteral("--wide-palette")) > 0;
    if (args.size() != 2)
        return CommandLine::usageError(QStringLiteral("usage: korvi png2rl IN.png OUT.bmp [--wide-palette]"));
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
