// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

// The one backup that a save in place keeps of the file it replaces: "NAME.bak"
// beside the file ("main.ui" gives "main.bak", "main" gives "main.bak", in the
// same folder whatever the folder is called). The file as it stands is first
// kept under a temporary name; only once the new file is in place does that
// become the backup, so a save that fails leaves the previous backup alone.
class SkinBackup
{
public:
    explicit SkinBackup(const QString &path);
    // Drops the temporary copy when the save did not finish.
    ~SkinBackup();
    SkinBackup(const SkinBackup &) = delete;
    SkinBackup &operator=(const SkinBackup &) = delete;

    // "NAME.bak" beside `path`; empty for a file that is its own backup name.
    static QString pathFor(const QString &path);

    // Keeps the file as it stands (nothing when there is none yet); on failure
    // `error` gets the file and the system's reason.
    bool keep(QString &error);
    // The kept file becomes the backup, replacing the previous one.
    bool finish(QString &error);

private:
    QString mPath;
    QString mBackup;
    QString mKept;
    bool mKeeping = false;
};
