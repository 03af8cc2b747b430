// SPDX-License-Identifier: MIT
#include "../ProgramRun.h"
#include "KorviProject.h"

#include <QtTest>

namespace {

ProgramRun korvi(const QStringList &args) { return runProgram(QStringLiteral(KORVI_EXECUTABLE), args); }

} // namespace

class TestKorviVersion : public QObject
{
    Q_OBJECT

private slots:
    void theVersionOptionPrintsTheBuildsVersion()
    {
        const ProgramRun run = korvi({ "--version" });
        QCOMPARE(run.exitCode, 0);
        QCOMPARE(run.out, QByteArray("korvi " KORVI_VERSION "\n"));
    }

    void theVersionSubcommandPrintsTheSameLine()
    {
        const ProgramRun run = korvi({ "version" });
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
        const ProgramRun run = korvi({ "help" });
        QCOMPARE(run.exitCode, 0);
        QVERIFY(run.out.contains("\n  version (or --version) "));
    }
};

QTEST_GUILESS_MAIN(TestKorviVersion)
#include "tst_korvi_version.moc"
