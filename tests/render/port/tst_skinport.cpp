// SPDX-License-Identifier: MIT
// A skin ported to other screens: the demo skin to exactly twice its size and
// back, to 1024_600, and the folders a port may and may not touch.

#include "ImageLoader.h"
#include "PicturePort.h"
#include "PictureScaler.h"
#include "PortNumbers.h"
#include "RlEncoder.h"
#include "SkinElementWalk.h"
#include "SkinPort.h"
#include "SpriteDescriptor.h"
#include "TestFiles.h"
#include "UiFileReader.h"
#include "clsElement.h"
#include "clsKorviInterface.h"
#include "clsProperties.h"
#include "clsProperty.h"

#include <QDirIterator>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QtTest>

#include <map>

namespace {

const QString kDemo = QStringLiteral(KORVI_SOURCE_DIR "/samples/demo-skin");

void copyTree(const QString &from, const QString &to)
{
    QDirIterator files(from, QDir::Files | QDir::Hidden, QDirIterator::Subdirectories);
    while (files.hasNext()) {
        const QString path = files.next();
        writeTestFile(to + QLatin1Char('/') + QDir(from).relativeFilePath(path), readTestFile(path));
    }
}

// Every file below a folder, relative, with its bytes.
std::map<QString, QByteArray> filesIn(const QString &folder)
{
    std::map<QString, QByteArray> files;
    QDirIterator it(folder, QDir::Files | QDir::Hidden, QDirIterator::Subdirectories);
    while (it.hasNext()) {
        const QString path = it.next();
        files[QDir(folder).relativeFilePath(path)] = readTestFile(path);
    }
    return files;
}

QStringList entriesIn(const QString &folder)
{
    QStringList names;
    QDirIterator it(folder, QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot, QDirIterator::Subdirectories);
    while (it.hasNext())
        names << QDir(folder).relativeFilePath(it.next());
    names.sort();
    return names;
}

SkinPort::Result port(const QString &skin, const QString &from, const QString &to, bool dryRun = false,
                      bool force = false)
{
    SkinPort::Options options;
    options.skinDir = skin;
    options.from = from;
    options.to = to;
    options.dryRun = dryRun;
    options.force = force;
    return SkinPort(options).run();
}

QSize pictureSize(const QString &path)
{
    QImage image;
    return ImageLoader::LoadImageFile(path, image);
}

// The values of every element, by node key and property key.
std::map<QByteArray, QByteArray> valuesOf(const QString &file)
{
    clsKorviInterface document;
    ReadUiFile(document, file, false);
    std::map<QByteArray, QByteArray> values;
    SkinElementWalk::forEach(document, [&](const SkinElementWalk::Visit &visit) {
        const clsProperties &properties = visit.element.Properties();
        for (int i = 0; i < properties.Count(); ++i)
            values[visit.element.ElementType() + ':' + visit.element.strName() + ':' + visit.nodeKey + ' '
                   + properties.keyAt(i).toByteArray()] = properties.valueAt(i).toByteArray();
    });
    return values;
}

QByteArray keyOf(const QByteArray &entry)
{
    return clsProperty::idKeyOf(entry.mid(entry.lastIndexOf(' ') + 1));
}

bool isScaledKey(const QByteArray &key)
{
    static const QList<QByteArray> keys { "x", "y", "w", "h", "cellw", "cellh", "padding", "paddingleft",
                                          "paddingright", "fontsize" };
    return keys.contains(key);
}

QByteArray digitsMasked(const QByteArray &text)
{
    return QString::fromLatin1(text).replace(QRegularExpression(QStringLiteral("[0-9]+")), QStringLiteral("#")).toLatin1();
}

// How far a colour is from magenta.
int magentaDistance(QRgb p)
{
    return qAbs(qRed(p) - 255) + qGreen(p) + qAbs(qBlue(p) - 255);
}

// The nearest an opaque pixel of the picture comes to magenta.
int nearestToMagenta(const QImage &image)
{
    int nearest = 255 * 3;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            const QRgb p = image.pixel(x, y) | 0xFF000000;
            if (p != 0xFFFF00FF)
                nearest = qMin(nearest, magentaDistance(p));
        }
    }
    return nearest;
}

} // namespace

class TestSkinPort : public QObject
{
    Q_OBJECT

private slots:
    void theDemoSkinAtTwiceItsSizeDoublesEveryNumberAndPicture()
    {
        QTemporaryDir dir;
        const QString skin = dir.filePath(QStringLiteral("skin"));
        copyTree(kDemo, skin);
        const SkinPort::Result result = port(skin, QStringLiteral("800_480"), QStringLiteral("1600_960"));
        QVERIFY2(result.ok, qPrintable(result.error));
        QCOMPARE(result.report.targets, QStringList({ "1600_960", "common/vga/1600_960" }));

        // Numbers: every scaled one exactly doubled, everything else equal.
        int doubled = 0;
        int alignOffsets = 0;
        for (const QString &name : { QStringLiteral("ui/main"), QStringLiteral("ui/templates_buttons"),
                                     QStringLiteral("ui/templates_lists"), QStringLiteral("main_scheme") }) {
            const bool hasFormat = name == QLatin1String("ui/main");
            const QString before = skin + QStringLiteral("/800_480/") + name + (hasFormat ? QStringLiteral("_800_480.ui") : QStringLiteral(".ui"));
            const QString after = skin + QStringLiteral("/1600_960/") + name + (hasFormat ? QStringLiteral("_1600_960.ui") : QStringLiteral(".ui"));
            const auto old = valuesOf(before);
            const auto now = valuesOf(after);
            QCOMPARE(now.size(), old.size());
            for (const auto &[entry, value] : old) {
                const QByteArray next = now.at(entry);
                qint64 n = 0;
                if (isScaledKey(keyOf(entry)) && PortNumbers::isPlainNumber(value, &n)) {
                    QCOMPARE(next, QByteArray::number(2 * n));
                    ++doubled;
                } else if (value == "800_480") {
                    QCOMPARE(next, QByteArray("1600_960"));
                } else if (QByteArray out; keyOf(entry).contains("align") && PortNumbers::scaleAlignOffset(value, 2, out)) {
                    QCOMPARE(next, out);
                    ++alignOffsets;
                } else {
                    QCOMPARE(next, value);
                }
            }
            // The diff holds only numbers.
            QCOMPARE(digitsMasked(readTestFile(after)), digitsMasked(readTestFile(before)));
        }
        QVERIFY(doubled > 80);
        QCOMPARE(result.report.valuesScaled, doubled + alignOffsets);

        // Pictures: exactly twice the size, in their own kind.
        const auto oldFiles = filesIn(skin + QStringLiteral("/800_480"));
        int pictures = 0;
        for (const auto &[name, bytes] : oldFiles) {
            if (!name.endsWith(QLatin1String(".bmp")) && !name.endsWith(QLatin1String(".jpg")))
                continue;
            const QString ported = skin + QStringLiteral("/1600_960/") + name;
            QCOMPARE(pictureSize(ported), pictureSize(skin + QStringLiteral("/800_480/") + name) * 2);
            QCOMPARE(ImageLoader::Kind(ported, readTestFile(ported)), ImageLoader::Kind(name, bytes));
            ++pictures;
        }
        QCOMPARE(pictures, 9);
        QCOMPARE(pictureSize(skin + QStringLiteral("/common/vga/1600_960/compass.bmp")), QSize(128, 128));
        QCOMPARE(SpriteDescriptor::readFile(skin + QStringLiteral("/1600_960/btn_round.spr")).Stripes, 144);
        QVERIFY(SpriteDescriptor::readFile(skin + QStringLiteral("/1600_960/btn_round.spr")).GrabCenter);

        // The only notes: objects whose pictures of common/ keep their size.
        QStringList notes;
        for (const PortReport::Note &note : result.report.notes)
            notes << note.kind + QLatin1Char(' ') + QString::fromLatin1(note.nodeKey);
        QCOMPARE(notes, QStringList({ "shared-picture Lui_Map|EbtnPin", "shared-picture TtplMenuButton",
                                      "shared-picture TtplSlider" }));
        QVERIFY(result.report.text().contains(QStringLiteral("btnPin uses icons.bmp#6 from common/, which keeps its size")));

        // Files outside the targets are as they were.
        QCOMPARE(filesIn(skin + QStringLiteral("/800_480")), filesIn(kDemo + QStringLiteral("/800_480")));
        QCOMPARE(filesIn(skin + QStringLiteral("/common/ui")), filesIn(kDemo + QStringLiteral("/common/ui")));
        QCOMPARE(readTestFile(skin + QStringLiteral("/common/icons.bmp")), readTestFile(kDemo + QStringLiteral("/common/icons.bmp")));

        // And back: the .ui files are the originals again, the pictures their size.
        QVERIFY(QDir(skin + QStringLiteral("/800_480")).removeRecursively());
        QVERIFY(QDir(skin + QStringLiteral("/common/vga/800_480")).removeRecursively());
        const SkinPort::Result back = port(skin, QStringLiteral("1600_960"), QStringLiteral("800_480"));
        QVERIFY2(back.ok, qPrintable(back.error));
        const auto returned = filesIn(skin + QStringLiteral("/800_480"));
        QCOMPARE(returned.size(), oldFiles.size());
        for (const auto &[name, bytes] : oldFiles) {
            if (name.endsWith(QLatin1String(".ui")) || name.endsWith(QLatin1String(".spr")))
                QCOMPARE(returned.at(name), bytes);
            else
                QCOMPARE(pictureSize(skin + QStringLiteral("/800_480/") + name), pictureSize(kDemo + QStringLiteral("/800_480/") + name));
        }
    }

    void theDemoSkinOn1024By600KeepsEdgesCellsFramesAndTransparency()
    {
        QTemporaryDir dir;
        const QString skin = dir.filePath(QStringLiteral("skin"));
        copyTree(kDemo, skin);
        // An object that touches another, and a value that is no number.
        const QString main = skin + QStringLiteral("/800_480/ui/main_800_480.ui");
        QByteArray text = readTestFile(main);
        text.replace("</STATE>", "\t<TEXT left x=13 y=300 w=101 h=20>\n\t<TEXT right x=114 y=300 w=77 h=20>\n"
                                 "\t<TEXT odd x=12px y=5>\n</STATE>");
        QVERIFY(writeTestFile(main, text));

        const SkinPort::Result result = port(skin, QStringLiteral("800_480"), QStringLiteral("1024_600"));
        QVERIFY2(result.ok, qPrintable(result.error));
        const QString ported = skin + QStringLiteral("/1024_600/ui/main_1024_600.ui");
        const auto values = valuesOf(ported);
        QCOMPARE(values.at("TEXT:left:Sst_Night|Eleft x").toInt() + values.at("TEXT:left:Sst_Night|Eleft w").toInt(),
                 values.at("TEXT:right:Sst_Night|Eright x").toInt());
        QCOMPARE(values.at("TEXT:odd:Sst_Night|Eodd x"), QByteArray("12px"));
        QCOMPARE(result.report.count(QStringLiteral("value-kept")), 1);
        QVERIFY(result.report.text().contains(QStringLiteral("Sst_Night|Eodd x=12px: not a plain number; left as it is")));
        QCOMPARE(values.at("BUTTON:btnBack:Lui_Main|EbtnBack bmpalign"), QByteArray("right+10"));
        // The diff holds only numbers (and the format names).
        QCOMPARE(digitsMasked(readTestFile(ported)), digitsMasked(text));

        // List cells tile: the cell templates are as wide and high as a cell.
        const auto lists = valuesOf(skin + QStringLiteral("/1024_600/ui/templates_lists.ui"));
        const QByteArray cellw = values.at("LIST:lstSettings:Lui_Settings|ElstSettings cellw");
        QCOMPARE(cellw, QByteArray::number(PortNumbers::scaled(520, 1.28)));
        for (const auto &[entry, value] : lists) {
            if (entry.endsWith(" w") && entry.count('|') == 1)
                QVERIFY2(value.toInt() <= cellw.toInt(), entry.constData());
        }

        // Sprite frames are whole, and the descriptor's stripes cut them.
        for (const PortReport::Picture &picture : result.report.pictures) {
            QCOMPARE(picture.to.height() % picture.frames, 0);
            if (picture.frames > 1)
                QCOMPARE(picture.to.height() / picture.frames, int(PortNumbers::scaled(picture.from.height() / picture.frames, 1.25)));
        }
        const int stripes = SpriteDescriptor::readFile(skin + QStringLiteral("/1024_600/btn_round.spr")).Stripes;
        QCOMPARE(stripes, 90);
        QCOMPARE(pictureSize(skin + QStringLiteral("/1024_600/btn_round.bmp")).height(), 2 * stripes);
        QCOMPARE(pictureSize(skin + QStringLiteral("/1024_600/background/default.bmp")), QSize(1024, 600));

        // No opaque pixel comes nearer magenta than the picture's own did.
        for (const PortReport::Picture &picture : result.report.pictures) {
            if (picture.kind == QLatin1String("JPEG"))
                continue;
            QImage before;
            QImage after;
            const QString name = picture.file;
            ImageLoader::LoadImageFile(skin + QLatin1Char('/') + name, after);
            QString source = name;
            source.replace(QStringLiteral("1024_600"), QStringLiteral("800_480"));
            ImageLoader::LoadImageFile(skin + QLatin1Char('/') + source, before);
            // RL keeps 5 and 6 bits of a colour.
            QVERIFY2(nearestToMagenta(after) >= nearestToMagenta(before) - 12, qPrintable(name));
        }
    }

    void greyPicturesWithMagentaHolesStayGreyAndExact()
    {
        QImage picture(40, 60, QImage::Format_RGB32);
        for (int y = 0; y < 60; ++y) {
            for (int x = 0; x < 40; ++x) {
                const bool hole = ((x / 5) + (y / 7)) % 3 == 0;
                const int grey = (x * 6 + y * 3) % 256;
                picture.setPixel(x, y, hole ? qRgb(255, 0, 255) : qRgb(grey, grey, grey));
            }
        }
        for (const QSize size : { QSize(51, 25), QSize(23, 11), QSize(80, 40), QSize(40, 30) }) {
            const QImage scaled = PictureScaler::scaleFrames(picture, 2, size);
            QCOMPARE(scaled.size(), QSize(size.width(), size.height() * 2));
            int transparent = 0;
            for (int y = 0; y < scaled.height(); ++y) {
                for (int x = 0; x < scaled.width(); ++x) {
                    const QRgb p = scaled.pixel(x, y);
                    if (p == 0xFFFF00FF) {
                        ++transparent;
                        continue;
                    }
                    QVERIFY(qAbs(qRed(p) - qGreen(p)) <= 1 && qAbs(qBlue(p) - qGreen(p)) <= 1);
                }
            }
            QVERIFY(transparent > 0);
        }
    }

    void anRlPictureStaysRlWithItsPaletteForm()
    {
        QImage picture(30, 20, QImage::Format_RGB32);
        picture.fill(qRgb(255, 0, 255));
        for (int y = 5; y < 15; ++y)
            for (int x = 5; x < 25; ++x)
                picture.setPixel(x, y, qRgb(200, 40, 40));
        for (const bool wide : { false, true }) {
            PicturePort::Request request;
            request.path = QStringLiteral("x.bmp");
            request.bytes = RlEncoder::encode(picture, wide).bytes;
            request.sx = 1.28;
            request.sy = 1.25;
            const PicturePort::Result result = PicturePort::port(request);
            QCOMPARE(result.kind, QStringLiteral("RL"));
            QCOMPARE(result.to, QSize(38, 25));
            QCOMPARE(bool(result.bytes.at(2) & 1), wide);
            QImage back;
            QCOMPARE(ImageLoader::LoadImageBytes(request.path, result.bytes, back), QSize(38, 25));
            QCOMPARE(back.pixel(0, 0), 0xFFFF00FFu);
        }
    }

    void aBmpKeepsItsBitDepthWhereItCan()
    {
        QImage picture(16, 8, QImage::Format_RGB32);
        picture.fill(qRgb(10, 200, 30));
        picture.setPixel(0, 0, qRgb(255, 0, 255));
        QByteArray bytes;
        QBuffer buffer(&bytes);
        buffer.open(QIODevice::WriteOnly);
        QVERIFY(picture.save(&buffer, "BMP"));
        PicturePort::Request request;
        request.path = QStringLiteral("p.bmp");
        request.bytes = bytes;
        request.sx = 2;
        request.sy = 2;
        const PicturePort::Result result = PicturePort::port(request);
        QCOMPARE(result.kind, QStringLiteral("BM"));
        QCOMPARE(int(quint8(result.bytes.at(28))), int(quint8(bytes.at(28))));
        QVERIFY(result.note.isEmpty());

        // 8-bit and 4-bit pictures keep their depth while their colours fit.
        for (const int colours : { 40, 17, 5 }) {
            QImage few(16, 8, QImage::Format_Indexed8);
            QList<QRgb> table;
            for (int i = 0; i < colours; ++i)
                table << qRgb(i * 5, 100, 30);
            table[0] = qRgb(255, 0, 255);
            few.setColorTable(table);
            for (int y = 0; y < 8; ++y)
                for (int x = 0; x < 16; ++x)
                    few.setPixel(x, y, x < 4 ? 0 : (x / 4 + y * 4) % colours);
            QByteArray indexed;
            QBuffer indexedBuffer(&indexed);
            indexedBuffer.open(QIODevice::WriteOnly);
            QVERIFY(few.save(&indexedBuffer, "BMP"));
            const int depth = colours > 16 ? 8 : 4;
            QCOMPARE(int(indexed.at(28)), depth);
            request.bytes = indexed;
            request.sx = 2;
            request.sy = 2;
            const PicturePort::Result kept = PicturePort::port(request);
            QCOMPARE(int(kept.bytes.at(28)), 8);
            // Growing smoothly mixes colours: a 4-bit picture cannot stay so.
            if (depth == 4)
                QCOMPARE(kept.note, QStringLiteral("was 4-bit, written as 8-bit"));
            else
                QVERIFY(kept.note.isEmpty());
            QImage back;
            QCOMPARE(ImageLoader::LoadImageBytes(request.path, kept.bytes, back), QSize(32, 16));
            QCOMPARE(back.pixel(0, 0), 0xFFFF00FFu);
        }
    }

    void aDryRunWritesNothing()
    {
        QTemporaryDir dir;
        const QString skin = dir.filePath(QStringLiteral("skin"));
        copyTree(kDemo, skin);
        const QStringList before = entriesIn(dir.path());
        const SkinPort::Result result = port(skin, QStringLiteral("800_480"), QStringLiteral("1024_600"), true);
        QVERIFY2(result.ok, qPrintable(result.error));
        QCOMPARE(entriesIn(dir.path()), before);
        QCOMPARE(result.report.pictures.size(), size_t(10));
        QVERIFY(result.report.valuesScaled > 80);
        QVERIFY(result.report.files.contains(QStringLiteral("1024_600/ui/main_1024_600.ui")));
        QVERIFY(result.report.text().contains(QStringLiteral("nothing written (dry run)")));
    }

    void anExistingTargetIsRefusedUnlessForced()
    {
        QTemporaryDir dir;
        const QString skin = dir.filePath(QStringLiteral("skin"));
        copyTree(kDemo, skin);
        QVERIFY(writeTestFile(skin + QStringLiteral("/1024_600/mine.txt"), "keep me"));
        const SkinPort::Result refused = port(skin, QStringLiteral("800_480"), QStringLiteral("1024_600"));
        QVERIFY(!refused.ok);
        QVERIFY(refused.error.contains(QStringLiteral("exists already; --force replaces it")));
        QCOMPARE(entriesIn(skin + QStringLiteral("/1024_600")), QStringList({ "mine.txt" }));
        QVERIFY(!QFileInfo::exists(skin + QStringLiteral("/common/vga/1024_600")));

        const SkinPort::Result forced = port(skin, QStringLiteral("800_480"), QStringLiteral("1024_600"), false, true);
        QVERIFY2(forced.ok, qPrintable(forced.error));
        QVERIFY(!QFileInfo::exists(skin + QStringLiteral("/1024_600/mine.txt")));
        QVERIFY(QFileInfo::exists(skin + QStringLiteral("/1024_600/ui/main_1024_600.ui")));
        // No temporary folder is left beside the targets.
        for (const QString &name : QDir(skin).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot))
            QVERIFY2(!name.startsWith(QLatin1Char('.')), qPrintable(name));
    }

    void aFailureInTheSecondFolderLeavesNoFolderHalfWritten()
    {
        QTemporaryDir dir;
        const QString skin = dir.filePath(QStringLiteral("skin"));
        copyTree(kDemo, skin);
        // The first folder ports whole; a picture of the second cannot be read.
        QVERIFY(writeTestFile(skin + QStringLiteral("/common/vga/800_480/broken.bmp"), "BM"));
        const QStringList before = entriesIn(skin);
        const SkinPort::Result result = port(skin, QStringLiteral("800_480"), QStringLiteral("1024_600"));
        QVERIFY(!result.ok);
        QVERIFY2(result.error.contains(QStringLiteral("broken.bmp: cannot be read as a picture; nothing written")),
                 qPrintable(result.error));
        // Neither target, nor any temporary folder.
        QCOMPARE(entriesIn(skin), before);
    }

    void aFileWhereATargetFolderWouldGoIsNotReplaced()
    {
        QTemporaryDir dir;
        const QString skin = dir.filePath(QStringLiteral("skin"));
        copyTree(kDemo, skin);
        QVERIFY(writeTestFile(skin + QStringLiteral("/1024_600"), "a file in the way"));
        const QStringList before = entriesIn(skin);
        const SkinPort::Result result = port(skin, QStringLiteral("800_480"), QStringLiteral("1024_600"), false, true);
        QVERIFY(!result.ok);
        QVERIFY2(result.error.contains(QStringLiteral("is no folder")), qPrintable(result.error));
        QCOMPARE(entriesIn(skin), before);
        QCOMPARE(readTestFile(skin + QStringLiteral("/1024_600")), QByteArray("a file in the way"));
    }

    void formatsMustBeFormats()
    {
        QTemporaryDir dir;
        SkinPort::Result result = port(dir.path(), QStringLiteral("800x480"), QStringLiteral("1024_600"));
        QVERIFY(!result.ok);
        QVERIFY(result.error.contains(QStringLiteral("is not a format")));
        result = port(dir.path(), QStringLiteral("800_480"), QStringLiteral("1024_600"));
        QVERIFY(result.error.contains(QStringLiteral("has no folder 800_480")));
    }
};

QTEST_GUILESS_MAIN(TestSkinPort)
#include "tst_skinport.moc"
