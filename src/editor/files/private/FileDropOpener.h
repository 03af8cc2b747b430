// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <QString>

#include <functional>

class QMimeData;
class QWidget;

// Opens what is dropped on the window: a .ui file as Open does, a folder as
// All does, after the question about unsaved changes. Anything else is not
// accepted, so the pointer shows that it cannot be dropped.
class FileDropOpener : public QObject
{
    Q_OBJECT

public:
    // Watches the window's drag and drop events.
    explicit FileDropOpener(QWidget &window);

    // True when the work may be left (nothing unsaved, saved, or discarded).
    std::function<bool()> mayDiscardChanges;
    std::function<void(const QString &file)> openFile;
    std::function<void(const QString &folder)> openFolder;

    // The skin file or folder that dropping these data would open, or empty.
    static QString droppedSkin(const QMimeData *data);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void open(const QString &path);
};
