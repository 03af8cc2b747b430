// SPDX-License-Identifier: MIT
#include "../ProgramRun.h"
#include "TestFiles.h"

#include <QTemporaryDir>
#include <QtTest>

#include <cerrno>
#ifdef Q_OS_WIN
#include <qt_windows.h>
#endif

// korvi under faults: a full disk, a failing read, a file being saved by
// another korvi at the same moment, an output named like an input, odd node
// keys. Disk faults are made on demand through KORVI_FAIL_WRITES and
// KORVI_FAIL_READS, so that every host runs these.
namespace {

const QByteArray kSkin = "<LAYER ui_Main x=0>\r\n"
                         "\t<BUTTON btnMap x=70 y=80>\r\n"
                         "\t<USELAYER ui_Status/>\r\n"
                         "</LAYER>\r\n";

ProgramRun korvi(const QStringList &args, const QByteArray &failWrites = {}, const QByteArray &failReads = {})
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    if (!failWrites.isEmpty())
        environment.insert(QStringLiteral("KORVI_FAIL_WRITES"), QString::fromLatin1(failWrites));
    if (!failReads.isEmpty())
        environment.insert(QStringLiteral("KORVI_FAIL_READS"), QString::fromLatin1(failReads));
    return runProgram(QStringLiteral(KORVI_EXECUTABLE), args, environment);
}

QStringList entriesOf(const QString &folder)
{
    return QDir(folder).entryList(QDir::AllEntries | QDir::NoDotAndDotDot | QDir::Hidden | QDir::System, QDir::Name);
}

void putLittleEndian(QByteArray &bytes, int at, quint32 value, int size)
{
    for (int i = 0; i < size; ++i)
        bytes[at + i] = char((value >> (8 * i)) & 0xFF);
}

// A green square as an uncompressed 24-bit bitmap.
QByteArray bmpOf(int side)
{
    const int rowBytes = (side * 3 + 3) / 4 * 4;
    QByteArray bytes(54 + rowBytes * side, '\0');
    bytes[0] = 'B';
    bytes[1] = 'M';
    putLittleEndian(bytes, 2, quint32(bytes.size()), 4);
    putLittleEndian(bytes, 10, 54, 4);
    putLittleEndian(bytes, 14, 40, 4);
    putLittleEndian(bytes, 18, quint32(side), 4);
    putLittleEndian(bytes, 22, quint32(side), 4);
    putLittleEndian(bytes, 26, 1, 2);
    putLittleEndian(bytes, 28, 24, 2);
    for (int y = 0; y < side; ++y) {
        for (int x = 0; x < side; ++x)
            bytes[54 + y * rowBytes + x * 3 + 1] = char(200);
    }
    return bytes;
}

const QString kRl = QStringLiteral(KORVI_TEST_DATA "/rl/rl00004.bmp");

} // namespace

class TestKorviFaults : public QObject
{
    Q_OBJECT

private slots:
    void setInADottedFolderKeepsTheBackupBesideTheFile()
    {
        QTemporaryDir dir;
        QVERIFY(QDir(dir.path()).mkpath(QStringLiteral("b/skin.v2")));
        const QString path = dir.filePath(QStringLiteral("b/skin.v2/main"));
        QVERIFY(writeTestFile(path, kSkin));
        QVERIFY(writeTestFile(dir.filePath(QStringLiteral("b/skin.bak")), "unrelated"));
        const ProgramRun run = korvi({ "set", path, "Lui_Main|EbtnMap", "x=5" });
        QVERIFY2(run.exitCode == 0, run.err.constData());
        QCOMPARE(readTestFile(dir.filePath(QStringLiteral("b/skin.bak"))), QByteArray("unrelated"));
        QCOMPARE(readTestFile(dir.filePath(QStringLiteral("b/skin.v2/main.bak"))), kSkin);
        QVERIFY(readTestFile(path).contains("x=5 "));
    }

    void setOnAFullDiskKeepsFileAndBackup()
    {
        QTemporaryDir dir;
        const QString path = dir.filePath(QStringLiteral("main.ui"));
        QVERIFY(writeTestFile(path, kSkin));
        QVERIFY(writeTestFile(dir.filePath(QStringLiteral("main.bak")), "previous"));
        const ProgramRun run = korvi({ "set", path, "Lui_Main|EbtnMap", "x=5" }, "main.ui");
        QCOMPARE(run.exitCode, 1);
        QVERIFY2(run.err.contains("main.ui: No space left on device"), run.err.constData());
        QCOMPARE(readTestFile(path), kSkin);
        QCOMPARE(readTestFile(dir.filePath(QStringLiteral("main.bak"))), QByteArray("previous"));
        QCOMPARE(entriesOf(dir.path()), (QStringList { "main.bak", "main.ui" }));
    }

    void pictureWritersOnAFullDiskKeepTheOldFile_data()
    {
        QTest::addColumn<QStringList>("args");
        QTest::addColumn<QString>("output");
        QTest::newRow("png2rl") << QStringList { "png2rl", "$DIR/in.png", "$DIR/knob.bmp" } << "knob.bmp";
        QTest::newRow("rl2png") << QStringList { "rl2png", kRl, "$DIR/out.png" } << "out.png";
    }
    void pictureWritersOnAFullDiskKeepTheOldFile()
    {
        QFETCH(QStringList, args);
        QFETCH(QString, output);
        QTemporaryDir dir;
        QVERIFY(QFile::copy(QStringLiteral(KORVI_TEST_DATA "/rl/rl00004.png"), dir.filePath(QStringLiteral("in.png"))));
        QVERIFY(writeTestFile(dir.filePath(output), "old picture"));
        args.replaceInStrings(QStringLiteral("$DIR"), dir.path());
        const QStringList before = entriesOf(dir.path());
        const ProgramRun run = korvi(args, output.toLatin1());
        QCOMPARE(run.exitCode, 1);
        QVERIFY2(run.err.contains(QString(output + QStringLiteral(": No space left on device")).toLatin1()), run.err.constData());
        QCOMPARE(readTestFile(dir.filePath(output)), QByteArray("old picture"));
        QCOMPARE(entriesOf(dir.path()), before);
        // And without the fault the same command writes it.
        QCOMPARE(korvi(args).exitCode, 0);
        QVERIFY(readTestFile(dir.filePath(output)) != "old picture");
    }

    void renderOnAFullDiskLeavesNoPartFiles()
    {
        QTemporaryDir dir;
        const QString skin = dir.filePath(QStringLiteral("main.ui"));
        QVERIFY(writeTestFile(skin, kSkin));
        const QString out = dir.filePath(QStringLiteral("out"));
        const ProgramRun run = korvi({ "render", skin, "--all-layers", "-o", out, "--size", "80x40" }, "index.html");
        QCOMPARE(run.exitCode, 1);
        QVERIFY2(run.err.contains("index.html: No space left on device"), run.err.constData());
        QCOMPARE(entriesOf(out), QStringList { QStringLiteral("ui_Main.png") });
        const ProgramRun boxes = korvi({ "render", skin, "--layer", "ui_Main", "-o", dir.filePath("a.png"), "--size",
                                         "80x40", "--boxes", dir.filePath("boxes.json") },
                                       "boxes.json");
        QCOMPARE(boxes.exitCode, 1);
        QVERIFY2(boxes.err.contains("boxes.json: No space left on device"), boxes.err.constData());
        QVERIFY(!QFile::exists(dir.filePath("boxes.json")));
    }

    void anOutputThatIsAnInputIsRefused()
    {
        QTemporaryDir dir;
        const QString skin = dir.filePath(QStringLiteral("main.ui"));
        QVERIFY(writeTestFile(skin, kSkin));
        const ProgramRun render = korvi({ "render", skin, "--layer", "ui_Main", "-o", skin });
        QCOMPARE(render.exitCode, 2);
        QVERIFY2(render.err.contains("is the input"), render.err.constData());
        QCOMPARE(readTestFile(skin), kSkin);
        const QString picture = dir.filePath(QStringLiteral("k.bmp"));
        QVERIFY(writeTestFile(picture, readTestFile(kRl)));
        QCOMPARE(korvi({ "rl2png", picture, picture }).exitCode, 2);
        QCOMPARE(korvi({ "png2rl", picture, dir.path() + QStringLiteral("/./k.bmp") }).exitCode, 2);
        QCOMPARE(readTestFile(picture), readTestFile(kRl));
        QCOMPARE(entriesOf(dir.path()), (QStringList { "k.bmp", "main.ui" }));
    }

    void aCutPictureIsSaidSo()
    {
        QTemporaryDir dir;
        const QString cut = dir.filePath(QStringLiteral("t.bmp"));
        const QByteArray whole = bmpOf(32);
        QVERIFY(writeTestFile(cut, whole.left(148)));
        const ProgramRun rl2png = korvi({ "rl2png", cut, dir.filePath("t.png") });
        QVERIFY2(rl2png.err.contains("t.bmp: cut short (148 of the"), rl2png.err.constData());
        const ProgramRun info = korvi({ "image-info", cut });
        QVERIFY2(info.out.contains("bytes: 148\n"), info.out.constData());
        QVERIFY2(info.err.contains("cut short"), info.err.constData());
        // Nor when a skin shows it.
        const QString skin = dir.filePath(QStringLiteral("skin/800_480/ui/main.ui"));
        QVERIFY(writeTestFile(skin, "<LAYER ui_Main>\r\n\t<BUTTON b bmp=t.bmp x=0 y=0>\r\n</LAYER>\r\n"));
        QVERIFY(writeTestFile(dir.filePath(QStringLiteral("skin/800_480/t.bmp")), whole.left(148)));
        const ProgramRun lint = korvi({ "lint", skin });
        QVERIFY2(lint.out.contains("t.bmp, which cannot be shown: cut short (148 of the") && lint.out.contains("[bad-picture]"), lint.out.constData());
        const ProgramRun render = korvi({ "render", skin, "--layer", "ui_Main", "-o", dir.filePath("r.png"), "--size", "64x64" });
        QCOMPARE(render.exitCode, 0);
        QVERIFY2(render.err.contains("t.bmp: cut short (148 of the"), render.err.constData());
        // The whole picture is not.
        QVERIFY(writeTestFile(cut, whole));
        QCOMPARE(korvi({ "rl2png", cut, dir.filePath("t.png") }).err, QByteArray());
    }

    void aReadErrorFailsTheCommandAndWritesNothing()
    {
        QTemporaryDir dir;
        const QString picture = dir.filePath(QStringLiteral("map.bmp"));
        QVERIFY(writeTestFile(picture, readTestFile(kRl)));
        const ProgramRun info = korvi({ "image-info", picture }, {}, "map.bmp");
        QCOMPARE(info.exitCode, 1);
        QVERIFY2(info.err.contains("map.bmp: Input/output error"), info.err.constData());
        const ProgramRun rl2png = korvi({ "rl2png", picture, dir.filePath("map.png") }, {}, "map.bmp");
        QCOMPARE(rl2png.exitCode, 1);
        QVERIFY2(rl2png.err.contains("Input/output error"), rl2png.err.constData());
        QVERIFY(!QFile::exists(dir.filePath("map.png")));
        const QString skin = dir.filePath(QStringLiteral("main.ui"));
        QVERIFY(writeTestFile(skin, kSkin));
        const ProgramRun set = korvi({ "set", skin, "Lui_Main|EbtnMap", "x=5" }, {}, "main.ui");
        QCOMPARE(set.exitCode, 1);
        QVERIFY2(set.err.contains("Input/output error"), set.err.constData());
        QCOMPARE(readTestFile(skin), kSkin);
    }

    void aFailedStandardOutputFailsTheCommand_data()
    {
        QTest::addColumn<QStringList>("args");
        QTest::newRow("dump") << QStringList { "dump", "$SKIN" };
        QTest::newRow("lint") << QStringList { "lint", "$SKIN" };
        QTest::newRow("image-info") << QStringList { "image-info", kRl };
        QTest::newRow("locate") << QStringList { "locate", "--ui", "$SKIN", "pic.bmp" };
        QTest::newRow("help") << QStringList { "help" };
    }
    void aFailedStandardOutputFailsTheCommand()
    {
        QFETCH(QStringList, args);
        QTemporaryDir dir;
        const QString skin = dir.filePath(QStringLiteral("main.ui"));
        QVERIFY(writeTestFile(skin, kSkin + "\t<BUTTON broken x=>\r\n"));
        args.replaceInStrings(QStringLiteral("$SKIN"), skin);
        const ProgramRun run = korvi(args, "-");
        QCOMPARE(run.exitCode, 1);
        QVERIFY2(run.err.contains("cannot write to the standard output: No space left on device"), run.err.constData());
    }

    void runningOutOfMemoryIsAFailureWithAMessage()
    {
        QTemporaryDir dir;
        const QString skin = dir.filePath(QStringLiteral("big.ui"));
        QVERIFY(writeTestFile(skin, kSkin));
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(QStringLiteral("KORVI_FAIL_MEMORY"), QStringLiteral("big.ui"));
        for (const QStringList &args : { QStringList { "dump", skin }, QStringList { "set", skin, "Lui_Main|EbtnMap", "x=5" } }) {
            const ProgramRun run = runProgram(QStringLiteral(KORVI_EXECUTABLE), args, environment);
            QCOMPARE(run.exitCode, 1);
            QVERIFY2(run.err.contains("not enough memory to read " + QFile::encodeName(skin) + " (1 MB)"), run.err.constData());
        }
        QCOMPARE(readTestFile(skin), kSkin);
    }

    void concurrentSetsLoseNoEdit()
    {
        QTemporaryDir dir;
        const QString path = dir.filePath(QStringLiteral("main.ui"));
        QByteArray skin = "<LAYER ui_Main>\r\n";
        constexpr int kEdits = 100;
        for (int i = 0; i < kEdits; ++i)
            skin += "\t<TEXT t" + QByteArray::number(i) + " x=0>\r\n";
        skin += "</LAYER>\r\n";
        QVERIFY(writeTestFile(path, skin));
        std::vector<std::unique_ptr<QProcess>> runs;
        for (int i = 0; i < kEdits; ++i) {
            auto p = std::make_unique<QProcess>();
            p->start(QStringLiteral(KORVI_EXECUTABLE),
                     { "set", path, QStringLiteral("Lui_Main|Et%1").arg(i), QStringLiteral("x=%1").arg(i + 1) });
            runs.push_back(std::move(p));
        }
        for (const auto &p : runs) {
            QVERIFY(p->waitForFinished(300000));
            QVERIFY2(p->exitCode() == 0, p->readAllStandardError().constData());
        }
        const QByteArray result = readTestFile(path);
        for (int i = 0; i < kEdits; ++i)
            QVERIFY2(result.contains("<TEXT t" + QByteArray::number(i) + " x=" + QByteArray::number(i + 1) + ">"),
                     qPrintable(QStringLiteral("edit %1 lost").arg(i)));
        QCOMPARE(entriesOf(dir.path()), (QStringList { "main.bak", "main.ui" }));
    }

    void oddNodeKeysAreUsageErrors_data()
    {
        QTest::addColumn<QString>("key");
        QTest::newRow("empty") << "";
        QTest::newRow("bar") << "|";
        QTest::newRow("trailing bar") << "Lui_Main|";
        QTest::newRow("no letter") << "[0]";
        QTest::newRow("letter alone") << "Lui_Main|E";
    }
    void oddNodeKeysAreUsageErrors()
    {
        QFETCH(QString, key);
        QTemporaryDir dir;
        const QString path = dir.filePath(QStringLiteral("main.ui"));
        const QByteArray skin = "<header>\r\n\t<VAR  a=1>\r\n</header>\r\n" + kSkin;
        QVERIFY(writeTestFile(path, skin));
        for (const QStringList &args : { QStringList { "remove", path, key }, QStringList { "set", path, key, "x=1" },
                                         QStringList { "unset", path, key, "x" } }) {
            const ProgramRun run = korvi(args);
            QCOMPARE(run.exitCode, 2);
            // Printed in the terminal's encoding (the system's code page on Windows).
            QVERIFY2(QString::fromLocal8Bit(run.err).contains(QStringLiteral("\u201C") + key + QStringLiteral("\u201D is not a node key: ")),
                     run.err.constData());
        }
        QCOMPARE(readTestFile(path), skin);
        QCOMPARE(entriesOf(dir.path()), QStringList { QStringLiteral("main.ui") });
    }

    void messagesNameTheFileAndTheReason()
    {
        QTemporaryDir dir;
        const QString wide = dir.filePath(QStringLiteral("wide.ui"));
        QVERIFY(writeTestFile(wide, QByteArray("\xFF\xFE<\0h\0e\0a\0d\0e\0r\0>\0", 18)));
        const ProgramRun dump = korvi({ "dump", wide });
        QCOMPARE(dump.exitCode, 1);
        QVERIFY2(dump.out.contains("is UTF-16 text; skin files are 8-bit text"), dump.out.constData());
        const ProgramRun folder = korvi({ "dump", dir.path() });
        QCOMPARE(folder.exitCode, 1);
        QVERIFY2(folder.out.contains("is a folder, not a file"), folder.out.constData());
        QCOMPARE(korvi({ "lint", dir.filePath("missing.ui") }).exitCode, 1);
        const ProgramRun missing = korvi({ "rl2png", dir.filePath("missing.bmp"), dir.filePath("x.png") });
        QCOMPARE(missing.exitCode, 1);
        // The system's own words for a missing file ("No such file or
        // directory"; "The system cannot find the file specified." on Windows).
#ifdef Q_OS_WIN
        const QString reason = qt_error_string(ERROR_FILE_NOT_FOUND);
#else
        const QString reason = qt_error_string(ENOENT);
#endif
        QVERIFY2(missing.err.contains("missing.bmp") && QString::fromLocal8Bit(missing.err).contains(reason),
                 missing.err.constData());
    }

    void locateSaysWhetherItFound()
    {
        QTemporaryDir dir;
        const QString skin = dir.filePath(QStringLiteral("skin/800_480/ui/main.ui"));
        QVERIFY(writeTestFile(skin, kSkin));
        QCOMPARE(korvi({ "locate", "--ui", skin, "pic.bmp" }).exitCode, 1);
        QVERIFY(writeTestFile(dir.filePath(QStringLiteral("skin/800_480/pic.bmp")), readTestFile(kRl)));
        QCOMPARE(korvi({ "locate", "--ui", skin, "pic.bmp" }).exitCode, 0);
        QCOMPARE(korvi({ "locate", "--ui", dir.filePath("none.ui"), "pic.bmp" }).exitCode, 2);
        QCOMPARE(korvi({ "locate", "--ui", skin, "--skin-dir", dir.filePath("none"), "pic.bmp" }).exitCode, 2);
    }

    void everySubcommandPrintsItsOwnUsage_data()
    {
        QTest::addColumn<QString>("subcommand");
        for (const char *name : { "dump", "format", "locate", "rl2png", "png2rl", "image-info", "render", "set", "unset",
                                  "lint", "remove", "port" })
            QTest::newRow(name) << QString::fromLatin1(name);
    }
    void everySubcommandPrintsItsOwnUsage()
    {
        QFETCH(QString, subcommand);
        for (const char *help : { "--help", "-h" }) {
            const ProgramRun run = korvi({ subcommand, QString::fromLatin1(help) });
            QCOMPARE(run.exitCode, 0);
            QVERIFY2(run.out.startsWith(("usage: korvi " + subcommand + ' ').toLatin1()), run.out.constData());
            QCOMPARE(run.err, QByteArray());
        }
    }

    void aBareEnvironmentGivesNoPlatformNoise()
    {
        QTemporaryDir dir;
        const QString skin = dir.filePath(QStringLiteral("main.ui"));
        QVERIFY(writeTestFile(skin, kSkin));
        QProcessEnvironment bare;
        bare.insert(QStringLiteral("PATH"), qEnvironmentVariable("PATH"));
        // Windows programs do not start without it.
        if (qEnvironmentVariableIsSet("SYSTEMROOT"))
            bare.insert(QStringLiteral("SYSTEMROOT"), qEnvironmentVariable("SYSTEMROOT"));
        for (const QStringList &args : { QStringList { "dump", skin },
                                         QStringList { "render", skin, "--layer", "ui_Main", "-o", dir.filePath("a.png"),
                                                       "--size", "40x20" } }) {
            const ProgramRun run = runProgram(QStringLiteral(KORVI_EXECUTABLE), args, bare);
            QCOMPARE(run.exitCode, 0);
            // Only the program's own lines: render lists the pictures it misses.
            for (const QByteArray &line : run.err.split('\n'))
                QVERIFY2(line.isEmpty() || line.startsWith("Unable to locate"), run.err.constData());
        }
    }
};

QTEST_GUILESS_MAIN(TestKorviFaults)
#include "tst_korvi_faults.moc"
