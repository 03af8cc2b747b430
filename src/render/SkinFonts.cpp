// SPDX-License-Identifier: MIT
#include "SkinFonts.h"

#include "InfoSink.h"

#include <QDir>
#include <QFileInfo>
#include <QFontDatabase>
#include <QFontMetrics>

namespace {

// Families that skins name most, with free families of the same metrics, so that
// texts fit their boxes much as they do on the device.
struct Fallback
{
    const char *family;
    const char *replacement;
};

const Fallback kFallbacks[] = {
    { "verdana", "DejaVu Sans" },
    { "tahoma", "DejaVu Sans" },
    { "arial", "Liberation Sans" },
    { "times new roman", "Liberation Serif" },
    { "courier new", "Liberation Mono" },
};

// Any other missing family is drawn like the default font, Verdana.
const char *const kDefaultReplacement = "DejaVu Sans";

QString parentOf(const QString &folder)
{
    return QDir::cleanPath(folder + QStringLiteral("/.."));
}

bool isFontFile(const QString &name)
{
    const QString lower = name.toLower();
    return lower.endsWith(QLatin1String(".ttf")) || lower.endsWith(QLatin1String(".otf"))
        || lower.endsWith(QLatin1String(".ttc"));
}

QStringList fontFilesIn(const QString &folder)
{
    QDir dir(folder);
    const QStringList names = dir.entryList(QDir::Files | QDir::Readable,
                                            QDir::Name | QDir::IgnoreCase);
    QStringList files;
    for (const QString &name : names) {
        if (isFontFile(name))
            files << dir.filePath(name);
    }
    return files;
}

} // namespace

SkinFonts::SkinFonts(InfoSink *sink)
    : mSink(sink)
{
}

QStringList SkinFonts::fontFolders(const SkinContext &context)
{
    QStringList bases;
    if (!context.UiFilePath.isEmpty()) {
        const QString uiFolder = QFileInfo(context.UiFilePath).absolutePath();
        bases << parentOf(uiFolder) << parentOf(parentOf(uiFolder));
    }
    if (!context.SkinDirectory.isEmpty()) {
        const QString skin = QDir::cleanPath(QFileInfo(context.SkinDirectory).absoluteFilePath());
        bases << skin << parentOf(skin);
    }
    QStringList folders;
    for (const QString &base : bases) {
        const QString folder = QDir::cleanPath(base + QStringLiteral("/fonts"));
        if (!folders.contains(folder))
            folders << folder;
    }
    return folders;
}

QStringList SkinFonts::loadSkinFonts(const SkinContext &context)
{
    QStringList added;
    for (const QString &folder : fontFolders(context)) {
        for (const QString &file : fontFilesIn(folder)) {
            const QString canonical = QFileInfo(file).canonicalFilePath();
            if (mAddedFiles.contains(canonical))
                continue;
            mAddedFiles.insert(canonical);
            const int id = QFontDatabase::addApplicationFont(file);
            if (id < 0)
                continue;
            for (const QString &family : QFontDatabase::applicationFontFamilies(id)) {
                if (!added.contains(family))
                    added << family;
                if (!mLoadedFamilies.contains(family))
                    mLoadedFamilies << family;
            }
        }
    }
    if (!added.isEmpty()) {
        mKnownFamilies.clear();
        mResolved.clear();
    }
    return added;
}

QString SkinFonts::fallbackFamily(const QString &name)
{
    const QString lower = name.trimmed().toLower();
    for (const Fallback &f : kFallbacks) {
        if (lower == QLatin1String(f.family))
            return QLatin1String(f.replacement);
    }
    return QLatin1String(kDefaultReplacement);
}

bool SkinFonts::platformHasFamily(const QString &name)
{
    if (mKnownFamilies.isEmpty()) {
        for (const QString &family : QFontDatabase::families())
            mKnownFamilies.insert(family.toLower());
    }
    return mKnownFamilies.contains(name.toLower());
}

namespace {

QString scriptName(QChar::Script script)
{
    switch (script) {
    case QChar::Script_Cyrillic:
        return QStringLiteral("Cyrillic");
    case QChar::Script_Greek:
        return QStringLiteral("Greek");
    case QChar::Script_Latin:
        return QStringLiteral("Latin");
    case QChar::Script_Arabic:
        return QStringLiteral("Arabic");
    case QChar::Script_Hebrew:
        return QStringLiteral("Hebrew");
    case QChar::Script_Han:
        return QStringLiteral("Chinese");
    case QChar::Script_Hiragana:
    case QChar::Script_Katakana:
        return QStringLiteral("Japanese");
    case QChar::Script_Hangul:
        return QStringLiteral("Korean");
    default:
        return QStringLiteral("some");
    }
}

} // namespace

void SkinFonts::reportMissingLetters(const QFont &font, const QString &text)
{
    if (!mSink)
        return;
    const QFontMetrics metrics(font);
    const QString family = font.family();
    for (const QChar c : text) {
        // ASCII is in every font a skin names; only other letters can be missing.
        if (c.unicode() < 0x80 || !c.isLetter())
            continue;
        const QPair<QString, int> key(family, int(c.script()));
        // The first letter of a script tells for the script: a font has a
        // script's alphabet or none of it.
        if (mScriptsChecked.contains(key))
            continue;
        mScriptsChecked.insert(key);
        if (metrics.inFont(c))
            continue;
        mSink->append(QStringLiteral("Font %1 has no %2 letters, drawn with the system's fallback font\r\n")
                          .arg(font.family(), scriptName(c.script())));
    }
}

QString SkinFonts::resolveFamily(const QString &name)
{
    const QString key = name.toLower();
    auto known = mResolved.constFind(key);
    if (known == mResolved.constEnd())
        known = mResolved.insert(key, platformHasFamily(name) ? name : fallbackFamily(name));
    const QString family = *known;
    // Told once per drawing, however often the drawing asks for it.
    if (mSink && !platformHasFamily(name) && !mReported.contains(key)) {
        mReported.insert(key);
        mSink->append(QStringLiteral("Font %1 not found, drawn with %2\r\n").arg(name, family));
    }
    return family;
}

void SkinFonts::newDrawing()
{
    mReported.clear();
    mScriptsChecked.clear();
}
