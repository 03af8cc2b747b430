// SPDX-License-Identifier: MIT
#include "FileCommands.h"

#include "ApplicationInfo.h"
#include "Dialogs.h"
#include "DocumentActions.h"
#include "EditorSettings.h"
#include "HourglassCursor.h"
#include "PictureExport.h"
#include "RecentFiles.h"
#include "SaveChangesFlow.h"
#include "SettingsFile.h"
#include "ShownNode.h"
#include "SkinContext.h"
#include "SkinFileNames.h"
#include "SkinOpener.h"
#include "UiFileWriter.h"

#include "SkinCodec.h"
#include "clsElement.h"

#include <QAction>
#include <QDir>
#include <QFileInfo>
#include <QMenu>
#include <QMenuBar>

namespace {

const QString kSkinFilter = QStringLiteral("User Interface File Korvi8|*.ui");

} // namespace

FileCommands::FileCommands(const EditorEnvironment &environment, const Parts &parts, QObject *parent)
    : QObject(parent)
    , mEnv(environment)
    , mParts(parts)
{
    setObjectName(QStringLiteral("FileCommands"));
}

void FileCommands::addMenuTo(QMenuBar &bar, QWidget &window)
{
    QMenu *file = bar.addMenu(QStringLiteral("&File"));
    file->setObjectName(QStringLiteral("mnuFile"));
    const auto add = [this, file](const char *name, const QString &text, const QKeySequence &keys, auto command) {
        QAction *action = file->addAction(text, this, command);
        action->setObjectName(QString::fromLatin1(name));
        action->setShortcut(keys);
        return action;
    };
    add("mnuOpen", QStringLiteral("&Open..."), QKeySequence::Open, &FileCommands::open);
    add("mnuOpenFolder", QStringLiteral("Open &Folder..."), QKeySequence(), &FileCommands::openFolder);
    QMenu *recent = file->addMenu(QStringLiteral("Recent &Files"));
    recent->setObjectName(QStringLiteral("mnuRecent"));
    mRecent = new RecentFiles(EditorSettings(mEnv.settings), recent, this);
    connect(mRecent, &RecentFiles::openRequested, this, &FileCommands::openPath);
    mOpener = new SkinOpener(mParts.skin, mEnv.dialogs, mParts.saving, mParts.progress, *mRecent, &window);
    connect(mOpener, &SkinOpener::titleChanged, this, &FileCommands::titleChanged);
    file->addSeparator();
    add("mnuSaveChanges", QStringLiteral("&Save Changes"), QKeySequence(Qt::CTRL | Qt::Key_S),
        &FileCommands::saveChanges)->setEnabled(false);
    add("mnuSaveAs", QStringLiteral("Save &As..."), QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_S),
        &FileCommands::saveAs)->setEnabled(false);
    file->addSeparator();
    add("mnuExportPicture", QStringLiteral("&Export Picture..."), QKeySequence(), &FileCommands::exportPicture);
    add("mnuPortSkin", QStringLiteral("&Port Skin..."), QKeySequence(), &FileCommands::portSkinChosen);
    file->addSeparator();
    QAction *quit = file->addAction(QStringLiteral("&Quit"), &window, &QWidget::close);
    quit->setObjectName(QStringLiteral("mnuQuit"));
    quit->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_Q));
}

QString FileCommands::startFolder() const
{
    return mEnv.context.UiFilePath.isEmpty() ? mEnv.context.SkinDirectory
                                             : QFileInfo(mEnv.context.UiFilePath).absolutePath();
}

void FileCommands::open()
{
    if (!mParts.actions.mayDiscardChanges())
        return;
    const QString path = mEnv.dialogs.openFileName(QStringLiteral("Open Template File"), startFolder(), kSkinFilter);
    if (!path.isEmpty())
        mOpener->openFile(path);
}

void FileCommands::openFolder()
{
    if (!mParts.actions.mayDiscardChanges())
        return;
    const QString folder = mEnv.dialogs.folder(QStringLiteral("Select Skin ui Directory"),
                                               mEnv.context.SkinDirectory);
    if (!folder.isEmpty())
        mOpener->openFolder(folder);
}

void FileCommands::openPath(const QString &path)
{
    if (!mParts.actions.mayDiscardChanges())
        return;
    if (QFileInfo(path).isDir())
        mOpener->openFolder(path);
    else
        mOpener->openFile(path);
}

void FileCommands::saveChanges()
{
    mParts.saving.saveChanges();
}

void FileCommands::saveAs()
{
    if (!mParts.saving.mayWriteWholeDocument())
        return;
    const QString path = mEnv.dialogs.saveFileName(QStringLiteral("Save Skin"),
                                                   mParts.saving.saveAsStart(mEnv.context.UiFilePath), kSkinFilter);
    if (path.isEmpty())
        return;
    if (SkinFileNames::FileExists(path)) {
        const auto answer = mEnv.dialogs.message(QStringLiteral("Save File"),
                                                 QStringLiteral("File already exists, do you want to overwrite?"),
                                                 Dialogs::Icon::Question, Dialogs::Buttons::YesNo);
        if (answer != Dialogs::Button::Yes)
            return;
    }
    emit titleChanged(QFileInfo(path).fileName());
    HourglassCursor hourglass;
    const bool saved = WriteUiFile(mEnv.document, path, [this](const QString &message) {
        // A message box must not show the hourglass of the command that asks it.
        QApplication::setOverrideCursor(Qt::ArrowCursor);
        mEnv.dialogs.message(ApplicationInfo::windowTitle(), message, Dialogs::Icon::Warning);
        QApplication::restoreOverrideCursor();
    });
    hourglass.restore();
    if (saved) {
        mOpener->savedAs(path);
        mParts.saving.wholeDocumentWritten(path);
        emit wholeSkinSaved();
        mEnv.dialogs.message(QStringLiteral("Save File"), QStringLiteral("Saving complete"));
    }
}

// A layer's name as a file name Windows takes: the characters it refuses
// become "_".
static QString pictureFileName(const clsElement &layer)
{
    QString name = SkinCodec::wordText(layer.strName());
    for (QChar &c : name) {
        if (QStringLiteral("\\/:*?\"<>|").contains(c) || c.unicode() < 0x20)
            c = QLatin1Char('_');
    }
    return (name.isEmpty() ? QStringLiteral("picture") : name) + QStringLiteral(".png");
}

// The picture as the device shows the layer, without the selection; the file
// proposed is named after the layer, in the skin's folder.
void FileCommands::exportPicture()
{
    const clsElement *layer = mParts.shown.shownLayer();
    const QString proposed = layer ? QDir(startFolder()).filePath(pictureFileName(*layer)) : startFolder();
    PictureExport::ask(mEnv.dialogs, mParts.shown.pictureWithoutSelection(), proposed);
}
