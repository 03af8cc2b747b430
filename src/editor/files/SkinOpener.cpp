// SPDX-License-Identifier: MIT
#include "SkinOpener.h"

#include "Dialogs.h"
#include "HourglassCursor.h"
#include "RecentFiles.h"
#include "SaveChangesFlow.h"
#include "SkinContext.h"
#include "SkinDocument.h"
#include "SkinOpenPlan.h"
#include "StatusProgress.h"

#include <QFileInfo>

namespace {

// A folder holding more than this shows a progress bar while it is read.
constexpr qint64 kLargeSkinBytes = 2 * 1024 * 1024;

} // namespace

SkinOpener::SkinOpener(SkinDocument &skin, Dialogs &dialogs, SaveChangesFlow &saving, StatusProgress &progress,
                       RecentFiles &recent, QObject *parent)
    : QObject(parent)
    , mSkin(skin)
    , mDialogs(dialogs)
    , mSaving(saving)
    , mProgress(progress)
    , mRecent(recent)
{
    setObjectName(QStringLiteral("SkinOpener"));
}

void SkinOpener::openFile(const QString &path)
{
    mOpenedFolder = false;
    const SkinOpenPlan plan = SkinOpenPlan::forFile(path);
    mSaving.openedFile(plan.uiFilePath);
    open(plan, path, QFileInfo(path).fileName());
}

void SkinOpener::openFolder(const QString &folder)
{
    mOpenedFolder = true;
    mSaving.openedFolder(folder);
    open(SkinOpenPlan::forFolder(folder), folder, folder);
}

void SkinOpener::reopen()
{
    if (mOpenedFolder)
        openFolder(mOpenedPath);
    else
        openFile(mOpenedPath);
}

// The file Save As wrote is the skin's file from now on: a reload reads it
// and Recent Files lists it; the files watched are the ones its opening reads.
void SkinOpener::savedAs(const QString &path)
{
    mOpenedFolder = false;
    mOpenedPath = QFileInfo(path).absoluteFilePath();
    mPlan = SkinOpenPlan::forFile(path);
    const SkinOpenPlan &plan = mPlan;
    SkinContext context = mSkin.context();
    if (!plan.skinFormat.isEmpty())
        context.SkinFormat = plan.skinFormat;
    context.UiFilePath = mOpenedPath;
    mSkin.setContext(context);
    mRecent.add(mOpenedPath);
}

// The skin's format and the file its pictures are looked up from are set
// before reading; a plan that finds no format keeps the one there was.
void SkinOpener::open(const SkinOpenPlan &plan, const QString &path, const QString &title)
{
    emit aboutToOpen();
    mPlan = plan;
    mReadingErrors.clear();
    mSkin.reload({});
    HourglassCursor hourglass;
    mOpenedPath = QFileInfo(path).absoluteFilePath();
    emit titleChanged(title);
    SkinContext context = mSkin.context();
    if (!plan.skinFormat.isEmpty())
        context.SkinFormat = plan.skinFormat;
    context.UiFilePath = plan.uiFilePath;
    mSkin.setContext(context);
    mRecent.add(path);
    mSkin.reload([this, &plan](clsKorviInterface &document) {
        mProgress.beginFiles(plan.paths(), kLargeSkinBytes);
        SkinOpenPlan::Progress progress;
        progress.readError = [this](const SkinReadError &error) { reportReadError(error); };
        progress.fileDone = [this](const QString &file) { mProgress.fileDone(file); };
        plan.readInto(document, progress);
        mProgress.end();
    });
    emit opened();
}

// What was read before the line stays in the document, and the other files
// are still read. The message box shows the arrow, not the hourglass.
void SkinOpener::reportReadError(const SkinReadError &error)
{
    mSaving.noteReadError(error.file(), error.line());
    mReadingErrors.append(error);
    QApplication::setOverrideCursor(Qt::ArrowCursor);
    mDialogs.message(QStringLiteral("Read Skin File"),
                     QStringLiteral("Error reading %1, line %2:\r\n%3")
                         .arg(error.file())
                         .arg(error.line())
                         .arg(error.message()),
                     Dialogs::Icon::Warning);
    QApplication::restoreOverrideCursor();
}
