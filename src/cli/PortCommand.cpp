// SPDX-License-Identifier: MIT
#include "Commands.h"

#include "CommandLine.h"
#include "SkinPort.h"

#include <QCommandLineParser>

namespace {

const char kUsage[] = "korvi port SKIN_DIR --from FORMAT --to FORMAT [--aspect stretch|fit] "
                      "[--fonts scale|keep|MAP.txt] [--dry-run] [--report R.json] [--force]";

int usage(const QString &problem)
{
    return CommandLine::usageError(problem + QStringLiteral("\nusage: ") + QLatin1String(kUsage));
}

} // namespace

// korvi port SKIN_DIR --from A --to B [...]: makes the skin's folders for
// another screen beside the old ones.
int runPort(const QStringList &arguments)
{
    QCommandLineParser parser;
    const QCommandLineOption from(QStringLiteral("from"), QStringLiteral("the format to port from"), QStringLiteral("FORMAT"));
    const QCommandLineOption to(QStringLiteral("to"), QStringLiteral("the format to make"), QStringLiteral("FORMAT"));
    const QCommandLineOption aspect(QStringLiteral("aspect"), QStringLiteral("stretch or fit"), QStringLiteral("HOW"),
                                    QStringLiteral("stretch"));
    const QCommandLineOption fonts(QStringLiteral("fonts"), QStringLiteral("scale, keep or a size map file"),
                                   QStringLiteral("HOW"), QStringLiteral("scale"));
    const QCommandLineOption dryRun(QStringLiteral("dry-run"), QStringLiteral("print the report, write nothing"));
    const QCommandLineOption report(QStringLiteral("report"), QStringLiteral("write the report as JSON"),
                                    QStringLiteral("R.json"));
    const QCommandLineOption force(QStringLiteral("force"), QStringLiteral("replace target folders that exist"));
    parser.addOptions({ from, to, aspect, fonts, dryRun, report, force });
    CommandLine::addCodePageOption(parser);
    if (!parser.parse(QStringList { QStringLiteral("korvi port") } + arguments))
        return usage(parser.errorText());
    if (parser.positionalArguments().size() != 1 || !parser.isSet(from) || !parser.isSet(to))
        return usage(QStringLiteral("a skin folder, --from and --to are needed"));

    SkinPort::Options options;
    options.skinDir = parser.positionalArguments().at(0);
    options.from = parser.value(from);
    options.to = parser.value(to);
    const QString aspectValue = parser.value(aspect);
    if (aspectValue == QLatin1String("fit"))
        options.aspect = SkinPort::Options::Aspect::Fit;
    else if (aspectValue != QLatin1String("stretch"))
        return usage(QStringLiteral("--aspect is stretch or fit"));
    const QString fontsValue = parser.value(fonts);
    if (fontsValue == QLatin1String("keep")) {
        options.fonts = PortScale::Fonts::Keep;
    } else if (fontsValue != QLatin1String("scale")) {
        options.fonts = PortScale::Fonts::Map;
        options.fontMapFile = fontsValue;
    }
    options.dryRun = parser.isSet(dryRun);
    options.force = parser.isSet(force);
    const std::optional<SkinCodec> codec = CommandLine::codePage(parser);
    if (!codec)
        return 2;
    options.codec = *codec;

    const SkinPort::Result result = SkinPort(options).run();
    if (!result.ok) {
        CommandLine::printErr(QStringLiteral("korvi port: ") + result.error);
        return 1;
    }
    CommandLine::printText(result.report.text());
    if (parser.isSet(report)) {
        if (!CommandLine::writeFile(parser.value(report), result.report.json()))
            return 1;
    }
    return 0;
}
