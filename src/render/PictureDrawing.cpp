// SPDX-License-Identifier: MIT
#include "PictureDrawing.h"

#include "CanvasSize.h"
#include "PictureCache.h"
#include "ResourceLookup.h"
#include "RlDecoder.h"
#include "SkinNumber.h"

#include <QRect>
#include <algorithm>

#ifdef __SSE2__
#include <emmintrin.h>
#endif

namespace {

bool is32Bit(QImage::Format format)
{
    return format == QImage::Format_RGB32 || format == QImage::Format_ARGB32
        || format == QImage::Format_ARGB32_Premultiplied;
}

// Only red, green and blue are compared: the buffer formats carry no alpha that
// counts, and the copy always writes opaque pixels.
constexpr QRgb kColourMask = 0x00FFFFFFu;

// One row of the copy: every pixel whose colour is not `key` is written, opaque.
void copyRow(QRgb *out, const QRgb *in, int count, QRgb key)
{
    int i = 0;
#ifdef __SSE2__
    // Four pixels at a time: the kept destination pixels are blended back in, so
    // the result is the same as the pixel-by-pixel loop below.
    const __m128i colourMask = _mm_set1_epi32(int(kColourMask));
    const __m128i opaque = _mm_set1_epi32(int(~kColourMask));
    const __m128i keys = _mm_set1_epi32(int(key));
    for (; i + 4 <= count; i += 4) {
        const __m128i pixels = _mm_loadu_si128(reinterpret_cast<const __m128i *>(in + i));
        const __m128i transparent = _mm_cmpeq_epi32(_mm_and_si128(pixels, colourMask), keys);
        const __m128i below = _mm_loadu_si128(reinterpret_cast<const __m128i *>(out + i));
        const __m128i written = _mm_or_si128(_mm_and_si128(transparent, below),
                                             _mm_andnot_si128(transparent, _mm_or_si128(pixels, opaque)));
        _mm_storeu_si128(reinterpret_cast<__m128i *>(out + i), written);
    }
#endif
    for (; i < count; ++i) {
        // Written opaque, which is valid in all three 32-bit formats.
        const QRgb pixel = in[i] | ~kColourMask;
        if ((pixel & kColourMask) != key)
            out[i] = pixel;
    }
}

} // namespace

namespace PictureDrawing {

// The result is the same as the mask method of copying with a transparent
// colour ((destination AND mask) XOR (source AND NOT mask), the mask being white
// where the source has the transparent colour): every other source pixel
// replaces the destination pixel, the rest of the destination stays.
void DrawTransparent(QImage &destination, int x, int y, int width, int height,
                     const QImage &source, int sourceX, int sourceY, QRgb transparent)
{
    if (destination.isNull() || source.isNull() || width <= 0 || height <= 0)
        return;
    if (!is32Bit(destination.format()))
        destination = destination.convertToFormat(QImage::Format_RGB32);
    const QImage src = is32Bit(source.format()) ? source : source.convertToFormat(QImage::Format_RGB32);

    // Clip the rectangle to both pictures, moving both origins together.
    QRect area(sourceX, sourceY, width, height);
    area &= src.rect();
    area &= destination.rect().translated(sourceX - x, sourceY - y);
    if (area.isEmpty())
        return;
    const int dx = x - sourceX;
    const int dy = y - sourceY;
    const QRgb key = transparent & kColourMask;
    // Rows are reached by their stride from the first: asking the pictures for
    // each row would check for sharing on every row.
    const qsizetype inStride = src.bytesPerLine();
    const qsizetype outStride = destination.bytesPerLine();
    const uchar *inRow = src.constScanLine(area.top()) + area.left() * sizeof(QRgb);
    uchar *outRow = destination.scanLine(area.top() + dy) + (area.left() + dx) * sizeof(QRgb);
    for (int row = area.top(); row <= area.bottom(); ++row) {
        copyRow(reinterpret_cast<QRgb *>(outRow), reinterpret_cast<const QRgb *>(inRow), area.width(), key);
        inRow += inStride;
        outRow += outStride;
    }
}

QSize DrawBackground(const ResourceLookup &lookup, PictureCache &cache, QImage &buffer, QImage &canvas)
{
    const QString path = lookup.LocateBackground();
    QSize size;
    if (!path.isEmpty()) {
        size = cache.LoadImageFile(path, buffer);
    } else {
        // Without a format the buffer is only cleared: it keeps the size it had.
        const QString &format = lookup.context().SkinFormat;
        if (!format.isEmpty()) {
            const QSize wanted = CanvasSize::ofFormat(format);
            buffer = wanted.isEmpty() ? QImage() : QImage(wanted, QImage::Format_RGB32);
        } else if (!buffer.isNull()) {
            buffer = QImage(buffer.size(), QImage::Format_RGB32);
        }
        if (!buffer.isNull())
            buffer.fill(kNoBackground);
        size = buffer.size();
    }
    DrawTransparent(canvas, 0, 0, size.width(), size.height(), buffer, 0, 0, kTransparent);
    return size;
}

} // namespace PictureDrawing
