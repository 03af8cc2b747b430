// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

// The file "Settings.ini" that keeps the default skin directory between runs:
// one line, the directory, then CR LF, in the system's 8-bit encoding; nothing
// else is read or written.
//
// It lives in the program's own folder (the folder of the executable). When that
// folder cannot be written, as for a program installed system-wide, the user's
// configuration folder takes its place, for reading and writing alike.
class SettingsFile
{
public:
    SettingsFile(const QString &programFolder, const QString &configFolder);

    // The executable's folder and the application's configuration folder.
    static SettingsFile forApplication();

    static QString fileName() { return QStringLiteral("Settings.ini"); }

    QString programFolder() const { return mProgramFolder; }
    // Where the file is read and written.
    QString path() const;

    // Reads the first line, trimmed of blanks; a blank line gives the program's
    // own folder. A file that is missing or cannot be read leaves `skinDirectory`
    // as it was, without a message; so on a first start the directory stays
    // empty rather than becoming the program's folder. This is meant.
    void ReadSettings(QString &skinDirectory) const;
    // Replaces the file's content with the directory; failures are silent.
    void WriteSettings(const QString &skinDirectory) const;

    // The editor's other settings live beside it in "Editor.ini" (see
    // EditorSettings), so that the one line above stays all that
    // "Settings.ini" holds.
    QString editorSettingsPath() const;

private:
    QString mProgramFolder;
    QString mConfigFolder;
};
