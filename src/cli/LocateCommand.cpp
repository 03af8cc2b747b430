#include "CommandLine.h"
#include "Commands.h"

#include "ResourceLookup.h"
#include "StringInfoSink.h"

namespace {

const QString kUsage = QStringLiteral("usage: korvi locate [--ui UIFILE] [--skin-dir D] [--format R] REF");

} // namespace

// korvi locate [--ui UIFILE] [--skin-dir D] [--format R] REF
// The paths are used as given, as the editor uses the values it holds.
int runLocate(const QStringList &args)
{
    SkinContext context;
    QStringList rest;
    for (int i = 0; i < args.size(); ++i) {
        const QString &arg = args.at(i);
        QString *target = nullptr;
        if (arg == QLatin1String("--ui"))
            target = &context.UiFilePath;
        else if (arg == QLatin1String("--skin-dir"))
            target = &context.SkinDirectory;
        else if (arg == QLatin1String("--format"))
            target = &context.SkinFormat;
        if (!target) {
            rest << arg;
            continue;
        }
        if (i + 1 >= args.size())
            return CommandLine::usageError(arg + QStringLiteral(" needs a value"));
        *target = args.at(++i);
    }
    if (rest.size() != 1)
        return CommandLine::usageError(kUsage);

    StringInfoSink info;
    const ImageFile file = ResourceLookup(context, info).GetImageFile(rest.first());
    QString text;
    text += QStringLiteral("path: ") + file.path + QLatin1Char('\n');
    text += QStringLiteral("sprites: %1\n").arg(file.spriteCount);
    text += QStringLiteral("stripes: %1\n").arg(file.stripes);
    text += QStringLiteral("grab_center: ") + (file.grabCenter ? QStringLiteral("true") : QStringLiteral("false")) + QLatin1Char('\n');
    // The report exactly as the information box would receive it, CR LF kept.
    text += info.text();
    CommandLine::printOut(text.toUtf8());
    return 0;
}
