// SPDX-License-Identifier: MIT
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

// Candidates are written with the host's separators throughout, so that the
// ".." steps collapse in the report: on Windows the folders Qt gives with "/"
// are turned to "\\" first.
QString ResourceLookup::uiFolder() const
{
    return QDir::toNativeSeparators(GetParentFolder(mContext.UiFilePath));
}

QString ResourceLookup::probe(const QStringList &candidates, const QString &fileName, bool *found,
                              FileStamp *stamp) const
{
    QString report;
    FileStamp seen;
    for (const QString &candidate : candidates) {
        if (FileExists(candidate, seen)) {
            if (found)
                *found = true;
            if (stamp)
                *stamp = seen;
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
    bool found = false;
    FileStamp stamp;
    return locate(reference, shared, found, stamp);
}

QString ResourceLookup::locate(const QString &reference, bool shared, bool &found, FileStamp &stamp) const
{
    const QString F = GetFileName(reference, true);
    const QString U = uiFolder();
    const QString D = QDir::toNativeSeparators(mContext.SkinDirectory);
    const QString &R = mContext.SkinFormat;
    const bool haveD = !D.isEmpty();
    const bool haveDR = haveD && !R.isEmpty();

    enum Place { UiSibling, UiCommon, SkinCommon, SkinFormat, SkinVga };
    Place order[5];
    int count = 0;
    if (shared) {
        order[count++] = UiCommon;
        if (haveD)
            order[count++] = SkinCommon;
        order[count++] = UiSibling;
        if (haveDR) {
            order[count++] = SkinFormat;
            order[count++] = SkinVga;
        }
    } else {
        order[count++] = UiSibling;
        if (haveDR)
            order[count++] = SkinFormat;
        order[count++] = UiCommon;
        if (haveD)
            order[count++] = SkinCommon;
        if (haveDR)
            order[count++] = SkinVga;
    }

    // Each candidate is built only when its turn comes: the first one is found
    // most of the time, and every lookup goes to the disk again.
    const QChar s = QDir::separator();
    auto pathOf = [&](Place place) {
        QString path;
        path.reserve(U.size() + D.size() + R.size() + F.size() + 24);
        switch (place) {
        case UiSibling:
            path.append(U).append(s).append(QLatin1String("..")).append(s).append(F);
            break;
        case UiCommon:
            path.append(U).append(s).append(QLatin1String("..")).append(s).append(QLatin1String(".."));
            path.append(s).append(QLatin1String("common")).append(s).append(F);
            break;
        case SkinCommon:
            path.append(D).append(s).append(QLatin1String("common")).append(s).append(F);
            break;
        case SkinFormat:
            path.append(D).append(s).append(R).append(s).append(F);
            break;
        case SkinVga:
            path.append(D).append(s).append(QLatin1String("common")).append(s).append(QLatin1String("vga"));
            path.append(s).append(R).append(s).append(F);
            break;
        }
        return path;
    };

    QString report;
    QString candidate;
    for (int i = 0; i < count; ++i) {
        candidate = pathOf(order[i]);
        if (FileExists(candidate, stamp)) {
            found = true;
            return candidate;
        }
        AddMissingFileMessage(report, F, candidate);
    }
    found = false;
    mInfo.append(report + QStringLiteral("\r\n"));
    return candidate;
}

ImageFile ResourceLookup::GetImageFile(const QByteArray &reference, const SkinCodec &codec) const
{
    return GetImageFile(codec.toText(reference));
}

ImageFile ResourceLookup::GetImageFile(const QString &ref) const
{
    ImageFile result;
    QString reference = ref;
    QString name = GetFileName(reference, true);
    result.spriteCount = spriteCountOf(reference);
    const bool shared = reference.contains(QLatin1Char('$'));
    QString found;
    // Whether `found` exists, as its own probe saw it: a found file is not
    // looked at again.
    bool exists = false;
    FileStamp stamp;

    if (GetExtension(name) == QLatin1String("spr")) {
        found = locate(reference, shared, exists, stamp);
        if (exists) {
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
        found = locate(reference, shared, exists, stamp);
    if (!found.isEmpty() && exists) {
        result.path = found;
        result.stamp = stamp;
    }
    return result;
}

QString ResourceLookup::LocateBackground() const
{
    const QString s = sep();
    const QString tail = QStringLiteral("background") + s + QStringLiteral("default.bmp");
    QStringList candidates;
    candidates << join({ uiFolder(), s, QStringLiteral(".."), s, tail });
    if (!mContext.SkinDirectory.isEmpty() && !mContext.SkinFormat.isEmpty())
        candidates << join({ QDir::toNativeSeparators(mContext.SkinDirectory), s, mContext.SkinFormat, s, tail });
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
