// SPDX-License-Identifier: MIT
#include "ImageLoader.h"
#include "RlDecoder.h"

#include <QTemporaryDir>
#include <QtTest>
#include <vector>

namespace {

constexpr QRgb kMagenta = 0xFFFF00FFu;

// Builds RL files by hand: header, palette of RGB565 words (entry 0 included, it
// is never read), row table and rows. One padding byte ends the file, since the
// file's last byte is never read as a code.
struct RlFile
{
    quint16 flags = 0;
    quint16 width = 0;
    quint16 height = 0;
    std::vector<quint16> palette { 0 };
    std::vector<QByteArray> rows;
    QByteArray tail = QByteArray(1, '\0');
    int rowCountOverride = -1;

    static void put16(QByteArray &out, int value)
    {
        out.append(char(value & 0xFF));
        out.append(char((value >> 8) & 0xFF));
    }

    QByteArray bytes() const
    {
        QByteArray out("RL");
        put16(out, flags);
        put16(out, width);
        put16(out, height);
        put16(out, int(palette.size()));
        put16(out, rowCountOverride >= 0 ? rowCountOverride : int(rows.size()));
        for (quint16 word : palette) {
            put16(out, word);
            if (flags & 1)
                out.append('\0'); // third byte of a wide entry
        }
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
        return out + tail;
    }
};

QByteArray codes(std::initializer_list<int> values)
{
    QByteArray out;
    for (int v : values)
        out.append(char(v));
    return out;
}

QRgb decodedWord(quint16 word)
{
    return qRgb((word >> 11) * 8, ((word >> 5) & 63) * 4, (word & 31) * 8);
}

constexpr quint16 kRed = 0xF800;   // (248, 0, 0)
constexpr quint16 kGreen = 0x07E0; // (0, 252, 0)
constexpr quint16 kBlue = 0x001F;  // (0, 0, 248)

QImage decode(const QByteArray &bytes, QSize *size = nullptr)
{
    QImage image;
    const QSize decoded = RlDecoder::decode(bytes, image);
    if (size)
        *size = decoded;
    return image;
}

} // namespace

// Decoding the skin's run-length pictures, well-formed and malformed.
class TestRlDecoder : public QObject
{
    Q_OBJECT

private slots:
    void paletteExpandsWithoutReplicatingHighBits()
    {
        RlFile f;
        f.width = 4;
        f.height = 1;
        f.palette = { 0x1234, 0xFFFF, kRed, 0x0821 };
        f.rows = { codes({ 0, 1, 2, 3 }) };
        const QImage image = decode(f.bytes());
        QCOMPARE(image.pixel(0, 0), kMagenta);
        QCOMPARE(image.pixel(1, 0), qRgb(248, 252, 248));
        QCOMPARE(image.pixel(2, 0), qRgb(248, 0, 0));
        QCOMPARE(image.pixel(3, 0), qRgb(8, 4, 8));
    }

    void widePaletteFlagStillReadsTwoByteWords()
    {
        // With flags bit 0 the row table starts 12 + 3N bytes in, but the colours
        // are still the words at 14, 16, ...
        RlFile f;
        f.flags = 1;
        f.width = 2;
        f.height = 1;
        f.palette = { 0, kRed, kBlue };
        f.rows = { codes({ 1, 2 }) };
        QByteArray bytes = f.bytes();
        // Entries as the builder wrote them: 0 0 0 | red(2) 0 | blue(2) 0.
        // The reader takes the words at 14 and 16: bytes 14-15 = 00 F8 ... so
        // place the words where they are read.
        bytes[14] = char(kRed & 0xFF);
        bytes[15] = char(kRed >> 8);
        bytes[16] = char(kBlue & 0xFF);
        bytes[17] = char(kBlue >> 8);
        const QImage image = decode(bytes);
        QCOMPARE(image.pixel(0, 0), decodedWord(kRed));
        QCOMPARE(image.pixel(1, 0), decodedWord(kBlue));
    }

    void widePaletteMovesOnlyTheRowTable()
    {
        RlFile narrow;
        narrow.width = 3;
        narrow.height = 1;
        narrow.palette = { 0, kGreen };
        narrow.rows = { codes({ 1, 0, 1 }) };
        RlFile wide = narrow;
        wide.flags = 1;
        QByteArray wideBytes = wide.bytes();
        // The colour word is read at 14 in both layouts.
        wideBytes[14] = char(kGreen & 0xFF);
        wideBytes[15] = char(kGreen >> 8);
        QCOMPARE(wideBytes.size(), narrow.bytes().size() + 2);
        const QImage a = decode(narrow.bytes());
        const QImage b = decode(wideBytes);
        // Same row codes found, though the table moved by N bytes.
        QCOMPARE(a.pixel(0, 0), decodedWord(kGreen));
        QCOMPARE(b.pixel(0, 0), a.pixel(0, 0));
        QCOMPARE(b.pixel(1, 0), kMagenta);
        QCOMPARE(b.pixel(2, 0), a.pixel(2, 0));
    }

    void escapedRowLengthIsBigEndian()
    {
        // 255 0x01 0x02 gives 258 bytes: 258 single pixels.
        RlFile f;
        f.width = 260;
        f.height = 2;
        f.palette = { 0, kRed, kBlue };
        f.rows = { QByteArray(258, char(1)), codes({ 2 }) };
        const QByteArray bytes = f.bytes();
        QCOMPARE(quint8(bytes[12 + 6]), quint8(255));
        QCOMPARE(quint8(bytes[12 + 7]), quint8(0x01));
        QCOMPARE(quint8(bytes[12 + 8]), quint8(0x02));
        const QImage image = decode(bytes);
        QCOMPARE(image.pixel(257, 0), decodedWord(kRed));
        QCOMPARE(image.pixel(258, 0), kMagenta);
        QCOMPARE(image.pixel(0, 1), decodedWord(kBlue));
    }

    void runOfIndexZeroAdvancesTheColumn()
    {
        RlFile f;
        f.width = 6;
        f.height = 1;
        f.palette = { 0, kRed };
        f.rows = { codes({ 254, 0, 4, 1 }) };
        const QImage image = decode(f.bytes());
        for (int x = 0; x < 4; ++x)
            QCOMPARE(image.pixel(x, 0), kMagenta);
        QCOMPARE(image.pixel(4, 0), decodedWord(kRed));
        QCOMPARE(image.pixel(5, 0), kMagenta);
    }

    void runsSkipsAndOffsets()
    {
        RlFile f;
        f.width = 12;
        f.height = 2;
        f.palette = { 0, kRed, kGreen, kBlue };
        // run of 3 red, skip 2, offset 2 then index 1 is blue, index 0 stays transparent
        f.rows = { codes({ 254, 1, 3, 255, 2, 253, 2, 0, 1, 0, 1 }),
                   // the offset starts at 0 again on the next row
                   codes({ 1 }) };
        const QImage image = decode(f.bytes());
        QCOMPARE(image.pixel(0, 0), decodedWord(kRed));
        QCOMPARE(image.pixel(2, 0), decodedWord(kRed));
        QCOMPARE(image.pixel(3, 0), kMagenta);
        QCOMPARE(image.pixel(4, 0), kMagenta);
        QCOMPARE(image.pixel(5, 0), decodedWord(kBlue));
        QCOMPARE(image.pixel(6, 0), kMagenta);
        QCOMPARE(image.pixel(7, 0), decodedWord(kBlue));
        QCOMPARE(image.pixel(0, 1), decodedWord(kRed));
    }

    void rowStopsAtItsTableLength()
    {
        RlFile f;
        f.width = 3;
        f.height = 2;
        f.palette = { 0, kRed, kGreen };
        f.rows = { codes({ 1 }), codes({ 2, 2 }) };
        const QImage image = decode(f.bytes());
        QCOMPARE(image.pixel(0, 0), decodedWord(kRed));
        QCOMPARE(image.pixel(1, 0), kMagenta); // the next row's bytes are not read as this row's
        QCOMPARE(image.pixel(0, 1), decodedWord(kGreen));
        QCOMPARE(image.pixel(1, 1), decodedWord(kGreen));
    }

    void lastByteOfTheFileIsNeverACode()
    {
        RlFile f;
        f.width = 3;
        f.height = 1;
        f.palette = { 0, kRed };
        f.rows = { codes({ 1, 1, 1 }) };
        f.tail.clear();
        const QImage image = decode(f.bytes());
        QCOMPARE(image.pixel(1, 0), decodedWord(kRed));
        QCOMPARE(image.pixel(2, 0), kMagenta);
    }

    void shortHeaderLoadsNothing()
    {
        QSize size;
        const QImage image = decode(QByteArray("RL\0\0\x05\0\x05\0\0\0\0", 11), &size);
        QCOMPARE(size, QSize(0, 0));
        QVERIFY(image.isNull());
    }

    void topBitSizesLoadNothing_data()
    {
        QTest::addColumn<int>("width");
        QTest::addColumn<int>("rowCount");
        QTest::newRow("width 32768") << 32768 << 1;
        QTest::newRow("row count 32768") << 1 << 32768;
        QTest::newRow("width 65535") << 65535 << 1;
    }
    void topBitSizesLoadNothing()
    {
        QFETCH(int, width);
        QFETCH(int, rowCount);
        RlFile f;
        f.width = quint16(width);
        f.height = 1;
        f.rows = { codes({ 0 }) };
        f.rowCountOverride = rowCount;
        QSize size;
        QVERIFY(decode(f.bytes(), &size).isNull());
        QCOMPARE(size, QSize(0, 0));
    }

    void hugePictureIsRefused()
    {
        RlFile f;
        f.width = 32767;
        f.height = 2000; // 65.5 million pixels
        QSize size;
        QVERIFY(decode(f.bytes(), &size).isNull());
        QCOMPARE(size, QSize(0, 0));
    }

    void pictureWithoutRowsHasItsWidth()
    {
        RlFile f;
        f.width = 6;
        QSize size;
        QVERIFY(decode(f.bytes(), &size).isNull());
        QCOMPARE(size, QSize(6, 0));
    }

    void paletteRunningPastTheEndLeavesMagenta()
    {
        RlFile f;
        f.width = 2;
        f.height = 2;
        f.palette = { 0, kRed, kRed, kRed };
        f.rows = { codes({ 1, 1 }) };
        const QByteArray bytes = f.bytes().left(12 + 5);
        QSize size;
        const QImage image = decode(bytes, &size);
        QCOMPARE(size, QSize(2, 2));
        QCOMPARE(image.pixel(0, 0), kMagenta);
        QCOMPARE(image.pixel(1, 1), kMagenta);
    }

    void rowTableRunningPastTheEndLeavesMagenta()
    {
        // The escaped entry's two bytes are cut off.
        RlFile f;
        f.width = 300;
        f.height = 1;
        f.palette = { 0, kRed };
        f.rows = { QByteArray(300, char(1)) };
        const QByteArray bytes = f.bytes().left(12 + 4 + 2);
        QSize size;
        const QImage image = decode(bytes, &size);
        QCOMPARE(size, QSize(300, 1));
        QCOMPARE(image.pixel(0, 0), kMagenta);
    }

    void operandPastTheEndStopsDecoding_data()
    {
        QTest::addColumn<int>("code");
        QTest::newRow("offset") << 253;
        QTest::newRow("run") << 254;
    }
    void operandPastTheEndStopsDecoding()
    {
        QFETCH(int, code);
        RlFile f;
        f.width = 4;
        f.height = 2;
        f.palette = { 0, kRed };
        f.rows = { codes({ 1, code, 1 }), codes({ 1 }) };
        f.tail.clear();
        // The file ends right after the code's first operand byte.
        QByteArray bytes = f.bytes();
        bytes.chop(1);
        const QImage image = decode(bytes);
        QCOMPARE(image.pixel(0, 0), decodedWord(kRed)); // what was drawn stays
        QCOMPARE(image.pixel(1, 0), kMagenta);
        QCOMPARE(image.pixel(0, 1), kMagenta);
    }

    void pixelsPastTheWidthAreDropped()
    {
        RlFile f;
        f.width = 2;
        f.height = 2;
        f.palette = { 0, kRed, kGreen };
        f.rows = { codes({ 254, 1, 5, 2 }), codes({ 2 }) };
        const QImage image = decode(f.bytes());
        QCOMPARE(image.pixel(1, 0), decodedWord(kRed));
        QCOMPARE(image.pixel(0, 1), decodedWord(kGreen)); // decoding went on
    }

    void fewerRowEntriesThanRowsStopAtTheFirstMissingRow()
    {
        RlFile f;
        f.width = 1;
        f.height = 3;
        f.palette = { 0, kRed };
        f.rows = { codes({ 1 }), codes({ 1 }), codes({ 1 }) };
        f.rowCountOverride = 2;
        const QImage image = decode(f.bytes());
        QCOMPARE(image.size(), QSize(1, 3));
        QCOMPARE(image.pixel(0, 0), decodedWord(kRed));
        QCOMPARE(image.pixel(0, 2), kMagenta);
    }

    void indexPastThePaletteStopsWhenPainted()
    {
        RlFile f;
        f.width = 3;
        f.height = 2;
        f.palette = { 0, kRed };
        f.rows = { codes({ 1, 5, 1 }), codes({ 1 }) };
        const QImage image = decode(f.bytes());
        QCOMPARE(image.pixel(0, 0), decodedWord(kRed));
        QCOMPARE(image.pixel(1, 0), kMagenta);
        QCOMPARE(image.pixel(2, 0), kMagenta);
        QCOMPARE(image.pixel(0, 1), kMagenta);
    }

    void indexPastThePaletteThroughTheOffsetStops()
    {
        RlFile f;
        f.width = 2;
        f.height = 1;
        f.palette = { 0, kRed };
        f.rows = { codes({ 253, 1, 0, 0, 1, 1 }) }; // index 0 still fine, 1 + 1 is not
        const QImage image = decode(f.bytes());
        QCOMPARE(image.pixel(0, 0), kMagenta);
        QCOMPARE(image.pixel(1, 0), kMagenta);
    }

    void emptyRunWithABadIndexStopsNothing()
    {
        RlFile f;
        f.width = 2;
        f.height = 1;
        f.palette = { 0, kRed };
        f.rows = { codes({ 254, 9, 0, 1 }) };
        const QImage image = decode(f.bytes());
        QCOMPARE(image.pixel(0, 0), decodedWord(kRed));
    }

    void otherContentNamedBmpLoadsNothing()
    {
        QTemporaryDir dir;
        const QString path = dir.path() + QStringLiteral("/text.bmp");
        QFile file(path);
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write("hello, this is not a picture");
        file.close();
        QImage buffer(5, 5, QImage::Format_RGB32);
        QCOMPARE(ImageLoader::LoadImageFile(path, buffer), QSize(0, 0));
        QVERIFY(buffer.isNull());
    }
};

QTEST_GUILESS_MAIN(TestRlDecoder)
#include "tst_rl_decoder.moc"
