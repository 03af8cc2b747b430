// SPDX-License-Identifier: MIT
#include "PictureCache.h"

#include "ImageLoader.h"

#include "SkinFileNames.h"

QSize PictureCache::LoadImageFile(const QString &path, QImage &buffer)
{
    // The placeholder (empty path) is cached like a file that never changes.
    FileStamp stamp;
    if (path.isEmpty())
        stamp.size = 0;
    else
        stamp = SkinFileNames::stampOf(path);
    return LoadImageFile(path, stamp, buffer);
}

QSize PictureCache::LoadImageFile(const QString &path, const FileStamp &givenStamp, QImage &buffer,
                                  PictureProblem *problem)
{
    FileStamp stamp = givenStamp;
    if (path.isEmpty())
        stamp = FileStamp{ 0, 0 };
    const auto found = mEntries.constFind(path);
    if (found != mEntries.constEnd() && found->stamp == stamp) {
        buffer = found->image;
        if (problem)
            *problem = found->problem;
        return found->size;
    }

    Entry entry;
    entry.stamp = stamp;
    entry.size = ImageLoader::LoadImageFile(path, entry.image, &entry.problem);
    ++mDecodeCount;
    mEntries.insert(path, entry);
    buffer = entry.image;
    if (problem)
        *problem = entry.problem;
    return entry.size;
}
