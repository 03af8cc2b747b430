// SPDX-License-Identifier: MIT
#include "AtomicFileWriter.h"
#include "TestFiles.h"
#include "UiFileReader.h"
#include "UiFileWriter.h"
#include "clsKorviInterface.h"

#include <QSaveFile>
#include <QTemporaryDir>
#include <QtTest>

namespace {

// Writes half of the file, then fails as a full disk would.
class HalfWayFailingWriter : public UiFileWriter
{
public:
    using UiFileWriter::UiFileWriter;

protected:
    bool writeData(AtomicFileWriter &file, const QByteArray &bytes) override
    {
        file.write(bytes.left(bytes.size() / 2));
        return false;
    }
};

} // namespace

class TestUiWriter : public QObject
{
    Q_OBJECT

private slots:
    void backupOfAFileWithoutADotGoesBesideItsDottedFolder()
    {
        QTemporaryDir dir;
        QVERIFY(QDir(dir.path()).mkdir("skin.old"));
        const QString target = dir.filePath("skin.old/main");
        QVERIFY(writeTestFile(target, "old"));
        QCOMPARE(UiFileWriter::backupPathFor(target), dir.filePath("skin.bak"));
        clsKorviInterface doc;
        QVERIFY(WriteUiFile(doc, target, {}));
        QCOMPARE(readTestFile(dir.filePath("skin.bak")), QByteArray("old"));
        QVERIFY(!QFile::exists(dir.filePath("skin.old/main.bak")));
    }

    void backupKeepsOneGeneration()
    {
        QTemporaryDir dir;
        const QString target = dir.filePath("main.ui");
        QCOMPARE(UiFileWriter::backupPathFor(target), dir.filePath("main.bak"));
        clsKorviInterface doc;
        doc.Layers().Add("first", "layer");
        QVERIFY(WriteUiFile(doc, target, {}));
        QVERIFY(!QFile::exists(dir.filePath("main.bak")));
        const QByteArray firstSave = readTestFile(target);
        doc.Layers().Add("second", "layer");
        QVERIFY(WriteUiFile(doc, target, {}));
        QCOMPARE(readTestFile(dir.filePath("main.bak")), firstSave);
        const QByteArray secondSave = readTestFile(target);
        QVERIFY(WriteUiFile(doc, target, {}));
        QCOMPARE(readTestFile(dir.filePath("main.bak")), secondSave);
    }

    void pathWithoutAnyDotGetsNoBackup()
    {
        QCOMPARE(UiFileWriter::backupPathFor("/skins/main"), QString());
    }

    void documentWithoutHeadersHasNoHeaderBlock()
    {
        clsKorviInterface doc;
        doc.Layers().Add("a", "layer");
        QCOMPARE(UiFileWriter(doc).fileText(), QByteArray("<LAYER a>\r\n"));
    }

    void headerBlockIsFollowedByOneEmptyLine()
    {
        clsKorviInterface doc;
        doc.Headers().Add("", "var")->Properties().Add("version", "2");
        QCOMPARE(UiFileWriter(doc).fileText(),
                 QByteArray("<header>\r\n\t<VAR  version=2>\r\n</header>\r\n\r\n"));
    }

    void layerWithOneChildGetsAClosingTagAndAnEmptyLine()
    {
        clsKorviInterface doc;
        clsElement *layer = doc.Layers().Add("a", "layer");
        layer->SubElements().Add("t", "text")->Properties().Add("x", "1");
        QCOMPARE(UiFileWriter(doc).fileText(),
                 QByteArray("<LAYER a>\r\n\t<TEXT t x=1>\r\n</LAYER>\r\n\r\n"));
    }

    void usedLayerIsWrittenWithoutItsProperties()
    {
        clsKorviInterface doc;
        clsElement *layer = doc.Layers().Add("a", "layer");
        clsElement *used = layer->SubElements().Add("ui_Status", "uselayer");
        used->Properties().Add("z", "3");
        used->SubElements().Add("child", "text");
        QCOMPARE(WriteElements(layer->SubElements(), 0), QByteArray("<USELAYER ui_Status/>"));
    }

    void noValueMarkerIsWrittenAsTheUpperCaseKey()
    {
        clsElements elements;
        clsElement *e = elements.Add("t", "text");
        e->Properties().Add("visible", "<NOV>");
        e->Properties().Add("x", "1");
        QCOMPARE(WriteElements(elements, 0), QByteArray("<TEXT t VISIBLE x=1>"));
    }

    void repeatedKeysAreWrittenUnderTheirPlainName()
    {
        clsElements elements;
        clsElement *e = elements.Add("t", "text");
        e->Properties().Add("x", "1");
        e->Properties().Add("x", "2");
        e->Properties().Add("x", "'3 4'");
        QCOMPARE(WriteElements(elements, 1), QByteArray("\t<TEXT t x=1 x=2 x='3 4'>"));
    }

    void scriptPropertiesAreScriptLines()
    {
        clsElements elements;
        clsElement *script = elements.Add("s", "script");
        script->Properties().Add("ScriptLine", "a = 1");
        script->Properties().Add("flag", "<NOV>");
        script->SubElements().Add("ignored", "text");
        QCOMPARE(WriteElements(elements, 0), QByteArray("<SCRIPT s>\r\n\ta = 1\r\n\t<NOV>\r\n</SCRIPT>\r\n"));
    }

    void importedEntriesAreLeftOut()
    {
        clsKorviInterface doc;
        doc.Templates().Add("shared", "template")->IsImported = true;
        doc.Templates().Add("own", "template");
        QCOMPARE(UiFileWriter(doc).fileText(), QByteArray("<TEMPLATE own>\r\n"));
    }

    void sectionsComeInTheirOrder()
    {
        clsKorviInterface doc;
        doc.Layers().Add("l", "layer");
        doc.Fonts().Add("f", "fonttype");
        doc.Templates().Add("t", "template");
        QCOMPARE(UiFileWriter(doc).fileText(),
                 QByteArray("<TEMPLATE t>\r\n<FONTTYPE f>\r\n<LAYER l>\r\n"));
    }

    void savedFileReadsBackIntoTheSameDocument()
    {
        const QByteArray text = "<header>\r\n<VAR  version=2>\r\n</header>\r\n<TEMPLATE tmp bmp=b.bmp>\r\n"
                                "<LAYER ui_Main x=0>\r\n<TEXT t template=tmp text=\"Main menu\" visible>\r\n"
                                "</LAYER>\r\n";
        clsKorviInterface doc;
        UiFileReader(doc, false).readBytes(text, "a.ui");
        const QByteArray once = UiFileWriter(doc).fileText();
        clsKorviInterface again;
        UiFileReader(again, false).readBytes(once, "b.ui");
        QCOMPARE(UiFileWriter(again).fileText(), once);
    }

    void folderThatCannotBeWrittenGivesTheError()
    {
        clsKorviInterface doc;
        doc.Layers().Add("a", "layer");
        QString message;
        // Nobody, not even the superuser, can make a file in a process folder.
        const QString target = QStringLiteral("/proc/self/korvi-test.ui");
        QVERIFY(!WriteUiFile(doc, target, [&](const QString &m) { message = m; }));
        QVERIFY2(message.startsWith(QLatin1String("Error saving file: ")), qPrintable(message));
        QVERIFY(message.size() > QStringLiteral("Error saving file: ").size());
        QVERIFY(!QFile::exists(target));
    }

    void failedReplaceLeavesTheOldEntryAndNoTemporaryFile()
    {
        QTemporaryDir dir;
        // The target name is taken by a folder, so the finished file cannot
        // replace it.
        QVERIFY(QDir(dir.path()).mkdir("main.ui"));
        clsKorviInterface doc;
        doc.Layers().Add("a", "layer");
        QString message;
        QVERIFY(!WriteUiFile(doc, dir.filePath("main.ui"), [&](const QString &m) { message = m; }));
        QVERIFY(message.startsWith(QLatin1String("Error saving file: ")));
        QCOMPARE(QDir(dir.path()).entryList(QDir::AllEntries | QDir::NoDotAndDotDot | QDir::Hidden),
                 QStringList { "main.ui" });
    }

    void oldContentSurvivesAFailureHalfWay()
    {
        QTemporaryDir dir;
        const QString target = dir.filePath("main.ui");
        QVERIFY(writeTestFile(target, "<LAYER old>\r\n"));
        clsKorviInterface doc;
        for (int i = 0; i < 100; ++i)
            doc.Layers().Add("layer" + QByteArray::number(i), "layer");
        QString message;
        HalfWayFailingWriter writer(doc);
        QVERIFY(!writer.write(target, [&](const QString &m) { message = m; }));
        QVERIFY(message.startsWith(QLatin1String("Error saving file: ")));
        QCOMPARE(readTestFile(target), QByteArray("<LAYER old>\r\n"));
        // The backup made before the failure stays; no temporary file is left.
        QCOMPARE(readTestFile(dir.filePath("main.bak")), QByteArray("<LAYER old>\r\n"));
        QCOMPARE(QDir(dir.path()).entryList(QDir::AllEntries | QDir::NoDotAndDotDot | QDir::Hidden),
                 (QStringList { "main.bak", "main.ui" }));
    }

    void savingLeavesTheDocumentUnchanged()
    {
        QTemporaryDir dir;
        clsKorviInterface doc;
        doc.Templates().Add("shared", "template")->IsImported = true;
        doc.Layers().Add("a", "layer")->Properties().Add("x", "1");
        QVERIFY(WriteUiFile(doc, dir.filePath("x.ui"), {}));
        QCOMPARE(doc.Templates().Count(), 1);
        QCOMPARE(doc.Layers().Item("a")->Properties().Item("x").value(), QByteArray("1"));
    }
};

QTEST_GUILESS_MAIN(TestUiWriter)
#include "tst_uiwriter.moc"
