// SPDX-License-Identifier: MIT
#include "CommandLine.h"
#include "DrawingPlatform.h"
#include "StandardStreams.h"
#include "Commands.h"
#include "KorviProject.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <QGuiApplication>
#include <QRegularExpression>
#include <new>
#include <memory>

namespace {

struct Subcommand
{
    const char *name;
    int (*run)(const QStringList &args);
    const char *summary;
    // Whether it reads a skin's text, and so takes --code-page NAME.
    bool takesCodePage = false;
};

// One line per subcommand; keep in step with README.md.
const Subcommand kSubcommands[] = {
    { "dump", runDump, "dump [-i IMPORTED.ui]... FILE.ui            print the document read as JSON", true },
    { "format", runFormat, "format [-i IMPORTED.ui]... FILE.ui OUT.ui  write the document back (with a backup)" },
    { "locate", runLocate, "locate [--ui UIFILE] [--skin-dir D] [--format R] REF  find a picture as the editor does", true },
    { "rl2png", runRl2Png, "rl2png IN OUT.png                          decode a skin picture to PNG (magenta transparent)" },
    { "png2rl", runPng2Rl, "png2rl IN.png OUT.bmp [--wide-palette]     encode a picture as an RL skin picture" },
    { "image-info", runImageInfo, "image-info FILE                            kind, size and RL layout of a picture" },
    { "render", runRender, "render FILE.ui (--layer NAME | --all-layers) -o OUT [...]  draw layers to PNG pictures", true },
    { "set", runSet, "set FILE.ui NODEKEY KEY=VALUE... [-o OUT]   set properties, saving only what changed", true },
    { "unset", runUnset, "unset FILE.ui NODEKEY KEY... [-o OUT]       remove properties, saving only what changed", true },
    { "lint", runLint, "lint [--skin-dir D] [--format R] (FILE.ui | FOLDER) [--json] [--werror] [--disable CODE,...]  report problems", true },
    { "port", runPort, "port SKIN_DIR --from A --to B [--aspect stretch|fit] [--fonts scale|keep|MAP.txt] [--dry-run] [--report R.json] [--force]  make the skin for another screen", true },
    { "remove", runRemove, "remove FILE.ui NODEKEY [-o OUT]            remove an element with its children, likewise", true },
};

// Qt's own remarks about the host's set-up (a bare environment without
// XDG_RUNTIME_DIR, say) are not the program's to pass on: a run says only what
// the command has to say. Everything else goes on as Qt would print it.
QtMessageHandler qtHandler = nullptr;

void withoutHostRemarks(QtMsgType type, const QMessageLogContext &context, const QString &message)
{
    if (type != QtFatalMsg && message.startsWith(QLatin1String("QStandardPaths: ")))
        return;
    if (qtHandler)
        qtHandler(type, context, message);
}

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
    text += QStringLiteral("\nrender, lint, set, unset, remove, locate, dump and port take --code-page NAME, the code page\n"
                           "of the skin's text (windows-1251, utf-8, iso-8859-5, koi8-r, ibm866, cp1250...);\n"
                           "without it, the system's own (Windows-1252 where the system has none). dump prints\n"
                           "the bytes as they are unless given one.\n");
    CommandLine::printText(text);
    return 0;
}

int printVersion()
{
    CommandLine::printOut(QByteArrayLiteral("korvi " KORVI_VERSION "\n"));
    return 0;
}

bool asksForHelp(const QStringList &args)
{
    return args.contains(QLatin1String("--help")) || args.contains(QLatin1String("-h"));
}

// The file a command ran out of memory on: the largest file it was given.
QString largestFileIn(const QStringList &args, qint64 &size)
{
    QString largest;
    size = -1;
    for (const QString &arg : args) {
        const QFileInfo info(arg);
        if (info.isFile() && info.size() > size) {
            largest = arg;
            size = info.size();
        }
    }
    return largest;
}

// Runs the subcommand; running out of memory ends it with a message instead
// of an abort.
int runGuarded(const Subcommand &s, const QStringList &args)
{
    if (asksForHelp(args)) {
        // The summary is the usage, then after a run of blanks what it does.
        const QStringList parts = QString::fromLatin1(s.summary).split(QRegularExpression(QStringLiteral("\\s{2,}")));
        QString text = QStringLiteral("usage: korvi %1").arg(parts.first());
        if (s.takesCodePage)
            text += QStringLiteral(" ") + CommandLine::codePageUsage();
        text += QLatin1Char('\n');
        if (parts.size() > 1)
            text += QStringLiteral("\n%1\n").arg(parts.mid(1).join(QLatin1Char(' ')));
        if (s.takesCodePage)
            text += QStringLiteral("\n--code-page NAME: the code page of the skin's text (windows-1251, utf-8, "
                                   "iso-8859-5,\nkoi8-r, ibm866, cp1250...); without it, the system's own.\n");
        CommandLine::printText(text);
        return 0;
    }
    try {
        return s.run(args);
    } catch (const std::bad_alloc &) {
        qint64 size = 0;
        const QString file = largestFileIn(args, size);
        if (file.isEmpty())
            CommandLine::printErr(QStringLiteral("korvi %1: not enough memory").arg(QLatin1String(s.name)));
        else
            CommandLine::printErr(QStringLiteral("korvi %1: not enough memory to read %2 (%3 MB)")
                                      .arg(QLatin1String(s.name), file)
                                      .arg((size + (1 << 20) - 1) >> 20));
        return 1;
    }
}

// A command whose output could not all be written has failed, whatever it did.
int finished(int exitCode)
{
    const QString failure = CommandLine::outputFailure();
    if (failure.isEmpty())
        return exitCode;
    CommandLine::printErr(QStringLiteral("korvi: cannot write to the standard output: ") + failure);
    return exitCode != 0 ? exitCode : 1;
}

} // namespace

int main(int argc, char *argv[])
{
    StandardStreams::writeBytesAsTheyAre();
    qtHandler = qInstallMessageHandler(withoutHostRemarks);
    const std::unique_ptr<QCoreApplication> app = makeApplication(argc, argv);
    QCoreApplication::setApplicationVersion(QStringLiteral(KORVI_VERSION));
    QStringList args = QCoreApplication::arguments().mid(1);
    if (args.isEmpty())
        return CommandLine::usageError(QStringLiteral("no subcommand given"));
    const QString name = args.takeFirst();
    if (name == QLatin1String("help") || name == QLatin1String("--help") || name == QLatin1String("-h"))
        return finished(printHelp());
    if (name == QLatin1String("version") || name == QLatin1String("--version"))
        return finished(printVersion());
    for (const Subcommand &s : kSubcommands) {
        if (name == QLatin1String(s.name))
            return finished(runGuarded(s, args));
    }
    return CommandLine::usageError(QStringLiteral("unknown subcommand \"%1\"").arg(name));
}
