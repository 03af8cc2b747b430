// SPDX-License-Identifier: MIT
#include "SaveChangesFlow.h"

#include "Dialogs.h"
#include "HourglassCursor.h"
#include "SkinDocument.h"
#include "StatusProgress.h"
#include "UiFileWriter.h"
#include "clsKorviInterface.h"

#include <QDir>
#include <QFileInfo>
#include <QLabel>
#include <QTimer>
#include <QUndoStack>

namespace {

const QString kTitle = QStringLiteral("Save Changes");

// Saving more files than this shows a progress bar while they are written.
constexpr size_t kManyFiles = 10;

// A change made after the last one within this time is counted with it.
constexpr int kSummaryDelayMs = 150;

// The entry for new elements that no file is to receive has no path.
bool needsFileForNewElements(const std::vector<SaveChanges::Pending> &pending)
{
    for (const SaveChanges::Pending &p : pending) {
        if (p.path.isEmpty() && !p.problems.isEmpty())
            return true;
    }
    return false;
}

QStringList problemsOf(const std::vector<SaveChanges::Pending> &pending)
{
    QStringList problems;
    for (const SaveChanges::Pending &p : pending)
        problems += p.problems;
    return problems;
}

} // namespace

SaveChangesFlow::SaveChangesFlow(SkinDocument &skin, clsKorviInterface &document, Dialogs &dialogs,
                                 StatusProgress &progress, QObject *parent)
    : QObject(parent)
    , mSkin(skin)
    , mDocument(document)
    , mDialogs(dialogs)
    , mProgress(progress)
{
    setObjectName(QStringLiteral("SaveChangesFlow"));
    mPanel = new QLabel;
    mPanel->setObjectName(QStringLiteral("stbChanges"));
    mPanel->setMinimumWidth(140);
    mDelay = new QTimer(this);
    mDelay->setSingleShot(true);
    mDelay->setInterval(kSummaryDelayMs);
    connect(mDelay, &QTimer::timeout, this, &SaveChangesFlow::updateNow);
    connect(&skin.undoStack(), &QUndoStack::indexChanged, this, &SaveChangesFlow::updateSoon);
    connect(&skin.undoStack(), &QUndoStack::cleanChanged, this, &SaveChangesFlow::updateSoon);
    connect(&skin, &SkinDocument::reset, this, &SaveChangesFlow::updateNow);
}

void SaveChangesFlow::openedFile(const QString &path)
{
    mWholeDocumentTo.clear();
    mOnlyFile.clear();
    mFileForNewElements = path;
    mWholeFolder = false;
    mReadErrorFile.clear();
    mReadErrorLine = 0;
    updateNow();
}

void SaveChangesFlow::openedFolder(const QString &folder)
{
    mWholeDocumentTo.clear();
    mOnlyFile.clear();
    mFileForNewElements.clear();
    mWholeFolder = true;
    mFolder = folder;
    mReadErrorFile.clear();
    mReadErrorLine = 0;
    updateNow();
}

QString SaveChangesFlow::saveAsStart(const QString &openedFile) const
{
    return mWholeFolder ? mFolder + QLatin1Char('/') : openedFile;
}

// The first error is the one asked about: the files read after it were read whole.
void SaveChangesFlow::noteReadError(const QString &file, qint64 line)
{
    if (!mReadErrorFile.isEmpty())
        return;
    mReadErrorFile = file;
    mReadErrorLine = line;
}

void SaveChangesFlow::updateSoon()
{
    mDelay->start();
}

void SaveChangesFlow::updateNow()
{
    mDelay->stop();
    QString summary;
    if (!mSkin.undoStack().isClean()) {
        SaveChanges saver(mDocument);
        saver.setFileForNewElements(mFileForNewElements);
        summary = mWholeDocumentTo.isEmpty() ? SaveChanges::summary(saver.pending()) : QStringLiteral("Unsaved changes");
    }
    if (mOnlyFile.isEmpty()) {
        mPanel->setText(summary);
        mPanel->setToolTip({});
        return;
    }
    const QString only = QStringLiteral("Save Changes writes %1 only").arg(QFileInfo(mOnlyFile).fileName());
    mPanel->setText(summary.isEmpty() ? only : summary + QStringLiteral(" \u2013 ") + only);
    mPanel->setToolTip(QStringLiteral("Save As wrote the whole skin to %1; Save Changes writes there and to no other file.")
                           .arg(QDir::toNativeSeparators(mOnlyFile)));
}

bool SaveChangesFlow::mayWriteWholeDocument()
{
    if (mReadErrorFile.isEmpty())
        return true;
    const QString question = QStringLiteral("%1 was not read whole (line %2). Saving writes only what was read. Save anyway?")
                                 .arg(QFileInfo(mReadErrorFile).fileName())
                                 .arg(mReadErrorLine);
    return mDialogs.message(QStringLiteral("Save File"), question, Dialogs::Icon::Question, Dialogs::Buttons::YesNo)
        == Dialogs::Button::Yes;
}

// The written file becomes the skin's file: Save Changes writes there from
// now on, and never again to the files the skin was read from. When the file
// does not read back as the document (a few things the whole-document writer
// leaves out), Save Changes writes the whole document there again.
void SaveChangesFlow::wholeDocumentWritten(const QString &path)
{
    SaveChanges saver(mDocument);
    saver.setFileForNewElements(mFileForNewElements);
    const bool holdsMore = saver.filesOfWrittenElements() > 1;
    const bool adopted = saver.takeWholeDocumentAt(path);
    mWholeDocumentTo = adopted ? QString() : path;
    mOnlyFile = holdsMore || !adopted ? path : QString();
    mFileForNewElements = path;
    mWholeFolder = false;
    // What was not read is not in the new file either: nothing there to ask about.
    mReadErrorFile.clear();
    mReadErrorLine = 0;
    updateNow();
}

bool SaveChangesFlow::saveChanges()
{
    if (!mWholeDocumentTo.isEmpty())
        return saveWholeDocument();
    // One plan for the whole save: what pending() finds is what save() writes.
    SaveChanges saver(mDocument);
    std::vector<SaveChanges::Pending> pending;
    {
        HourglassCursor hourglass;
        saver.setFileForNewElements(mFileForNewElements);
        pending = saver.plan();
    }
    if (mWholeFolder && mFileForNewElements.isEmpty() && needsFileForNewElements(pending)) {
        if (!chooseFileForNewLayers())
            return false;
        saver.setFileForNewElements(mFileForNewElements);
        pending = saver.plan();
    }
    const QStringList problems = problemsOf(pending);
    if (!problems.isEmpty()) {
        offerSaveAs(QStringLiteral("The changes cannot be saved:\n") + problems.join(QLatin1Char('\n')));
        return false;
    }
    if (pending.empty()) {
        // Undone edits leave nothing to write: the files already hold the document.
        mSkin.undoStack().setClean();
        updateNow();
        return true;
    }
    if (!confirmWriting(pending))
        return false;

    HourglassCursor hourglass;
    // The bar counts the files written, once every question is answered.
    const bool showProgress = pending.size() > kManyFiles;
    const auto askOverwrite = [this, &hourglass](const QString &path) {
        hourglass.restore();
        return mDialogs.message(kTitle, SaveChanges::changedOnDiskQuestion(path), Dialogs::Icon::Warning,
                                Dialogs::Buttons::OverwriteCancel)
            == Dialogs::Button::Overwrite;
    };
    const SaveChanges::Result result = saver.save(askOverwrite, [this, showProgress](int written, int total) {
        if (!showProgress)
            return;
        if (written == 0)
            mProgress.begin(total);
        else
            mProgress.advance(written);
    });
    hourglass.restore();
    mProgress.end();
    mLastFinderRuns = saver.finderRuns();
    reportResult(result);
    return result.ok();
}

// A whole folder has no one file that was opened: the user says which file a
// new layer goes into, from the files of the skin.
bool SaveChangesFlow::chooseFileForNewLayers()
{
    const QString chosen = mDialogs.choose(kTitle, QStringLiteral("Which file receives the new layers?"), filesOfSkin());
    if (chosen.isEmpty())
        return false;
    mFileForNewElements = chosen;
    return true;
}

QStringList SaveChangesFlow::filesOfSkin() const
{
    QStringList files;
    const SkinSources &sources = mDocument.Sources();
    for (int number = 1; number <= sources.count(); ++number) {
        const SkinSourceFile *file = sources.file(number);
        // A file Save As left behind has no path: nothing goes there again.
        if (file && !file->imported() && !file->path().isEmpty() && !files.contains(file->path()))
            files << file->path();
    }
    return files;
}

bool SaveChangesFlow::confirmWriting(const std::vector<SaveChanges::Pending> &pending)
{
    QStringList lines;
    for (const SaveChanges::Pending &p : pending)
        lines << QStringLiteral("%1 (%2 %3)").arg(p.path).arg(p.changes).arg(p.changes == 1 ? QStringLiteral("change") : QStringLiteral("changes"));
    const QString text = QStringLiteral("These files will be written:\n") + lines.join(QLatin1Char('\n'));
    return mDialogs.message(kTitle, text, Dialogs::Icon::Question, Dialogs::Buttons::OkCancel) == Dialogs::Button::Ok;
}

void SaveChangesFlow::reportResult(const SaveChanges::Result &result)
{
    switch (result.outcome) {
    case SaveChanges::Result::Outcome::Saved:
    case SaveChanges::Result::Outcome::NothingToSave:
        mSkin.undoStack().setClean();
        updateNow();
        if (!result.error.isEmpty())
            mDialogs.message(kTitle, result.error.trimmed(), Dialogs::Icon::Warning);
        // Nothing is unsaved now: reading the merged files again loses nothing
        // and shows what they hold.
        if (!result.reopen.isEmpty())
            emit mergedOnDisk(result.reopen);
        break;
    case SaveChanges::Result::Outcome::Cancelled:
        break;
    case SaveChanges::Result::Outcome::Failed:
        if (result.written.isEmpty() && !result.error.startsWith(QLatin1String("Error saving file: ")))
            offerSaveAs(result.error);
        else
            mDialogs.message(kTitle, result.error, Dialogs::Icon::Warning);
        updateNow();
        break;
    }
}

// A save refused before anything was written: the whole document can still
// be written to a file of the user's choice.
void SaveChangesFlow::offerSaveAs(const QString &why)
{
    const QString text = why + QStringLiteral("\n\nNothing was written. Save the whole skin under another name (Save As) instead?");
    if (mDialogs.message(kTitle, text, Dialogs::Icon::Warning, Dialogs::Buttons::YesNo) != Dialogs::Button::Yes)
        return;
    emit saveAsWanted();
}

// After a Save As whose file does not read back as the document: the whole
// document goes to that file again, and only there.
bool SaveChangesFlow::saveWholeDocument()
{
    if (mSkin.undoStack().isClean())
        return true;
    if (!confirmWriting({ { mWholeDocumentTo, 1, {} } }))
        return false;
    HourglassCursor hourglass;
    bool failed = false;
    const bool saved = WriteUiFile(mDocument, mWholeDocumentTo, [this, &failed, &hourglass](const QString &message) {
        hourglass.restore();
        failed = true;
        mDialogs.message(kTitle, message, Dialogs::Icon::Warning);
    });
    hourglass.restore();
    if (!saved || failed)
        return false;
    mSkin.undoStack().setClean();
    wholeDocumentWritten(mWholeDocumentTo);
    return true;
}
