// SPDX-License-Identifier: MIT
// View > Compare Formats: the skin's other formats offered, and the window
// beside the main one kept on the shown layer and object.

#include "frmEditor.h"

#include "CompareFormats.h"
#include "Dialogs.h"
#include "SkinContext.h"
#include "SkinFolderListing.h"
#include "SkinFormatName.h"
#include "ShownNode.h"
#include "clsElement.h"

#include <QDir>
#include <QFileInfo>
#include <QScrollArea>
#include <QScrollBar>

namespace {

const QString kTitle = QStringLiteral("Compare Formats");

// The format folders beside the shown one.
QStringList otherFormats(const SkinContext &context)
{
    QDir folder = QFileInfo(context.UiFilePath).absoluteDir();
    while (folder.dirName() != context.SkinFormat && folder.cdUp()) {
    }
    folder.cdUp();
    QStringList formats;
    for (const QString &name : SkinFolderListing::formatNamesIn(folder.absolutePath())) {
        if (SkinFormatName::isFormat(name) && name != context.SkinFormat)
            formats << name;
    }
    return formats;
}

double fraction(const QScrollBar *bar)
{
    return bar->maximum() > 0 ? double(bar->value()) / bar->maximum() : 0.0;
}

} // namespace

void frmEditor::CompareFormatsCommand()
{
    if (mEnv.context.UiFilePath.isEmpty() || mEnv.context.SkinFormat.isEmpty()) {
        mEnv.dialogs.message(kTitle, QStringLiteral("Open a skin file of a format first."));
        return;
    }
    const QStringList formats = otherFormats(mEnv.context);
    if (formats.isEmpty()) {
        mEnv.dialogs.message(kTitle, QStringLiteral("The skin has no other format to compare with."));
        return;
    }
    const QString format = mEnv.dialogs.choose(kTitle, QStringLiteral("Compare with the format:"), formats);
    if (format.isEmpty())
        return;
    auto *compare = new CompareFormats(mEnv.context, format, this);
    QString error;
    if (!compare->open(error)) {
        delete compare;
        mEnv.dialogs.message(kTitle, error, Dialogs::Icon::Warning);
        return;
    }
    compare->setAttribute(Qt::WA_DeleteOnClose);
    delete mCompare;
    mCompare = compare;
    const auto scroll = [this] {
        if (mCompare)
            mCompare->followScroll(fraction(canvasArea->horizontalScrollBar()), fraction(canvasArea->verticalScrollBar()));
    };
    connect(canvasArea->horizontalScrollBar(), &QScrollBar::valueChanged, compare, scroll);
    connect(canvasArea->verticalScrollBar(), &QScrollBar::valueChanged, compare, scroll);
    compare->show();
    followCompare();
}

void frmEditor::followCompare()
{
    if (!mCompare || !mShown->shownLayer())
        return;
    mCompare->follow(mShown->shownLayer()->ElementKey(), mShown->frameOnObject() ? mShown->currentNodeKey() : QByteArray());
}
