// SPDX-License-Identifier: MIT
// File > Port Skin...: the open skin's folders made for another screen, with
// the port's progress in the status bar, its report in the information box and
// its notes in the Problems panel.

#include "frmEditor.h"

#include "Dialogs.h"
#include "DocumentActions.h"
#include "HourglassCursor.h"
#include "PortNumbers.h"
#include "PortReport.h"
#include "PortSkinDialog.h"
#include "ShownNode.h"
#include "ProblemsController.h"
#include "SkinFormatName.h"
#include "SkinContext.h"
#include "SkinDocument.h"
#include "clsKorviInterface.h"
#include "SkinPort.h"
#include "StatusProgress.h"

#include <QUndoStack>
#include <QDir>
#include <QFileInfo>
#include <QPlainTextEdit>
#include <QStatusBar>

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

void frmEditor::PortSkinCommand()
{
    const SkinContext &context = mEnv.context;
    if (context.UiFilePath.isEmpty()) {
        mEnv.dialogs.message(kTitle, QStringLiteral("Open a skin file first: its folders are ported."));
        return;
    }
    const QString format = context.SkinFormat.isEmpty() ? SkinFormatName::fromFileName(context.UiFilePath)
                                                        : context.SkinFormat;
    PortSkinDialog form(format, mShown->picture(), this);
    showModalForm(form);
    if (form.result() != QDialog::Accepted)
        return;
    SkinPort::Options options = form.options(skinFolderOf(context.UiFilePath, form.fromFormat()));
    if (options.skinDir.isEmpty())
        options.skinDir = context.SkinDirectory;
    options.codec = mSkin->document().codec();
    if (!mSkin->undoStack().isClean()
        && mEnv.dialogs.message(kTitle, QStringLiteral("The skin has unsaved changes; the port reads the files as they "
                                                       "are on disk. Port anyway?"),
                                Dialogs::Icon::Question, Dialogs::Buttons::YesNo)
               != Dialogs::Button::Yes)
        return;
    const QString target = QDir(options.skinDir).filePath(options.to);
    if (QFileInfo::exists(target)) {
        if (mEnv.dialogs.message(kTitle, QStringLiteral("%1 exists already. Replace it?").arg(QDir::toNativeSeparators(target)),
                                 Dialogs::Icon::Question, Dialogs::Buttons::YesNo)
            != Dialogs::Button::Yes)
            return;
        options.force = true;
    }

    bool started = false;
    HourglassCursor hourglass;
    const SkinPort::Result result = SkinPort(options).run([&](int done, int total) {
        if (!started) {
            mProgress->begin(total);
            started = true;
        }
        mProgress->advance(done);
    });
    mProgress->end();
    hourglass.restore();
    if (!result.ok) {
        stbMain->showMessage(QStringLiteral("Port failed"));
        mEnv.dialogs.message(kTitle, result.error, Dialogs::Icon::Warning);
        return;
    }
    txtInfo->appendPlainText(result.report.text());
    stbMain->showMessage(QStringLiteral("Ported to %1: %2 pictures resized, %3 notes in the Problems panel")
                             .arg(options.to)
                             .arg(result.report.pictures.size())
                             .arg(result.report.notes.size()));
    const QVector<Problem> notes = problemsOf(result.report, options.skinDir);
    const QString ported = inFormat(QFileInfo(context.UiFilePath).absoluteFilePath(), options.from, options.to);
    if (QFileInfo::exists(ported)
        && mEnv.dialogs.message(kTitle, QStringLiteral("The skin was ported to %1. Open %2?")
                                            .arg(options.to, QDir::toNativeSeparators(ported)),
                                Dialogs::Icon::Question, Dialogs::Buttons::YesNo)
               == Dialogs::Button::Yes
        && mActions->mayDiscardChanges())
        openSkinFile(ported);
    // After the opening, which forgets the notes of the skin it replaces.
    mProblems->showNotes(notes);
}
