// SPDX-License-Identifier: MIT
#include "SkinLoader.h"

#include "SkinFormatName.h"
#include "SkinReadError.h"
#include "UiFileReader.h"

#include <QDir>
#include <QFileInfo>
#include <new>

namespace {

bool isTemplateFileName(const QString &name)
{
    // Names are compared in ASCII lower case, as a Windows wildcard would match.
    const QByteArray lower = name.toLatin1().toLower();
    return lower.startsWith("templates") && lower.endsWith(".ui");
}

QString absolutePath(const QString &path)
{
    return QDir::cleanPath(QFileInfo(path).absoluteFilePath());
}

// A file exists for the loader when it can be opened for reading.
bool isReadableFile(const QString &path)
{
    const QFileInfo file(path);
    return file.isFile() && file.isReadable();
}

void readFile(clsKorviInterface &document, const QString &path, bool imported,
              const SkinLoader::ReadErrorHandler &onError)
{
    if (!onError) {
        ReadUiFile(document, path, imported);
        return;
    }
    try {
        ReadUiFile(document, path, imported);
    } catch (const SkinReadError &error) {
        onError(error);
    } catch (const std::bad_alloc &) {
        // What was read stays, marked as read in part like any reading error,
        // so that it is never saved over the whole file.
        onError(SkinReadError(path, 0, QStringLiteral("not enough memory to read %1 (%2 MB)")
                                           .arg(path)
                                           .arg((QFileInfo(path).size() + (1 << 20) - 1) >> 20)));
    }
}

} // namespace

namespace SkinLoader {

QString skinFormatFromFileName(const QString &path)
{
    return SkinFormatName::fromFileName(path);
}

QStringList templateFilesBeside(const QString &path)
{
    const QString self = absolutePath(path);
    const QDir folder = QFileInfo(self).absoluteDir();
    const QStringList names = folder.entryList(QDir::Files, QDir::Name | QDir::IgnoreCase);
    QStringList files;
    for (const QString &name : names) {
        if (!isTemplateFileName(name))
            continue;
        const QString file = absolutePath(folder.filePath(name));
        if (file != self)
            files << file;
    }
    return files;
}

QString mainSchemeFor(const QString &path)
{
    const QString folder = QFileInfo(absolutePath(path)).absolutePath();
    const QString scheme = QDir::cleanPath(folder + QStringLiteral("/../main_scheme.ui"));
    return isReadableFile(scheme) ? scheme : QString();
}

OpenedSkin openSkinFile(clsKorviInterface &document, const QString &path, const ReadErrorHandler &onError)
{
    OpenedSkin opened;
    opened.skinFormat = skinFormatFromFileName(path);
    for (const QString &file : templateFilesBeside(path)) {
        // A file that vanished since the listing is passed over.
        if (!isReadableFile(file))
            continue;
        readFile(document, file, true, onError);
        opened.filesRead << file;
    }
    const QString scheme = mainSchemeFor(path);
    if (!scheme.isEmpty()) {
        readFile(document, scheme, true, onError);
        opened.filesRead << scheme;
    }
    readFile(document, path, false, onError);
    opened.filesRead << absolutePath(path);
    return opened;
}

} // namespace SkinLoader
