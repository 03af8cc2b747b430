// SPDX-License-Identifier: MIT
#pragma once

#include <QIODevice>
#include <cstring>

// A file whose reading fails half-way, as a disk that reports an input/output
// error does: the first `goodBytes` come, then the read fails.
class FailingDevice : public QIODevice
{
public:
    FailingDevice(QByteArray content, qint64 goodBytes) : mContent(std::move(content)), mGoodBytes(goodBytes) { }
    bool isSequential() const override { return false; }
    qint64 size() const override { return mContent.size(); }

protected:
    qint64 readData(char *data, qint64 maxSize) override
    {
        const qint64 at = pos();
        if (at >= mGoodBytes) {
            setErrorString(QStringLiteral("Input/output error"));
            return -1;
        }
        const qint64 n = qMin(maxSize, mGoodBytes - at);
        memcpy(data, mContent.constData() + at, size_t(n));
        return n;
    }
    qint64 writeData(const char *, qint64) override { return -1; }

private:
    QByteArray mContent;
    qint64 mGoodBytes;
};
