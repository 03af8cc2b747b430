// SPDX-License-Identifier: MIT
#include "RlEncoder.h"

#include "RlHeader.h"

#include <algorithm>
#include <vector>

namespace {

constexpr QRgb kMagenta = 0xFFFF00FFu;
// Single-pixel codes reach indices 1 to 252 above the palette offset.
constexpr int kPage = 252;
constexpr int kMaxRowBytes = 65535;
constexpr int kMaxColours = 65534; // N = colours + 1 must fit 16 bits

bool isTransparent(QRgb pixel)
{
    return qAlpha(pixel) == 0 || (pixel & 0xFFFFFFu) == (kMagenta & 0xFFFFFFu);
}

quint16 toWord(QRgb pixel)
{
    return quint16(((qRed(pixel) >> 3) << 11) | ((qGreen(pixel) >> 2) << 5) | (qBlue(pixel) >> 3));
}

// The picture as palette indices (0 transparent), with the palette words most
// frequent first, so that most pixels need no palette offset.
struct IndexedPicture
{
    int width = 0;
    int height = 0;
    std::vector<quint16> words; // palette entries 1 to K
    std::vector<int> indices;   // width * height

    static IndexedPicture from(const QImage &source)
    {
        const QImage image = source.convertToFormat(QImage::Format_ARGB32);
        IndexedPicture picture;
        picture.width = image.width();
        picture.height = image.height();
        std::vector<qint64> counts(65536, 0);
        std::vector<qint64> firstSeen(65536, -1);
        std::vector<qint32> words(size_t(picture.width) * picture.height, -1);
        qint64 at = 0;
        for (int y = 0; y < picture.height; ++y) {
            const QRgb *line = reinterpret_cast<const QRgb *>(image.constScanLine(y));
            for (int x = 0; x < picture.width; ++x, ++at) {
                if (isTransparent(line[x]))
                    continue;
                const quint16 word = toWord(line[x]);
                words[at] = word;
                if (counts[word]++ == 0)
                    firstSeen[word] = at;
            }
        }
        std::vector<int> used;
        for (int w = 0; w < 65536; ++w) {
            if (counts[w] > 0)
                used.push_back(w);
        }
        std::sort(used.begin(), used.end(), [&](int a, int b) {
            return counts[a] != counts[b] ? counts[a] > counts[b] : firstSeen[a] < firstSeen[b];
        });
        std::vector<int> indexOf(65536, 0);
        for (size_t i = 0; i < used.size(); ++i) {
            picture.words.push_back(quint16(used[i]));
            indexOf[used[i]] = int(i) + 1;
        }
        picture.indices.resize(words.size());
        for (size_t i = 0; i < words.size(); ++i)
            picture.indices[i] = words[i] < 0 ? 0 : indexOf[words[i]];
        return picture;
    }
};

// Writes the codes of one row. `carried` is the palette offset a reader that
// keeps the offset across rows would start this row with; our reader starts
// every row at 0, so a row that paints colours after such a row first sets the
// offset back to 0 explicitly, and both kinds of reader agree.
class RowWriter
{
public:
    RowWriter(QByteArray &out, int &carried) : mOut(out), mCarried(carried) { }

    void begin(bool paintsColours)
    {
        if (paintsColours && mCarried > 0)
            setOffset(0);
    }

    void pixels(int index, int count, bool naive)
    {
        if (index == 0) {
            transparent(count, naive);
            return;
        }
        const int page = (index - 1) / kPage * kPage;
        if (page != mOffset)
            setOffset(page);
        const char code = char(index - mOffset);
        while (!naive && count >= 3) {
            const int n = std::min(count, 255);
            mOut.append(char(254));
            mOut.append(code);
            mOut.append(char(n));
            count -= n;
        }
        mOut.append(QByteArray(count, code));
    }

private:
    void transparent(int count, bool naive)
    {
        while (!naive && count >= 2) {
            const int n = std::min(count, 255);
            mOut.append(char(255));
            mOut.append(char(n));
            count -= n;
        }
        mOut.append(QByteArray(count, '\0'));
    }

    void setOffset(int offset)
    {
        mOut.append(char(253));
        mOut.append(char(offset & 0xFF));
        mOut.append(char(offset >> 8));
        mOffset = offset;
        mCarried = offset;
    }

    QByteArray &mOut;
    int &mCarried;
    int mOffset = 0;
};

void put16(QByteArray &out, int value)
{
    out.append(char(value & 0xFF));
    out.append(char((value >> 8) & 0xFF));
}

RlEncoder::Result encodePicture(const QImage &image, bool widePalette, bool naive)
{
    RlEncoder::Result result;
    if (image.isNull()) {
        result.error = QStringLiteral("the picture is empty");
        return result;
    }
    if (image.width() >= RlHeader::kSizeLimit || image.height() >= RlHeader::kSizeLimit) {
        result.error = QStringLiteral("the picture is larger than 32767 x 32767 pixels");
        return result;
    }
    const IndexedPicture picture = IndexedPicture::from(image);
    if (int(picture.words.size()) > kMaxColours) {
        result.error = QStringLiteral("the picture has more than %1 RGB565 colours").arg(kMaxColours);
        return result;
    }

    std::vector<QByteArray> rows(picture.height);
    int carried = 0;
    for (int y = 0; y < picture.height; ++y) {
        const int *line = picture.indices.data() + size_t(y) * picture.width;
        // A transparent tail needs no codes: the row is transparent already.
        int end = picture.width;
        if (!naive) {
            while (end > 0 && line[end - 1] == 0)
                --end;
        }
        const bool colours = std::any_of(line, line + end, [](int i) { return i != 0; });
        RowWriter writer(rows[y], carried);
        writer.begin(colours);
        for (int x = 0; x < end;) {
            int run = 1;
            while (x + run < end && line[x + run] == line[x])
                ++run;
            writer.pixels(line[x], run, naive);
            x += run;
        }
        if (rows[y].size() > kMaxRowBytes) {
            result.error = QStringLiteral("row %1 needs more than %2 bytes").arg(y).arg(kMaxRowBytes);
            return result;
        }
    }

    QByteArray out("RL");
    const int entries = int(picture.words.size()) + 1;
    put16(out, widePalette ? 1 : 0);
    put16(out, picture.width);
    put16(out, picture.height);
    put16(out, entries);
    put16(out, picture.height);
    // Entry 0 is never read; the colours are read as 2-byte words also in the
    // wide layout, which only adds N bytes before the row table.
    put16(out, 0);
    for (quint16 word : picture.words)
        put16(out, word);
    if (widePalette)
        out.append(QByteArray(entries, '\0'));
    for (const QByteArray &row : rows) {
        if (row.size() < 255) {
            out.append(char(row.size()));
        } else {
            out.append(char(255));
            out.append(char(row.size() >> 8));
            out.append(char(row.size() & 0xFF));
        }
    }
    for (const QByteArray &row : rows)
        out += row;
    // Readers never take the file's last byte as a code: one byte of padding
    // keeps the last row's last code readable.
    out.append('\0');
    result.bytes = out;
    return result;
}

} // namespace

RlEncoder::Result RlEncoder::encode(const QImage &image, bool widePalette)
{
    return encodePicture(image, widePalette, false);
}

RlEncoder::Result RlEncoder::encodeNaive(const QImage &image, bool widePalette)
{
    return encodePicture(image, widePalette, true);
}

QRgb RlEncoder::reducedColour(QRgb pixel)
{
    if (isTransparent(pixel))
        return kMagenta;
    const quint16 word = toWord(pixel);
    return qRgb((word >> 11) * 8, ((word >> 5) & 63) * 4, (word & 31) * 8);
}
