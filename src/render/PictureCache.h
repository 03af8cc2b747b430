// SPDX-License-Identifier: MIT
#pragma once

#include "FileStamp.h"
#include "PictureProblem.h"

#include <QHash>
#include <QImage>
#include <QSize>
#include <QString>

// Keeps decoded pictures by path, file size and modification time, so that a
// redraw with nothing changed decodes nothing again, while a picture changed on
// disk is read again. The lookup of picture names is not cached: it still probes
// the disk and reports missing files every time.
class PictureCache
{
public:
    // As ImageLoader::LoadImageFile: the buffer receives the picture (a shared
    // copy of the cached one: drawing on the buffer does not change the cache)
    // and the picture's size is returned.
    QSize LoadImageFile(const QString &path, QImage &buffer);
    // The same, with the stamp the caller's own look at the file just gave (see
    // ImageFile::stamp), so the file is not looked at a second time.
    // `problem`, when given, receives what is wrong with the file (see
    // ImageLoader); it is kept with the picture, so it is told again every time.
    QSize LoadImageFile(const QString &path, const FileStamp &stamp, QImage &buffer,
                        PictureProblem *problem = nullptr);

    // How many pictures this cache has decoded (loaded from disk) so far.
    int decodeCount() const { return mDecodeCount; }
    int size() const { return mEntries.size(); }
    void clear() { mEntries.clear(); }

private:
    struct Entry
    {
        FileStamp stamp;
        QImage image;
        QSize size;
        PictureProblem problem;
    };

    QHash<QString, Entry> mEntries;
    int mDecodeCount = 0;
};
