// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <QString>

class QMimeData;
class QWidget;

// Takes what is dropped on the window when it is a skin: a .ui file or a
// folder, which the window opens as a recent file or folder opens. Anything
// else is not accepted, so the pointer shows that it cannot be dropped.
class FileDropOpener : public QObject
{
    Q_OBJECT

public:
    // Watches the window's drag and drop events.
    explicit FileDropOpener(QWidget &window);

    // The skin file or folder that dropping these data would open, or empty.
    static QString droppedSkin(const QMimeData *data);

signals:
    // A skin file or folder was dropped.
    void dropped(const QString &path);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;
};
