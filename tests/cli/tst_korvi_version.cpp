#include "KorviProject.h"

#include <QProcess>
#include <QtTest>

namespace {

struct Run
{
    int exitCode = -1;
    QByteArray out;
};

Run korvi(const QStringList &args)
{
    QProcess p;
    p.start(QStringLiteral(KORVI_EXECUTABLE), args);
    p.waitForFinished(60000);
    return { p.exitCode(), p.readAllStandardOutput() };
}

} // namespace

class TestKorviVersion : public QObject
{
    Q_OBJECT

private slots:
    void theVersionOptionPrintsTheBuildsVersion()
    {
        const Run run = korvi({ "--version" });
        QCOMPARE(run.exitCode, 0);
        QCOMPARE(run.out, QByteArray("korvi " KORVI_VERSION "\n"));
    }

    void theVersionSubcommandPrintsTheSameLine()
    {
        const Run run = korvi({ "version" });
        QCOMPARE(run.exitCode, 0);
        QCOMPARE(run.out, QByteArray("korvi " KORVI_VERSION "\n"));
    }

    void theVersionIsThreeNumbers()
    {
        QCOMPARE(QByteArray(KORVI_VERSION),
                 QByteArray::number(KORVI_VERSION_MAJOR) + '.' + QByteArray::number(KORVI_VERSION_MINOR) + '.'
                     + QByteArray::number(KORVI_VERSION_PATCH));
    }

    void helpListsTheVersionSubcommand()
    {
        const Run run = korvi({ "help" });
        QCOMPARE(run.exitCode, 0);
        QVERIFY(run.out.contains("\n  version (or --version) "));
    }
};

QTEST_GUILESS_MAIN(TestKorviVersion)
#include "tst_korvi_version.moc"
