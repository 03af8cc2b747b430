// SPDX-License-Identifier: MIT
#include "TestFiles.h"

#include <QElapsedTimer>
#include <QProcess>
#include <QTemporaryDir>
#include <QtTest>

#include <sys/stat.h>
#include <unistd.h>

// What only a Unix host has: a device that is always full, pipes, owners of
// files. The same behaviour is tried on every host through the fault seams in
// tst_korvi_faults.
namespace {

const QByteArray kSkin = "<LAYER ui_Main x=0>\r\n"
                         "\t<BUTTON btnMap x=70 y=80>\r\n"
                         "</LAYER>\r\n";

struct Run
{
    int exitCode = -1;
    QByteArray err;
    qint64 ms = 0;
};

Run korvi(const QStringList &args, const QString &stdoutFile = {})
{
    QProcess p;
    if (!stdoutFile.isEmpty())
        p.setStandardOutputFile(stdoutFile);
    QElapsedTimer timer;
    timer.start();
    p.start(QStringLiteral(KORVI_EXECUTABLE), args);
    if (!p.waitForFinished(20000))
        p.kill();
    return { p.exitStatus() == QProcess::NormalExit ? p.exitCode() : -1, p.readAllStandardError(), timer.elapsed() };
}

} // namespace

class TestUnixKorviFaults : public QObject
{
    Q_OBJECT

private slots:
    void writingToAFullDeviceFails()
    {
        QTemporaryDir dir;
        const QString skin = dir.filePath(QStringLiteral("main.ui"));
        QVERIFY(writeTestFile(skin, kSkin));
        const Run dump = korvi({ "dump", skin }, QStringLiteral("/dev/full"));
        QCOMPARE(dump.exitCode, 1);
        QVERIFY2(dump.err.contains("cannot write to the standard output: No space left on device"), dump.err.constData());
        QCOMPARE(korvi({ "help" }, QStringLiteral("/dev/full")).exitCode, 1);
    }

    void pipesAndDevicesAreRefusedAtOnce()
    {
        QTemporaryDir dir;
        const QString fifo = dir.filePath(QStringLiteral("pipe.ui"));
        QCOMPARE(mkfifo(QFile::encodeName(fifo).constData(), 0600), 0);
        for (const QStringList &args : { QStringList { "dump", fifo }, QStringList { "image-info", fifo },
                                         QStringList { "dump", "/dev/zero" } }) {
            const Run run = korvi(args);
            QCOMPARE(run.exitCode, 1);
            QVERIFY(run.ms < 15000);
        }
        const Run info = korvi({ "image-info", fifo });
        QVERIFY2(info.err.contains("is not a regular file"), info.err.constData());
    }

    void runningOutOfMemoryIsAFailureWithAMessage()
    {
        QTemporaryDir dir;
        const QString skin = dir.filePath(QStringLiteral("big.ui"));
        QByteArray lines = "<LAYER ui_Main>\r\n";
        QByteArray text;
        for (int i = 0; i < 20000; ++i)
            text += "\t<TEXT t" + QByteArray::number(i) + " x=1 y=2 text=\"some words\">\r\n";
        QFile file(skin);
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write(lines);
        // About 48 MB: more than the address space the command is given.
        for (int i = 0; i < 48 * 1024 * 1024 / text.size(); ++i)
            QCOMPARE(file.write(text), text.size());
        file.close();
        QProcess p;
        p.setStandardOutputFile(QProcess::nullDevice());
        p.start(QStringLiteral("/bin/sh"), { QStringLiteral("-c"), QStringLiteral("ulimit -v 400000; exec \"$0\" dump \"$1\""),
                                            QStringLiteral(KORVI_EXECUTABLE), skin });
        QVERIFY(p.waitForFinished(120000));
        const QByteArray err = p.readAllStandardError();
        QCOMPARE(p.exitStatus(), QProcess::NormalExit);
        QCOMPARE(p.exitCode(), 1);
        QVERIFY2(err.contains("not enough memory to read " + QFile::encodeName(skin) + " ("), err.constData());
    }

    void aFileSavedByRootKeepsItsOwner()
    {
        QTemporaryDir dir;
        const QString skin = dir.filePath(QStringLiteral("main.ui"));
        QVERIFY(writeTestFile(skin, kSkin));
        // Given to another user where this one may; else it stays this user's.
        const bool given = chown(QFile::encodeName(skin).constData(), 4321, 4322) == 0;
        struct stat before;
        QCOMPARE(stat(QFile::encodeName(skin).constData(), &before), 0);
        QCOMPARE(before.st_uid, given ? uid_t(4321) : getuid());
        const Run set = korvi({ "set", skin, "Lui_Main|EbtnMap", "x=5" });
        QVERIFY2(set.exitCode == 0, set.err.constData());
        struct stat after;
        QCOMPARE(stat(QFile::encodeName(skin).constData(), &after), 0);
        QVERIFY(readTestFile(skin).contains("x=5 "));
        QCOMPARE(after.st_uid, before.st_uid);
        QCOMPARE(after.st_gid, before.st_gid);
        QCOMPARE(after.st_mode, before.st_mode);
    }
};

QTEST_GUILESS_MAIN(TestUnixKorviFaults)
#include "tst_unix_korvi_faults.moc"
