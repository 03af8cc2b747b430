#include "CommandLine.h"
#include "Commands.h"

#include <QCoreApplication>

namespace {

struct Subcommand
{
    const char *name;
    int (*run)(const QStringList &args);
    const char *summary;
};

// One line per subcommand; keep in step with README.md.
const Subcommand kSubcommands[] = {
    { "dump", runDump, "dump [-i IMPORTED.ui]... FILE.ui            print the document read as JSON" },
    { "format", runFormat, "format [-i IMPORTED.ui]... FILE.ui OUT.ui  write the document back (with a backup)" },
    { "locate", runLocate, "locate [--ui UIFILE] [--skin-dir D] [--format R] REF  find a picture as the editor does" },
    { "rl2png", runRl2Png, "rl2png IN OUT.png                          decode a skin picture to PNG (magenta transparent)" },
    { "png2rl", runPng2Rl, "png2rl IN.png OUT.bmp [--wide-palette]     encode a picture as an RL skin picture" },
    { "image-info", runImageInfo, "image-info FILE                            kind, size and RL layout of a picture" },
};

int printHelp()
{
    QString text = QStringLiteral("usage: korvi SUBCOMMAND [ARGS]\n\nSubcommands:\n");
    for (const Subcommand &s : kSubcommands)
        text += QStringLiteral("  %1\n").arg(QLatin1String(s.summary));
    CommandLine::printOut(text.toUtf8());
    return 0;
}

} // namespace

int main(int argc, char *argv[])
{
    QCoreApplication app(argc, argv);
    QStringList args = QCoreApplication::arguments().mid(1);
    if (args.isEmpty())
        return CommandLine::usageError(QStringLiteral("no subcommand given"));
    const QString name = args.takeFirst();
    if (name == QLatin1String("help") || name == QLatin1String("--help") || name == QLatin1String("-h"))
        return printHelp();
    for (const Subcommand &s : kSubcommands) {
        if (name == QLatin1String(s.name))
            return s.run(args);
    }
    return CommandLine::usageError(QStringLiteral("unknown subcommand \"%1\"").arg(name));
}
