// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

class QAction;
class QToolBar;
class QWidget;
class ToolbarImages;

// The main window's toolbar "tlbMain": one button per command, each named by
// its key ("Open", "Dir", "Save", "Lock", "Settings", "Prev", "Next",
// "About") with its caption, tool tip and picture; "Lock" can stay pressed.
namespace MainToolbar {

QToolBar *create(QWidget &window, const ToolbarImages &images);
// The button with that key, or none.
QAction *button(const QToolBar &toolbar, const QString &key);

} // namespace MainToolbar
