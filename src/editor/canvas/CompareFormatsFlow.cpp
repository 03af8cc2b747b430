// SPDX-License-Identifier: MIT
#include "CompareFormatsFlow.h"

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

CompareFormatsFlow::CompareFormatsFlow(const EditorEnvironment &environment, ShownNode &shown, QScrollArea &canvasArea,
                                       QWidget &window)
    : QObject(&window)
    , mEnv(environment)
    , mShown(shown)
    , mCanvasArea(canvasArea)
    , mWindow(window)
{
    connect(&mShown, &ShownNode::shown, this, &CompareFormatsFlow::follow);
    connect(mCanvasArea.horizontalScrollBar(), &QScrollBar::valueChanged, this, &CompareFormatsFlow::followScroll);
    connect(mCanvasArea.verticalScrollBar(), &QScrollBar::valueChanged, this, &CompareFormatsFlow::followScroll);
}

void CompareFormatsFlow::run()
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
    auto *compare = new CompareFormats(mEnv.context, format, &mWindow);
    QString error;
    if (!compare->open(error)) {
        delete compare;
        mEnv.dialogs.message(kTitle, error, Dialogs::Icon::Warning);
        return;
    }
    compare->setAttribute(Qt::WA_DeleteOnClose);
    delete mCompare;
    mCompare = compare;
    compare->show();
    follow();
}

void CompareFormatsFlow::follow()
{
    if (!mCompare || !mShown.shownLayer())
        return;
    mCompare->follow(mShown.shownLayer()->ElementKey(), mShown.frameOnObject() ? mShown.currentNodeKey() : QByteArray());
}

void CompareFormatsFlow::followScroll()
{
    if (mCompare)
        mCompare->followScroll(fraction(mCanvasArea.horizontalScrollBar()), fraction(mCanvasArea.verticalScrollBar()));
}
