// SPDX-License-Identifier: MIT
#include "AtomicFileWriter.h"
#include "FailingDevice.h"
#include "FileReading.h"
#include "NodeKey.h"
#include "SaveChanges.h"
#include "SaveLock.h"
#include "SkinBackup.h"
#include "SkinReadError.h"
#include "TestFiles.h"
#include "UiFileReader.h"
#include "clsKorviInterface.h"

#include <QDir>
#include <QElapsedTimer>
#include <QLockFile>
#include <QTemporaryDir>
#include <QtTest>
#include <atomic>
#include <thread>

// Files are written whole or not at all, read whole or not at all, and a
// save keeps its backup beside the file, replacing the previous one only
// once the new file is in place.
namespace {

const QByteArray kSkin = "<LAYER ui_Main x=0>\r\n"
                         "\t<TEXT txtTitle x=10>\r\n"
                         "\t<TEXT txtLine x=10>\r\n"
                         "\t<BUTTON btnMap x=70 y=80>\r\n"
                         "</LAYER>\r\n";

// Sets a fault for the test's lifetime.
struct Fault
{
    const char *variable;
    Fault(const char *name, const QByteArray &files) : variable(name) { qputenv(name, files); }
    ~Fault() { qunsetenv(variable); }
};

QStringList entriesOf(const QString &folder)
{
    return QDir(folder).entryList(QDir::AllEntries | QDir::NoDotAndDotDot | QDir::Hidden | QDir::System, QDir::Name);
}

// Reads the skin at `path`, moves the button and saves in place.
SaveChanges::Result moveButton(const QString &path, const QByteArray &x)
{
    clsKorviInterface document;
    ReadUiFile(document, path, false);
    clsElement *button = NodeKey::ResolveNodeKey(document, "Lui_Main|EbtnMap").element;
    button->Properties().setValueAt(button->Properties().indexOf("x"), x);
    SaveChanges saver(document);
    saver.setFileForNewElements(path);
    return saver.save([](const QString &) { return false; });
}

} // namespace

class TestSafeFiles : public QObject
{
    Q_OBJECT

private slots:
    void atomicWriterWritesTheWholeFileAndLeavesNothingElse()
    {
        QTemporaryDir dir;
        const QString path = dir.filePath(QStringLiteral("out.png"));
        QVERIFY(writeTestFile(path, "old"));
        QString error;
        QVERIFY(AtomicFileWriter::writeWhole(path, QByteArray(100000, 'n'), error));
        QCOMPARE(readTestFile(path), QByteArray(100000, 'n'));
        QCOMPARE(entriesOf(dir.path()), QStringList { QStringLiteral("out.png") });
    }

    void aFullDiskLeavesTheOldFileAndNamesFileAndReason()
    {
        QTemporaryDir dir;
        const QString path = dir.filePath(QStringLiteral("out.png"));
        QVERIFY(writeTestFile(path, "old picture"));
        const Fault full("KORVI_FAIL_WRITES", "out.png");
        QString error;
        QVERIFY(!AtomicFileWriter::writeWhole(path, QByteArray(100000, 'n'), error));
        QCOMPARE(error, QDir::toNativeSeparators(path) + QStringLiteral(": No space left on device"));
        QCOMPARE(readTestFile(path), QByteArray("old picture"));
        QCOMPARE(entriesOf(dir.path()), QStringList { QStringLiteral("out.png") });
    }

    void aFolderIsNotWrittenOver()
    {
        QTemporaryDir dir;
        QVERIFY(QDir(dir.path()).mkdir(QStringLiteral("pictures")));
        QString error;
        QVERIFY(!AtomicFileWriter::writeWhole(dir.filePath(QStringLiteral("pictures")), "x", error));
        QVERIFY2(error.endsWith(QStringLiteral("is a folder")), qPrintable(error));
        QVERIFY(QFileInfo(dir.filePath(QStringLiteral("pictures"))).isDir());
    }

    void aReadErrorGivesNothingAndTheReason()
    {
        QTemporaryDir dir;
        const QString path = dir.filePath(QStringLiteral("map.jpg"));
        QVERIFY(writeTestFile(path, QByteArray(5000, 'j')));
        const Fault bad("KORVI_FAIL_READS", "map.jpg");
        QByteArray bytes;
        QString error;
        QVERIFY(!FileReading::readWhole(path, bytes, error));
        QVERIFY(bytes.isEmpty());
        QCOMPARE(error, QDir::toNativeSeparators(path) + QStringLiteral(": Input/output error"));
    }

    void aReadThatFailsHalfWayIsNotTheEnd()
    {
        FailingDevice device(QByteArray(300000, 'a'), 100000);
        QVERIFY(device.open(QIODevice::ReadOnly));
        QByteArray bytes;
        QString why;
        QVERIFY(!FileReading::readDevice(device, bytes, why));
        QCOMPARE(why, QStringLiteral("Input/output error"));
    }

    void aFolderIsNotReadAsAFile()
    {
        QTemporaryDir dir;
        QByteArray bytes;
        QString error;
        QVERIFY(!FileReading::readWhole(dir.path(), bytes, error));
        QVERIFY2(error.endsWith(QStringLiteral("is a folder, not a file")), qPrintable(error));
        clsKorviInterface document;
        try {
            ReadUiFile(document, dir.path(), false);
            QFAIL("a folder was read as a skin file");
        } catch (const SkinReadError &e) {
            QCOMPARE(QString::fromStdString(e.what()), dir.path() + QStringLiteral(" is a folder, not a file"));
        }
    }

    void utf16TextIsNamedForWhatItIs_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::newRow("little-endian with mark") << QByteArray("\xFF\xFE<\0H\0", 6);
        QTest::newRow("big-endian with mark") << QByteArray("\xFE\xFF\0<\0H", 6);
        QTest::newRow("without mark") << QByteArray("<\0H\0E\0", 6);
    }
    void utf16TextIsNamedForWhatItIs()
    {
        QFETCH(QByteArray, bytes);
        QTemporaryDir dir;
        const QString path = dir.filePath(QStringLiteral("wide.ui"));
        QVERIFY(writeTestFile(path, bytes));
        clsKorviInterface document;
        try {
            ReadUiFile(document, path, false);
            QFAIL("UTF-16 text was read as a skin");
        } catch (const SkinReadError &e) {
            QCOMPARE(QString::fromStdString(e.what()), path + QStringLiteral(" is UTF-16 text; skin files are 8-bit text"));
        }
    }

    void eightBitTextIsNotTakenForUtf16()
    {
        QVERIFY(FileReading::wideTextProblem(kSkin).isEmpty());
        QVERIFY(FileReading::wideTextProblem("\xEF\xBB\xBF<LAYER a>\r\n").isEmpty());
        QVERIFY(FileReading::wideTextProblem(QByteArray()).isEmpty());
    }

    void backupNamesStayInTheFilesFolder_data()
    {
        QTest::addColumn<QString>("path");
        QTest::addColumn<QString>("backup");
        QTest::newRow("name and extension") << "/skins/main.ui" << "/skins/main.bak";
        QTest::newRow("no dot, dotted folder") << "/tmp/b/skin.v2/main" << "/tmp/b/skin.v2/main.bak";
        QTest::newRow("two dots") << "/skins/main.old.ui" << "/skins/main.old.bak";
        QTest::newRow("relative") << "main.ui" << "main.bak";
        QTest::newRow("its own backup name") << "/skins/main.bak" << "";
        // C:\skins\ui.v2\main on Windows, where users write backslashes.
        QTest::newRow("the host's separators") << QDir::toNativeSeparators(QStringLiteral("C:/skins/ui.v2/main"))
                                               << QDir::toNativeSeparators(QStringLiteral("C:/skins/ui.v2/main.bak"));
    }
    void backupNamesStayInTheFilesFolder()
    {
        QFETCH(QString, path);
        QFETCH(QString, backup);
        QCOMPARE(SkinBackup::pathFor(path), backup);
    }

    void saveInADottedFolderKeepsItsBackupBesideTheFile()
    {
        QTemporaryDir dir;
        QVERIFY(QDir(dir.path()).mkdir(QStringLiteral("skin.v2")));
        const QString path = dir.filePath(QStringLiteral("skin.v2/main"));
        const QString unrelated = dir.filePath(QStringLiteral("skin.bak"));
        QVERIFY(writeTestFile(path, kSkin));
        QVERIFY(writeTestFile(unrelated, "someone else's"));
        QVERIFY(moveButton(path, "5").ok());
        QCOMPARE(readTestFile(dir.filePath(QStringLiteral("skin.v2/main.bak"))), kSkin);
        QCOMPARE(readTestFile(unrelated), QByteArray("someone else's"));
        QVERIFY(readTestFile(path).contains("x=5 "));
        QCOMPARE(entriesOf(dir.filePath(QStringLiteral("skin.v2"))), (QStringList { "main", "main.bak" }));
    }

    void aSaveThatFailsKeepsThePreviousBackup()
    {
        QTemporaryDir dir;
        const QString path = dir.filePath(QStringLiteral("main.ui"));
        QVERIFY(writeTestFile(path, kSkin));
        QVERIFY(writeTestFile(dir.filePath(QStringLiteral("main.bak")), "previous backup"));
        const Fault full("KORVI_FAIL_WRITES", "main.ui");
        const SaveChanges::Result result = moveButton(path, "5");
        QCOMPARE(result.outcome, SaveChanges::Result::Outcome::Failed);
        QVERIFY2(result.error.startsWith(QStringLiteral("Error saving file: ")), qPrintable(result.error));
        QVERIFY2(result.error.endsWith(QStringLiteral("main.ui: No space left on device")), qPrintable(result.error));
        QCOMPARE(readTestFile(path), kSkin);
        QCOMPARE(readTestFile(dir.filePath(QStringLiteral("main.bak"))), QByteArray("previous backup"));
        QCOMPARE(entriesOf(dir.path()), (QStringList { "main.bak", "main.ui" }));
    }

    void aSecondSaveWaitsForTheFirstAndTakesItsResult()
    {
        QTemporaryDir dir;
        const QString path = dir.filePath(QStringLiteral("main.ui"));
        QVERIFY(writeTestFile(path, kSkin));
        clsKorviInterface document;
        ReadUiFile(document, path, false);
        clsElement *layer = NodeKey::ResolveNodeKey(document, "Lui_Main").element;
        layer->Properties().setValueAt(layer->Properties().indexOf("x"), "9");
        // Another program holds the file while it writes its own change.
        auto other = std::make_unique<SaveLock>(path);
        QString error;
        QVERIFY(other->lock(error, 0));
        std::atomic<bool> saved { false };
        SaveChanges::Result result;
        std::thread save([&] {
            SaveChanges saver(document);
            saver.setFileForNewElements(path);
            result = saver.save([](const QString &) { return false; });
            saved = true;
        });
        QTest::qWait(300);
        const bool waited = !saved;
        QByteArray theirs = kSkin;
        theirs.replace("y=80", "y=81");
        QVERIFY(writeTestFile(path, theirs));
        other.reset();
        save.join();
        QVERIFY(waited);
        QVERIFY2(result.ok(), qPrintable(QStringLiteral("%1 %2").arg(int(result.outcome)).arg(result.error)));
        const QByteArray now = readTestFile(path);
        QVERIFY2(now.contains("x=9>") && now.contains("y=81>"), now.constData());
        QVERIFY(!QFile::exists(SaveLock::lockPathFor(path)));
    }

    void aLockLeftByAProgramThatDiedIsTakenOver()
    {
        QTemporaryDir dir;
        const QString path = dir.filePath(QStringLiteral("main.ui"));
        QVERIFY(writeTestFile(path, kSkin));
        // As a saving program that was killed leaves it: its process is gone.
        // The lock names this host as the lock itself writes it (on Windows
        // that is not the name QSysInfo gives), so it is taken from a live
        // lock, with the process number of one that no longer runs.
        QByteArray left;
        {
            QLockFile live(SaveLock::lockPathFor(path));
            QVERIFY(live.lock());
            left = readTestFile(SaveLock::lockPathFor(path));
        }
        QVERIFY2(left.count('\n') >= 2, left.constData());
        left = "2147483646" + left.mid(left.indexOf('\n'));
        QVERIFY(writeTestFile(SaveLock::lockPathFor(path), left));
        QElapsedTimer timer;
        timer.start();
        const SaveChanges::Result result = moveButton(path, "5");
        QVERIFY2(result.ok(), qPrintable(result.error));
        QVERIFY(timer.elapsed() < 30000);
        QVERIFY(readTestFile(path).contains("x=5 "));
        QVERIFY(!QFile::exists(SaveLock::lockPathFor(path)));
    }

    void nodeKeysTypedByHandAreChecked_data()
    {
        QTest::addColumn<QByteArray>("key");
        QTest::addColumn<QString>("problem");
        QTest::newRow("empty") << QByteArray() << "it is empty";
        QTest::newRow("bar") << QByteArray("|") << "it ends with \u201C|\u201D";
        QTest::newRow("trailing bar") << QByteArray("Lui_Main|") << "it ends with \u201C|\u201D";
        QTest::newRow("empty segment") << QByteArray("Lui_Main||EbtnMap") << "it has an empty segment";
        QTest::newRow("leading bar") << QByteArray("|Pskin") << "it has an empty segment";
        QTest::newRow("no letter") << QByteArray("[0]") << "the segment \u201C[0]\u201D does not begin with a letter";
        QTest::newRow("letter alone") << QByteArray("L") << "the segment \u201CL\u201D has no key after its letter";
        QTest::newRow("child letter alone") << QByteArray("Lui_Main|E") << "the segment \u201CE\u201D has no key after its letter";
        QTest::newRow("wrong child letter") << QByteArray("Lui_Main|btnMap")
                                            << "the segment \u201CbtnMap\u201D does not begin with E, U or P";
        QTest::newRow("element") << QByteArray("Lui_Main|EbtnMap") << "";
        QTest::newRow("property") << QByteArray("Lui_Main|EbtnMap|Px[0]") << "";
        QTest::newRow("used layer") << QByteArray("Lui_Main|Uui_Status") << "";
        QTest::newRow("header variable") << QByteArray("skin_name") << "";
    }
    void nodeKeysTypedByHandAreChecked()
    {
        QFETCH(QByteArray, key);
        QFETCH(QString, problem);
        QCOMPARE(NodeKey::problemWith(key), problem);
    }
};

QTEST_GUILESS_MAIN(TestSafeFiles)
#include "tst_safefiles.moc"
