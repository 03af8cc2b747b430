// SPDX-License-Identifier: MIT
// Skins where Windows users keep them: paths with a drive letter written with
// backslashes, shared folders named in any case (a skin copied from a device
// has COMMON or Common), paths longer than the old 260 characters, and file
// and folder names beyond ASCII. Each skin opens, every picture is found, its
// layers draw, and a change is saved.
#include "../ProgramRun.h"
#include "TestFiles.h"

#include <QDir>
#include <QDirIterator>
#include <QImage>
#include <QTemporaryDir>
#include <QtTest>

namespace {

// A copy of the demo skin at `root` (made with every folder on the way).
bool copyDemoSkin(const QString &root)
{
    const QDir source(QStringLiteral(KORVI_SOURCE_DIR "/samples/demo-skin"));
    QDirIterator it(source.path(), QDir::Files, QDirIterator::Subdirectories);
    while (it.hasNext()) {
        const QString from = it.next();
        const QString to = QDir(root).filePath(source.relativeFilePath(from));
        if (!QDir().mkpath(QFileInfo(to).absolutePath()) || !QFile::copy(from, to))
            return false;
    }
    return true;
}

QString mainFileOf(const QString &root)
{
    return QDir(root).filePath(QStringLiteral("800_480/ui/main_800_480.ui"));
}

QString native(const QString &path) { return QDir::toNativeSeparators(path); }

// Renames a folder to another case of its name, through a third name: a file
// system that ignores case may take a rename to the same name for nothing.
bool renameCase(const QString &root, const QString &from, const QString &to)
{
    QDir dir(root);
    const QString step = to + QStringLiteral(".renaming");
    return dir.rename(from, step) && dir.rename(step, to);
}

ProgramRun korvi(const QStringList &args) { return runProgram(QStringLiteral(KORVI_EXECUTABLE), args); }

// Draws every layer of the skin at `root`; the pictures go to `out`.
void drawsEveryLayerFindingEveryPicture(const QString &root, const QString &out)
{
    const ProgramRun run = korvi({ QStringLiteral("render"), native(mainFileOf(root)), QStringLiteral("--skin-dir"),
                                   native(root), QStringLiteral("--all-layers"), QStringLiteral("-o"), native(out) });
    QVERIFY2(run.exitCode == 0, run.err.constData());
    QVERIFY2(!run.err.contains("Unable to locate"), run.err.constData());
    const QStringList pictures = QDir(out).entryList({ QStringLiteral("*.png") }, QDir::Files);
    QVERIFY(pictures.size() >= 5);
    for (const QString &name : pictures)
        QVERIFY2(!QImage(QDir(out).filePath(name)).isNull(), qPrintable(name));
}

// Moves a button and saves: only that value changes on disk, and a backup is kept.
void savesAChange(const QString &root)
{
    const QString file = mainFileOf(root);
    const QByteArray before = readTestFile(file);
    QVERIFY(before.contains("<BUTTON btnMap template=tplMenuButton x=70 "));
    const ProgramRun run = korvi({ QStringLiteral("set"), native(file), QStringLiteral("Lui_Main|EbtnMap"),
                                   QStringLiteral("x=90") });
    QVERIFY2(run.exitCode == 0, run.err.constData());
    QByteArray expected = before;
    expected.replace("<BUTTON btnMap template=tplMenuButton x=70 ", "<BUTTON btnMap template=tplMenuButton x=90 ");
    QCOMPARE(readTestFile(file), expected);
    QCOMPARE(readTestFile(QDir(root).filePath(QStringLiteral("800_480/ui/main_800_480.bak"))), before);
}

} // namespace

class TestSkinPaths : public QObject
{
    Q_OBJECT

private slots:
    void aPathWithADriveLetterAndBackslashes()
    {
        QTemporaryDir base;
        const QString root = base.filePath(QStringLiteral("Skins/Demo"));
        QVERIFY(copyDemoSkin(root));
        // The temporary folder is on a drive: C:\Users\...\Skins\Demo.
        QVERIFY2(QDir::isAbsolutePath(root) && root.at(1) == QLatin1Char(':'), qPrintable(root));
        QVERIFY(native(root).contains(QLatin1Char('\\')));
        QTemporaryDir out;
        drawsEveryLayerFindingEveryPicture(root, out.path());
        savesAChange(root);
    }

    void sharedFoldersNamedInAnyCase_data()
    {
        QTest::addColumn<QString>("common");
        QTest::newRow("COMMON") << QStringLiteral("COMMON");
        QTest::newRow("Common") << QStringLiteral("Common");
    }

    void sharedFoldersNamedInAnyCase()
    {
        QFETCH(QString, common);
        QTemporaryDir base;
        const QString root = base.filePath(QStringLiteral("Demo"));
        QVERIFY(copyDemoSkin(root));
        QVERIFY(renameCase(root, QStringLiteral("common"), common));
        QVERIFY(renameCase(root, QStringLiteral("800_480/background"), QStringLiteral("800_480/BACKGROUND")));
        QVERIFY(QDir(root).entryList(QDir::Dirs).contains(common));
        QTemporaryDir out;
        drawsEveryLayerFindingEveryPicture(root, out.path());
        savesAChange(root);
    }

    void aPathLongerThanTwoHundredSixtyCharacters()
    {
        QTemporaryDir base;
        QString root = base.path();
        while (root.size() < 300)
            root += QStringLiteral("/a-folder-of-skins-kept-deep-down");
        QVERIFY(copyDemoSkin(root));
        QVERIFY(mainFileOf(root).size() > 260);
        QTemporaryDir out;
        drawsEveryLayerFindingEveryPicture(root, out.path());
        savesAChange(root);
    }

    void namesBeyondAscii()
    {
        QTemporaryDir base;
        const QString root = base.filePath(QStringLiteral("Скины/Überall Ωmega 皮肤"));
        QVERIFY(copyDemoSkin(root));
        QTemporaryDir out;
        const QString pictures = QDir(out.path()).filePath(QStringLiteral("Bilder ä"));
        QVERIFY(QDir().mkpath(pictures));
        drawsEveryLayerFindingEveryPicture(root, pictures);
        savesAChange(root);
    }
};

QTEST_GUILESS_MAIN(TestSkinPaths)
#include "tst_skinpaths.moc"
