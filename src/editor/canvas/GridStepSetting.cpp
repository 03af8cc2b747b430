// SPDX-License-Identifier: MIT
#include "GridStepSetting.h"

#include "Dialogs.h"
#include "MovableShape.h"

#include <QAction>
#include <QMenu>

namespace {

const QString kTitle = QStringLiteral("Grid Step");

// More than any screen a skin is made for: a typing slip, not a step.
constexpr int kLargestStep = 1000;

} // namespace

GridStepSetting::GridStepSetting(MovableShape &frame, const EditorSettings &settings, Dialogs &dialogs,
                                 QMenu &view, QObject *parent)
    : QObject(parent)
    , mFrame(frame)
    , mSettings(settings)
    , mDialogs(dialogs)
{
    setObjectName(QStringLiteral("GridStepSetting"));
    mAction = view.addAction(QString(), this, &GridStepSetting::ask);
    mAction->setObjectName(QStringLiteral("mnuGridStep"));
    mAction->setStatusTip(QStringLiteral("The step, in pixels, to which dragged objects snap"));
    mFrame.setGridAlignSize(mSettings.gridStep());
    showStep();
}

int GridStepSetting::step() const
{
    return qMax(0, mFrame.GridAlignSize());
}

void GridStepSetting::setStep(int step)
{
    mFrame.setGridAlignSize(step);
    mSettings.setGridStep(step);
    showStep();
}

void GridStepSetting::ask()
{
    const QString answer = mDialogs.askText(kTitle, QStringLiteral("Snap dragged objects to a grid of (pixels, 0 for none):"),
                                            QString::number(step()))
                               .trimmed();
    if (answer.isEmpty())
        return;
    bool ok = false;
    const int typed = answer.toInt(&ok);
    if (!ok || typed < 0 || typed > kLargestStep) {
        mDialogs.message(kTitle,
                         QStringLiteral("\"%1\" is not a grid step: type a whole number of pixels from 0 (no snapping) to %2.")
                             .arg(answer)
                             .arg(kLargestStep),
                         Dialogs::Icon::Warning);
        return;
    }
    setStep(typed);
}

void GridStepSetting::showStep()
{
    mAction->setText(step() > 0 ? QStringLiteral("&Grid Step (%1 px)...").arg(step())
                                : QStringLiteral("&Grid Step (none)..."));
}
