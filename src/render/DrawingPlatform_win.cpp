// SPDX-License-Identifier: MIT
#include "DrawingPlatform.h"

#include <QtGlobal>

#ifdef Q_OS_WIN

// Windows' own plugin draws without showing a window and needs no display;
// it asks the system for its fonts. Qt's offscreen plugin there knows only
// the fonts in Qt's own "lib/fonts" folder, which a Windows installation does
// not have, so every text would come out as empty boxes.
void DrawingPlatform::chooseForDrawingWithoutWindow()
{
}

#endif
