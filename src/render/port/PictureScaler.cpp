// SPDX-License-Identifier: MIT
#include "PictureScaler.h"

#include <cstring>

namespace {

constexpr QRgb kMagenta = 0xFFFF00FF;

// Opaque pixels keep their colour with full coverage; magenta ones have none.
QImage withCoverage(const QImage &frame)
{
    QImage out(frame.size(), QImage::Format_ARGB32_Premultiplied);
    for (int y = 0; y < frame.height(); ++y) {
        const QRgb *in = reinterpret_cast<const QRgb *>(frame.constScanLine(y));
        QRgb *row = reinterpret_cast<QRgb *>(out.scanLine(y));
        for (int x = 0; x < frame.width(); ++x) {
            const QRgb p = in[x] | 0xFF000000;
            row[x] = p == kMagenta ? 0 : p;
        }
    }
    return out;
}

// Back to magenta-transparent RGB32, `into` at row `top`.
void threshold(const QImage &scaled, QImage &into, int top)
{
    for (int y = 0; y < scaled.height(); ++y) {
        const QRgb *in = reinterpret_cast<const QRgb *>(scaled.constScanLine(y));
        QRgb *row = reinterpret_cast<QRgb *>(into.scanLine(top + y));
        for (int x = 0; x < scaled.width(); ++x) {
            const QRgb p = in[x];
            const int a = qAlpha(p);
            if (a < 128) {
                row[x] = kMagenta;
                continue;
            }
            if (a == 255) {
                row[x] = PictureScaler::opaqueColour(p);
                continue;
            }
            // Un-premultiplied: the average over the opaque part only.
            const auto channel = [a](int c) { return qMin(255, (c * 255 + a / 2) / a); };
            row[x] = PictureScaler::opaqueColour(qRgb(channel(qRed(p)), channel(qGreen(p)), channel(qBlue(p))));
        }
    }
}

} // namespace

namespace PictureScaler {

QRgb opaqueColour(QRgb colour)
{
    const QRgb c = colour | 0xFF000000;
    // Exact magenta would read as transparent: one step of blue less.
    return c == kMagenta ? qRgb(255, 0, 254) : c;
}

QImage scaleFrames(const QImage &picture, int frames, QSize frameSize)
{
    if (picture.isNull() || frames < 1 || frameSize.isEmpty())
        return {};
    const QImage source = picture.format() == QImage::Format_RGB32 ? picture : picture.convertToFormat(QImage::Format_RGB32);
    const int frameHeight = source.height() / frames;
    QImage out(frameSize.width(), frameSize.height() * frames, QImage::Format_RGB32);
    for (int f = 0; f < frames; ++f) {
        const QImage frame = frames == 1 ? source : source.copy(0, f * frameHeight, source.width(), frameHeight);
        const QImage scaled = withCoverage(frame).scaled(frameSize, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
        threshold(scaled.convertToFormat(QImage::Format_ARGB32_Premultiplied), out, f * frameSize.height());
    }
    return out;
}

} // namespace PictureScaler
