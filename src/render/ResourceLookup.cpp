#include "ResourceLookup.h"

#include "SkinFileNames.h"
#include "SkinNumber.h"
#include "SpriteDescriptor.h"

#include <QDir>
#include <QFile>
#include <QStringList>
#include <algorithm>
#include <limits>

using namespace SkinFileNames;

namespace {

const QString kBackgroundName = QStringLiteral("BACKGROUND default.bmp");

QString sep()
{
    return QString(QDir::separator());
}

// U/../F style joins: the separators are the host's, the ".." steps stay as text.
QString join(std::initializer_list<QString> parts)
{
    QString path;
    for (const QString &part : parts)
        path += part;
    return path;
}

qint16 spriteCountOf(const QString &reference)
{
    const qsizetype hash = reference.indexOf(QLatin1Char('#'));
    if (hash < 0)
        return 1;
    // Skin text is 8-bit; the number after "#" is plain ASCII when there is one.
    const qint64 value = SkinNumber::leadingInteger(reference.mid(hash + 1).toLatin1());
    // A count beyond the 16-bit range is held at its end rather than wrapping.
    return qint16(std::clamp<qint64>(value, std::numeric_limits<qint16>::min(),
                                     std::numeric_limits<qint16>::max()));
}

bool isPictureExtension(const QString &extension)
{
    return extension == QLatin1String("bmp") || extension == QLatin1String("jpg");
}

} // namespace

ResourceLookup::ResourceLookup(const SkinContext &context, InfoSink &info)
    : mContext(context)
    , mInfo(info)
{
}

QString ResourceLookup::uiFolder() const
{
    return GetParentFolder(mContext.UiFilePath);
}

QString ResourceLookup::probe(const QStringList &candidates, const QString &fileName, bool *found) const
{
    QString report;
    for (const QString &candidate : candidates) {
        if (FileExists(candidate)) {
            if (found)
                *found = true;
            return candidate;
        }
        AddMissingFileMessage(report, fileName, candidate);
    }
    if (found)
        *found = false;
    mInfo.append(report + QStringLiteral("\r\n"));
    return candidates.isEmpty() ? QString() : candidates.last();
}

QString ResourceLookup::LocateSkinFile(const QString &reference, bool shared) const
{
    const QString F = GetFileName(reference, true);
    const QString U = uiFolder();
    const QString &D = mContext.SkinDirectory;
    const QString &R = mContext.SkinFormat;
    const QString s = sep();
    const QString up = s + QStringLiteral("..") + s;
    const bool haveD = !D.isEmpty();
    const bool haveDR = haveD && !R.isEmpty();

    const QString uiSibling = join({ U, up, F });
    const QString uiCommon = join({ U, up, QStringLiteral(".."), s, QStringLiteral("common"), s, F });
    const QString skinCommon = join({ D, s, QStringLiteral("common"), s, F });
    const QString skinFormat = join({ D, s, R, s, F });
    const QString skinVga = join({ D, s, QStringLiteral("common"), s, QStringLiteral("vga"), s, R, s, F });

    QStringList candidates;
    if (shared) {
        candidates << uiCommon;
        if (haveD)
            candidates << skinCommon;
        candidates << uiSibling;
        if (haveDR)
            candidates << skinFormat << skinVga;
    } else {
        candidates << uiSibling;
        if (haveDR)
            candidates << skinFormat;
        candidates << uiCommon;
        if (haveD)
            candidates << skinCommon;
        if (haveDR)
            candidates << skinVga;
    }
    return probe(candidates, F);
}

ImageFile ResourceLookup::GetImageFile(const QByteArray &reference) const
{
    return GetImageFile(QFile::decodeName(reference));
}

ImageFile ResourceLookup::GetImageFile(const QString &ref) const
{
    ImageFile result;
    QString reference = ref;
    QString name = GetFileName(reference, true);
    result.spriteCount = spriteCountOf(reference);
    const bool shared = reference.contains(QLatin1Char('$'));
    QString found;

    if (GetExtension(name) == QLatin1String("spr")) {
        found = LocateSkinFile(reference, shared);
        if (FileExists(found)) {
            const SpriteDescriptor descriptor = SpriteDescriptor::readFile(found);
            result.stripes = descriptor.Stripes;
            result.grabCenter = descriptor.GrabCenter;
        }
        // Only the lower-case ".spr" is replaced, while the extension test above
        // ignores case: a ".SPR" reference reads its descriptor and then keeps
        // the descriptor's own path as the picture. This is deliberate.
        name.replace(QLatin1String(".spr"), QLatin1String(".bmp"));
        reference.replace(QLatin1String(".spr"), QLatin1String(".bmp"));
    }
    if (isPictureExtension(GetExtension(name)))
        found = LocateSkinFile(reference, shared);
    if (!found.isEmpty() && FileExists(found))
        result.path = found;
    return result;
}

QString ResourceLookup::LocateBackground() const
{
    const QString s = sep();
    const QString tail = QStringLiteral("background") + s + QStringLiteral("default.bmp");
    QStringList candidates;
    candidates << join({ uiFolder(), s, QStringLiteral(".."), s, tail });
    if (!mContext.SkinDirectory.isEmpty() && !mContext.SkinFormat.isEmpty())
        candidates << join({ mContext.SkinDirectory, s, mContext.SkinFormat, s, tail });
    bool found = false;
    const QString path = probe(candidates, kBackgroundName, &found);
    return found ? path : QString();
}

QString ResourceLookup::CollapseParentDirs(const QString &path)
{
    return CollapseParentDirs(path, QDir::separator());
}

QString ResourceLookup::CollapseParentDirs(const QString &path, QChar separator)
{
    const QString step = QString(separator) + QStringLiteral("..") + QString(separator);
    QString result = path;
    for (;;) {
        const qsizetype p = result.indexOf(step); // 0-based: the 1-based position is p + 1
        // A step at the very start has no folder before it to remove.
        if (p < 1)
            break;
        const qsizetype q = result.lastIndexOf(separator, p - 1); // -1 when none
        result = result.left(q + 1) + result.mid(p + step.size());
    }
    return result;
}

void ResourceLookup::AddMissingFileMessage(QString &report, const QString &fileName, const QString &path)
{
    report += QStringLiteral("Unable to locate ") + fileName + QStringLiteral(" in ")
        + CollapseParentDirs(path) + QStringLiteral("\r\n");
}
