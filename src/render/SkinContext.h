// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

// The editor-wide values that decide where a skin's pictures are looked for.
// The application owns one; tests and the command-line tool make their own.
struct SkinContext
{
    // Full path of the open .ui file; its folder is the "ui folder".
    QString UiFilePath;
    // The default skin directory of the settings; may be empty.
    QString SkinDirectory;
    // The resolution folder, such as "800_480"; may be empty.
    QString SkinFormat;
};
