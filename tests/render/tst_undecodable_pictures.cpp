// SPDX-License-Identifier: MIT
// Picture files that are found but cannot be decoded: what the loader says is
// wrong with them, the placeholder drawn in their place with a report line
// naming the file, and the same lines from `korvi render`.

#include "tst_renderer_fixture.h"

#include "ImageLoader.h"
#include "PictureCache.h"
#include "PictureDrawing.h"
#include "PictureProblem.h"
#include "SkinFileNames.h"
#include "../ProgramRun.h"

#include <QtTest>

namespace {

const QString kData = QStringLiteral(KORVI_TEST_DATA "/pictures/");

QString times() { return QString(QChar(0x00D7)); }

} // namespace

class TestUndecodablePictures : public QObject
{
    Q_OBJECT

private slots:
    void theLoaderSaysWhatIsWrong_data()
    {
        QTest::addColumn<QString>("file");
        QTest::addColumn<QString>("what");
        QTest::addColumn<bool>("unreadable");
        QTest::newRow("empty file") << "empty.bmp" << "not a picture (empty file)" << true;
        QTest::newRow("absurd RL size")
            << "huge.bmp" << "not a picture (RL header says 65535 " + times() + " 65535)" << true;
        QTest::newRow("RL cut in its palette") << "cut_palette.bmp" << "not a picture (RL file cut short in its palette)" << true;
        QTest::newRow("RL cut in its rows") << "cut_rows.bmp" << "RL file cut short in row 2 of 2" << false;
        QTest::newRow("BM of junk") << "garbage.bmp"
                                    << "not a picture (BMP header says 437852183 " + times()
                + " 505224219, 8737 bits per pixel, in 42 bytes)" << true;
        QTest::newRow("jpg that is no JPEG") << "garbage.jpg" << "not a picture (no JPEG data that can be decoded, 25 bytes)" << true;
        QTest::newRow("text named bmp") << "text.bmp" << "not a picture (it begins with neither \"BM\" nor \"RL\")" << true;
    }

    void theLoaderSaysWhatIsWrong()
    {
        QFETCH(QString, file);
        QFETCH(QString, what);
        QFETCH(bool, unreadable);
        QImage buffer;
        PictureProblem problem;
        ImageLoader::LoadImageFile(kData + file, buffer, &problem);
        QCOMPARE(problem.what, what);
        QCOMPARE(problem.unreadable, unreadable);
        QCOMPARE(problem.reportLine(kData + file), file + QStringLiteral(": ") + what + QStringLiteral("\r\n"));
    }

    void anAbsurdRlSizeIsRefusedBeforeAnythingIsAllocated()
    {
        QImage buffer(10, 10, QImage::Format_RGB32);
        PictureProblem problem;
        QCOMPARE(ImageLoader::LoadImageFile(kData + QStringLiteral("huge.bmp"), buffer, &problem), QSize(0, 0));
        QVERIFY(buffer.isNull());
        QVERIFY(problem.unreadable);
    }

    void aPictureCutInItsRowsKeepsTheRowsItHas()
    {
        QImage buffer;
        PictureProblem problem;
        QCOMPARE(ImageLoader::LoadImageFile(kData + QStringLiteral("cut_rows.bmp"), buffer, &problem), QSize(4, 2));
        QCOMPARE(buffer.pixel(0, 0), qRgb(0, 0, 248));
        QCOMPARE(buffer.pixel(0, 1), TestColours::kMagenta);
    }

    void goodPicturesHaveNoProblem()
    {
        QImage buffer;
        PictureProblem problem;
        QVERIFY(!ImageLoader::LoadImageFile(QStringLiteral(KORVI_TEST_DATA "/rl/rl00004.bmp"), buffer, &problem).isEmpty());
        QVERIFY(!problem.isProblem());
        QCOMPARE(ImageLoader::LoadImageFile(QString(), buffer, &problem), QSize(100, 50));
        QVERIFY(!problem.isProblem());
    }

    void theCacheTellsTheProblemAgainWithoutDecodingAgain()
    {
        PictureCache cache;
        const QString path = kData + QStringLiteral("huge.bmp");
        QImage buffer;
        PictureProblem first;
        PictureProblem second;
        cache.LoadImageFile(path, SkinFileNames::stampOf(path), buffer, &first);
        cache.LoadImageFile(path, SkinFileNames::stampOf(path), buffer, &second);
        QCOMPARE(cache.decodeCount(), 1);
        QCOMPARE(second.what, first.what);
        QVERIFY(second.unreadable);
    }

    void anUndecodablePictureIsDrawnAsThePlaceholderAndReported_data()
    {
        QTest::addColumn<QString>("file");
        QTest::newRow("empty") << "empty.bmp";
        QTest::newRow("absurd RL") << "huge.bmp";
        QTest::newRow("RL cut in its palette") << "cut_palette.bmp";
        QTest::newRow("BM of junk") << "garbage.bmp";
        QTest::newRow("no JPEG") << "garbage.jpg";
        QTest::newRow("text") << "text.bmp";
    }

    void anUndecodablePictureIsDrawnAsThePlaceholderAndReported()
    {
        QFETCH(QString, file);
        RenderFixture f;
        f.canvas = solidPicture(200, 150, TestColours::kCanvas);
        f.file(QStringLiteral("btn.") + file.section(QLatin1Char('.'), 1), readTestFile(kData + file));
        const QByteArray name = "btn." + file.section(QLatin1Char('.'), 1).toLatin1();
        f.read("<LAYER L>\n<BUTTON b x=20 y=30 bmp=" + name + ">\n</LAYER>\n");
        const DrawnBox box = f.draw("L", "b");
        QCOMPARE(QRect(box.left, box.top, box.width, box.height), QRect(20, 30, 100, 50));
        QImage placeholder = solidPicture(200, 150, TestColours::kCanvas);
        PictureDrawing::DrawTransparent(placeholder, 20, 30, 100, 50, ImageLoader::Placeholder(), 0, 0);
        QCOMPARE(f.canvas, placeholder);
        QImage buffer;
        PictureProblem problem;
        ImageLoader::LoadImageFile(kData + file, buffer, &problem);
        QCOMPARE(f.info.text(), QString::fromLatin1(name) + QStringLiteral(": ") + problem.what + QStringLiteral("\r\n"));
    }

    void aPictureCutInItsRowsIsDrawnAsFarAsItGoesAndReported()
    {
        RenderFixture f;
        f.file(QStringLiteral("cut.bmp"), readTestFile(kData + QStringLiteral("cut_rows.bmp")));
        f.read("<LAYER L>\n<BUTTON b x=20 y=30 bmp=cut.bmp>\n</LAYER>\n");
        const DrawnBox box = f.draw("L", "b");
        QCOMPARE(QRect(box.left, box.top, box.width, box.height), QRect(20, 30, 4, 2));
        QCOMPARE(f.canvas.pixel(20, 30), qRgb(0, 0, 248));
        QCOMPARE(f.canvas.pixel(20, 31), TestColours::kCanvas);
        QCOMPARE(f.info.text(), QStringLiteral("cut.bmp: RL file cut short in row 2 of 2\r\n"));
    }

    void korviRenderListsTheSameLinesOnStderr()
    {
        QTemporaryDir dir;
        const QString folder = dir.path() + QStringLiteral("/800_480");
        QVERIFY(writeTestFile(folder + QStringLiteral("/btn.bmp"), readTestFile(kData + QStringLiteral("huge.bmp"))));
        QVERIFY(writeTestFile(folder + QStringLiteral("/ui/main.ui"),
                              "<LAYER ui_Main>\r\n\t<BUTTON b x=20 y=30 bmp=btn.bmp>\r\n</LAYER>\r\n"));
        const ProgramRun run = runProgram(QStringLiteral(KORVI_TOOL),
                                          { QStringLiteral("render"), folder + QStringLiteral("/ui/main.ui"),
                                            QStringLiteral("--layer"), QStringLiteral("ui_Main"),
                                            QStringLiteral("--size"), QStringLiteral("200x100"),
                                            QStringLiteral("-o"), dir.path() + QStringLiteral("/out.png") });
        QCOMPARE(run.exitCode, 0);
        const QString expected = QStringLiteral("btn.bmp: not a picture (RL header says 65535 ") + times()
            + QStringLiteral(" 65535)\n");
        QVERIFY2(QString::fromLocal8Bit(run.err).contains(expected), run.err.constData());
    }
};

QTEST_MAIN(TestUndecodablePictures)
#include "tst_undecodable_pictures.moc"
