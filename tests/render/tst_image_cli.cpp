// SPDX-License-Identifier: MIT
#include <QDir>
#include <QFile>
#include <QImage>
#include <QProcess>
#include <QTemporaryDir>
#include <QtTest>

// The picture subcommands of the korvi tool, run as a user runs them.
class TestImageCli : public QObject
{
    Q_OBJECT

private:
    QTemporaryDir mDir;

    struct Run
    {
        int exitCode = -1;
        QByteArray out;
        QByteArray err;
    };

    static Run korvi(const QStringList &args)
    {
        QProcess process;
        process.start(QStringLiteral(KORVI_TOOL), args);
        Run run;
        if (!process.waitForFinished(60000))
            return run;
        run.exitCode = process.exitCode();
        run.out = process.readAllStandardOutput();
        run.err = process.readAllStandardError();
        return run;
    }

    QString path(const QString &name) const { return mDir.filePath(name); }

private slots:
    void initTestCase()
    {
        QVERIFY(mDir.isValid());
        QVERIFY2(QFile::exists(QStringLiteral(KORVI_TOOL)), "build the korvi tool first");
    }

    void locatePrintsTheResultAndTheReport()
    {
        QVERIFY(QDir().mkpath(path(QStringLiteral("skin/800_480/ui"))));
        QVERIFY(QDir().mkpath(path(QStringLiteral("skin/common"))));
        QFile spr(path(QStringLiteral("skin/common/knob.spr")));
        QVERIFY(spr.open(QIODevice::WriteOnly));
        spr.write("Stripes=3\r\nDefFlags = GRAB_CENTER\r\n");
        spr.close();
        const QString ui = path(QStringLiteral("skin/800_480/ui/main.ui"));
        QFile skin(ui);
        QVERIFY(skin.open(QIODevice::WriteOnly));
        skin.close();
        const Run run = korvi({ QStringLiteral("locate"), QStringLiteral("--ui"), ui, QStringLiteral("knob.spr#4") });
        // The picture itself is not there.
        QCOMPARE(run.exitCode, 1);
        const QString u = path(QStringLiteral("skin/800_480"));
        const QString root = path(QStringLiteral("skin"));
        const QByteArray expected = "path: \nsprites: 4\nstripes: 3\ngrab_center: true\n"
            "Unable to locate knob.bmp in " + QDir::toNativeSeparators(u + QStringLiteral("/knob.bmp")).toUtf8() + "\r\n"
            "Unable to locate knob.bmp in " + QDir::toNativeSeparators(root + QStringLiteral("/common/knob.bmp")).toUtf8()
            + "\r\n\r\n";
        QCOMPARE(run.out, expected);
    }

    void rlToPngAndBack()
    {
        const QString rl = QStringLiteral(KORVI_TEST_DATA "/rl/rl00004.bmp");
        QCOMPARE(korvi({ QStringLiteral("rl2png"), rl, path(QStringLiteral("a.png")) }).exitCode, 0);
        const QImage png(path(QStringLiteral("a.png")));
        QCOMPARE(png.convertToFormat(QImage::Format_RGB32),
                 QImage(QStringLiteral(KORVI_TEST_DATA "/rl/rl00004.png")).convertToFormat(QImage::Format_RGB32));
        QVERIFY(!png.hasAlphaChannel());

        QCOMPARE(korvi({ QStringLiteral("png2rl"), path(QStringLiteral("a.png")), path(QStringLiteral("b.bmp")),
                         QStringLiteral("--wide-palette") }).exitCode, 0);
        const Run info = korvi({ QStringLiteral("image-info"), path(QStringLiteral("b.bmp")) });
        QCOMPARE(info.exitCode, 0);
        QVERIFY2(info.out.startsWith("kind: RL\nsize: 13 x 2\nflags: 1\n"), info.out.constData());
        QCOMPARE(korvi({ QStringLiteral("rl2png"), path(QStringLiteral("b.bmp")), path(QStringLiteral("c.png")) }).exitCode, 0);
        QCOMPARE(QImage(path(QStringLiteral("c.png"))), png);
    }

    void nothingDecodedWritesNoFile()
    {
        // A picture of 6 x 0 pixels.
        const Run run = korvi({ QStringLiteral("rl2png"), QStringLiteral(KORVI_TEST_DATA "/rl/rl00002.bmp"),
                                path(QStringLiteral("none.png")) });
        QCOMPARE(run.exitCode, 1);
        QVERIFY(!run.err.isEmpty());
        QVERIFY(!QFile::exists(path(QStringLiteral("none.png"))));
    }

    void usageErrors()
    {
        QCOMPARE(korvi({ QStringLiteral("locate") }).exitCode, 2);
        QCOMPARE(korvi({ QStringLiteral("png2rl"), QStringLiteral("a") }).exitCode, 2);
        QCOMPARE(korvi({ QStringLiteral("image-info") }).exitCode, 2);
    }
};

QTEST_GUILESS_MAIN(TestImageCli)
#include "tst_image_cli.moc"
