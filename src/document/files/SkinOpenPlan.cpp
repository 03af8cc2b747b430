// SPDX-License-Identifier: MIT
#include "SkinOpenPlan.h"

#include "SkinFolderListing.h"
#include "SkinFormatName.h"
#include "UiFileReader.h"

#include <QDir>
#include <QFileInfo>

#include <new>
#include <optional>

namespace {

QString absolutePath(const QString &path)
{
    return QDir::cleanPath(QFileInfo(path).absoluteFilePath());
}

// The shared scheme of the skin whose ui folder is `folder`: "main_scheme.ui"
// in its parent, when that is a skin file; empty otherwise.
QString schemeOf(const QString &folder)
{
    const QString scheme = QDir::cleanPath(folder + QStringLiteral("/../main_scheme.ui"));
    return SkinFolderListing::isSkinFile(scheme) ? scheme : QString();
}

} // namespace

QStringList SkinOpenPlan::templateFilesBeside(const QString &path)
{
    const QString self = absolutePath(path);
    QStringList files = SkinFolderListing::templateFilesIn(QFileInfo(self).absolutePath());
    files.removeAll(self);
    return files;
}

QString SkinOpenPlan::mainSchemeFor(const QString &path)
{
    return schemeOf(QFileInfo(absolutePath(path)).absolutePath());
}

SkinOpenPlan SkinOpenPlan::forFile(const QString &path)
{
    SkinOpenPlan plan;
    plan.skinFormat = SkinFormatName::fromFileName(path);
    plan.uiFilePath = absolutePath(path);
    for (const QString &file : templateFilesBeside(path))
        plan.files.append({ file, true });
    const QString scheme = mainSchemeFor(path);
    if (!scheme.isEmpty())
        plan.files.append({ scheme, true });
    plan.files.append({ plan.uiFilePath, false });
    return plan;
}

SkinOpenPlan SkinOpenPlan::forFolder(const QString &folder)
{
    SkinOpenPlan plan;
    plan.wholeFolder = true;
    const QString ui = absolutePath(folder);
    QString lastFile;
    for (const QString &file : SkinFolderListing::uiFilesIn(ui)) {
        plan.files.append({ file, false });
        const QString format = SkinFormatName::fromFileName(file);
        if (!format.isEmpty())
            plan.skinFormat = format;
        lastFile = file;
    }
    // Pictures are looked up from the ui folder: the last file's, or a file
    // of that folder when it holds none.
    plan.uiFilePath = lastFile.isEmpty() ? QDir(ui).absoluteFilePath(QStringLiteral("skin.ui")) : lastFile;
    const QString scheme = schemeOf(ui);
    if (!scheme.isEmpty())
        plan.files.append({ scheme, false });
    for (const QString &file : SkinFolderListing::uiFilesIn(QDir::cleanPath(ui + QStringLiteral("/../../common/ui"))))
        plan.files.append({ file, false });
    return plan;
}

QStringList SkinOpenPlan::paths() const
{
    QStringList list;
    for (const File &file : files)
        list << file.path;
    return list;
}

QVector<SkinReadError> SkinOpenPlan::readInto(clsKorviInterface &document, const Progress &progress) const
{
    QVector<SkinReadError> errors;
    for (const File &file : files) {
        std::optional<SkinReadError> failure;
        try {
            ReadUiFile(document, file.path, file.imported);
        } catch (const SkinReadError &error) {
            failure = error;
        } catch (const std::bad_alloc &) {
            failure = SkinReadError::outOfMemory(file.path);
        }
        if (failure) {
            errors.append(*failure);
            if (progress.readError)
                progress.readError(*failure);
        }
        if (progress.fileDone)
            progress.fileDone(file.path);
    }
    return errors;
}
