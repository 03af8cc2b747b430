// SPDX-License-Identifier: MIT
#pragma once

#include "FileStamp.h"

#include <QString>
#include <QtGlobal>

// What a picture reference of a skin resolves to (ResourceLookup::GetImageFile).
struct ImageFile
{
    // Full path of an existing picture file, or empty when none was found. An
    // empty path loads the built-in placeholder picture (ImageLoader).
    QString path;
    // The number after the first "#" of the reference, 1 without "#". The frame
    // drawn is the picture's height divided by this; 0 ("#0") is returned as it
    // is and means the picture is not drawn at all.
    qint16 spriteCount = 1;
    // The "Stripes" value of the sprite descriptor, 0 without one. When 1 or
    // more it is the height of the frame drawn.
    qint32 stripes = 0;
    // True when the sprite descriptor has a "DefFlags ... GRAB_CENTER" line.
    bool grabCenter = false;
    // Size and modification time of `path` as the lookup found it, for the
    // picture cache: the file is then not looked at once more.
    FileStamp stamp;
};
