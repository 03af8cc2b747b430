// SPDX-License-Identifier: MIT
#include "FileDropOpener.h"

#include <QDragEnterEvent>
#include <QDropEvent>
#include <QFileInfo>
#include <QMimeData>
#include <QUrl>
#include <QWidget>

FileDropOpener::FileDropOpener(QWidget &window)
    : QObject(&window)
{
    setObjectName(QStringLiteral("FileDropOpener"));
    window.setAcceptDrops(true);
    window.installEventFilter(this);
}

// One local item only: several files dropped at once do not say which to open.
QString FileDropOpener::droppedSkin(const QMimeData *data)
{
    if (!data || !data->hasUrls() || data->urls().size() != 1 || !data->urls().first().isLocalFile())
        return {};
    const QFileInfo item(data->urls().first().toLocalFile());
    if (item.isDir())
        return item.absoluteFilePath();
    if (item.isFile() && item.suffix().compare(QLatin1String("ui"), Qt::CaseInsensitive) == 0)
        return item.absoluteFilePath();
    return {};
}

bool FileDropOpener::eventFilter(QObject *watched, QEvent *event)
{
    switch (event->type()) {
    case QEvent::DragEnter:
    case QEvent::DragMove: {
        auto *drag = static_cast<QDragMoveEvent *>(event);
        if (droppedSkin(drag->mimeData()).isEmpty())
            drag->ignore();
        else
            drag->acceptProposedAction();
        return true;
    }
    case QEvent::Drop: {
        auto *drop = static_cast<QDropEvent *>(event);
        const QString path = droppedSkin(drop->mimeData());
        if (path.isEmpty()) {
            drop->ignore();
            return true;
        }
        drop->acceptProposedAction();
        emit dropped(path);
        return true;
    }
    default:
        return QObject::eventFilter(watched, event);
    }
}
