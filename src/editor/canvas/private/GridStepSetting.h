// SPDX-License-Identifier: MIT
#pragma once

#include "EditorSettings.h"

#include <QObject>

class Dialogs;
class MovableShape;
class QAction;
class QMenu;

// The grid step the moving frame snaps to while it is dragged (its
// GridAlignSize; 0 is no snapping): an entry of the View menu asks for it, the
// frame takes it at once, and the editor's settings keep it between runs.
//
// It is a menu entry rather than a row of the settings window: that window
// holds the two values a skin is found and drawn by, taken only on OK, while
// the grid step belongs to the work on the canvas, beside the zoom, and is
// changed while dragging, with its effect seen at once.
//
// The step is in the canvas widget's pixels, which are the skin's own at the
// usual zoom of 100 %.
class GridStepSetting : public QObject
{
    Q_OBJECT

public:
    GridStepSetting(MovableShape &frame, const EditorSettings &settings, Dialogs &dialogs, QMenu &view,
                    QObject *parent = nullptr);

    QAction *action() const { return mAction; }
    int step() const;
    // The frame snaps to `step` from now on, and in the next runs.
    void setStep(int step);
    // Asks for the step; an empty answer changes nothing, and an answer that
    // is not a whole number of pixels is refused with a message.
    void ask();

private:
    void showStep();

    MovableShape &mFrame;
    EditorSettings mSettings;
    Dialogs &mDialogs;
    QAction *mAction = nullptr;
};
