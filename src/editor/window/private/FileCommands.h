// SPDX-License-Identifier: MIT
#pragma once

#include "EditorEnvironment.h"

#include <QObject>

class DocumentActions;
class QMenu;
class QMenuBar;
class RecentFiles;
class SaveChangesFlow;
class ShownNode;
class SkinDocument;
class SkinOpener;
class StatusProgress;

// The File menu and the commands behind it and behind the toolbar's Open, All
// and Save: opening a file or a folder (asking first when changes would be
// lost), the recent files, Save Changes, Save As of the whole document and the
// export of the canvas's picture.
class FileCommands : public QObject
{
    Q_OBJECT

public:
    struct Parts
    {
        SkinDocument &skin;
        DocumentActions &actions;
        SaveChangesFlow &saving;
        StatusProgress &progress;
        ShownNode &shown;
    };

    FileCommands(const EditorEnvironment &environment, const Parts &parts, QObject *parent = nullptr);

    // Makes the File menu on the menu bar.
    void addMenuTo(QMenuBar &bar, QWidget &window);
    SkinOpener &opener() const { return *mOpener; }

    void open();
    void openFolder();
    // A file as Open opens it, a folder as Open Folder (a recent or a dropped one).
    void openPath(const QString &path);
    void saveChanges();
    void saveAs();
    void exportPicture();

signals:
    // The window's title names the skin (opened, or written by Save As).
    void titleChanged(const QString &name);
    // The whole document was written by Save As.
    void wholeSkinSaved();
    // File > Port Skin... was chosen.
    void portSkinChosen();

private:
    QString startFolder() const;

    EditorEnvironment mEnv;
    Parts mParts;
    RecentFiles *mRecent = nullptr;
    SkinOpener *mOpener = nullptr;
};
