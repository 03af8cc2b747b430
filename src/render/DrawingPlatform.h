// SPDX-License-Identifier: MIT
#pragma once

// The window-system plugin of a program that draws skins without showing a
// window (korvi render), chosen before its QGuiApplication is made. A platform
// chosen by the user (QT_QPA_PLATFORM) is kept. One file per platform:
// DrawingPlatform_unix.cpp, DrawingPlatform_win.cpp.
namespace DrawingPlatform {

void chooseForDrawingWithoutWindow();

} // namespace DrawingPlatform
