// SPDX-License-Identifier: MIT
#pragma once

#include "SaveChanges.h"

#include <QObject>
#include <QString>

class Dialogs;
class QLabel;
class QTimer;
class SkinDocument;
class StatusProgress;
class clsKorviInterface;

// Saving the changes in place, as the user sees it: which files will be
// written (asked before writing), the question for a file changed on disk,
// which file receives a new layer when a whole folder is open, and the status
// bar panel that tells how many changes in how many files are unsaved. It
// also keeps the first reading error of the skin open, so that saving the
// whole document over a file read only in part is asked first.
class SaveChangesFlow : public QObject
{
    Q_OBJECT

public:
    SaveChangesFlow(SkinDocument &skin, clsKorviInterface &document, Dialogs &dialogs,
                    StatusProgress &progress, QObject *parent = nullptr);

    // "N changes in M files", empty while nothing is unsaved.
    QLabel *changesPanel() const { return mPanel; }

    // A skin was opened: one file, which receives new layers, or a whole
    // folder, where the user is asked once a new layer needs a file.
    void openedFile(const QString &path);
    void openedFolder(const QString &folder);
    // Where Save As starts: the file that was opened, or, for a whole folder,
    // the folder with no file name (no file of it is the one to write over).
    QString saveAsStart(const QString &openedFile) const;
    // A file could not be read past `line`.
    void noteReadError(const QString &file, qint64 line);

    // Writes every file that holds a change, after showing which. True when
    // everything was saved (or nothing was unsaved).
    bool saveChanges();
    // How many times the last Save Changes that wrote ran the change finder.
    int lastFinderRuns() const { return mLastFinderRuns; }
    // Before the whole document is written over a file: when a file of the
    // skin was not read whole, asks whether to write anyway. True to go on.
    bool mayWriteWholeDocument();
    // The whole document was written to `path` (Save As): that file becomes
    // the skin's file, the one Save Changes compares with and writes, and the
    // files read before are never written again. When the skin came from
    // more than that file's own elements, the status bar says so.
    void wholeDocumentWritten(const QString &path);
    // The file Save Changes writes everything to after such a Save As; empty
    // while each change goes back to its own file.
    QString onlyFile() const { return mOnlyFile; }

    // The panel is computed again a moment after the last change, so that a
    // burst of edits on a large skin compares the document once.
    void updateSoon();
    void updateNow();

signals:
    // A refused save: the user chose to write the whole skin elsewhere.
    void saveAsWanted();
    // The save merged the changes into files that had changed on disk: they
    // now hold more than the editor shows, and are to be read again.
    void mergedOnDisk(const QStringList &files);

private:
    void offerSaveAs(const QString &why);
    bool saveWholeDocument();
    bool chooseFileForNewLayers();
    bool confirmWriting(const std::vector<SaveChanges::Pending> &pending);
    void reportResult(const SaveChanges::Result &result);
    QStringList filesOfSkin() const;

    SkinDocument &mSkin;
    clsKorviInterface &mDocument;
    Dialogs &mDialogs;
    StatusProgress &mProgress;
    QLabel *mPanel = nullptr;
    QTimer *mDelay = nullptr;
    QString mFileForNewElements;
    bool mWholeFolder = false;
    QString mFolder;
    QString mWholeDocumentTo;
    QString mOnlyFile;
    QString mReadErrorFile;
    qint64 mReadErrorLine = 0;
    int mLastFinderRuns = 0;
};
