// SPDX-License-Identifier: MIT
#include "PictureExport.h"

#include "AtomicFileWriter.h"
#include "Dialogs.h"

#include <QBuffer>
#include <QDir>
#include <QFileInfo>
#include <QImageWriter>

namespace PictureExport {

namespace {

const QString kTitle = QStringLiteral("Export Picture");

bool write(Dialogs &dialogs, const QImage &picture, const QString &path)
{
    QByteArray png;
    QBuffer buffer(&png);
    buffer.open(QIODevice::WriteOnly);
    QImageWriter writer(&buffer, "png");
    QString error;
    if (!writer.write(picture))
        error = writer.errorString();
    else if (!AtomicFileWriter::writeWhole(path, png, error))
        error = error.isEmpty() ? QStringLiteral("the write failed") : error;
    if (!error.isEmpty())
        dialogs.message(kTitle, QStringLiteral("Error saving file: ") + error, Dialogs::Icon::Warning);
    return error.isEmpty();
}

} // namespace

bool ask(Dialogs &dialogs, const QImage &picture, const QString &proposedPath)
{
    if (picture.isNull()) {
        dialogs.message(kTitle, QStringLiteral("The canvas shows no picture yet."), Dialogs::Icon::Information);
        return false;
    }
    QString path = dialogs.saveFileName(kTitle, proposedPath, QStringLiteral("PNG Picture|*.png"));
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
