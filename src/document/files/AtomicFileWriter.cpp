// SPDX-License-Identifier: MIT
#include "AtomicFileWriter.h"

#include "FileFaults.h"
#include "HostFiles.h"

#include <QDir>
#include <QFileInfo>

AtomicFileWriter::AtomicFileWriter(const QString &path)
    : mPath(path)
    , mFile(path)
    , mFault(FileFaults::writeFault(path))
{
}

AtomicFileWriter::~AtomicFileWriter()
{
    cancel();
}

bool AtomicFileWriter::fail(const QString &reason)
{
    mReason = reason.isEmpty() ? QStringLiteral("the write failed") : reason;
    mError = QStringLiteral("%1: %2").arg(QDir::toNativeSeparators(mPath), mReason);
    cancel();
    return false;
}

bool AtomicFileWriter::open()
{
    const QFileInfo info(mPath);
    // A folder, a device or a pipe under that name is not replaced by a file.
    if (info.exists() && !info.isFile())
        return fail(info.isDir() ? QStringLiteral("is a folder") : QStringLiteral("is not a regular file"));
    if (!mFile.open(QIODevice::WriteOnly))
        return fail(mFile.errorString());
    mOpen = true;
    return true;
}

bool AtomicFileWriter::write(const char *data, qsizetype size)
{
    if (!mOpen)
        return false;
    if (size == 0)
        return true;
    // The fault lets half of the first write through, as a disk that fills up
    // on the way does.
    if (!mFault.isEmpty()) {
        mFile.write(data, size / 2);
        return fail(mFault);
    }
    if (mFile.write(data, size) != size)
        return fail(mFile.errorString());
    mWritten += size;
    return true;
}

bool AtomicFileWriter::commit()
{
    if (!mOpen)
        return false;
    if (!mFault.isEmpty())
        return fail(mFault);
    const HostFiles::Owner owner = HostFiles::ownerOf(mPath);
    if (!mFile.flush())
        return fail(mFile.errorString());
    mOpen = false;
    if (!mFile.commit())
        return fail(mFile.errorString());
    HostFiles::giveOwner(mPath, owner);
    return true;
}

void AtomicFileWriter::cancel()
{
    if (mOpen) {
        mOpen = false;
        mFile.cancelWriting();
        mFile.commit();
    }
}

bool AtomicFileWriter::writeWhole(const QString &path, QByteArrayView bytes, QString &error)
{
    AtomicFileWriter file(path);
    if (file.open() && file.write(bytes) && file.commit())
        return true;
    error = file.errorString();
    return false;
}
