// SPDX-License-Identifier: MIT
#include "CanvasSize.h"
#include "TestFiles.h"
#include "ImageLoader.h"
#include "PictureCache.h"
#include "PictureDrawing.h"
#include "ResourceLookup.h"
#include "SkinFileNames.h"
#include "StringInfoSink.h"

#include <QDir>
#include <QFile>
#include <QRandomGenerator>
#include <QTemporaryDir>
#include <QtTest>

using namespace SkinFileNames;

namespace {

constexpr QRgb kMagenta = 0xFFFF00FFu;

// A 2 x 1 RL picture: one red pixel, then one transparent.
QByteArray smallRl()
{
    return QByteArray("RL\0\0\x02\0\x01\0\x02\0\x01\0" "\0\0\0\xF8" "\x02" "\x01\x00" "\0", 20);
}

QImage randomPicture(int width, int height, quint32 seed, bool withMagenta)
{
    QRandomGenerator random(seed);
    QImage image(width, height, QImage::Format_RGB32);
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) {
            const bool transparent = withMagenta && random.bounded(3) == 0;
            image.setPixel(x, y, transparent ? kMagenta : (0xFF000000u | random.bounded(0x1000000u)));
        }
    }
    return image;
}

// The copy with a transparent colour done the way of masks: a mask that is white
// where the source has the transparent colour, (destination AND mask) XOR
// (source AND NOT mask).
QImage maskMethod(QImage destination, int x, int y, const QImage &source, QRgb transparent)
{
    for (int sy = 0; sy < source.height(); ++sy) {
        for (int sx = 0; sx < source.width(); ++sx) {
            const int dx = x + sx;
            const int dy = y + sy;
            if (!destination.valid(dx, dy))
                continue;
            const QRgb s = source.pixel(sx, sy) & 0xFFFFFFu;
            const QRgb mask = s == (transparent & 0xFFFFFFu) ? 0xFFFFFFu : 0u;
            const QRgb d = destination.pixel(dx, dy) & 0xFFFFFFu;
            destination.setPixel(dx, dy, 0xFF000000u | ((d & mask) ^ (s & ~mask & 0xFFFFFFu)));
        }
    }
    return destination;
}

} // namespace

// Turning picture references into files, and files into pictures.
// The lookup writes the paths it tries with the host's separators.
static QString native(const QString &path)
{
    return QDir::toNativeSeparators(path);
}

class TestImage : public QObject
{
    Q_OBJECT

private:
    QTemporaryDir mRoot;
    SkinContext mContext;
    QString ui() const { return mRoot.path() + QStringLiteral("/skin/800_480/ui"); }
    QString common() const { return mRoot.path() + QStringLiteral("/skin/common"); }

private slots:
    void init()
    {
        QDir(mRoot.path()).removeRecursively();
        QVERIFY(QDir().mkpath(ui()));
        mContext.UiFilePath = ui() + QStringLiteral("/main.ui");
        mContext.SkinDirectory.clear();
        mContext.SkinFormat.clear();
    }

    void fileNameHelpers()
    {
        QCOMPARE(GetFileName(QStringLiteral("sub\\pic$.bmp#2"), true), QStringLiteral("pic.bmp"));
        QCOMPARE(GetFileName(QStringLiteral("a/b\\c.jpg"), false), QStringLiteral("c"));
        QCOMPARE(GetFileName(QStringLiteral("x/y.z/name"), false), QStringLiteral("name"));
        QCOMPARE(GetFileName(QStringLiteral("$$a$.b.bmp"), false), QStringLiteral("a.b"));
        QCOMPARE(GetFileName(QStringLiteral("a.bmp#2#3"), true), QStringLiteral("a.bmp"));
        QCOMPARE(GetExtension(QStringLiteral("Pic.BMP")), QStringLiteral("bmp"));
        QCOMPARE(GetExtension(QStringLiteral("noext")), QString());
        QCOMPARE(GetExtension(QStringLiteral("a.tar.Gz")), QStringLiteral("gz"));
        QCOMPARE(GetParentFolder(QStringLiteral("/r/skin/ui/main.ui")), QStringLiteral("/r/skin/ui"));
        QCOMPARE(GetParentFolder(QStringLiteral("main.ui")), QString());
        // Only the host's separators cut here: "/" everywhere, "\\" on Windows.
        QCOMPARE(GetParentFolder(QStringLiteral("c:\\skins\\main.ui")),
                 QDir::separator() == QLatin1Char('\\') ? QStringLiteral("c:\\skins") : QString());
        QCOMPARE(GetParentFolder(QStringLiteral("c:/skins/main.ui")), QStringLiteral("c:/skins"));
        QVERIFY(!FileExists(QString()));
        QVERIFY(!FileExists(mRoot.path() + QStringLiteral("/none.bmp")));
        QVERIFY(!FileExists(ui())); // a folder is not a file that opens
    }

    void spriteReferenceReadsItsDescriptorAndFindsTheBitmap()
    {
        QVERIFY(writeTestFile(ui() + QStringLiteral("/../button.spr"), "[x]\r\nStripes = 20\r\n"));
        QVERIFY(writeTestFile(ui() + QStringLiteral("/../button.bmp"), "BM"));
        StringInfoSink info;
        const ImageFile file = ResourceLookup(mContext, info).GetImageFile(QStringLiteral("button.spr#3"));
        QCOMPARE(file.spriteCount, qint16(3));
        QCOMPARE(file.stripes, 20);
        QCOMPARE(file.grabCenter, false);
        QCOMPARE(file.path, native(ui() + QStringLiteral("/../button.bmp")));
        QCOMPARE(info.text(), QString());
    }

    void sharedReferenceSearchesTheSharedFoldersFirst()
    {
        QVERIFY(writeTestFile(ui() + QStringLiteral("/../icon.bmp"), "BM"));
        QVERIFY(writeTestFile(common() + QStringLiteral("/icon.bmp"), "BM"));
        StringInfoSink info;
        const ResourceLookup lookup(mContext, info);
        QCOMPARE(lookup.GetImageFile(QStringLiteral("$icon.bmp")).path, native(ui() + QStringLiteral("/../../common/icon.bmp")));
        QCOMPARE(lookup.GetImageFile(QStringLiteral("icon.bmp")).path, native(ui() + QStringLiteral("/../icon.bmp")));
        QFile::remove(common() + QStringLiteral("/icon.bmp"));
        QFile::remove(ui() + QStringLiteral("/../icon.bmp"));
        QVERIFY(lookup.GetImageFile(QStringLiteral("$icon.bmp")).path.isEmpty());
        QVERIFY(info.text().startsWith(QStringLiteral("Unable to locate icon.bmp in ") + native(common() + QStringLiteral("/icon.bmp")) + QStringLiteral("\r\n")));
    }

    void otherExtensionResolvesToNothingAndLoadsThePlaceholder()
    {
        QVERIFY(writeTestFile(ui() + QStringLiteral("/../pic.png"), "BM"));
        StringInfoSink info;
        const ImageFile file = ResourceLookup(mContext, info).GetImageFile(QStringLiteral("pic.png"));
        QCOMPARE(file.path, QString());
        QCOMPARE(info.text(), QString()); // nothing was looked for
        QImage buffer;
        QCOMPARE(ImageLoader::LoadImageFile(file.path, buffer), QSize(100, 50));
        QCOMPARE(buffer.size(), QSize(100, 50));
    }

    void placeholderReadsAsAMissingPicture()
    {
        const QImage placeholder = ImageLoader::Placeholder();
        QCOMPARE(placeholder.size(), QSize(100, 50));
        // A red cross over a light card in a grey frame; no transparent pixel, so
        // all of it shows.
        QCOMPARE(placeholder.pixel(50, 25), qRgb(200, 0, 0));
        QCOMPARE(placeholder.pixel(0, 0), qRgb(128, 128, 128));
        QCOMPARE(placeholder.pixel(50, 5), qRgb(255, 255, 255));
        for (int y = 0; y < 50; ++y)
            for (int x = 0; x < 100; ++x)
                QVERIFY(placeholder.pixel(x, y) != kMagenta);
    }

    void grabCentreNeedsDefFlagsOnTheSameLine()
    {
        QVERIFY(writeTestFile(ui() + QStringLiteral("/../a.spr"), "defflags = grab_center\r\n"));
        QVERIFY(writeTestFile(ui() + QStringLiteral("/../b.spr"), "GRAB_CENTER\r\n"));
        StringInfoSink info;
        const ResourceLookup lookup(mContext, info);
        QCOMPARE(lookup.GetImageFile(QStringLiteral("a.spr")).grabCenter, true);
        QCOMPARE(lookup.GetImageFile(QStringLiteral("b.spr")).grabCenter, false);
    }

    void capitalSprKeepsTheDescriptorPath()
    {
        QVERIFY(writeTestFile(ui() + QStringLiteral("/../pic.SPR"), "Stripes=4\r\n"));
        QVERIFY(writeTestFile(ui() + QStringLiteral("/../pic.bmp"), "BM"));
        StringInfoSink info;
        const ImageFile file = ResourceLookup(mContext, info).GetImageFile(QStringLiteral("pic.SPR#2"));
        QCOMPARE(file.path, native(ui() + QStringLiteral("/../pic.SPR")));
        QCOMPARE(file.stripes, 4);
        QCOMPARE(file.spriteCount, qint16(2));
        QImage buffer;
        QCOMPARE(ImageLoader::LoadImageFile(file.path, buffer), QSize(0, 0)); // a text file shows nothing
    }

    void missingDescriptorStillLooksForTheBitmap()
    {
        QVERIFY(writeTestFile(ui() + QStringLiteral("/../pic.bmp"), "BM"));
        StringInfoSink info;
        const ImageFile file = ResourceLookup(mContext, info).GetImageFile(QStringLiteral("pic.spr"));
        QCOMPARE(file.path, native(ui() + QStringLiteral("/../pic.bmp")));
        QCOMPARE(file.stripes, 0);
        QVERIFY(info.text().startsWith(QStringLiteral("Unable to locate pic.spr in ")));
    }

    void spriteCountFromTheReference_data()
    {
        QTest::addColumn<QString>("reference");
        QTest::addColumn<int>("count");
        QTest::newRow("no hash") << QStringLiteral("a.bmp") << 1;
        QTest::newRow("plain") << QStringLiteral("a.bmp#4") << 4;
        QTest::newRow("zero kept") << QStringLiteral("a.bmp#0") << 0;
        QTest::newRow("not a number") << QStringLiteral("a.bmp#x") << 0;
        QTest::newRow("half to even down") << QStringLiteral("a.bmp#2.5") << 2;
        QTest::newRow("half to even up") << QStringLiteral("a.bmp#3.5") << 4;
        QTest::newRow("first hash counts") << QStringLiteral("a#2.bmp#5") << 2;
        QTest::newRow("held at the 16-bit end") << QStringLiteral("a.bmp#99999") << 32767;
        QTest::newRow("negative") << QStringLiteral("a.bmp#-3") << -3;
    }
    void spriteCountFromTheReference()
    {
        QFETCH(QString, reference);
        QFETCH(int, count);
        StringInfoSink info;
        QCOMPARE(int(ResourceLookup(mContext, info).GetImageFile(reference).spriteCount), count);
    }

    void bitmapsAndJpegsLoadThroughQt()
    {
        QImage picture = randomPicture(7, 5, 1, true);
        const QString bmp = ui() + QStringLiteral("/pic.bmp");
        const QString jpg = ui() + QStringLiteral("/pic.jpg");
        QVERIFY(picture.save(bmp, "BMP"));
        QImage flat(40, 30, QImage::Format_RGB32);
        flat.fill(qRgb(0, 128, 255));
        QVERIFY(flat.save(jpg, "JPEG", 100));
        QImage buffer;
        QCOMPARE(ImageLoader::LoadImageFile(bmp, buffer), QSize(7, 5));
        QCOMPARE(buffer, picture);
        QCOMPARE(ImageLoader::LoadImageFile(jpg, buffer), QSize(40, 30));
        const QColor centre = buffer.pixelColor(20, 15);
        QVERIFY(qAbs(centre.red() - 0) <= 3 && qAbs(centre.green() - 128) <= 3 && qAbs(centre.blue() - 255) <= 3);
    }

    void jpegNameGoesToThePictureReaderWhateverItHolds()
    {
        const QString broken = ui() + QStringLiteral("/broken.jpg");
        QVERIFY(writeTestFile(broken, smallRl())); // an RL picture named .jpg is not decoded as RL
        QImage buffer(3, 3, QImage::Format_RGB32);
        QCOMPARE(ImageLoader::LoadImageFile(broken, buffer), QSize(0, 0));
        QVERIFY(buffer.isNull());
    }

    void rlPictureNamedBmpIsDecoded()
    {
        const QString path = ui() + QStringLiteral("/rl.bmp");
        QVERIFY(writeTestFile(path, smallRl()));
        QImage buffer;
        QCOMPARE(ImageLoader::LoadImageFile(path, buffer), QSize(2, 1));
        QCOMPARE(buffer.pixel(0, 0), qRgb(248, 0, 0));
        QCOMPARE(buffer.pixel(1, 0), kMagenta);
        QCOMPARE(ImageLoader::Kind(path, smallRl()), QStringLiteral("RL"));
    }

    void missingFileLoadsNothing()
    {
        QImage buffer(3, 3, QImage::Format_RGB32);
        QCOMPARE(ImageLoader::LoadImageFile(ui() + QStringLiteral("/none.bmp"), buffer), QSize(0, 0));
        QVERIFY(buffer.isNull());
    }

    void transparentCopyLeavesOutMagenta()
    {
        QImage canvas(4, 1, QImage::Format_RGB32);
        canvas.fill(qRgb(1, 2, 3));
        QImage source(3, 1, QImage::Format_RGB32);
        source.setPixel(0, 0, kMagenta);
        source.setPixel(1, 0, qRgb(9, 9, 9));
        source.setPixel(2, 0, qRgb(255, 0, 254)); // close to magenta is not magenta
        PictureDrawing::DrawTransparent(canvas, 1, 0, 3, 1, source, 0, 0);
        QCOMPARE(canvas.pixel(0, 0), qRgb(1, 2, 3));
        QCOMPARE(canvas.pixel(1, 0), qRgb(1, 2, 3));
        QCOMPARE(canvas.pixel(2, 0), qRgb(9, 9, 9));
        QCOMPARE(canvas.pixel(3, 0), qRgb(255, 0, 254));
    }

    void transparentCopyGivesTheMaskMethodPixels()
    {
        const QImage canvas = randomPicture(50, 40, 7, false);
        const QImage source = randomPicture(30, 20, 8, true);
        for (const QPoint at : { QPoint(0, 0), QPoint(10, 5), QPoint(35, 30), QPoint(-5, -3) }) {
            QImage ours = canvas;
            PictureDrawing::DrawTransparent(ours, at.x(), at.y(), source.width(), source.height(), source, 0, 0);
            QCOMPARE(ours, maskMethod(canvas, at.x(), at.y(), source, kMagenta));
        }
    }

    void transparentCopyOfAFrame()
    {
        // A sprite frame: the second 2 x 2 block of a 2 x 4 picture.
        QImage source(2, 4, QImage::Format_RGB32);
        source.fill(qRgb(10, 10, 10));
        source.setPixel(1, 3, qRgb(20, 20, 20));
        source.setPixel(0, 2, kMagenta);
        QImage canvas(3, 3, QImage::Format_ARGB32_Premultiplied);
        canvas.fill(qRgb(0, 0, 0));
        PictureDrawing::DrawTransparent(canvas, 1, 1, 2, 2, source, 0, 2);
        QCOMPARE(canvas.pixel(1, 1), qRgb(0, 0, 0));
        QCOMPARE(canvas.pixel(2, 1), qRgb(10, 10, 10));
        QCOMPARE(canvas.pixel(2, 2), qRgb(20, 20, 20));
        QCOMPARE(canvas.pixel(0, 0), qRgb(0, 0, 0));
        // A rectangle reaching past the source copies only what is there.
        PictureDrawing::DrawTransparent(canvas, 0, 0, 3, 3, source, 1, 3);
        QCOMPARE(canvas.pixel(0, 0), qRgb(20, 20, 20));
        QCOMPARE(canvas.pixel(1, 0), qRgb(0, 0, 0));
    }

    void backgroundPictureIsCopiedWithMagentaTransparent()
    {
        QVERIFY(writeTestFile(ui() + QStringLiteral("/../background/default.bmp"), smallRl()));
        StringInfoSink info;
        PictureCache cache;
        QImage buffer;
        QImage canvas(3, 2, QImage::Format_RGB32);
        canvas.fill(qRgb(7, 7, 7));
        const QSize size = PictureDrawing::DrawBackground(ResourceLookup(mContext, info), cache, buffer, canvas);
        QCOMPARE(size, QSize(2, 1));
        QCOMPARE(canvas.pixel(0, 0), qRgb(248, 0, 0));
        QCOMPARE(canvas.pixel(1, 0), qRgb(7, 7, 7));
        QCOMPARE(info.text(), QString());
    }

    void missingBackgroundIsDarkBlueOfTheFormatSize()
    {
        mContext.SkinDirectory = mRoot.path() + QStringLiteral("/skin");
        mContext.SkinFormat = QStringLiteral("800_480");
        StringInfoSink info;
        PictureCache cache;
        QImage buffer;
        QImage canvas(1000, 600, QImage::Format_RGB32);
        canvas.fill(qRgb(7, 7, 7));
        const QSize size = PictureDrawing::DrawBackground(ResourceLookup(mContext, info), cache, buffer, canvas);
        QCOMPARE(size, QSize(800, 480));
        QCOMPARE(canvas.pixel(799, 479), qRgb(0, 0, 150));
        QCOMPARE(canvas.pixel(800, 479), qRgb(7, 7, 7));
        QCOMPARE(info.text().count(QStringLiteral("Unable to locate BACKGROUND default.bmp in ")), 2);
    }

    void backgroundHeightIsReadFromTheFifthCharacter()
    {
        mContext.SkinFormat = QStringLiteral("1024_600");
        StringInfoSink info;
        PictureCache cache;
        QImage buffer;
        QImage canvas(2000, 2000, QImage::Format_RGB32);
        // "1024_600" from the fifth character on is "_600": no number, no picture.
        QCOMPARE(PictureDrawing::DrawBackground(ResourceLookup(mContext, info), cache, buffer, canvas), QSize(0, 0));
        mContext.SkinFormat = QStringLiteral("480_272");
        QCOMPARE(PictureDrawing::DrawBackground(ResourceLookup(mContext, info), cache, buffer, canvas), QSize(480, 272));
    }

    void theCanvasOfAFourDigitFormatWithoutBackgroundHasTheFormatSize()
    {
        mContext.SkinFormat = QStringLiteral("1024_600");
        PictureCache cache;
        QCOMPARE(CanvasSize::forSkin(mContext, cache), QSize(1024, 600));
        mContext.SkinFormat = QStringLiteral("480_272");
        QCOMPARE(CanvasSize::forSkin(mContext, cache), QSize(480, 272));
    }

    void missingBackgroundWithoutFormatKeepsTheBufferSize()
    {
        StringInfoSink info;
        PictureCache cache;
        QImage buffer(5, 4, QImage::Format_RGB32);
        buffer.fill(kMagenta);
        QImage canvas(6, 6, QImage::Format_RGB32);
        canvas.fill(qRgb(7, 7, 7));
        QCOMPARE(PictureDrawing::DrawBackground(ResourceLookup(mContext, info), cache, buffer, canvas), QSize(5, 4));
        QCOMPARE(canvas.pixel(4, 3), qRgb(0, 0, 150));
        QCOMPARE(canvas.pixel(5, 3), qRgb(7, 7, 7));
        QCOMPARE(info.text().count(QStringLiteral("Unable to locate ")), 1);
    }

    void cacheDecodesAnUnchangedPictureOnce()
    {
        const QString path = ui() + QStringLiteral("/rl.bmp");
        QVERIFY(writeTestFile(path, smallRl()));
        PictureCache cache;
        QImage buffer;
        QCOMPARE(cache.LoadImageFile(path, buffer), QSize(2, 1));
        QCOMPARE(cache.decodeCount(), 1);
        buffer.invertPixels(); // drawing on the buffer leaves the cached picture alone
        QImage again;
        QCOMPARE(cache.LoadImageFile(path, again), QSize(2, 1));
        QCOMPARE(cache.decodeCount(), 1);
        QCOMPARE(again.pixel(0, 0), qRgb(248, 0, 0));
        cache.LoadImageFile(QString(), again);
        cache.LoadImageFile(QString(), again);
        QCOMPARE(cache.decodeCount(), 2);
        QCOMPARE(again.size(), QSize(100, 50));
    }

    void cacheReadsAChangedFileAgain()
    {
        const QString path = ui() + QStringLiteral("/rl.bmp");
        QVERIFY(writeTestFile(path, smallRl()));
        PictureCache cache;
        QImage buffer;
        cache.LoadImageFile(path, buffer);
        QByteArray wider = smallRl();
        wider[4] = '\x03'; // three pixels wide, same file size
        QVERIFY(writeTestFile(path, wider));
        QFile file(path);
        QVERIFY(file.open(QIODevice::ReadWrite));
        QVERIFY(file.setFileTime(QDateTime::currentDateTime().addSecs(5), QFileDevice::FileModificationTime));
        file.close();
        QCOMPARE(cache.LoadImageFile(path, buffer), QSize(3, 1));
        QCOMPARE(cache.decodeCount(), 2);
        QFile::remove(path);
        QCOMPARE(cache.LoadImageFile(path, buffer), QSize(0, 0));
        QCOMPARE(cache.decodeCount(), 3);
    }
};

QTEST_GUILESS_MAIN(TestImage)
#include "tst_image.moc"
