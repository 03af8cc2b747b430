// SPDX-License-Identifier: MIT
#include "TestFiles.h"
#include "EditorEnvironment.h"
#include "PowGrid.h"
#include "clsComboList.h"
#include "ScriptedDialogs.h"
#include "SettingsFile.h"
#include "SkinContext.h"
#include "WebLink.h"
#include "clsKorviInterface.h"
#include "frmEditor.h"
#include "frmSettings.h"

#include <QDir>
#include <QFile>
#include <QPushButton>
#include <QTemporaryDir>
#include <QtTest>

namespace {

QStringList choicesOf(const PowGridItem *row)
{
    QStringList names;
    if (row->ComboList) {
        for (const ComboItem *item : *row->ComboList)
            names << item->strText;
    }
    return names;
}

} // namespace

class TestSettings : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        mProgram = std::make_unique<QTemporaryDir>();
        mConfig = std::make_unique<QTemporaryDir>();
    }

    // ---- Settings.ini --------------------------------------------------------

    void withoutSettingsFileTheDirectoryStaysEmpty()
    {
        const SettingsFile file(mProgram->path(), mConfig->path());
        QString directory;
        file.ReadSettings(directory);
        QCOMPARE(directory, QString());
        // And the settings window then offers no formats.
        SkinContext context;
        context.SkinDirectory = directory;
        ScriptedDialogs dialogs;
        frmSettings form(context, dialogs);
        QCOMPARE(choicesOf(form.formatRow()), QStringList());
    }

    void aMissingFileKeepsTheValueItHad()
    {
        const SettingsFile file(mProgram->path(), mConfig->path());
        QString directory = QStringLiteral("/kept");
        file.ReadSettings(directory);
        QCOMPARE(directory, QStringLiteral("/kept"));
    }

    void aBlankFirstLineGivesTheProgramsFolder()
    {
        QVERIFY(writeTestFile(mProgram->filePath("Settings.ini"), "    \r\n"));
        const SettingsFile file(mProgram->path(), mConfig->path());
        QString directory;
        file.ReadSettings(directory);
        QCOMPARE(directory, mProgram->path());
    }

    void theLineIsTrimmedOfBlanks()
    {
        QVERIFY(writeTestFile(mProgram->filePath("Settings.ini"), "  /skins/korvi  \r\n"));
        const SettingsFile file(mProgram->path(), mConfig->path());
        QString directory;
        file.ReadSettings(directory);
        QCOMPARE(directory, QStringLiteral("/skins/korvi"));
    }

    void aSecondLineIsIgnoredAndLostAtTheNextWrite()
    {
        QVERIFY(writeTestFile(mProgram->filePath("Settings.ini"), "/skins/one\r\n/skins/two\r\n"));
        const SettingsFile file(mProgram->path(), mConfig->path());
        QString directory;
        file.ReadSettings(directory);
        QCOMPARE(directory, QStringLiteral("/skins/one"));
        file.WriteSettings(directory);
        QCOMPARE(readTestFile(mProgram->filePath("Settings.ini")), QByteArray("/skins/one\r\n"));
    }

    void writingGivesOneLineWithCrLf()
    {
        const SettingsFile file(mProgram->path(), mConfig->path());
        file.WriteSettings(QStringLiteral("/a/b"));
        QCOMPARE(readTestFile(mProgram->filePath("Settings.ini")), QByteArray("/a/b\r\n"));
        QVERIFY(!QFile::exists(mConfig->filePath("Settings.ini")));
    }

    void aProgramFolderThatCannotBeWrittenGivesWayToTheConfigFolder()
    {
        const QString missing = mProgram->filePath("not-there");
        const QString config = mConfig->filePath("korvi");
        const SettingsFile file(missing, config);
        QCOMPARE(file.path(), QDir(config).filePath("Settings.ini"));
        file.WriteSettings(QStringLiteral("/x"));
        QCOMPARE(readTestFile(QDir(config).filePath("Settings.ini")), QByteArray("/x\r\n"));
        QString directory;
        file.ReadSettings(directory);
        QCOMPARE(directory, QStringLiteral("/x"));
    }

    // ---- the settings window ---------------------------------------------------

    void theWindowShowsBothSettings()
    {
        SkinContext context;
        context.SkinDirectory = mProgram->path();
        context.SkinFormat = QStringLiteral("800_480");
        QDir(mProgram->path()).mkdir(QStringLiteral("800_480"));
        ScriptedDialogs dialogs;
        frmSettings form(context, dialogs);
        PowGrid *grid = form.pgrSettings;
        QCOMPARE(grid->Headers()->Count(), 3);
        QCOMPARE(grid->Headers()->Item(1)->Caption, QStringLiteral("Property"));
        QCOMPARE(grid->Headers()->Item(2)->Caption, QStringLiteral("Value"));
        QCOMPARE(grid->Headers()->Item(3)->Caption, QStringLiteral("Action"));
        QCOMPARE(grid->Items()->Count(), 2);
        QCOMPARE(form.directoryRow()->CellText(0), QStringLiteral("Default Korvi Skin Directory"));
        QCOMPARE(form.directoryRow()->CellText(1), mProgram->path());
        QCOMPARE(grid->DisplayText(form.directoryRow(), 2), QStringLiteral("..."));
        QCOMPARE(grid->CellDataType(form.directoryRow(), 2), int(dtButton));
        QCOMPARE(form.formatRow()->CellText(0), QStringLiteral("Current Skin Format"));
        QCOMPARE(form.formatRow()->CellText(1), QStringLiteral("800_480"));
        QCOMPARE(grid->CellDataType(form.formatRow(), 1), int(dtItemCombo));
        QCOMPARE(grid->DisplayText(form.formatRow(), 1), QStringLiteral("800_480"));
        QCOMPARE(grid->DisplayText(form.formatRow(), 0), QStringLiteral("Current Skin Format"));
    }

    void theFormatListHoldsNamesWithoutExtensionThatHoldAnUnderscore()
    {
        QDir dir(mProgram->path());
        dir.mkdir(QStringLiteral("800_480"));
        dir.mkdir(QStringLiteral("480_272"));
        dir.mkdir(QStringLiteral("common"));
        dir.mkdir(QStringLiteral("B_folder"));
        dir.mkdir(QStringLiteral("with_dot.d"));
        QVERIFY(writeTestFile(dir.filePath("a_file"), "x"));
        QVERIFY(writeTestFile(dir.filePath("z_notes.txt"), "x"));
        SkinContext context;
        context.SkinDirectory = mProgram->path();
        ScriptedDialogs dialogs;
        frmSettings form(context, dialogs);
        QCOMPARE(choicesOf(form.formatRow()),
                 (QStringList{ "480_272", "800_480", "a_file", "B_folder" }));
    }

    void aFormatOfFourDigitWidthIsListedAndAccepted()
    {
        QDir dir(mProgram->path());
        dir.mkdir(QStringLiteral("1024_600"));
        dir.mkdir(QStringLiteral("800_480"));
        SkinContext context;
        context.SkinDirectory = mProgram->path();
        context.SkinFormat = QStringLiteral("800_480");
        ScriptedDialogs dialogs;
        frmSettings form(context, dialogs);
        QCOMPARE(choicesOf(form.formatRow()), (QStringList{ "1024_600", "800_480" }));
        form.formatRow()->setCellText(1, QStringLiteral("1024_600"));
        QTest::mouseClick(form.cmdOK, Qt::LeftButton);
        QCOMPARE(context.SkinFormat, QStringLiteral("1024_600"));
    }

    void aNewDirectoryListsItsFormatsAtOnceAndTheFormatRowHasNoButton()
    {
        QTemporaryDir other;
        QDir(other.path()).mkdir(QStringLiteral("1024_600"));
        QDir(mProgram->path()).mkdir(QStringLiteral("800_480"));
        SkinContext context;
        context.SkinDirectory = mProgram->path();
        ScriptedDialogs dialogs;
        dialogs.answerPath(other.path());
        frmSettings form(context, dialogs);
        QCOMPARE(choicesOf(form.formatRow()), QStringList { "800_480" });
        QVERIFY(form.pgrSettings->isButtonShown(form.directoryRow(), 2));
        QVERIFY(!form.pgrSettings->isButtonShown(form.formatRow(), 2));
        form.resize(500, 200);
        form.show();
        QVERIFY(QTest::qWaitForWindowExposed(&form));
        clickCell(form.pgrSettings, 1, 2);
        QCOMPARE(choicesOf(form.formatRow()), QStringList { "1024_600" });
        QCOMPARE(context.SkinDirectory, mProgram->path());
    }

    void theFolderButtonAsksForAFolderAndStoresNothingYet()
    {
        SkinContext context;
        context.SkinDirectory = QStringLiteral("/old");
        ScriptedDialogs dialogs;
        dialogs.answerPath(QStringLiteral("/new"));
        frmSettings form(context, dialogs);
        form.resize(500, 200);
        form.show();
        QVERIFY(QTest::qWaitForWindowExposed(&form));
        clickCell(form.pgrSettings, 1, 2);
        QCOMPARE(dialogs.asked().size(), 1);
        QCOMPARE(dialogs.asked().at(0).kind, QStringLiteral("folder"));
        QCOMPARE(dialogs.asked().at(0).title, QStringLiteral("Select Korvi Default Directory"));
        QCOMPARE(form.directoryRow()->CellText(1), QStringLiteral("/new"));
        QCOMPARE(context.SkinDirectory, QStringLiteral("/old"));
        // A cancelled folder dialog changes nothing.
        clickCell(form.pgrSettings, 1, 2);
        QCOMPARE(form.directoryRow()->CellText(1), QStringLiteral("/new"));
    }

    void cancelKeepsTheOldValues()
    {
        SkinContext context;
        context.SkinDirectory = QStringLiteral("/old");
        context.SkinFormat = QStringLiteral("800_480");
        ScriptedDialogs dialogs;
        frmSettings form(context, dialogs);
        form.directoryRow()->setCellText(1, QStringLiteral("/new"));
        form.formatRow()->setCellText(1, QStringLiteral("480_272"));
        QTest::mouseClick(form.cmdCancel, Qt::LeftButton);
        QCOMPARE(form.result(), int(QDialog::Rejected));
        QCOMPARE(context.SkinDirectory, QStringLiteral("/old"));
        QCOMPARE(context.SkinFormat, QStringLiteral("800_480"));
    }

    void okKeepsTheNewValuesAndTheFileGetsThemWhenTheMainWindowCloses()
    {
        QVERIFY(writeTestFile(mProgram->filePath("Settings.ini"), "/old\r\n"));
        clsKorviInterface document;
        SkinContext context;
        ScriptedDialogs dialogs;
        const SettingsFile settings(mProgram->path(), mConfig->path());
        WebLink web(dialogs);
        frmEditor window({ document, context, dialogs, settings, web });
        QCOMPARE(context.SkinDirectory, QStringLiteral("/old"));
        dialogs.answerForm([](QDialog &dialog) {
            auto &form = static_cast<frmSettings &>(dialog);
            form.directoryRow()->setCellText(1, QStringLiteral("/new"));
            form.formatRow()->setCellText(1, QStringLiteral("480_272"));
            QTest::mouseClick(form.cmdOK, Qt::LeftButton);
        });
        window.SettingsCommand();
        QCOMPARE(context.SkinDirectory, QStringLiteral("/new"));
        QCOMPARE(context.SkinFormat, QStringLiteral("480_272"));
        // Not written before the window closes.
        QCOMPARE(readTestFile(mProgram->filePath("Settings.ini")), QByteArray("/old\r\n"));
        window.close();
        QCOMPARE(readTestFile(mProgram->filePath("Settings.ini")), QByteArray("/new\r\n"));
    }

    void aDirectoryGivenForOneRunIsNotWrittenBack()
    {
        QVERIFY(writeTestFile(mProgram->filePath("Settings.ini"), "/saved\r\n"));
        clsKorviInterface document;
        SkinContext context;
        ScriptedDialogs dialogs;
        const SettingsFile settings(mProgram->path(), mConfig->path());
        WebLink web(dialogs);
        frmEditor window({ document, context, dialogs, settings, web });
        window.setRunSkinDirectory(QStringLiteral("/for-this-run"));
        QCOMPARE(context.SkinDirectory, QStringLiteral("/for-this-run"));
        window.close();
        QCOMPARE(readTestFile(mProgram->filePath("Settings.ini")), QByteArray("/saved\r\n"));
    }

private:
    static void clickCell(PowGrid *grid, int row, int column)
    {
        const QPoint centre = grid->cellRect(row, column).center();
        QTest::mousePress(grid, Qt::LeftButton, Qt::NoModifier, centre);
        QTest::mouseRelease(grid, Qt::LeftButton, Qt::NoModifier, centre);
    }

    std::unique_ptr<QTemporaryDir> mProgram;
    std::unique_ptr<QTemporaryDir> mConfig;
};

QTEST_MAIN(TestSettings)
#include "tst_settings.moc"
