#include "ImageLoader.h"

#include "RlDecoder.h"
#include "RlHeader.h"
#include "SkinFileNames.h"

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

} // namespace

QImage ImageLoader::Placeholder()
{
    initRenderResources();
    return QImage(QStringLiteral(":/korvi/placeholder.bmp")).convertToFormat(QImage::Format_RGB32);
}

QSize ImageLoader::LoadImageFile(const QString &path, QImage &buffer)
{
    buffer = QImage();
    if (path.isEmpty()) {
        buffer = Placeholder();
        return buffer.size();
    }
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return QSize(0, 0);
    return LoadImageBytes(path, file.readAll(), buffer);
}

QSize ImageLoader::LoadImageBytes(const QString &path, const QByteArray &bytes, QImage &buffer)
{
    buffer = QImage();
    if (path.isEmpty()) {
        buffer = Placeholder();
        return buffer.size();
    }
    // A .jpg goes to the picture reader whatever it holds, as the platform's
    // loader would take it; other names are decided by their first two bytes.
    if (isJpegName(path))
        return fromReader(bytes, nullptr, buffer);
    if (bytes.startsWith("BM"))
        return fromReader(bytes, "BMP", buffer);
    if (RlHeader::hasMagic(bytes))
        return RlDecoder::decode(bytes, buffer);
    return QSize(0, 0);
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
