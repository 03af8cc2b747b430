// SPDX-License-Identifier: MIT
#include "DrawingPlatform.h"

#include <QByteArray>
#include <QtGlobal>

#ifndef Q_OS_WIN

// Offscreen needs no display, and it sees the system's fonts through
// fontconfig just as the desktop's plugin does.
void DrawingPlatform::chooseForDrawingWithoutWindow()
{
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", QByteArrayLiteral("offscreen"));
}

#endif
