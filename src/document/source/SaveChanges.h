// SPDX-License-Identifier: MIT
#pragma once

#include "FileChanges.h"

#include <QHash>
#include <QString>
#include <QStringList>
#include <functional>
#include <memory>
#include <optional>
#include <vector>

class AtomicFileWriter;
class SaveLock;
class clsKorviInterface;

// Saving a document's changes in place: every file that holds a change is
// written back as its own bytes with exactly the changed parts rewritten;
// every other file is not touched. Each element goes back to the file it was
// read from. Each written file gets one backup ("NAME.bak" beside it, see
// SkinBackup) and is replaced atomically (AtomicFileWriter), while it is
// locked against every other save of it (SaveLock).
//
// Before anything is written, the new text of each file is read back and must
// give exactly the document's elements of that file; a file changed on disk
// since it was read takes the changes onto its new text when every changed
// part still stands there, and otherwise the caller is asked whether to
// overwrite it.
class SaveChanges
{
public:
    explicit SaveChanges(clsKorviInterface &document);

    // The file that receives new layers and other new top-level elements: the
    // file that was opened. Empty: none does.
    void setFileForNewElements(const QString &path);
    // Writes the changes of the file read from `source` to `output` instead,
    // leaving `source` alone (written even without changes).
    void redirect(const QString &source, const QString &output);

    // The caller holds the SaveLock of `path` already (it read the file under
    // it, as korvi set does): the save does not wait for it again.
    void lockHeldFor(const QString &path) { mHeldLocks << path; }

    // What is unsaved: the files that hold a change, with how many.
    struct Pending
    {
        QString path;
        int changes = 0;
        // Why some change cannot be saved in place.
        QStringList problems;
    };
    std::vector<Pending> pending() const;
    // The same, kept for the save() that follows: the changes are found once
    // for both, as long as the document does not change in between.
    std::vector<Pending> plan();
    // "N changes in M files", for the status bar; empty when nothing is unsaved.
    static QString summary(const std::vector<Pending> &pending);

    // The question asked for a file changed on disk since it was read.
    static QString changedOnDiskQuestion(const QString &path);
    // Answers it: true to overwrite the file with the document's version.
    using AskOverwrite = std::function<bool(const QString &path)>;

    struct Result
    {
        enum class Outcome { Saved, NothingToSave, Cancelled, Failed };
        Outcome outcome = Outcome::NothingToSave;
        // The files written, in reading order.
        QStringList written;
        // On failure, why; "Error saving file: " and the system's description
        // when writing failed. After a save, lines on backups that could not
        // be replaced, if any.
        QString error;
        // Files whose newer text on disk took the changes, and that hold more
        // than the document shows: reopen them to see it.
        QStringList reopen;
        bool ok() const { return outcome == Outcome::Saved || outcome == Outcome::NothingToSave; }
    };
    // Told once every question is answered, before the first file is
    // written (0), and after each file: how many are written, of how many.
    using Progress = std::function<void(int written, int total)>;
    Result save(const AskOverwrite &askOverwrite, const Progress &progress = {});

    // After the whole document was written over a file it was read from (Save
    // As): the file's kept bytes become what is on disk now, and its elements
    // take their places there, so that the next save compares with the file as
    // written. False when reading the file alone does not give exactly the
    // document's elements of that file: it then counts as changed on disk.
    bool takeWholeFileWritten(const QString &path);

    // After the whole document was written to a file (Save As, anywhere):
    // that file becomes the source of every element it holds (all but the
    // imported ones), so that the next save writes there and nowhere else.
    // False, changing nothing, when reading the file does not give exactly
    // those elements.
    bool takeWholeDocumentAt(const QString &path);
    // How many files the elements the whole-document writer writes come
    // from (new elements count with the file that receives them).
    int filesOfWrittenElements() const;
    // How many times this object ran the change finder: once for plan() and
    // the save() that follows it.
    int finderRuns() const { return mFinderRuns; }

private:
    struct Plan
    {
        int file = 0;
        QString target;
        SourceEdits edits;
        // The whole new text, made only where it is read back whole or was
        // merged with a newer text on disk; else the file is written as its
        // bytes with the edits made on the way.
        QByteArray newBytes;
        bool wholeText = false;
        // The file alone as the new bytes read, when they give the document's
        // elements of that file.
        std::shared_ptr<clsKorviInterface> alone;
        // Checked one tag line at a time: the records only move, and the
        // kept bytes take the edits in place once the file is written.
        bool quick = false;
        bool merged = false;
    };
    bool tagLinesReadBack(const FileChanges &changes) const;
    QString whyNotReadBack(int file, const QByteArray &bytes, bool readsWhole) const;
    QString whyRefused(const Plan &plan) const;
    bool makePlan(Plan &plan, const FileChanges *fileChanges) const;
    int fileForNewElements() const;
    std::shared_ptr<clsKorviInterface> readAlone(int file, const QByteArray &bytes, bool readsWhole) const;
    void takeReading(int file, clsKorviInterface &alone);
    bool prepare(Plan &plan, const AskOverwrite &askOverwrite, Result &result) const;
    bool write(const Plan &plan, Result &result) const;
    bool writeText(const Plan &plan, AtomicFileWriter &file) const;
    bool lockTargets(const std::vector<Plan> &plans, std::vector<std::unique_ptr<SaveLock>> &locks,
                     Result &result) const;
    void takeNewRecords(const Plan &plan, Result &result);

    std::vector<Pending> pendingFound() const;
    const std::vector<FileChanges> &changes(bool rewriteEditedTags) const;
    std::vector<FileChanges> takeChanges(bool rewriteEditedTags);

    clsKorviInterface &mDocument;
    mutable std::optional<std::vector<FileChanges>> mFound;
    mutable std::optional<std::vector<FileChanges>> mRewritten;
    mutable int mFinderRuns = 0;
    QString mFileForNewElements;
    QHash<QString, QString> mRedirects;
    QStringList mHeldLocks;
};
