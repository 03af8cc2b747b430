// SPDX-License-Identifier: MIT
#pragma once

#include "SkinOpenPlan.h"
#include "SkinReadError.h"

#include <QObject>
#include <QString>
#include <QVector>

class Dialogs;
class RecentFiles;
class SaveChangesFlow;
class SkinDocument;
class StatusProgress;

// Opening a skin in the editor: one file as Open does (the templates beside it
// and the shared scheme, imported, then the file) or a whole folder as All does
// (every file of it, the shared scheme and the common files, all part of the
// skin). What is read, in which order, is the skin's opening plan, the same one
// the command-line tool and the reload follow; this class runs it with the
// window's progress bar and tells the user of every file it could not read.
class SkinOpener : public QObject
{
    Q_OBJECT

public:
    SkinOpener(SkinDocument &skin, Dialogs &dialogs, SaveChangesFlow &saving, StatusProgress &progress,
               RecentFiles &recent, QObject *parent = nullptr);

    void openFile(const QString &path);
    void openFolder(const QString &folder);
    // Reads again what was last opened, as it was opened.
    void reopen();
    // The whole skin was written to `path` (Save As): it is what was opened.
    void savedAs(const QString &path);

    // What was last opened (a file, or a folder with All), and what its
    // reading met.
    QString openedPath() const { return mOpenedPath; }
    bool openedFolder() const { return mOpenedFolder; }
    const QVector<SkinReadError> &readingErrors() const { return mReadingErrors; }
    // The opening plan last run: what was read, in order.
    const SkinOpenPlan &plan() const { return mPlan; }

signals:
    // Before anything is read: whatever shows the old skin lets it go.
    void aboutToOpen();
    // The window's title names what is being opened.
    void titleChanged(const QString &name);
    // Everything was read.
    void opened();

private:
    void open(const SkinOpenPlan &plan, const QString &path, const QString &title);
    void reportReadError(const SkinReadError &error);

    SkinDocument &mSkin;
    Dialogs &mDialogs;
    SaveChangesFlow &mSaving;
    StatusProgress &mProgress;
    RecentFiles &mRecent;
    QString mOpenedPath;
    bool mOpenedFolder = false;
    QVector<SkinReadError> mReadingErrors;
    SkinOpenPlan mPlan;
};
