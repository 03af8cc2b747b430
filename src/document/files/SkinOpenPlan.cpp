// SPDX-License-Identifier: MIT
#include "SkinOpenPlan.h"

#include "SkinFolderListing.h"
#include "SkinLoader.h"
#include "UiFileReader.h"

#include <QDir>
#include <QFileInfo>

SkinOpenPlan SkinOpenPlan::forFile(const QString &path)
{
    SkinOpenPlan plan;
    plan.skinFormat = SkinLoader::skinFormatFromFileName(path);
    plan.uiFilePath = QDir::cleanPath(QFileInfo(path).absoluteFilePath());
    for (const QString &file : SkinLoader::templateFilesBeside(path))
        plan.files.append({ file, true });
    const QString scheme = SkinLoader::mainSchemeFor(path);
    if (!scheme.isEmpty())
        plan.files.append({ scheme, true });
    plan.files.append({ plan.uiFilePath, false });
    return plan;
}

SkinOpenPlan SkinOpenPlan::forFolder(const QString &folder)
{
    SkinOpenPlan plan;
    plan.wholeFolder = true;
    QString lastFile;
    for (const QString &file : SkinFolderListing::uiFilesIn(folder)) {
        plan.files.append({ file, false });
        const QString format = SkinLoader::skinFormatFromFileName(file);
        if (!format.isEmpty())
            plan.skinFormat = format;
        lastFile = file;
    }
    // Pictures are looked up from the ui folder: the last file's, or a file
    // of that folder when it holds none.
    plan.uiFilePath = lastFile.isEmpty() ? QDir(folder).absoluteFilePath(QStringLiteral("skin.ui"))
                                         : QFileInfo(lastFile).absoluteFilePath();
    const QString scheme = QDir::cleanPath(folder + QStringLiteral("/../main_scheme.ui"));
    if (QFileInfo(scheme).isFile())
        plan.files.append({ scheme, false });
    const QString common = QDir::cleanPath(folder + QStringLiteral("/../../common/ui"));
    for (const QString &file : SkinFolderListing::uiFilesIn(common))
        plan.files.append({ file, false });
    return plan;
}

QVector<SkinReadError> SkinOpenPlan::readInto(clsKorviInterface &document) const
{
    QVector<SkinReadError> errors;
    for (const File &file : files) {
        try {
            ReadUiFile(document, file.path, file.imported);
        } catch (const SkinReadError &error) {
            errors.append(error);
        }
    }
    return errors;
}
