// SPDX-License-Identifier: MIT
#include "CommandLine.h"
#include "DrawingPlatform.h"
#include "StandardStreams.h"
#include "Commands.h"
#include "KorviProject.h"

#include <QCoreApplication>
#include <QGuiApplication>
#include <memory>

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
    { "render", runRender, "render FILE.ui (--layer NAME | --all-layers) -o OUT [...]  draw layers to PNG pictures" },
    { "set", runSet, "set FILE.ui NODEKEY KEY=VALUE... [-o OUT]   set properties, saving only what changed" },
    { "unset", runUnset, "unset FILE.ui NODEKEY KEY... [-o OUT]       remove properties, saving only what changed" },
    { "lint", runLint, "lint [--skin-dir D] [--format R] (FILE.ui | FOLDER) [--json] [--werror] [--disable CODE,...]  report problems" },
    { "port", runPort, "port SKIN_DIR --from A --to B [--aspect stretch|fit] [--fonts scale|keep|MAP.txt] [--dry-run] [--report R.json] [--force]  make the skin for another screen" },
    { "remove", runRemove, "remove FILE.ui NODEKEY [-o OUT]            remove an element with its children, likewise" },
};

// Drawing texts needs the platform's fonts, so "render" runs as a GUI
// application, without a window.
std::unique_ptr<QCoreApplication> makeApplication(int &argc, char *argv[])
{
    if (argc > 1 && qstrcmp(argv[1], "render") == 0) {
        DrawingPlatform::chooseForDrawingWithoutWindow();
        return std::make_unique<QGuiApplication>(argc, argv);
    }
    return std::make_unique<QCoreApplication>(argc, argv);
}

int printHelp()
{
    QString text = QStringLiteral("usage: korvi SUBCOMMAND [ARGS]\n\nSubcommands:\n");
    for (const Subcommand &s : kSubcommands)
        text += QStringLiteral("  %1\n").arg(QLatin1String(s.summary));
    text += QStringLiteral("  version (or --version)                     print the program's version\n");
    CommandLine::printOut(text.toUtf8());
    return 0;
}

int printVersion()
{
    CommandLine::printOut(QByteArrayLiteral("korvi " KORVI_VERSION "\n"));
    return 0;
}

} // namespace

int main(int argc, char *argv[])
{
    StandardStreams::writeBytesAsTheyAre();
    const std::unique_ptr<QCoreApplication> app = makeApplication(argc, argv);
    QCoreApplication::setApplicationVersion(QStringLiteral(KORVI_VERSION));
    QStringList args = QCoreApplication::arguments().mid(1);
    if (args.isEmpty())
        return CommandLine::usageError(QStringLiteral("no subcommand given"));
    const QString name = args.takeFirst();
    if (name == QLatin1String("help") || name == QLatin1String("--help") || name == QLatin1String("-h"))
        return printHelp();
    if (name == QLatin1String("version") || name == QLatin1String("--version"))
        return printVersion();
    for (const Subcommand &s : kSubcommands) {
        if (name == QLatin1String(s.name))
            return s.run(args);
    }
    return CommandLine::usageError(QStringLiteral("unknown subcommand \"%1\"").arg(name));
}
