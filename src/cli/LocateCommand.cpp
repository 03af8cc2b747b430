// SPDX-License-Identifier: MIT
#include "CommandLine.h"
#include "Commands.h"

#include "ResourceLookup.h"
#include "StringInfoSink.h"

#include <QCommandLineParser>
#include <QFileInfo>

namespace {

const QString kUsage = QStringLiteral("usage: korvi locate [--ui UIFILE] [--skin-dir D] [--format R] [--code-page NAME] REF");

} // namespace

// korvi locate [--ui UIFILE] [--skin-dir D] [--format R] [--code-page NAME] REF
// The paths are used as given, as the editor uses the values it holds. REF is
// looked up as it would stand in a skin in that code page: as the skin's bytes.
// Exits 1 when nothing is found.
int runLocate(const QStringList &args)
{
    QCommandLineParser parser;
    const QCommandLineOption ui(QStringLiteral("ui"), QStringLiteral("The open .ui file."), QStringLiteral("UIFILE"));
    const QCommandLineOption skinDir(QStringLiteral("skin-dir"), QStringLiteral("The default skin directory."),
                                     QStringLiteral("D"));
    const QCommandLineOption format(QStringLiteral("format"), QStringLiteral("The skin format."), QStringLiteral("R"));
    parser.addOptions({ ui, skinDir, format });
    CommandLine::addCodePageOption(parser);
    if (const int usage = CommandLine::parseArguments(parser, args, kUsage, 1, 1))
        return usage;
    if (parser.isSet(ui) && !QFileInfo(parser.value(ui)).isFile())
        return CommandLine::usageError(QStringLiteral("--ui: no such file: %1").arg(parser.value(ui)));
    if (parser.isSet(skinDir) && !QFileInfo(parser.value(skinDir)).isDir())
        return CommandLine::usageError(QStringLiteral("--skin-dir: no such folder: %1").arg(parser.value(skinDir)));
    const std::optional<SkinCodec> codec = CommandLine::codePage(parser);
    if (!codec)
        return 2;
    const QString typed = parser.positionalArguments().first();
    const std::optional<QByteArray> reference = codec->toBytes(typed);
    if (!reference) {
        CommandLine::printErr(QStringLiteral("korvi locate: ") + codec->refusal(typed));
        return 1;
    }
    SkinContext context;
    context.UiFilePath = parser.value(ui);
    context.SkinDirectory = parser.value(skinDir);
    context.SkinFormat = parser.value(format);

    StringInfoSink info;
    const ImageFile file = ResourceLookup(context, info).GetImageFile(*reference, *codec);
    QString text;
    text += QStringLiteral("path: ") + file.path + QLatin1Char('\n');
    text += QStringLiteral("sprites: %1\n").arg(file.spriteCount);
    text += QStringLiteral("stripes: %1\n").arg(file.stripes);
    text += QStringLiteral("grab_center: ") + (file.grabCenter ? QStringLiteral("true") : QStringLiteral("false")) + QLatin1Char('\n');
    // The report exactly as the information box would receive it, CR LF kept.
    text += info.text();
    CommandLine::printText(text);
    // The report says where it looked; the exit code says whether it found.
    return file.path.isEmpty() ? 1 : 0;
}
