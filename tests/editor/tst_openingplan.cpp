// SPDX-License-Identifier: MIT
// The editor and the korvi tool read a skin the same way: All and
// `korvi lint FOLDER` read the same files in the same order, and so do Open
// and `korvi lint FILE.ui`, for every skin the tests hold and the demo skin.

#include "EditorFixture.h"
#include "../ProgramRun.h"
#include "SkinSources.h"

#include <QDirIterator>

namespace {

// What the editor read, in reading order: each file's path, and " (imported)"
// after a file read as shared templates only.
QStringList filesTheEditorRead(const clsKorviInterface &document)
{
    QStringList files;
    const SkinSources &sources = document.Sources();
    for (int number = 1; number <= sources.count(); ++number) {
        if (const SkinSourceFile *file = sources.file(number))
            files << QDir::cleanPath(file->path()) + (file->imported() ? QStringLiteral(" (imported)") : QString());
    }
    return files;
}

QStringList filesLintReads(const QString &target)
{
    const ProgramRun run = runProgram(QStringLiteral(KORVI_BINARY_DIR "/src/cli/korvi"),
                                      { QStringLiteral("lint"), QStringLiteral("--files"), target });
    if (run.exitCode != 0)
        qWarning("korvi lint --files %s: %s", qPrintable(target), run.err.constData());
    QStringList files;
    for (const QString &line : QString::fromLocal8Bit(run.out).split(QLatin1Char('\n'), Qt::SkipEmptyParts))
        files << QDir::fromNativeSeparators(line);
    return files;
}

// Every folder of the tests' data that holds skin files, and the demo skin's.
QStringList skinFolders()
{
    QStringList folders { QStringLiteral(KORVI_SOURCE_DIR "/samples/demo-skin/800_480/ui") };
    QDirIterator it(QStringLiteral(KORVI_TEST_DATA), { QStringLiteral("*.ui") }, QDir::Files | QDir::Hidden,
                    QDirIterator::Subdirectories);
    while (it.hasNext()) {
        const QString folder = QFileInfo(it.next()).absolutePath();
        if (!folders.contains(folder))
            folders << folder;
    }
    folders.sort();
    return folders;
}

} // namespace

class TestOpeningPlan : public QObject
{
    Q_OBJECT

private slots:
    void allAndLintOfAFolderReadTheSameFilesInTheSameOrder()
    {
        const QStringList folders = skinFolders();
        QVERIFY(folders.size() > 20);
        for (const QString &folder : folders) {
            EditorFixture f;
            f.window->openSkinFolder(folder);
            const QStringList editor = filesTheEditorRead(f.document);
            QVERIFY2(!editor.isEmpty(), qPrintable(folder));
            QCOMPARE(filesLintReads(folder), editor);
        }
    }

    void openAndLintOfAFileReadTheSameFilesInTheSameOrder()
    {
        const QDir ui(QStringLiteral(KORVI_SOURCE_DIR "/samples/demo-skin/800_480/ui"));
        for (const QString &name : ui.entryList({ QStringLiteral("*.ui") }, QDir::Files)) {
            EditorFixture f;
            f.window->openSkinFile(ui.filePath(name));
            const QStringList editor = filesTheEditorRead(f.document);
            // The templates beside the file and the shared scheme come first, imported.
            QVERIFY2(editor.size() >= 3, qPrintable(editor.join(QLatin1Char('\n'))));
            QVERIFY(editor.first().endsWith(QLatin1String(" (imported)")));
            QCOMPARE(filesLintReads(ui.filePath(name)), editor);
        }
    }

    // A hidden file is part of the skin, and a folder whose name ends in ".ui"
    // is no skin file, for Open and All alike.
    void openAndAllTakeTheSameFilesForSkinFiles()
    {
        QTemporaryDir dir;
        QVERIFY(writeTestFile(dir.filePath("skin/ui/main.ui"), "<LAYER ui_Main>\r\n</LAYER>\r\n"));
        QVERIFY(writeTestFile(dir.filePath("skin/ui/templates_a.ui"), "<TEMPLATE a>\r\n"));
        QVERIFY(writeTestFile(dir.filePath("skin/ui/.templates_hidden.ui"), "<TEMPLATE h>\r\n"));
        QVERIFY(writeTestFile(dir.filePath("skin/main_scheme.ui"), "<TEMPLATE s>\r\n"));
        QVERIFY(QDir().mkpath(dir.filePath("skin/ui/templates_folder.ui")));
        const QString file = dir.filePath("skin/ui/main.ui");

        EditorFixture open;
        open.window->openSkinFile(file);
        QCOMPARE(filesTheEditorRead(open.document),
                 (QStringList { QDir::cleanPath(dir.filePath("skin/ui/templates_a.ui")) + " (imported)",
                                QDir::cleanPath(dir.filePath("skin/main_scheme.ui")) + " (imported)",
                                QDir::cleanPath(file) }));
        QCOMPARE(filesLintReads(file), filesTheEditorRead(open.document));

        EditorFixture all;
        all.window->openSkinFolder(dir.filePath("skin/ui"));
        QCOMPARE(filesTheEditorRead(all.document),
                 (QStringList { QDir::cleanPath(dir.filePath("skin/ui/.templates_hidden.ui")), QDir::cleanPath(file),
                                QDir::cleanPath(dir.filePath("skin/ui/templates_a.ui")),
                                QDir::cleanPath(dir.filePath("skin/main_scheme.ui")) }));
        QCOMPARE(filesLintReads(dir.filePath("skin/ui")), filesTheEditorRead(all.document));
    }
};

QTEST_MAIN(TestOpeningPlan)
#include "tst_openingplan.moc"
