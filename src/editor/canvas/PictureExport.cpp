// SPDX-License-Identifier: MIT
#include "PictureExport.h"

#include "Dialogs.h"

#include <QDir>
#include <QFileInfo>
#include <QImageWriter>
#include <QSaveFile>

namespace PictureExport {

namespace {

const QString kTitle = QStringLiteral("Export Picture");

bool write(Dialogs &dialogs, const QImage &picture, const QString &path)
{
    QSaveFile file(path);
    QImageWriter writer(&file, "png");
    const bool written = file.open(QIODevice::WriteOnly) && writer.write(picture) && file.commit();
    if (!written) {
        const QString why = writer.error() != QImageWriter::UnknownError ? writer.errorString() : file.errorString();
        dialogs.message(kTitle, QStringLiteral("Error saving file: ") + why, Dialogs::Icon::Warning);
    }
    return written;
}

} // namespace

bool ask(Dialogs &dialogs, const QImage &picture, const QString &startFolder)
{
    if (picture.isNull()) {
        dialogs.message(kTitle, QStringLiteral("The canvas shows no picture yet."), Dialogs::Icon::Information);
        return false;
    }
    QString path = dialogs.saveFileName(kTitle, startFolder, QStringLiteral("PNG Picture|*.png"));
    if (path.isEmpty())
        return false;
    if (QFileInfo(path).suffix().isEmpty())
        path += QStringLiteral(".png");
    if (QFileInfo::exists(path)
        && dialogs.message(kTitle, QStringLiteral("File already exists, do you want to overwrite?"),
                           Dialogs::Icon::Question, Dialogs::Buttons::YesNo)
            != Dialogs::Button::Yes)
        return false;
    return write(dialogs, picture, path);
}

} // namespace PictureExport
