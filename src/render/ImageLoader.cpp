// SPDX-License-Identifier: MIT
#include "ImageLoader.h"

#include "PictureProblem.h"
#include "RlDecoder.h"
#include "RlHeader.h"
#include "SkinFileNames.h"

#include "FileReading.h"

#include <QDir>
#include <QFile>

// The resource initialiser of a static library has to be called by name, and
// outside any namespace.
static void initRenderResources()
{
    Q_INIT_RESOURCE(RenderResources);
}

namespace {

// Pictures read by Qt's readers share the buffer format of RL pictures; an alpha
// channel is dropped, as the transparent colour is what counts.
QSize fromReader(const QByteArray &bytes, const char *format, QImage &buffer)
{
    QImage image = QImage::fromData(bytes, format);
    if (image.isNull())
        return QSize(0, 0);
    buffer = image.convertToFormat(QImage::Format_RGB32);
    return buffer.size();
}

bool isJpegName(const QString &path)
{
    return SkinFileNames::GetExtension(path) == QLatin1String("jpg");
}

quint32 littleEndian(const QByteArray &bytes, qsizetype at, int size)
{
    quint32 value = 0;
    for (int i = size - 1; i >= 0; --i)
        value = (value << 8) | uchar(bytes.at(at + i));
    return value;
}

// What the header of a bitmap Qt could not read says about it: the file
// header (14 bytes), then an information header whose first field is its size
// (12 bytes for the oldest kind, with 16-bit sizes; 40 or more otherwise).
QString bmpProblem(const QByteArray &bytes)
{
    if (bytes.size() < 26)
        return QStringLiteral("not a picture (BMP header cut short: %1 bytes)").arg(bytes.size());
    const bool oldHeader = littleEndian(bytes, 14, 4) == 12;
    if (!oldHeader && bytes.size() < 30)
        return QStringLiteral("not a picture (BMP header cut short: %1 bytes)").arg(bytes.size());
    const qint32 width = oldHeader ? qint32(littleEndian(bytes, 18, 2)) : qint32(littleEndian(bytes, 18, 4));
    const qint32 height = oldHeader ? qint32(littleEndian(bytes, 20, 2)) : qint32(littleEndian(bytes, 22, 4));
    const quint32 bits = littleEndian(bytes, oldHeader ? 24 : 28, 2);
    return QStringLiteral("not a picture (BMP header says %1 \u00D7 %2, %3 bits per pixel, in %4 bytes)")
        .arg(width).arg(height).arg(bits).arg(bytes.size());
}

// How many bytes an uncompressed bitmap's header promises (file header,
// information header and palette up to the pixel data, then the rows, each
// padded to four bytes); 0 when the header does not tell.
qint64 bmpPromisedSize(const QByteArray &bytes)
{
    if (bytes.size() < 34 || littleEndian(bytes, 14, 4) < 40)
        return 0;
    const quint32 compression = littleEndian(bytes, 30, 4);
    if (compression != 0 && compression != 3)
        return 0;
    const qint64 width = qint32(littleEndian(bytes, 18, 4));
    const qint64 height = qAbs(qint64(qint32(littleEndian(bytes, 22, 4))));
    const qint64 bits = littleEndian(bytes, 28, 2);
    const qint64 rowBytes = (width * bits + 31) / 32 * 4;
    return qint64(littleEndian(bytes, 10, 4)) + rowBytes * height;
}

} // namespace

QImage ImageLoader::Placeholder()
{
    initRenderResources();
    return QImage(QStringLiteral(":/korvi/placeholder.bmp")).convertToFormat(QImage::Format_RGB32);
}

QSize ImageLoader::LoadImageFile(const QString &path, QImage &buffer)
{
    return LoadImageFile(path, buffer, nullptr);
}

QSize ImageLoader::LoadImageFile(const QString &path, QImage &buffer, PictureProblem *problem)
{
    buffer = QImage();
    if (path.isEmpty()) {
        buffer = Placeholder();
        return buffer.size();
    }
    QByteArray bytes;
    QString error;
    if (!FileReading::readWhole(path, bytes, error)) {
        // The reason alone: the report line names the file itself.
        if (problem)
            *problem = PictureProblem::unreadableBecause(
                QStringLiteral("cannot be read (%1)").arg(error.mid(QDir::toNativeSeparators(path).size() + 2)));
        return QSize(0, 0);
    }
    return LoadImageBytes(path, bytes, buffer, problem);
}

QSize ImageLoader::LoadImageBytes(const QString &path, const QByteArray &bytes, QImage &buffer)
{
    return LoadImageBytes(path, bytes, buffer, nullptr);
}

QSize ImageLoader::LoadImageBytes(const QString &path, const QByteArray &bytes, QImage &buffer,
                                  PictureProblem *problem)
{
    buffer = QImage();
    if (path.isEmpty()) {
        buffer = Placeholder();
        return buffer.size();
    }
    const auto unreadable = [problem](const QString &what) {
        if (problem)
            *problem = PictureProblem::unreadableBecause(what);
        return QSize(0, 0);
    };
    if (bytes.isEmpty())
        return unreadable(QStringLiteral("not a picture (empty file)"));
    // A .jpg goes to the picture reader whatever it holds, as the platform's
    // loader would take it; other names are decided by their first two bytes.
    if (isJpegName(path)) {
        const QSize size = fromReader(bytes, nullptr, buffer);
        return size.isEmpty() ? unreadable(QStringLiteral("not a picture (no JPEG data that can be decoded, %1 bytes)")
                                               .arg(bytes.size()))
                              : size;
    }
    if (bytes.startsWith("BM")) {
        const QSize size = fromReader(bytes, "BMP", buffer);
        if (size.isEmpty())
            return unreadable(bmpProblem(bytes));
        // The reader fills what the file lacks: the picture is shown as far
        // as it goes, but not as if it were whole.
        if (const qint64 promised = bmpPromisedSize(bytes); problem && promised > bytes.size())
            *problem = PictureProblem::partlyReadBecause(
                QStringLiteral("cut short (%1 of the %2 bytes its header promises)").arg(bytes.size()).arg(promised));
        return size;
    }
    if (RlHeader::hasMagic(bytes))
        return RlDecoder::decode(bytes, buffer, problem);
    return unreadable(QStringLiteral("not a picture (it begins with neither \"BM\" nor \"RL\")"));
}

QString ImageLoader::Kind(const QString &path, const QByteArray &bytes)
{
    if (isJpegName(path) || bytes.startsWith("\xFF\xD8"))
        return QStringLiteral("JPEG");
    if (bytes.startsWith("BM"))
        return QStringLiteral("BM");
    if (RlHeader::hasMagic(bytes))
        return QStringLiteral("RL");
    return QString();
}
