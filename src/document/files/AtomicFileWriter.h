// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArrayView>
#include <QSaveFile>
#include <QString>

// The one way the programs write a file: the new content goes to a temporary
// file beside it, which takes the file's name only once every byte is written
// and flushed. A failure at any moment leaves the old file as it was and no
// part-file behind. Every write, the flush and the commit are checked; the
// error names the file and the system's reason ("out.png: No space left on
// device"). A file replaced by root keeps its owner and group where the host
// allows it.
class AtomicFileWriter
{
public:
    explicit AtomicFileWriter(const QString &path);
    ~AtomicFileWriter();
    AtomicFileWriter(const AtomicFileWriter &) = delete;
    AtomicFileWriter &operator=(const AtomicFileWriter &) = delete;

    bool open();
    bool write(const char *data, qsizetype size);
    bool write(QByteArrayView bytes) { return write(bytes.data(), bytes.size()); }
    // Puts the new file in place of the old one.
    bool commit();
    // Drops what was written; the old file stays.
    void cancel();

    QString path() const { return mPath; }
    // "PATH: reason" after a failure.
    QString errorString() const { return mError; }
    // The system's reason alone.
    QString reason() const { return mReason; }

    // Writes `bytes` as the whole new content of `path`; on failure `error`
    // gets "PATH: reason".
    static bool writeWhole(const QString &path, QByteArrayView bytes, QString &error);

private:
    bool fail(const QString &reason);

    QString mPath;
    QSaveFile mFile;
    QString mFault;
    QString mError;
    QString mReason;
    qint64 mWritten = 0;
    bool mOpen = false;
};
