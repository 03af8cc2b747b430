// SPDX-License-Identifier: MIT
#include "../ProgramRun.h"
#include "EditorStartup.h"
#include "KorviProject.h"

#include <QtTest>

namespace {

EditorStartup::Options parsed(const QStringList &arguments, QString &error)
{
    return EditorStartup::parse(QStringList{ QStringLiteral("korvi-editor") } + arguments, error);
}

ProgramRun editor(const QStringList &args,
                  const QProcessEnvironment &environment = QProcessEnvironment::systemEnvironment())
{
    return runProgram(QStringLiteral(KORVI_EDITOR_EXECUTABLE), args, environment);
}

// The environment of a machine without a display, where no platform is chosen.
QProcessEnvironment withoutDisplay()
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    for (const char *name : { "QT_QPA_PLATFORM", "DISPLAY", "WAYLAND_DISPLAY" })
        environment.remove(QLatin1String(name));
    return environment;
}

} // namespace

class TestStartup : public QObject
{
    Q_OBJECT

private slots:
    void theOptionsAndTheTargetAreRead()
    {
        QString error;
        const EditorStartup::Options o =
            parsed({ "--skin-dir", "skins/demo", "--screenshot", "shot.png", "main.ui" }, error);
        QVERIFY2(error.isEmpty(), qPrintable(error));
        QVERIFY(o.hasSkinDirectory);
        QCOMPARE(o.skinDirectory, QStringLiteral("skins/demo"));
        QCOMPARE(o.screenshot, QStringLiteral("shot.png"));
        QCOMPARE(o.target, QStringLiteral("main.ui"));
        QVERIFY(o.message.isEmpty());
    }

    void aValueMayFollowAnEqualsSign()
    {
        QString error;
        const EditorStartup::Options o = parsed({ "main.ui", "--skin-dir=skins/demo" }, error);
        QVERIFY2(error.isEmpty(), qPrintable(error));
        QCOMPARE(o.skinDirectory, QStringLiteral("skins/demo"));
        QCOMPARE(o.target, QStringLiteral("main.ui"));
    }

    void withoutArgumentsNothingIsSet()
    {
        QString error;
        const EditorStartup::Options o = parsed({}, error);
        QVERIFY(error.isEmpty());
        QVERIFY(!o.hasSkinDirectory);
        QVERIFY(o.screenshot.isEmpty());
        QVERIFY(o.target.isEmpty());
        QVERIFY(o.message.isEmpty());
    }

    void anUnknownOptionIsAnError()
    {
        QString error;
        parsed({ "--frobnicate", "main.ui" }, error);
        QVERIFY(error.contains(QStringLiteral("frobnicate")));
    }

    void anOptionWithoutItsValueIsAnError()
    {
        QString error;
        parsed({ "--skin-dir" }, error);
        QVERIFY(error.contains(QStringLiteral("skin-dir")));
    }

    void onlyOneTargetCanBeOpened()
    {
        QString error;
        parsed({ "a.ui", "b.ui" }, error);
        QCOMPARE(error, QStringLiteral("only one file or folder can be opened"));
    }

    void helpListsEveryOption()
    {
        QString error;
        const EditorStartup::Options o = parsed({ "--help" }, error);
        QVERIFY(error.isEmpty());
        QVERIFY(o.message.contains(QStringLiteral("--skin-dir <DIR>")));
        QVERIFY(o.message.contains(QStringLiteral("--screenshot <OUT.png>")));
        QVERIFY(o.message.contains(QStringLiteral("--version")));
        QVERIFY(o.message.contains(QStringLiteral("[FILE.ui | FOLDER]")));
        QCOMPARE(o.message, EditorStartup::usage());
    }

    void versionNamesTheProgramAndTheBuildsVersion()
    {
        for (const char *option : { "--version", "-v" }) {
            QString error;
            const EditorStartup::Options o = parsed({ option }, error);
            QVERIFY(error.isEmpty());
            QCOMPARE(o.message, QStringLiteral("korvi-editor " KORVI_VERSION "\n"));
        }
        QCOMPARE(EditorStartup::versionLine(), QStringLiteral("korvi-editor " KORVI_VERSION));
    }

    void onlyHelpAndVersionAskForAText()
    {
        for (const char *option : { "--help", "-h", "--help-all", "--version", "-v" })
            QVERIFY2(EditorStartup::asksOnlyForText({ "korvi-editor", option }), option);
        QVERIFY(EditorStartup::asksOnlyForText({ "korvi-editor", "-platform", "xcb", "--version" }));
        QVERIFY(!EditorStartup::asksOnlyForText({ "korvi-editor" }));
        QVERIFY(!EditorStartup::asksOnlyForText({ "korvi-editor", "--skin-dir", "skins", "main.ui" }));
        QVERIFY(!EditorStartup::asksOnlyForText({ "korvi-editor", "--screenshot", "--version" }));
    }

    void theProgramPrintsItsVersion()
    {
        const ProgramRun run = editor({ "--version" });
        QCOMPARE(run.exitCode, 0);
        QCOMPARE(run.out, printedLine("korvi-editor " KORVI_VERSION));
    }

    void theVersionAndHelpNeedNoDisplay()
    {
        const ProgramRun version = editor({ "--version" }, withoutDisplay());
        QCOMPARE(version.exitCode, 0);
        QCOMPARE(version.out, printedLine("korvi-editor " KORVI_VERSION));
        const ProgramRun help = editor({ "--help" }, withoutDisplay());
        QCOMPARE(help.exitCode, 0);
        QVERIFY(help.out.contains("--skin-dir <DIR>"));
    }

    void theProgramPrintsItsHelp()
    {
        const ProgramRun run = editor({ "--help" });
        QCOMPARE(run.exitCode, 0);
        QVERIFY(run.out.contains("--skin-dir <DIR>"));
        QVERIFY(!run.err.contains("nknown option"));
    }

    void theProgramPrintsQtsOptionsToo()
    {
        const ProgramRun run = editor({ "--help-all" });
        QCOMPARE(run.exitCode, 0);
        QVERIFY(run.out.contains("--skin-dir <DIR>"));
        QVERIFY(run.out.contains("-platform"));
    }

    void theProgramRefusesAnUnknownOption()
    {
        const ProgramRun run = editor({ "--frobnicate" });
        QCOMPARE(run.exitCode, 2);
        QVERIFY(run.err.contains("frobnicate"));
        QVERIFY(run.out.isEmpty());
    }
};

QTEST_MAIN(TestStartup)
#include "tst_startup.moc"
