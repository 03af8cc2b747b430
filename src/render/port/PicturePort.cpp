// SPDX-License-Identifier: MIT
#include "PicturePort.h"

#include "ImageLoader.h"
#include "PictureProblem.h"
#include "PictureScaler.h"
#include "PortNumbers.h"
#include "RlEncoder.h"
#include "RlHeader.h"

#include <QBuffer>
#include <QHash>
#include <QImageWriter>
#include <QPainter>

namespace {

int bmpBitDepth(const QByteArray &bytes)
{
    if (bytes.size() < 30)
        return 0;
    return quint8(bytes.at(28)) | (quint8(bytes.at(29)) << 8);
}

QByteArray written(const QImage &image, const char *format, int quality = -1)
{
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    QImageWriter writer(&buffer, format);
    if (quality >= 0)
        writer.setQuality(quality);
    return writer.write(image) ? bytes : QByteArray();
}

// An indexed picture with exactly the picture's colours, or a null one when
// it holds more than 256.
QImage exactlyIndexed(const QImage &picture)
{
    QHash<QRgb, int> index;
    QList<QRgb> table;
    QImage out(picture.size(), QImage::Format_Indexed8);
    for (int y = 0; y < picture.height(); ++y) {
        const QRgb *in = reinterpret_cast<const QRgb *>(picture.constScanLine(y));
        uchar *row = out.scanLine(y);
        for (int x = 0; x < picture.width(); ++x) {
            const QRgb p = in[x] | 0xFF000000;
            auto found = index.constFind(p);
            if (found == index.constEnd()) {
                if (table.size() == 256)
                    return {};
                found = index.insert(p, int(table.size()));
                table.append(p);
            }
            row[x] = uchar(found.value());
        }
    }
    out.setColorTable(table);
    return out;
}

// Qt's writer picks an indexed picture's depth by its colour count (1, 4 or
// 8 bits): the table is padded so that it picks the depth the file had.
QImage indexedAtDepth(const QImage &picture, int depth)
{
    QImage indexed = exactlyIndexed(picture);
    if (indexed.isNull())
        return {};
    QList<QRgb> table = indexed.colorTable();
    if (depth == 1 && table.size() <= 2) {
        while (table.size() < 2)
            table.append(qRgb(0, 0, 0));
        indexed.setColorTable(table);
        return indexed.convertToFormat(QImage::Format_Mono, table);
    }
    const int wanted = depth == 4 && table.size() <= 16 ? 16 : 256;
    while (table.size() < wanted)
        table.append(qRgb(0, 0, 0));
    indexed.setColorTable(table);
    return indexed;
}

void encodeBmp(const QImage &picture, const QByteArray &source, PicturePort::Result &result)
{
    const int depth = bmpBitDepth(source);
    QImage image = depth > 0 && depth <= 8 ? indexedAtDepth(picture, depth) : QImage();
    if (image.isNull())
        image = picture;
    result.bytes = written(image, "BMP");
    const int now = bmpBitDepth(result.bytes);
    if (!result.bytes.isEmpty() && now != depth) {
        result.noteKind = QStringLiteral("picture-depth");
        result.note = depth <= 8 && now > 8
                        ? QStringLiteral("was %1-bit; more than its colours after resizing, written as %2-bit").arg(depth).arg(now)
                        : QStringLiteral("was %1-bit, written as %2-bit").arg(depth).arg(now);
    }
}

} // namespace

QSize PicturePort::frameSizeFor(QSize frame, double sx, double sy)
{
    return QSize(int(qMax<qint64>(1, PortNumbers::scaled(frame.width(), sx))),
                 int(qMax<qint64>(1, PortNumbers::scaled(frame.height(), sy))));
}

PicturePort::Result PicturePort::port(const Request &request)
{
    Result result;
    result.kind = ImageLoader::Kind(request.path, request.bytes);
    QImage picture;
    PictureProblem problem;
    result.from = ImageLoader::LoadImageBytes(request.path, request.bytes, picture, &problem);
    if (picture.isNull() || result.kind.isEmpty()) {
        result.error = QStringLiteral("cannot be read as a picture");
        return result;
    }
    int frames = request.frames < 1 ? 1 : request.frames;
    if (request.stripes >= 1 && picture.height() % request.stripes == 0)
        frames = picture.height() / request.stripes;
    if (picture.height() % frames != 0) {
        result.noteKind = QStringLiteral("sprite-frames");
        result.note = QStringLiteral("height %1 is no multiple of %2 frames; resized as one picture")
                          .arg(picture.height()).arg(frames);
        frames = 1;
    }
    result.frames = frames;
    const QSize frameSize = frameSizeFor(QSize(picture.width(), picture.height() / frames), request.sx, request.sy);
    const QSize scaledSize(frameSize.width(), frameSize.height() * frames);
    result.to = request.canvas.isValid() ? request.canvas : scaledSize;
    if (request.sizeOnly)
        return result;
    QImage scaled = PictureScaler::scaleFrames(picture, frames, frameSize);
    if (request.canvas.isValid() && request.canvas != scaledSize) {
        QImage canvas(request.canvas, QImage::Format_RGB32);
        canvas.fill(Qt::black);
        QPainter painter(&canvas);
        painter.drawImage((request.canvas.width() - scaledSize.width()) / 2,
                          (request.canvas.height() - scaledSize.height()) / 2, scaled);
        painter.end();
        scaled = canvas;
    }
    if (result.kind == QLatin1String("RL")) {
        RlHeader header;
        RlHeader::read(request.bytes, header);
        const RlEncoder::Result encoded = RlEncoder::encode(scaled, header.widePalette());
        result.bytes = encoded.bytes;
        result.error = encoded.error;
    } else if (result.kind == QLatin1String("JPEG")) {
        result.bytes = written(scaled, "JPEG", 92);
    } else {
        encodeBmp(scaled, request.bytes, result);
    }
    if (result.bytes.isEmpty() && result.error.isEmpty())
        result.error = QStringLiteral("cannot be encoded as %1").arg(result.kind);
    return result;
}
