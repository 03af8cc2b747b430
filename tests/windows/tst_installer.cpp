// SPDX-License-Identifier: MIT
// The installer as a Windows user runs it: installed silently, the programs,
// the Start-menu entry and the .ui association are there, the installed
// editor opens a .ui file given on its command line, and the uninstaller
// leaves nothing behind. Needs the right to write Program Files (an
// administrator, or Wine).
#include "../ProgramRun.h"
#include "TestFiles.h"

#include <QDeadlineTimer>
#include <QDir>
#include <QFileInfo>
#include <QImage>
#include <QSettings>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QThread>
#include <QtTest>

namespace {

const QString kProduct = QStringLiteral("Korvi8 Skin Editor");

QString programFiles()
{
    const QString folder = qEnvironmentVariable("ProgramW6432", qEnvironmentVariable("ProgramFiles"));
    return QDir::fromNativeSeparators(folder);
}

QString installFolder() { return programFiles() + QLatin1Char('/') + kProduct; }

// The Start menu of all users: C:\ProgramData\Microsoft\Windows\Start Menu\Programs.
QString startMenuFolder()
{
    return QDir::fromNativeSeparators(qEnvironmentVariable("ProgramData"))
        + QStringLiteral("/Microsoft/Windows/Start Menu/Programs/") + kProduct;
}

QString registryValue(const QString &key, const QString &name = QString())
{
    QSettings registry(QStringLiteral("HKEY_LOCAL_MACHINE\\Software\\Classes\\") + key, QSettings::NativeFormat);
    return registry.value(name.isEmpty() ? QStringLiteral("Default") : name).toString();
}

bool waitUntil(const std::function<bool()> &condition, int seconds)
{
    QDeadlineTimer deadline(seconds * 1000);
    while (!condition()) {
        if (deadline.hasExpired())
            return false;
        QThread::msleep(250);
    }
    return true;
}

} // namespace

class TestInstaller : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        QVERIFY2(QFileInfo::exists(QStringLiteral(KORVI_WINDOWS_SETUP)),
                 "no installer: make it with make windows-package");
        QVERIFY2(!QFileInfo::exists(installFolder()), "the editor is installed already");
    }

    void installsOpensAFileAndUninstallsWithoutATrace()
    {
        const ProgramRun setup = runProgram(QStringLiteral(KORVI_WINDOWS_SETUP), { QStringLiteral("/S") });
        QCOMPARE(setup.exitCode, 0);

        const QDir installed(installFolder());
        for (const char *file : { "korvi-editor.exe", "korvi.exe", "Qt6Core.dll", "Qt6Widgets.dll",
                                  "libstdc++-6.dll", "platforms/qwindows.dll", "imageformats/qjpeg.dll",
                                  "README.md", "LICENSE", "uninstall.exe",
                                  "demo-skin/800_480/ui/main_800_480.ui" })
            QVERIFY2(installed.exists(QLatin1String(file)), file);
        QVERIFY(QFileInfo::exists(startMenuFolder() + QLatin1Char('/') + kProduct + QStringLiteral(".lnk")));

        const QString fileClass = registryValue(QStringLiteral(".ui"));
        QVERIFY(!fileClass.isEmpty());
        QCOMPARE(registryValue(fileClass), QStringLiteral("User Interface File Korvi8"));
        QVERIFY(registryValue(fileClass + QStringLiteral("\\shell\\open\\command"))
                    .contains(QStringLiteral("korvi-editor.exe\" \"%1\"")));

        const ProgramRun version = runProgram(installed.filePath(QStringLiteral("korvi.exe")), { QStringLiteral("--version") });
        QCOMPARE(version.exitCode, 0);
        QVERIFY(version.out.startsWith("korvi " KORVI_VERSION_TEXT));

        // The installed editor opens the demo skin given on its command line
        // and shows it.
        QTemporaryDir out;
        const QString picture = out.filePath(QStringLiteral("editor.png"));
        const ProgramRun editor = runProgram(installed.filePath(QStringLiteral("korvi-editor.exe")),
                                             { QStringLiteral("--screenshot"), picture,
                                               installed.filePath(QStringLiteral("demo-skin/800_480/ui/main_800_480.ui")) });
        QVERIFY2(editor.exitCode == 0, editor.err.constData());
        QVERIFY(!QImage(picture).isNull());

        const ProgramRun uninstall = runProgram(installed.filePath(QStringLiteral("uninstall.exe")), { QStringLiteral("/S") });
        QCOMPARE(uninstall.exitCode, 0);
        // The uninstaller goes on from a copy of itself after it returns.
        QVERIFY2(waitUntil([] { return !QFileInfo::exists(installFolder()); }, 60),
                 qPrintable(QDir(installFolder()).entryList(QDir::AllEntries | QDir::NoDotAndDotDot).join(QLatin1Char(' '))));
        QVERIFY(!QFileInfo::exists(startMenuFolder()));
        QVERIFY(registryValue(QStringLiteral(".ui")).isEmpty());
        QVERIFY(registryValue(fileClass).isEmpty());
    }
};

QTEST_GUILESS_MAIN(TestInstaller)
#include "tst_installer.moc"
