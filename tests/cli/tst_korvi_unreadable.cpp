// SPDX-License-Identifier: MIT
#include <QProcess>
#include <QtTest>

// A file that cannot be read whole is an error of the command, not an empty
// or shortened skin.
class TestKorviUnreadable : public QObject
{
    Q_OBJECT

private slots:
    void dumpOfAMissingFileFails()
    {
        QProcess p;
        p.start(QStringLiteral(KORVI_EXECUTABLE), { "dump", "/nonexistent/skin.ui" });
        QVERIFY(p.waitForFinished(60000));
        QCOMPARE(p.exitCode(), 1);
        QVERIFY(p.readAllStandardOutput().contains("/nonexistent/skin.ui"));
    }

#ifdef Q_OS_LINUX
    // Reading the start of a process's own memory fails with an input/output
    // error: a real EIO half-way through a read.
    void dumpOfAFileWhoseReadFailsExitsOne()
    {
        QProcess p;
        p.start(QStringLiteral(KORVI_EXECUTABLE), { "dump", "/proc/self/mem" });
        QVERIFY(p.waitForFinished(60000));
        const QByteArray out = p.readAllStandardOutput();
        QCOMPARE(p.exitCode(), 1);
        QVERIFY2(out.contains("could not be read whole"), out.constData());
        QVERIFY(out.contains("/proc/self/mem"));
    }
#endif
};

QTEST_GUILESS_MAIN(TestKorviUnreadable)
#include "tst_korvi_unreadable.moc"
