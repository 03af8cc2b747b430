// SPDX-License-Identifier: MIT
#include "PortSkinFlow.h"

#include "Dialogs.h"
#include "DocumentActions.h"
#include "HourglassCursor.h"
#include "PortNumbers.h"
#include "PortReport.h"
#include "PortSkinDialog.h"
#include "ShownNode.h"
#include "SkinFormatName.h"
#include "SkinContext.h"
#include "SkinDocument.h"
#include "SkinOpener.h"
#include "clsKorviInterface.h"
#include "SkinPort.h"
#include "StatusProgress.h"

#include <QUndoStack>
#include <QDir>
#include <QFileInfo>

namespace {

const QString kTitle = QStringLiteral("Port Skin");

// The skin folder of a file: the parent of the nearest folder around it named
// as the format; empty when there is none.
QString skinFolderOf(const QString &file, const QString &format)
{
    QDir folder = QFileInfo(file).absoluteDir();
    while (true) {
        if (folder.dirName() == format) {
            folder.cdUp();
            return folder.absolutePath();
        }
        if (!folder.cdUp())
            return {};
    }
}

QString inFormat(const QString &path, const QString &from, const QString &to)
{
    int count = 0;
    return QString::fromUtf8(PortNumbers::replaceFormat(path.toUtf8(), from.toUtf8(), to.toUtf8(), count));
}

// The port's notes as the Problems panel lists them: each names the ported
// file and the node it is about, so a double-click selects that node in the
// ported skin when it is open, and the same node of the source skin otherwise.
QVector<Problem> problemsOf(const PortReport &report, const QString &skinDir)
{
    QVector<Problem> problems;
    for (const PortReport::Note &note : report.notes) {
        Problem problem;
        problem.severity = Problem::Severity::Warning;
        problem.code = note.kind;
        problem.file = QDir(skinDir).filePath(note.file);
        problem.nodeKey = note.nodeKey;
        problem.message = note.message;
        problems.append(problem);
    }
    return problems;
}

} // namespace

PortSkinFlow::PortSkinFlow(const EditorEnvironment &environment, const Parts &parts, QWidget &window)
    : QObject(&window)
    , mEnv(environment)
    , mParts(parts)
    , mWindow(window)
{
}

void PortSkinFlow::run()
{
    const SkinContext &context = mEnv.context;
    if (context.UiFilePath.isEmpty()) {
        mEnv.dialogs.message(kTitle, QStringLiteral("Open a skin file first: its folders are ported."));
        return;
    }
    const QString format = context.SkinFormat.isEmpty() ? SkinFormatName::fromFileName(context.UiFilePath)
                                                        : context.SkinFormat;
    PortSkinDialog form(format, mParts.shown.picture(), &mWindow);
    mEnv.dialogs.showForm(form);
    if (form.result() != QDialog::Accepted)
        return;
    SkinPort::Options options = form.options(skinFolderOf(context.UiFilePath, form.fromFormat()));
    if (options.skinDir.isEmpty())
        options.skinDir = context.SkinDirectory;
    options.codec = mParts.skin.document().codec();
    if (!mayPort(QDir(options.skinDir).filePath(options.to), options.force))
        return;

    bool started = false;
    HourglassCursor hourglass;
    const SkinPort::Result result = SkinPort(options).run([&](int done, int total) {
        if (!started) {
            mParts.progress.begin(total);
            started = true;
        }
        mParts.progress.advance(done);
    });
    mParts.progress.end();
    hourglass.restore();
    if (!result.ok) {
        emit told(QStringLiteral("Port failed"));
        mEnv.dialogs.message(kTitle, result.error, Dialogs::Icon::Warning);
        return;
    }
    emit told(QStringLiteral("Ported to %1: %2 pictures resized, %3 notes in the Problems panel")
                  .arg(options.to)
                  .arg(result.report.pictures.size())
                  .arg(result.report.notes.size()));
    offerToOpen(inFormat(QFileInfo(context.UiFilePath).absoluteFilePath(), options.from, options.to), options.to);
    // After the opening: the information box starts anew with each drawing.
    emit reported(result.report.text());
    emit notesFound(problemsOf(result.report, options.skinDir));
}

// Unsaved changes are not ported (the port reads the files on disk), and an
// existing target is replaced only when the user says so.
bool PortSkinFlow::mayPort(const QString &target, bool &replace) const
{
    if (!mParts.skin.undoStack().isClean()
        && mEnv.dialogs.message(kTitle, QStringLiteral("The skin has unsaved changes; the port reads the files as they "
                                                       "are on disk. Port anyway?"),
                                Dialogs::Icon::Question, Dialogs::Buttons::YesNo)
               != Dialogs::Button::Yes)
        return false;
    if (!QFileInfo::exists(target))
        return true;
    if (mEnv.dialogs.message(kTitle, QStringLiteral("%1 exists already. Replace it?").arg(QDir::toNativeSeparators(target)),
                             Dialogs::Icon::Question, Dialogs::Buttons::YesNo)
        != Dialogs::Button::Yes)
        return false;
    replace = true;
    return true;
}

void PortSkinFlow::offerToOpen(const QString &ported, const QString &format) const
{
    if (QFileInfo::exists(ported)
        && mEnv.dialogs.message(kTitle, QStringLiteral("The skin was ported to %1. Open %2?")
                                            .arg(format, QDir::toNativeSeparators(ported)),
                                Dialogs::Icon::Question, Dialogs::Buttons::YesNo)
               == Dialogs::Button::Yes
        && mParts.actions.mayDiscardChanges())
        mParts.opener.openFile(ported);
}
