// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <QStringList>

class frmEditor;

// The command line of korvi-editor and what it does after the window's start-up.
namespace EditorStartup {

struct Options
{
    QString skinDirectory; // --skin-dir: the default skin directory for this run
    bool hasSkinDirectory = false;
    QString screenshot;    // --screenshot: write a picture of the window and end
    QString target;        // a .ui file, or a folder, to open
    QString message;       // --help or --version: printed in place of starting the editor
};

// The options and arguments, as --help lists them.
QString usage();

// "korvi-editor 0.1.0": the program's name and version.
QString versionLine();

// The options of `arguments` (the program's name first); `error` says what was
// wrong with them, empty when nothing was.
Options parse(const QStringList &arguments, QString &error);

// Whether the command line asks only for a text (--help, --help-all or
// --version), which needs no window. Read before the application exists, so
// Qt's own options, such as -platform, are still among `arguments`.
bool asksOnlyForText(const QStringList &arguments);

// Opens the target (a folder as Dir does, a file as Open does).
void openTarget(frmEditor &window, const QString &target);

// Selects the first LAYER node of the tree; false when there is none.
bool selectFirstLayer(frmEditor &window);

// A picture of the whole window, laid out at its size.
bool writeScreenshot(frmEditor &window, const QString &path);

// Applies the options to a new window and runs it (or writes the screenshot);
// returns the program's exit code.
int run(frmEditor &window, const Options &options);

} // namespace EditorStartup
