// SPDX-License-Identifier: MIT
#include "RlDecoder.h"
#include "RlEncoder.h"
#include "RlHeader.h"

#include <QDir>
#include <QFile>
#include <QRandomGenerator>
#include <QtTest>

namespace {

constexpr QRgb kMagenta = 0xFFFF00FFu;

QImage reduced(const QImage &source)
{
    QImage image = source.convertToFormat(QImage::Format_ARGB32);
    QImage out(image.size(), QImage::Format_RGB32);
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            out.setPixel(x, y, RlEncoder::reducedColour(image.pixel(x, y)));
    return out;
}

QImage decoded(const QByteArray &bytes)
{
    QImage image;
    RlDecoder::decode(bytes, image);
    return image;
}

// A reader that keeps the palette offset from one row to the next, as some
// readers of this format do; written here only to check that our files read the
// same with it.
QImage decodeCarryingOffset(const QByteArray &bytes)
{
    RlHeader header;
    RlHeader::read(bytes, header);
    const uchar *d = reinterpret_cast<const uchar *>(bytes.constData());
    QImage image(header.width, header.height, QImage::Format_RGB32);
    image.fill(kMagenta);
    qint64 at = header.rowTableOffset();
    std::vector<int> lengths;
    for (int k = 0; k < header.rowCount; ++k) {
        int length = d[at++];
        if (length == 255) {
            length = (d[at] << 8) | d[at + 1];
            at += 2;
        }
        lengths.push_back(length);
    }
    int offset = 0;
    for (int y = 0; y < header.height; ++y) {
        const qint64 end = at + lengths[y];
        int x = 0;
        const auto paint = [&](int index) {
            if (index != 0 && x < header.width) {
                const int word = d[12 + 2 * (index + offset)] | (d[13 + 2 * (index + offset)] << 8);
                image.setPixel(x, y, qRgb((word >> 11) * 8, ((word >> 5) & 63) * 4, (word & 31) * 8));
            }
            ++x;
        };
        while (at < end) {
            const int code = d[at];
            if (code < 253) {
                paint(code);
                at += 1;
            } else if (code == 253) {
                offset = d[at + 1] | (d[at + 2] << 8);
                at += 3;
            } else if (code == 254) {
                for (int i = 0; i < d[at + 2]; ++i)
                    paint(d[at + 1]);
                at += 3;
            } else {
                x += d[at + 1];
                at += 2;
            }
        }
    }
    return image;
}

QImage manyColours(int width, int height, quint32 seed)
{
    QRandomGenerator random(seed);
    QImage image(width, height, QImage::Format_ARGB32);
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) {
            const int kind = random.bounded(10);
            QRgb pixel;
            if (kind == 0)
                pixel = kMagenta;
            else if (kind == 1)
                pixel = qRgba(12, 34, 56, 0); // fully transparent
            else
                pixel = 0xFF000000u | random.bounded(0x1000000u);
            image.setPixel(x, y, pixel);
        }
    }
    return image;
}

QImage runsAndHoles()
{
    QImage image(1000, 6, QImage::Format_RGB32);
    image.fill(kMagenta);
    for (int x = 0; x < 700; ++x)
        image.setPixel(x, 0, qRgb(200, 100, 50)); // one long run
    for (int x = 0; x < 1000; x += 600)
        image.setPixel(x, 1, qRgb(0, 0, 255)); // a wide transparent area between
    for (int x = 0; x < 1000; ++x)
        image.setPixel(x, 2, x % 2 ? qRgb(255, 255, 255) : qRgb(0, 0, 0));
    for (int x = 990; x < 1000; ++x)
        image.setPixel(x, 4, qRgb(10, 200, 10)); // only at the far end
    // row 3 stays empty, row 5 is full of a second long run
    for (int x = 0; x < 1000; ++x)
        image.setPixel(x, 5, qRgb(200, 100, 50));
    return image;
}

void checkRoundTrip(const QImage &picture, bool wide)
{
    const RlEncoder::Result result = RlEncoder::encode(picture, wide);
    QVERIFY2(result.error.isEmpty(), qPrintable(result.error));
    QCOMPARE(decoded(result.bytes), reduced(picture));
    QCOMPARE(decodeCarryingOffset(result.bytes), reduced(picture));
    const RlEncoder::Result naive = RlEncoder::encodeNaive(picture, wide);
    QVERIFY(naive.error.isEmpty());
    QCOMPARE(decoded(naive.bytes), reduced(picture));
    QVERIFY2(result.bytes.size() <= naive.bytes.size(),
             qPrintable(QStringLiteral("%1 > %2").arg(result.bytes.size()).arg(naive.bytes.size())));
    RlHeader header;
    QVERIFY(RlHeader::read(result.bytes, header));
    QCOMPARE(header.widePalette(), wide);
    QCOMPARE(int(header.rowCount), picture.height());
}

} // namespace

// Writing RL pictures: everything written reads back as the RGB565-reduced input.
class TestRlEncoder : public QObject
{
    Q_OBJECT

private slots:
    void corpusPicturesRoundTrip_data()
    {
        QTest::addColumn<QString>("path");
        QTest::addColumn<bool>("wide");
        const QDir dir(QStringLiteral(KORVI_TEST_DATA "/rl"));
        const QStringList pictures = dir.entryList({ QStringLiteral("*.png") }, QDir::Files, QDir::Name);
        QVERIFY(pictures.size() >= 20);
        for (const QString &name : pictures) {
            QTest::newRow(qPrintable(name)) << dir.filePath(name) << false;
            QTest::newRow(qPrintable(name + QStringLiteral(" wide"))) << dir.filePath(name) << true;
        }
    }
    void corpusPicturesRoundTrip()
    {
        QFETCH(QString, path);
        QFETCH(bool, wide);
        const QImage picture(path);
        QVERIFY(!picture.isNull());
        checkRoundTrip(picture, wide);
        // The corpus colours are RGB565 already: they come back unchanged.
        QCOMPARE(decoded(RlEncoder::encode(picture, wide).bytes), picture.convertToFormat(QImage::Format_RGB32));
    }

    void manyColoursUseThePaletteOffset()
    {
        const QImage picture = manyColours(300, 40, 3);
        checkRoundTrip(picture, false);
        checkRoundTrip(picture, true);
        RlHeader header;
        const QByteArray bytes = RlEncoder::encode(picture).bytes;
        QVERIFY(RlHeader::read(bytes, header));
        QVERIFY(header.paletteCount > 253);
        QVERIFY(bytes.contains(char(253)));
    }

    void rowAfterAnOffsetStartsWithAResetToZero()
    {
        // 300 colours each once in row 0, so the last ones need an offset; row 1
        // uses the most frequent colour, which sits at index 1.
        QImage picture(300, 2, QImage::Format_RGB32);
        for (int x = 0; x < 300; ++x)
            picture.setPixel(x, 0, qRgb(8 * (x % 32), 4 * (x / 32), 0));
        for (int x = 0; x < 300; ++x)
            picture.setPixel(x, 1, qRgb(0, 0, 248));
        const QByteArray bytes = RlEncoder::encode(picture).bytes;
        checkRoundTrip(picture, false);
        RlHeader header;
        RlHeader::read(bytes, header);
        qint64 at = header.rowTableOffset();
        int firstRow = quint8(bytes[at]);
        at += 1;
        if (firstRow == 255) {
            firstRow = (quint8(bytes[at]) << 8) | quint8(bytes[at + 1]);
            at += 2;
        }
        at += quint8(bytes[at]) == 255 ? 3 : 1;
        const qint64 secondRowStart = at + firstRow;
        QCOMPARE(quint8(bytes[secondRowStart]), quint8(253));
        QCOMPARE(quint8(bytes[secondRowStart + 1]), quint8(0));
        QCOMPARE(quint8(bytes[secondRowStart + 2]), quint8(0));
    }

    void longRunsAndWideTransparentAreas()
    {
        const QImage picture = runsAndHoles();
        checkRoundTrip(picture, false);
        const QByteArray bytes = RlEncoder::encode(picture).bytes;
        // Runs and skips keep it far below one byte per pixel.
        QVERIFY2(bytes.size() < 1500, qPrintable(QString::number(bytes.size())));
    }

    void transparentTailIsLeftOut()
    {
        QImage picture(50, 1, QImage::Format_RGB32);
        picture.fill(kMagenta);
        picture.setPixel(0, 0, qRgb(255, 255, 255));
        const QByteArray bytes = RlEncoder::encode(picture).bytes;
        // header 12, palette 2 x 2, one row-table byte, one code, one padding byte
        QCOMPARE(bytes.size(), 12 + 4 + 1 + 1 + 1);
        checkRoundTrip(picture, false);
    }

    void rowsLongerThan254BytesUseEscapedLengths()
    {
        QImage picture(400, 1, QImage::Format_RGB32);
        for (int x = 0; x < 400; ++x)
            picture.setPixel(x, 0, x % 2 ? qRgb(255, 255, 255) : qRgb(0, 0, 0));
        checkRoundTrip(picture, false);
        const QByteArray bytes = RlEncoder::encode(picture).bytes;
        QCOMPARE(quint8(bytes[12 + 6]), quint8(255));
        QCOMPARE((quint8(bytes[12 + 7]) << 8) | quint8(bytes[12 + 8]), 400);
    }

    void tooLargePicturesAreRefused()
    {
        const RlEncoder::Result wide = RlEncoder::encode(QImage(32768, 1, QImage::Format_RGB32));
        QVERIFY(wide.bytes.isEmpty());
        QVERIFY(!wide.error.isEmpty());
        QVERIFY(!RlEncoder::encode(QImage()).error.isEmpty());
    }

    void reducedColours()
    {
        QCOMPARE(RlEncoder::reducedColour(qRgb(255, 255, 255)), qRgb(248, 252, 248));
        QCOMPARE(RlEncoder::reducedColour(qRgb(255, 0, 255)), kMagenta);
        QCOMPARE(RlEncoder::reducedColour(qRgba(1, 2, 3, 0)), kMagenta);
        QCOMPARE(RlEncoder::reducedColour(qRgb(7, 3, 7)), qRgb(0, 0, 0));
    }
};

QTEST_GUILESS_MAIN(TestRlEncoder)
#include "tst_rl_encoder.moc"
