// SPDX-License-Identifier: MIT
#include "RlDecoder.h"

#include "PictureProblem.h"
#include "RlHeader.h"

#include <algorithm>
#include <vector>

namespace {

constexpr QRgb kMagenta = 0xFFFF00FFu;

// RGB565 expanded by shifting only: the low bits stay 0 (31 gives 248).
QRgb expand565(quint16 word)
{
    return qRgb((word >> 11) * 8, ((word >> 5) & 63) * 4, (word & 31) * 8);
}

// Index 0 is magenta whatever the file holds there; entries 1 to N-1 are 2-byte
// words at 14 + 2(i-1), also when the flags announce 3-byte entries: that flag
// moves only the row table, by design.
std::vector<QRgb> readPalette(const uchar *d, const RlHeader &header)
{
    std::vector<QRgb> palette(std::max<int>(header.paletteCount, 1));
    palette[0] = kMagenta;
    for (int i = 1; i < header.paletteCount; ++i) {
        const qsizetype at = 14 + 2 * (i - 1);
        palette[i] = expand565(quint16(d[at] | (d[at + 1] << 8)));
    }
    return palette;
}

// Row lengths: one byte, or 255 and a big-endian 16-bit value. Returns false
// when the table runs past the end of the file; `dataStart` receives the offset
// just after it.
bool readRowTable(const uchar *d, qint64 size, qint64 offset, int count,
                  std::vector<quint32> &lengths, qint64 &dataStart)
{
    lengths.resize(count);
    qint64 at = offset;
    for (int k = 0; k < count; ++k) {
        if (at >= size)
            return false;
        const uchar first = d[at++];
        if (first != 255) {
            lengths[k] = first;
            continue;
        }
        if (at + 2 > size)
            return false;
        lengths[k] = quint32((d[at] << 8) | d[at + 1]);
        at += 2;
    }
    dataStart = at;
    return true;
}

// How the decoding of a row ended.
enum class RowEnd { Complete, CutShort, ColourPastPalette };

struct RowDecoder
{
    const uchar *d;
    qint64 size;
    const std::vector<QRgb> &palette;
    int width;

    // Decodes one row; anything but Complete stops the decoding of the whole
    // picture. `badIndex` receives a palette index past the palette.
    RowEnd decode(QRgb *row, qint64 base, qint64 length, qint64 &badIndex) const
    {
        // The last byte of the file is never read as a code (the bound is its
        // index, not the file's length), and a row stops at its table length.
        const qint64 end = std::min(base + length, size - 1);
        const qint64 paletteCount = qint64(palette.size());
        const QRgb *colours = palette.data();
        qint64 x = 0;
        qint64 offset = 0; // the palette offset, P
        qint64 at = base;
        while (at < end) {
            const uchar code = d[at];
            if (code < 253) {
                if (code != 0) {
                    // The colour is looked up before the pixel is placed, so an
                    // index past the palette stops decoding even for a pixel
                    // that would fall past the width and be dropped.
                    const qint64 index = code + offset;
                    if (index >= paletteCount) {
                        badIndex = index;
                        return RowEnd::ColourPastPalette;
                    }
                    if (x < width)
                        row[x] = colours[index];
                }
                ++x;
                ++at;
            } else if (code == 253) {
                if (at + 2 >= size)
                    return RowEnd::CutShort;
                offset = d[at + 1] | (d[at + 2] << 8);
                at += 3;
            } else if (code == 254) {
                if (at + 2 >= size)
                    return RowEnd::CutShort;
                const uchar index = d[at + 1];
                const uchar count = d[at + 2];
                // Index 0 paints transparent pixels: the picture is already
                // magenta, so only the column moves.
                if (index != 0 && count != 0) {
                    if (index + offset >= paletteCount) {
                        badIndex = index + offset;
                        return RowEnd::ColourPastPalette;
                    }
                    if (x < width)
                        std::fill_n(row + x, std::min<qint64>(count, width - x), colours[index + offset]);
                }
                x += count;
                at += 3;
            } else {
                // at < size - 1, so the operand is inside the file.
                x += d[at + 1];
                at += 2;
            }
        }
        return RowEnd::Complete;
    }
};

// A buffer of the right size that nobody else holds is reused: a redraw of a
// big picture then costs no new allocation.
void prepareBuffer(QImage &image, const QSize &size)
{
    if (image.size() == size && image.format() == QImage::Format_RGB32 && image.isDetached())
        return;
    image = QImage(size, QImage::Format_RGB32);
}

void fillRows(QImage &image, int from)
{
    for (int y = from; y < image.height(); ++y) {
        QRgb *row = reinterpret_cast<QRgb *>(image.scanLine(y));
        std::fill_n(row, image.width(), kMagenta);
    }
}

void say(PictureProblem *problem, const PictureProblem &what)
{
    if (problem && !problem->isProblem())
        *problem = what;
}

QString cutShortInRow(int row, int height)
{
    return QStringLiteral("RL file cut short in row %1 of %2").arg(row + 1).arg(height);
}

// A header whose sizes no picture of a skin can have is refused before anything
// is allocated for it.
bool refusedHeader(const QByteArray &bytes, RlHeader &header, PictureProblem *problem)
{
    if (!RlHeader::read(bytes, header)) {
        say(problem, PictureProblem::unreadableBecause(
                         QStringLiteral("not a picture (RL header cut short: %1 bytes)").arg(bytes.size())));
        return true;
    }
    if (header.width >= RlHeader::kSizeLimit || qint64(header.width) * header.height > RlDecoder::kMaxPixels) {
        say(problem, PictureProblem::unreadableBecause(
                         QStringLiteral("not a picture (RL header says %1 \u00D7 %2)").arg(header.width).arg(header.height)));
        return true;
    }
    if (header.rowCount >= RlHeader::kSizeLimit) {
        say(problem, PictureProblem::unreadableBecause(
                         QStringLiteral("not a picture (RL header says its row table has %1 rows)").arg(header.rowCount)));
        return true;
    }
    return false;
}

} // namespace

QSize RlDecoder::decode(const QByteArray &bytes, QImage &image)
{
    return decode(bytes, image, nullptr);
}

QSize RlDecoder::decode(const QByteArray &bytes, QImage &image, PictureProblem *problem)
{
    RlHeader header;
    if (refusedHeader(bytes, header, problem)) {
        image = QImage();
        return QSize(0, 0);
    }
    const QSize size(header.width, header.height);
    if (size.isEmpty()) {
        image = QImage();
        return size;
    }
    prepareBuffer(image, size);
    if (image.isNull())
        return QSize(0, 0);

    const uchar *d = reinterpret_cast<const uchar *>(bytes.constData());
    const qint64 fileSize = bytes.size();
    std::vector<quint32> lengths;
    qint64 base = 0;
    if (header.rowTableOffset() > fileSize
        || !readRowTable(d, fileSize, header.rowTableOffset(), header.rowCount, lengths, base)) {
        say(problem, PictureProblem::unreadableBecause(
                         header.rowTableOffset() > fileSize ? QStringLiteral("not a picture (RL file cut short in its palette)")
                                                            : QStringLiteral("not a picture (RL file cut short in its row table)")));
        fillRows(image, 0);
        return size;
    }
    const std::vector<QRgb> palette = readPalette(d, header);

    // Each row is filled with magenta just before it is decoded, while it is in
    // the cache; rows that decoding does not reach are filled afterwards.
    const RowDecoder rows { d, fileSize, palette, header.width };
    uchar *bits = image.bits();
    const qsizetype stride = image.bytesPerLine();
    int y = 0;
    for (; y < header.height && y < header.rowCount; ++y) {
        QRgb *row = reinterpret_cast<QRgb *>(bits + y * stride);
        std::fill_n(row, header.width, kMagenta);
        if (problem && base + qint64(lengths[y]) > fileSize) {
            // Without a byte of pixel data nothing can be shown.
            if (y == 0 && base >= fileSize)
                say(problem, PictureProblem::unreadableBecause(QStringLiteral("not a picture (RL file ends before its pixels)")));
            else
                say(problem, PictureProblem::partlyReadBecause(cutShortInRow(y, header.height)));
        }
        qint64 badIndex = 0;
        const RowEnd end = rows.decode(row, base, lengths[y], badIndex);
        if (end != RowEnd::Complete) {
            say(problem, PictureProblem::partlyReadBecause(
                             end == RowEnd::CutShort ? cutShortInRow(y, header.height)
                                                     : QStringLiteral("RL picture uses colour %1 of a palette of %2")
                                                           .arg(badIndex).arg(palette.size())));
            ++y;
            break;
        }
        base += lengths[y];
    }
    if (y < header.height && header.rowCount < header.height)
        say(problem, PictureProblem::partlyReadBecause(
                         QStringLiteral("RL row table has %1 rows for a picture %2 high").arg(header.rowCount).arg(header.height)));
    fillRows(image, y);
    return size;
}
