#include "PictureCache.h"

#include "ImageLoader.h"

#include <QFile>
#include <QFileInfo>

QSize PictureCache::LoadImageFile(const QString &path, QImage &buffer)
{
    // The placeholder (empty path) is cached like a file that never changes.
    qint64 fileSize = 0;
    QDateTime modified;
    if (!path.isEmpty()) {
        const QFileInfo info(path);
        fileSize = info.exists() ? info.size() : -1;
        modified = info.lastModified();
    }
    const auto found = mEntries.constFind(path);
    if (found != mEntries.constEnd() && found->fileSize == fileSize && found->modified == modified) {
        buffer = found->image;
        return found->size;
    }

    Entry entry;
    entry.fileSize = fileSize;
    entry.modified = modified;
    entry.size = ImageLoader::LoadImageFile(path, entry.image);
    ++mDecodeCount;
    mEntries.insert(path, entry);
    buffer = entry.image;
    return entry.size;
}
