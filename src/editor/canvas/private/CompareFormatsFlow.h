// SPDX-License-Identifier: MIT
#pragma once

#include "EditorEnvironment.h"

#include <QObject>
#include <QPointer>

class CompareFormats;
class ShownNode;
class QScrollArea;
class QWidget;

// View > Compare Formats: the skin's other formats offered, and the window
// beside the main one kept on the shown layer and object and on the canvas's
// scrolled place.
class CompareFormatsFlow : public QObject
{
    Q_OBJECT

public:
    // `window` is the parent of the comparing window; `canvasArea` the main
    // canvas's scroll area, whose place it follows.
    CompareFormatsFlow(const EditorEnvironment &environment, ShownNode &shown, QScrollArea &canvasArea,
                       QWidget &window);

    // Asks for the format and opens the comparing window (replacing one open).
    void run();

private:
    void follow();
    void followScroll();

    EditorEnvironment mEnv;
    ShownNode &mShown;
    QScrollArea &mCanvasArea;
    QWidget &mWindow;
    QPointer<CompareFormats> mCompare;
};
