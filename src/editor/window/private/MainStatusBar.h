// SPDX-License-Identifier: MIT
#pragma once

#include <QList>

class QLabel;
class QStatusBar;

// The main window's status bar "stbMain" with its three panels: the node
// shown, the layer drawn, and the mouse position on the canvas.
namespace MainStatusBar {

// The bar, with its panels appended to `panels` in order.
QStatusBar *create(QList<QLabel *> &panels);

} // namespace MainStatusBar
