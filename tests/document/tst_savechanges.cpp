// SPDX-License-Identifier: MIT
#include "CorpusCases.h"
#include "FailingDevice.h"
#include "SaveChanges.h"
#include "SkinBackup.h"
#include "SkinLoader.h"
#include "SkinReadError.h"
#include "TestFiles.h"
#include "UiFileReader.h"
#include "UiFileWriter.h"
#include "clsKorviInterface.h"

#include <QDir>
#include <QDirIterator>
#include <QTemporaryDir>
#include <QtTest>

#ifdef Q_OS_WIN
#include <qt_windows.h>
#endif

// Save Changes writes each changed file back as its own bytes with exactly the
// changed parts rewritten, and touches nothing else.
namespace {

// A second way to reach the file `target`, the one a user of the host makes
// without special rights: a symbolic link on Unix; on Windows, where those
// need an administrator (and Wine does not make them), a hard link.
bool linkToFile(const QString &target, const QString &link)
{
#ifdef Q_OS_WIN
    return CreateHardLinkW(reinterpret_cast<const wchar_t *>(QDir::toNativeSeparators(link).utf16()),
                           reinterpret_cast<const wchar_t *>(QDir::toNativeSeparators(target).utf16()), nullptr)
        != 0;
#else
    return QFile::link(target, link);
#endif
}

// The lines of the two texts that differ, as "old -> new", cut at LF.
QStringList changedLines(const QByteArray &before, const QByteArray &after)
{
    const QList<QByteArray> a = before.split('\n');
    const QList<QByteArray> b = after.split('\n');
    QStringList changed;
    if (a.size() != b.size())
        return { QStringLiteral("%1 lines became %2").arg(a.size()).arg(b.size()) };
    for (int i = 0; i < a.size(); ++i) {
        if (a.at(i) != b.at(i))
            changed << QString::fromLatin1(a.at(i) + " -> " + b.at(i));
    }
    return changed;
}

// One skin file in a folder of its own, read the way the editor reads it.
struct OneFile
{
    QTemporaryDir dir;
    QString path;
    clsKorviInterface doc;

    explicit OneFile(const QByteArray &bytes, const QString &name = QStringLiteral("main.ui"))
    {
        path = dir.filePath(name);
        QVERIFY(writeTestFile(path, bytes));
        try {
            ReadUiFile(doc, path, false);
        } catch (const SkinReadError &) {
        }
    }
    clsElement *element(const char *layer, const char *child = nullptr)
    {
        clsElement *l = doc.Layers().Item(layer);
        return child ? l->SubElements().Item(child) : l;
    }
    SaveChanges::Result save(bool overwrite = false)
    {
        SaveChanges saver(doc);
        saver.setFileForNewElements(path);
        return saver.save([overwrite](const QString &) { return overwrite; });
    }
    QByteArray bytes() const { return readTestFile(path); }
    // What reading the file again gives for one element's properties.
    QByteArray reread(const char *layer, const char *child) const
    {
        clsKorviInterface again;
        ReadUiFile(again, path, false);
        const clsElement *e = again.Layers().Item(layer);
        if (child)
            e = e->SubElements().Item(child);
        QByteArray out;
        for (const clsProperty p : e->Properties())
            out += p.Key() + '=' + p.value() + ';';
        return out;
    }
};

const QByteArray kSkin = "<LAYER ui_Main x=0 y=0>\r\n"
                         "\t<TEXT txtTitle x=10 y=20 text=\"Main menu\" visible>\r\n"
                         "\t; a comment the reader passes over\r\n"
                         "\t<BUTTON btnMap x=70  y=80 text=Map>\r\n"
                         "\t<TEMPLATE tmpInside bmp=a.bmp>\r\n"
                         "\t<BUTTON btnGone x=1 y=2>\r\n"
                         "</LAYER>\r\n"
                         "\r\n"
                         "<LAYER ui_Other>\r\n"
                         "\t<USELAYER ui_Main/>\r\n"
                         "</LAYER>\r\n";

} // namespace

class TestSaveChanges : public QObject
{
    Q_OBJECT

private slots:
    void noEditLeavesTheFileUntouched()
    {
        OneFile f(kSkin);
        const QDateTime stamp = QFileInfo(f.path).lastModified();
        QTest::qWait(20);
        QVERIFY(SaveChanges(f.doc).pending().empty());
        const SaveChanges::Result result = f.save();
        QCOMPARE(result.outcome, SaveChanges::Result::Outcome::NothingToSave);
        QVERIFY(result.written.isEmpty());
        QCOMPARE(f.bytes(), kSkin);
        QCOMPARE(QFileInfo(f.path).lastModified(), stamp);
        QVERIFY(!QFile::exists(SkinBackup::pathFor(f.path)));
    }

    void oneValueChangedChangesOneLine()
    {
        OneFile f(kSkin);
        f.element("ui_Main", "btnMap")->Properties().setValue("x", "75");
        const SaveChanges::Result result = f.save();
        QCOMPARE(result.outcome, SaveChanges::Result::Outcome::Saved);
        QCOMPARE(changedLines(kSkin, f.bytes()),
                 QStringList { "\t<BUTTON btnMap x=70  y=80 text=Map>\r -> \t<BUTTON btnMap x=75  y=80 text=Map>\r" });
        // One backup, of the file as it was.
        QCOMPARE(readTestFile(SkinBackup::pathFor(f.path)), kSkin);
    }

    void oneSaveFindsTheChangesOnce()
    {
        OneFile f(kSkin);
        f.element("ui_Main", "btnMap")->Properties().setValue("x", "75");
        SaveChanges saver(f.doc);
        saver.setFileForNewElements(f.path);
        QCOMPARE(SaveChanges::summary(saver.plan()), QStringLiteral("1 change in 1 file"));
        QCOMPARE(saver.save([](const QString &) { return false; }).outcome, SaveChanges::Result::Outcome::Saved);
        QCOMPARE(saver.finderRuns(), 1);
        // The written file holds the change: asked again, nothing is pending.
        QVERIFY(saver.pending().empty());
        QCOMPARE(saver.finderRuns(), 2);
    }

    void valueSetBackToWhatItWasIsNoChange()
    {
        OneFile f(kSkin);
        clsProperties &properties = f.element("ui_Main", "btnMap")->Properties();
        properties.setValue("x", "75");
        QCOMPARE(SaveChanges::summary(SaveChanges(f.doc).pending()), QStringLiteral("1 change in 1 file"));
        properties.setValue("x", "70");
        QVERIFY(SaveChanges(f.doc).pending().empty());
        QCOMPARE(f.save().outcome, SaveChanges::Result::Outcome::NothingToSave);
    }

    void countsChangesAndFiles()
    {
        OneFile f(kSkin);
        f.element("ui_Main", "btnMap")->Properties().setValue("x", "75");
        f.element("ui_Main", "txtTitle")->Properties().Remove("visible");
        f.element("ui_Main")->SubElements().Remove("btnGone");
        QCOMPARE(SaveChanges::summary(SaveChanges(f.doc).pending()), QStringLiteral("3 changes in 1 file"));
    }

    void valueThatNeedsQuotesIsWrittenAsStored()
    {
        OneFile f(kSkin);
        f.element("ui_Main", "btnMap")->Properties().setValue("text", "\"Go home now\"");
        QCOMPARE(f.save().outcome, SaveChanges::Result::Outcome::Saved);
        QCOMPARE(f.reread("ui_Main", "btnMap"), QByteArray("x=70;y=80;text=\"Go home now\";"));
    }

    void valueThatDoesNotReadBackIsRefusedAndNothingWritten()
    {
        OneFile f(kSkin);
        f.element("ui_Main", "btnMap")->Properties().setValue("text", "Go home");
        const SaveChanges::Result result = f.save();
        QCOMPARE(result.outcome, SaveChanges::Result::Outcome::Failed);
        QVERIFY2(result.error.contains(QStringLiteral("does not read back")), qPrintable(result.error));
        QCOMPARE(f.bytes(), kSkin);
    }

    void removedPropertyTakesOneBlankBeforeIt()
    {
        OneFile f(kSkin);
        f.element("ui_Main", "txtTitle")->Properties().Remove("text");
        QCOMPARE(f.save().outcome, SaveChanges::Result::Outcome::Saved);
        QCOMPARE(changedLines(kSkin, f.bytes()),
                 QStringList { "\t<TEXT txtTitle x=10 y=20 text=\"Main menu\" visible>\r -> \t<TEXT txtTitle x=10 y=20 visible>\r" });
    }

    void flagBecomesAValueAndBack()
    {
        OneFile f(kSkin);
        f.element("ui_Main", "txtTitle")->Properties().setValue("visible", "1");
        f.element("ui_Main", "btnMap")->Properties().setValue("text", clsProperty::noValue());
        QCOMPARE(f.save().outcome, SaveChanges::Result::Outcome::Saved);
        QCOMPARE(changedLines(kSkin, f.bytes()),
                 (QStringList { "\t<TEXT txtTitle x=10 y=20 text=\"Main menu\" visible>\r -> \t<TEXT txtTitle x=10 y=20 text=\"Main menu\" visible=1>\r",
                                "\t<BUTTON btnMap x=70  y=80 text=Map>\r -> \t<BUTTON btnMap x=70  y=80 text>\r" }));
    }

    void elementRemovedFromALayerThatHoldsATemplateLineKeepsTheTemplateLine()
    {
        OneFile f(kSkin);
        f.element("ui_Main")->SubElements().Remove("btnGone");
        f.element("ui_Main")->SubElements().Remove("btnMap");
        QCOMPARE(f.save().outcome, SaveChanges::Result::Outcome::Saved);
        QByteArray expected = kSkin;
        expected.replace("\t<BUTTON btnMap x=70  y=80 text=Map>\r\n", "");
        expected.replace("\t<BUTTON btnGone x=1 y=2>\r\n", "");
        QCOMPARE(f.bytes(), expected);
        QVERIFY(f.bytes().contains("<TEMPLATE tmpInside"));
    }

    void removedLayerTakesItsChildrenAndClosingTag()
    {
        OneFile f(kSkin);
        f.doc.Layers().Remove("ui_Other");
        QCOMPARE(SaveChanges::summary(SaveChanges(f.doc).pending()), QStringLiteral("1 change in 1 file"));
        QCOMPARE(f.save().outcome, SaveChanges::Result::Outcome::Saved);
        QCOMPARE(f.bytes(), kSkin.left(kSkin.indexOf("<LAYER ui_Other>")));
    }

    void addedPropertyOnAUsedLayerTag()
    {
        OneFile f("<LAYER a>\n<USELAYER x/>\n</LAYER>\n");
        f.element("a", "x")->Properties().Add("z", "5");
        QCOMPARE(f.save().outcome, SaveChanges::Result::Outcome::Saved);
        QCOMPARE(f.bytes(), QByteArray("<LAYER a>\n<USELAYER x z=5 />\n</LAYER>\n"));
        QCOMPARE(f.reread("a", "x"), QByteArray("z=5;"));
    }

    void addedPropertyOnALineWithTwoTags()
    {
        OneFile f("<LAYER l>\n<a b><c d>\n</LAYER>\n");
        f.element("l", "b")->Properties().Add("k", "v");
        QCOMPARE(f.save().outcome, SaveChanges::Result::Outcome::Saved);
        QCOMPARE(f.bytes(), QByteArray("<LAYER l>\n<a b k=v><c d>\n</LAYER>\n"));
    }

    void addedPropertyOnATagLineWithoutClosingBracket()
    {
        OneFile f("<LAYER l>\n\t<TEXT t x=1  \n</LAYER>\n");
        f.element("l", "t")->Properties().Add("y", "2");
        f.element("l", "t")->Properties().Add("visible", clsProperty::noValue());
        QCOMPARE(f.save().outcome, SaveChanges::Result::Outcome::Saved);
        QCOMPARE(f.bytes(), QByteArray("<LAYER l>\n\t<TEXT t x=1 y=2 visible  \n</LAYER>\n"));
        QCOMPARE(f.reread("l", "t"), QByteArray("x=1;y=2;visible=<NOV>;"));
    }

    void addedPropertyAfterAQuotedValueSpanningLines()
    {
        const QByteArray text = "<LAYER l>\r\n\t<TEXT t text='two\r\nlines'>\r\n</LAYER>\r\n";
        OneFile f(text);
        f.element("l", "t")->Properties().Add("x", "3");
        QCOMPARE(f.save().outcome, SaveChanges::Result::Outcome::Saved);
        QCOMPARE(f.bytes(), QByteArray("<LAYER l>\r\n\t<TEXT t text='two\r\nlines' x=3>\r\n</LAYER>\r\n"));
        QCOMPARE(f.reread("l", "t"), QByteArray("text='two\rlines';x=3;"));
    }

    void changedValueSpanningLinesIsReplacedWhole()
    {
        const QByteArray text = "<LAYER l>\n\t<TEXT t text='two\nlines' x=1>\n</LAYER>\n";
        OneFile f(text);
        f.element("l", "t")->Properties().setValue("text", "one");
        QCOMPARE(f.save().outcome, SaveChanges::Result::Outcome::Saved);
        QCOMPARE(f.bytes(), QByteArray("<LAYER l>\n\t<TEXT t text=one x=1>\n</LAYER>\n"));
    }

    void newLinesUseTheFilesOwnLineEnd_data()
    {
        QTest::addColumn<QByteArray>("lineEnd");
        QTest::newRow("CR LF") << QByteArray("\r\n");
        QTest::newRow("LF") << QByteArray("\n");
        QTest::newRow("CR") << QByteArray("\r");
    }
    void newLinesUseTheFilesOwnLineEnd()
    {
        QFETCH(QByteArray, lineEnd);
        const QByteArray e = lineEnd;
        const QByteArray text = "<LAYER l>" + e + "\t<TEXT a x=1>" + e + "\t<TEXT b x=2>" + e + "</LAYER>" + e
            + "<SCRIPT s>" + e + "  go 1" + e + "</SCRIPT>" + e;
        OneFile f(text);
        clsElement *added = f.element("l")->SubElements().Add("c", "TEXT");
        added->Properties().Add("x", "3");
        f.element("l", "a")->Properties().setValue("x", "9");
        f.element("s")->Properties().Add("ScriptLine", "go 2");
        QCOMPARE(f.save().outcome, SaveChanges::Result::Outcome::Saved);
        const QByteArray expected = "<LAYER l>" + e + "\t<TEXT a x=9>" + e + "\t<TEXT b x=2>" + e + "\t<TEXT c x=3>" + e
            + "</LAYER>" + e + "<SCRIPT s>" + e + "  go 1" + e + "  go 2" + e + "</SCRIPT>" + e;
        QCOMPARE(f.bytes(), expected);
    }

    void addedElementGoesAfterTheLastLineOfItsBlock()
    {
        OneFile f("<LAYER l>\n    <TEXT a>\n    <TEMPLATE t>\n<LAYER m>\n");
        f.element("l")->SubElements().Add("b", "BUTTON")->Properties().Add("x", "1");
        QCOMPARE(f.save().outcome, SaveChanges::Result::Outcome::Saved);
        QCOMPARE(f.bytes(), QByteArray("<LAYER l>\n    <TEXT a>\n    <BUTTON b x=1>\n    <TEMPLATE t>\n<LAYER m>\n"));
    }

    void elementInsertedBetweenSiblingsGoesRightAfterThePreviousOne()
    {
        OneFile f(kSkin);
        clsElements &objects = f.element("ui_Main")->SubElements();
        objects.Add("btnNew", "BUTTON")->Properties().Add("x", "5");
        objects.Insert(1, objects.Take(objects.Count() - 1));
        QCOMPARE(SaveChanges::summary(SaveChanges(f.doc).pending()), QStringLiteral("1 change in 1 file"));
        QCOMPARE(f.save().outcome, SaveChanges::Result::Outcome::Saved);
        QByteArray expected = kSkin;
        expected.insert(expected.indexOf("\t; a comment"), "\t<BUTTON btnNew x=5>\r\n");
        QCOMPARE(f.bytes(), expected);
    }

    void elementInsertedFirstGoesAtTheStartOfItsBlock()
    {
        OneFile f(kSkin);
        clsElements &objects = f.element("ui_Main")->SubElements();
        objects.Add("btnNew", "BUTTON")->Properties().Add("x", "5");
        objects.Insert(0, objects.Take(objects.Count() - 1));
        QCOMPARE(f.save().outcome, SaveChanges::Result::Outcome::Saved);
        QByteArray expected = kSkin;
        expected.insert(expected.indexOf("\t<TEXT txtTitle"), "\t<BUTTON btnNew x=5>\r\n");
        QCOMPARE(f.bytes(), expected);
    }

    void layerInsertedBetweenLayersGoesAfterTheClosingTagOfThePreviousOne()
    {
        OneFile f(kSkin);
        clsElements &layers = f.doc.Layers();
        layers.Add("ui_New", "LAYER")->SubElements().Add("t", "TEXT");
        layers.Insert(1, layers.Take(layers.Count() - 1));
        QCOMPARE(f.save().outcome, SaveChanges::Result::Outcome::Saved);
        QByteArray expected = kSkin;
        expected.insert(expected.indexOf("\r\n\r\n<LAYER ui_Other") + 2, "<LAYER ui_New>\r\n\t<TEXT t>\r\n</LAYER>\r\n");
        QCOMPARE(f.bytes(), expected);
    }

    void reorderedSiblingsAreAChangeAndMoveWithTheirOwnLines()
    {
        OneFile f(kSkin);
        clsElements &objects = f.element("ui_Main")->SubElements();
        objects.Insert(0, objects.Take(1));
        const std::vector<SaveChanges::Pending> pending = SaveChanges(f.doc).pending();
        QCOMPARE(SaveChanges::summary(pending), QStringLiteral("1 change in 1 file"));
        QCOMPARE(f.save().outcome, SaveChanges::Result::Outcome::Saved);
        // The line goes as it was written, its two blanks included.
        const QByteArray line = "\t<BUTTON btnMap x=70  y=80 text=Map>\r\n";
        QByteArray expected = kSkin;
        expected.remove(expected.indexOf(line), line.size());
        expected.insert(expected.indexOf("\t<TEXT txtTitle"), line);
        QCOMPARE(f.bytes(), expected);
        clsKorviInterface again;
        ReadUiFile(again, f.path, false);
        const clsElements &read = again.Layers().Item("ui_Main")->SubElements();
        QCOMPARE(read.at(0)->strName(), QByteArray("btnMap"));
        QCOMPARE(read.at(1)->strName(), QByteArray("txtTitle"));
        QVERIFY(SaveChanges(f.doc).pending().empty());
    }

    void aMovedBlockKeepsItsLinesByteForByte()
    {
        const QByteArray a = "<Layer a X=1  Bold>\n"
                             "   <text T1 Y=2>\n"
                             "   <SCRIPT s>\n"
                             "      go  on\n"
                             "   </script>\n"
                             "</layer>\n";
        const QByteArray b = "<LAYER b>\n"
                             "\t<TEXT v>\n"
                             "</LAYER>";
        OneFile f(a + b);
        clsElements &layers = f.doc.Layers();
        layers.Insert(0, layers.Take(1));
        const SaveChanges::Result result = f.save();
        QVERIFY2(result.ok(), qPrintable(result.error));
        // Whichever of the two is taken as the one that moved, each keeps its
        // spelling, and the last line gains the line end it lacked.
        const QByteArray written = f.bytes();
        QVERIFY2(written == b + "\n" + a || written == "\n" + b + "\n" + a.chopped(1), written.constData());
        clsKorviInterface again;
        ReadUiFile(again, f.path, false);
        QCOMPARE(again.Layers().at(0)->strName(), QByteArray("b"));
        QCOMPARE(again.Layers().at(1)->SubElements().at(1)->Properties().Count(), 1);
        QVERIFY(SaveChanges(f.doc).pending().empty());
    }

    void aMovedBlockWhoseTagChangedKeepsItsChildrensLines()
    {
        OneFile f("<LAYER a  X=1>\n\t<TEXT t  x=1>\n</layer>\n<LAYER b>\n</LAYER>\n<LAYER c>\n</LAYER>\n");
        f.element("a")->Properties().setValue("x", "2");
        clsElements &layers = f.doc.Layers();
        layers.Insert(2, layers.Take(0));
        const SaveChanges::Result result = f.save();
        QVERIFY2(result.ok(), qPrintable(result.error));
        QCOMPARE(f.bytes(), QByteArray("<LAYER b>\n</LAYER>\n<LAYER c>\n</LAYER>\n"
                                       "<LAYER a x=2>\n\t<TEXT t  x=1>\n</LAYER>\n"));
    }

    void ofTwoSwappedBlocksTheOneThatOnlyMovedTakesItsLines()
    {
        // The user moved a; b lost a child, so its lines cannot all go along:
        // b stays where it is, as it was spelled, and a goes.
        OneFile f("<LAYER a>\n\t<TEXT t>\n</LAYER>\n<LAYER b  X=1>\n\t<TEXT u>\n\t<TEXT v>\n</LAYER>\n");
        f.element("b")->SubElements().Take(1);
        clsElements &layers = f.doc.Layers();
        layers.Insert(1, layers.Take(0));
        const SaveChanges::Result result = f.save();
        QVERIFY2(result.ok(), qPrintable(result.error));
        QCOMPARE(f.bytes(), QByteArray("<LAYER b  X=1>\n\t<TEXT u>\n</LAYER>\n<LAYER a>\n\t<TEXT t>\n</LAYER>\n"));
        // And the other way round.
        OneFile g("<LAYER a  X=1>\n\t<TEXT t>\n\t<TEXT w>\n</LAYER>\n<LAYER b>\n\t<TEXT u>\n</LAYER>\n");
        g.element("a")->SubElements().Take(1);
        clsElements &others = g.doc.Layers();
        others.Insert(0, others.Take(1));
        QVERIFY(g.save().ok());
        QCOMPARE(g.bytes(), QByteArray("<LAYER b>\n\t<TEXT u>\n</LAYER>\n<LAYER a  X=1>\n\t<TEXT t>\n</LAYER>\n"));
    }

    void aMovedElementThatWasAlsoEditedIsWrittenAnew()
    {
        OneFile f("<LAYER a>\n\t<TEXT t  x=1>\n\t<TEXT u>\n\t<TEXT w>\n</LAYER>\n");
        clsElements &objects = f.element("a")->SubElements();
        objects.Insert(2, objects.Take(0));
        f.element("a", "t")->Properties().setValue("x", "2");
        QCOMPARE(f.save().outcome, SaveChanges::Result::Outcome::Saved);
        const QByteArray written = f.bytes();
        QVERIFY2(written.contains("<TEXT t x=2>"), written.constData());
        QVERIFY(written.indexOf("<TEXT w>") < written.indexOf("<TEXT t"));
    }

    void aMovedBlockThatChangedKeepsTheLinesOfWhatDidNot()
    {
        // Both blocks changed inside; whichever of them is taken as moved,
        // the tags, and the objects no edit touched, keep their spelling.
        OneFile f("<LAYER a  X=1>\n\t<TEXT t  x=1>\n\t<TEXT u>\n</LAYER>\n"
                  "<LAYER b  Y=2>\n\t<TEXT v  y=3>\n\t<TEXT w>\n</LAYER>\n");
        f.element("a")->SubElements().Take(1);
        f.element("b", "w")->Properties().Add("x", "5");
        clsElements &layers = f.doc.Layers();
        layers.Insert(0, layers.Take(1));
        const SaveChanges::Result result = f.save();
        QVERIFY2(result.ok(), qPrintable(result.error));
        QCOMPARE(f.bytes(), QByteArray("<LAYER b  Y=2>\n\t<TEXT v  y=3>\n\t<TEXT w x=5>\n</LAYER>\n"
                                       "<LAYER a  X=1>\n\t<TEXT t  x=1>\n</LAYER>\n"));
        QVERIFY(SaveChanges(f.doc).pending().empty());
    }

    void theLastBlockOfAFileWithoutALastLineEndCanBeRemoved()
    {
        OneFile f("<LAYER a>\n</LAYER>\n<LAYER b>\n\t<TEXT v>\n</LAYER>");
        f.doc.Layers().Take(1);
        const SaveChanges::Result result = f.save();
        QVERIFY2(result.ok(), qPrintable(result.error));
        QCOMPARE(f.bytes(), QByteArray("<LAYER a>\n</LAYER>\n"));
    }

    void reorderedLayersAreAChange()
    {
        OneFile f(kSkin);
        clsElements &layers = f.doc.Layers();
        layers.Insert(0, layers.Take(1));
        QVERIFY(!SaveChanges(f.doc).pending().empty());
        QCOMPARE(f.save().outcome, SaveChanges::Result::Outcome::Saved);
        QVERIFY(f.bytes().indexOf("<LAYER ui_Other") < f.bytes().indexOf("<LAYER ui_Main"));
        clsKorviInterface again;
        ReadUiFile(again, f.path, false);
        QCOMPARE(again.Layers().at(0)->strName(), QByteArray("ui_Other"));
        QCOMPARE(again.Layers().at(1)->SubElements().Count(), 3);
    }

    void objectMovedToAnotherLayerLeavesItsOldPlace()
    {
        OneFile f("<LAYER a>\n\t<TEXT t x=1>\n\t<TEXT u>\n</LAYER>\n<LAYER b>\n\t<TEXT v>\n</LAYER>\n");
        std::unique_ptr<clsElement> moved = f.element("a")->SubElements().Take(0);
        f.element("b")->SubElements().Insert(1, std::move(moved));
        QCOMPARE(f.save().outcome, SaveChanges::Result::Outcome::Saved);
        QCOMPARE(f.bytes(), QByteArray("<LAYER a>\n\t<TEXT u>\n</LAYER>\n<LAYER b>\n\t<TEXT v>\n\t<TEXT t x=1>\n</LAYER>\n"));
    }

    void wholeDocumentWrittenElsewhereIsTheOnlyFileWrittenAfterwards()
    {
        const QByteArray text = "<LAYER ui_Main>\r\n\t<BUTTON btnHome x=1 y=2>\r\n</LAYER>\r\n";
        OneFile f(text);
        const QString copy = f.dir.filePath(QStringLiteral("copy.ui"));
        QVERIFY(WriteUiFile(f.doc, copy, [](const QString &) {}));
        SaveChanges saver(f.doc);
        QVERIFY(saver.takeWholeDocumentAt(copy));
        QCOMPARE(saver.filesOfWrittenElements(), 1);
        const QByteArray written = readTestFile(copy);
        f.element("ui_Main", "btnHome")->Properties().setValue("x", "75");
        saver.setFileForNewElements(copy);
        const std::vector<SaveChanges::Pending> pending = saver.pending();
        QCOMPARE(int(pending.size()), 1);
        QCOMPARE(QFileInfo(pending.front().path), QFileInfo(copy));
        QVERIFY(saver.save({}).ok());
        QCOMPARE(f.bytes(), text);
        QCOMPARE(readTestFile(copy), QByteArray(written).replace("x=1", "x=75"));
    }

    void addedLayerIsAppendedToTheOpenedFile()
    {
        OneFile f("<LAYER l>\r\n</LAYER>");
        clsElement *layer = f.doc.Layers().Add("ui_New", "LAYER");
        layer->Properties().Add("z", "1");
        layer->SubElements().Add("t", "TEXT")->Properties().Add("text", "\"a b\"");
        const SaveChanges::Result saved = f.save();
        QVERIFY2(saved.ok(), qPrintable(saved.error));
        QCOMPARE(f.bytes(), QByteArray("<LAYER l>\r\n</LAYER>\r\n<LAYER ui_New z=1>\r\n\t<TEXT t text=\"a b\">\r\n</LAYER>\r\n"));
        // A second save finds nothing more to do: the file is now the source.
        QVERIFY(SaveChanges(f.doc).pending().empty());
    }

    void removedScriptTakesItsLinesAndClosingTag()
    {
        const QByteArray text = "<LAYER l>\n\t<SCRIPT s>\n\t\ta = 1\n\t</SCRIPT>\n\t<TEXT t>\n</LAYER>\n";
        OneFile f(text);
        f.element("l")->SubElements().Remove("s");
        QCOMPARE(f.save().outcome, SaveChanges::Result::Outcome::Saved);
        QCOMPARE(f.bytes(), QByteArray("<LAYER l>\n\t<TEXT t>\n</LAYER>\n"));
    }

    void secondSaveComparesWithTheFileAsWritten()
    {
        OneFile f(kSkin);
        f.element("ui_Main", "btnMap")->Properties().setValue("x", "75");
        QCOMPARE(f.save().outcome, SaveChanges::Result::Outcome::Saved);
        const QByteArray first = f.bytes();
        f.element("ui_Main", "btnMap")->Properties().setValue("y", "85");
        f.element("ui_Main", "btnMap")->Properties().Add("z", "2");
        QCOMPARE(f.save().outcome, SaveChanges::Result::Outcome::Saved);
        QCOMPARE(changedLines(first, f.bytes()),
                 QStringList { "\t<BUTTON btnMap x=75  y=80 text=Map>\r -> \t<BUTTON btnMap x=75  y=85 text=Map z=2>\r" });
        QCOMPARE(readTestFile(SkinBackup::pathFor(f.path)), first);
    }

    void wholeDocumentWrittenOverTheFileIsWhatTheNextSaveStartsFrom()
    {
        OneFile f(kSkin);
        f.element("ui_Main", "btnMap")->Properties().setValue("x", "75");
        QVERIFY(WriteUiFile(f.doc, f.path, [](const QString &message) { QFAIL(qPrintable(message)); }));
        const QByteArray written = f.bytes();
        QVERIFY(written != kSkin);
        SaveChanges saver(f.doc);
        saver.setFileForNewElements(f.path);
        QVERIFY(saver.takeWholeFileWritten(f.path));
        QCOMPARE(f.doc.Sources().file(f.doc.Sources().numberOf(f.path))->bytes(), written);
        QVERIFY(saver.pending().empty());

        f.element("ui_Main", "btnMap")->Properties().setValue("y", "85");
        f.element("ui_Main")->SubElements().Add("txtNew", "TEXT")->Properties().Add("x", "1");
        bool asked = false;
        const SaveChanges::Result result = saver.save([&asked](const QString &) { return asked = true; });
        QCOMPARE(result.outcome, SaveChanges::Result::Outcome::Saved);
        QVERIFY(!asked);
        QByteArray expected = written;
        expected.replace("x=75 y=80", "x=75 y=85");
        expected.replace("btnGone x=1 y=2>\r\n", "btnGone x=1 y=2>\r\n\t<TEXT txtNew x=1>\r\n");
        QCOMPARE(f.bytes(), expected);
        QCOMPARE(f.reread("ui_Main", "txtNew"), QByteArray("x=1;"));
    }

    void wholeDocumentWrittenOverAnotherFileChangesNothingKept()
    {
        OneFile f(kSkin);
        const QString other = f.dir.filePath(QStringLiteral("other.ui"));
        QVERIFY(WriteUiFile(f.doc, other, [](const QString &message) { QFAIL(qPrintable(message)); }));
        QVERIFY(SaveChanges(f.doc).takeWholeFileWritten(other));
        QCOMPARE(f.doc.Sources().count(), 1);
        QCOMPARE(f.doc.Sources().file(1)->bytes(), kSkin);
    }

    void progressCountsEveryFileWritten()
    {
        QTemporaryDir dir;
        clsKorviInterface doc;
        for (int i = 0; i < 12; ++i) {
            const QString path = dir.filePath(QStringLiteral("part%1.ui").arg(i));
            QVERIFY(writeTestFile(path, QStringLiteral("<LAYER ui_P%1>\n\t<TEXT t x=1>\n</LAYER>\n").arg(i).toLatin1()));
            ReadUiFile(doc, path, false);
            doc.Layers().at(i)->SubElements().at(0)->Properties().setValue("x", "2");
        }
        QList<QPair<int, int>> steps;
        const SaveChanges::Result result = SaveChanges(doc).save({}, [&steps](int written, int total) { steps << qMakePair(written, total); });
        QCOMPARE(result.outcome, SaveChanges::Result::Outcome::Saved);
        QCOMPARE(result.written.size(), 12);
        QCOMPARE(steps.size(), 13);
        for (int i = 0; i <= 12; ++i)
            QCOMPARE(steps.at(i), qMakePair(i, 12));
        QVERIFY(readTestFile(dir.filePath(QStringLiteral("part11.ui"))).contains("x=2"));
    }

    void aFileReachedThroughALinkKeepsItsOldBytesInTheBackup()
    {
        QTemporaryDir dir;
        const QString real = dir.filePath(QStringLiteral("real.ui"));
        const QString linked = dir.filePath(QStringLiteral("main.ui"));
        QVERIFY(writeTestFile(real, kSkin));
        QVERIFY(linkToFile(real, linked));
        QCOMPARE(readTestFile(linked), kSkin);
        clsKorviInterface doc;
        ReadUiFile(doc, linked, false);
        doc.Layers().Item("ui_Main")->SubElements().Item("btnMap")->Properties().setValue("x", "75");
        QCOMPARE(SaveChanges(doc).save({}).outcome, SaveChanges::Result::Outcome::Saved);
        QVERIFY(readTestFile(linked).contains("btnMap x=75"));
        QCOMPARE(readTestFile(SkinBackup::pathFor(linked)), kSkin);
    }

    void elementPutBackAfterASaveIsWrittenAsNew()
    {
        OneFile f(kSkin);
        std::unique_ptr<clsElement> taken = f.element("ui_Main")->SubElements().Take(2);
        QCOMPARE(taken->strName(), QByteArray("btnGone"));
        QCOMPARE(f.save().outcome, SaveChanges::Result::Outcome::Saved);
        QVERIFY(!f.bytes().contains("btnGone"));
        // An undo puts the very element back, holding where it stood in the
        // file as it was before the save.
        f.element("ui_Main")->SubElements().Insert(2, std::move(taken));
        QCOMPARE(f.save().outcome, SaveChanges::Result::Outcome::Saved);
        // It goes right after the element before it.
        QByteArray expected = kSkin;
        expected.remove(expected.indexOf("\t<BUTTON btnGone"), QByteArray("\t<BUTTON btnGone x=1 y=2>\r\n").size());
        expected.insert(expected.indexOf("\t<TEMPLATE tmpInside"), "\t<BUTTON btnGone x=1 y=2>\r\n");
        QCOMPARE(f.bytes(), expected);
    }

    void afterAReadingErrorTheLinesAfterItAreKept()
    {
        const QByteArray text = "<LAYER l>\n<TEXT a x=1>\n</LAYER>\n<TEXT orphan>\n<LAYER m>\n<TEXT b>\n";
        OneFile f(text);
        QCOMPARE(f.doc.Sources().file(1)->errorLine(), 4);
        f.element("l", "a")->Properties().setValue("x", "2");
        QCOMPARE(f.save().outcome, SaveChanges::Result::Outcome::Saved);
        QByteArray expected = text;
        expected.replace("x=1", "x=2");
        QCOMPARE(f.bytes(), expected);
    }

    void fileChangedOnDiskTakesChangesThatDoNotOverlap()
    {
        OneFile f(kSkin);
        f.element("ui_Main", "btnMap")->Properties().setValue("x", "75");
        QByteArray elsewhere = kSkin;
        elsewhere.replace("<LAYER ui_Other>", "<LAYER ui_Other w=800>");
        QVERIFY(writeTestFile(f.path, elsewhere));
        bool asked = false;
        SaveChanges saver(f.doc);
        const SaveChanges::Result result = saver.save([&](const QString &) { return asked = true; });
        QCOMPARE(result.outcome, SaveChanges::Result::Outcome::Saved);
        QVERIFY(!asked);
        QByteArray expected = elsewhere;
        expected.replace("x=70", "x=75");
        QCOMPARE(f.bytes(), expected);
        // The document does not show the other change: it is to be reopened.
        QCOMPARE(result.reopen, QStringList { f.path });
    }

    void fileChangedOnDiskWhereAChangeIsAsksAndCancelWritesNothing()
    {
        OneFile f(kSkin);
        f.element("ui_Main", "btnMap")->Properties().setValue("x", "75");
        QByteArray elsewhere = kSkin;
        elsewhere.replace("x=70", "x=71");
        QVERIFY(writeTestFile(f.path, elsewhere));
        QString question;
        SaveChanges saver(f.doc);
        const SaveChanges::Result result = saver.save([&](const QString &path) {
            question = SaveChanges::changedOnDiskQuestion(path);
            return false;
        });
        QCOMPARE(result.outcome, SaveChanges::Result::Outcome::Cancelled);
        QCOMPARE(question, QStringLiteral("main.ui changed on disk since it was opened. Overwrite it with your version?"));
        QCOMPARE(f.bytes(), elsewhere);
        QVERIFY(!QFile::exists(SkinBackup::pathFor(f.path)));
    }

    void fileChangedOnDiskWhereAChangeIsOverwrittenWhenAnswered()
    {
        OneFile f(kSkin);
        f.element("ui_Main", "btnMap")->Properties().setValue("x", "75");
        QByteArray elsewhere = kSkin;
        elsewhere.replace("x=70", "x=71");
        QVERIFY(writeTestFile(f.path, elsewhere));
        QCOMPARE(f.save(true).outcome, SaveChanges::Result::Outcome::Saved);
        QByteArray expected = kSkin;
        expected.replace("x=70", "x=75");
        QCOMPARE(f.bytes(), expected);
        QCOMPARE(readTestFile(SkinBackup::pathFor(f.path)), elsewhere);
    }

    void inputOutputErrorWhileReadingWritesNothing()
    {
        QTemporaryDir dir;
        const QString path = dir.filePath(QStringLiteral("main.ui"));
        QVERIFY(writeTestFile(path, kSkin));
        FailingDevice device(kSkin, 40);
        QVERIFY(device.open(QIODevice::ReadOnly));
        clsKorviInterface doc;
        QVERIFY_THROWS_EXCEPTION(SkinReadError, UiFileReader(doc, false).readDevice(device, path));
        doc.Layers().Add("ui_New", "LAYER");
        SaveChanges saver(doc);
        saver.setFileForNewElements(path);
        const SaveChanges::Result result = saver.save({});
        QVERIFY(!result.ok());
        QVERIFY(result.written.isEmpty());
        QCOMPARE(readTestFile(path), kSkin);
    }

    void schemesLayerEditedWritesOnlyTheScheme()
    {
        QTemporaryDir dir;
        copyDemoSkin(dir.path());
        const QString opened = dir.filePath(QStringLiteral("800_480/ui/main_800_480.ui"));
        const QString scheme = dir.filePath(QStringLiteral("800_480/main_scheme.ui"));
        const QByteArray openedBefore = readTestFile(opened);
        const QByteArray schemeBefore = readTestFile(scheme);
        const QDateTime openedStamp = QFileInfo(opened).lastModified();
        clsKorviInterface doc;
        SkinLoader::openSkinFile(doc, opened);
        QTest::qWait(20);
        doc.Layers().Item("ui_TopBar")->SubElements().Item("txtClock")->Properties().setValue("x", "600");
        SaveChanges saver(doc);
        saver.setFileForNewElements(opened);
        const std::vector<SaveChanges::Pending> pending = saver.pending();
        QCOMPARE(int(pending.size()), 1);
        QCOMPARE(QFileInfo(pending.front().path).fileName(), QStringLiteral("main_scheme.ui"));
        const SaveChanges::Result result = saver.save({});
        QCOMPARE(result.outcome, SaveChanges::Result::Outcome::Saved);
        QCOMPARE(result.written.size(), 1);
        QCOMPARE(readTestFile(opened), openedBefore);
        QCOMPARE(QFileInfo(opened).lastModified(), openedStamp);
        QVERIFY(!QFile::exists(SkinBackup::pathFor(opened)));
        QCOMPARE(changedLines(schemeBefore, readTestFile(scheme)).size(), 1);
        QVERIFY(readTestFile(scheme).contains("<TEXT txtClock x=600 y=6"));
    }

    void changesInTwoFilesGoEachToItsOwnFile()
    {
        QTemporaryDir dir;
        copyDemoSkin(dir.path());
        const QString opened = dir.filePath(QStringLiteral("800_480/ui/main_800_480.ui"));
        const QString scheme = dir.filePath(QStringLiteral("800_480/main_scheme.ui"));
        const QByteArray openedBefore = readTestFile(opened);
        const QByteArray schemeBefore = readTestFile(scheme);
        clsKorviInterface doc;
        SkinLoader::openSkinFile(doc, opened);
        doc.Layers().Item("ui_TopBar")->SubElements().Item("txtClock")->Properties().setValue("x", "600");
        doc.Layers().Item("ui_Main")->SubElements().Item("btnMap")->Properties().setValue("x", "90");
        clsElement *added = doc.Layers().Add("ui_Extra", "LAYER");
        added->Properties().Add("z", "3");
        SaveChanges saver(doc);
        saver.setFileForNewElements(opened);
        QCOMPARE(SaveChanges::summary(saver.pending()), QStringLiteral("3 changes in 2 files"));
        const SaveChanges::Result result = saver.save({});
        QCOMPARE(result.outcome, SaveChanges::Result::Outcome::Saved);
        QCOMPARE(result.written.size(), 2);
        QCOMPARE(changedLines(schemeBefore, readTestFile(scheme)).size(), 1);
        QVERIFY(readTestFile(opened).startsWith(openedBefore.left(openedBefore.indexOf("btnMap"))));
        QVERIFY(readTestFile(opened).endsWith("<LAYER ui_Extra z=3>\n</LAYER>\n"));
        QVERIFY(saver.pending().empty());
        // Both files read again give the edited document.
        clsKorviInterface again;
        SkinLoader::openSkinFile(again, opened);
        QCOMPARE(again.Layers().Item("ui_TopBar")->SubElements().Item("txtClock")->Properties().Item("x").value(), QByteArray("600"));
        QCOMPARE(again.Layers().Item("ui_Extra")->Properties().Item("z").value(), QByteArray("3"));
    }

    void demoSkinWithOneButtonMovedChangesOneLine()
    {
        QTemporaryDir dir;
        copyDemoSkin(dir.path());
        const QString opened = dir.filePath(QStringLiteral("800_480/ui/main_800_480.ui"));
        QStringList files;
        QDirIterator it(dir.path(), { "*.ui" }, QDir::Files, QDirIterator::Subdirectories);
        QHash<QString, QByteArray> before;
        while (it.hasNext()) {
            const QString path = it.next();
            before.insert(path, readTestFile(path));
        }
        clsKorviInterface doc;
        SkinLoader::openSkinFile(doc, opened);
        // A drag of the moving frame writes the new place into x and y.
        clsElement *button = doc.Layers().Item("ui_Main")->SubElements().Item("btnMap");
        button->Properties().setValue("x", "90");
        button->Properties().setValue("y", "100");
        SaveChanges saver(doc);
        saver.setFileForNewElements(opened);
        QCOMPARE(saver.save({}).outcome, SaveChanges::Result::Outcome::Saved);
        for (auto i = before.cbegin(); i != before.cend(); ++i) {
            if (i.key() == opened)
                QCOMPARE(changedLines(i.value(), readTestFile(i.key())).size(), 1);
            else
                QCOMPARE(readTestFile(i.key()), i.value());
        }
        QVERIFY(readTestFile(opened).contains("<BUTTON btnMap template=tplMenuButton x=90 y=100 text=Map"));
    }

    void everyCorpusFileReadAndLeftAloneHasNoChange_data() { CorpusCases::addCorpusRows(); }
    void everyCorpusFileReadAndLeftAloneHasNoChange()
    {
        QFETCH(QString, base);
        clsKorviInterface doc;
        CorpusCases::readCorpusCase(doc, base);
        SaveChanges saver(doc);
        saver.setFileForNewElements(base + ".ui");
        const std::vector<SaveChanges::Pending> pending = saver.pending();
        QVERIFY2(pending.empty(), pending.empty() ? "" : qPrintable(QString::number(pending.front().changes) + pending.front().problems.join(';')));
    }

    // An element touched by an edit is compared with its lines in full: one
    // touched and left as it was read is still no change.
    void everyCorpusElementTouchedAndLeftAsReadHasNoChange_data() { CorpusCases::addCorpusRows(); }
    void everyCorpusElementTouchedAndLeftAsReadHasNoChange()
    {
        QFETCH(QString, base);
        clsKorviInterface doc;
        CorpusCases::readCorpusCase(doc, base);
        touchAll(doc.Headers());
        touchAll(doc.Templates());
        touchAll(doc.Fonts());
        touchAll(doc.Layers());
        SaveChanges saver(doc);
        saver.setFileForNewElements(base + ".ui");
        const std::vector<SaveChanges::Pending> pending = saver.pending();
        QVERIFY2(pending.empty(), pending.empty() ? "" : qPrintable(QString::number(pending.front().changes) + pending.front().problems.join(';')));
    }

    void elementTouchedIsComparedAndUntouchedByTheReader()
    {
        OneFile f(kSkin);
        clsElement *button = f.element("ui_Main", "btnMap");
        QVERIFY(!button->changedSinceSource());
        button->Properties().setValue("x", "70");
        QVERIFY(button->changedSinceSource());
        QVERIFY(SaveChanges(f.doc).pending().empty());
        button->setStrName("btnMap2");
        QCOMPARE(SaveChanges::summary(SaveChanges(f.doc).pending()), QStringLiteral("1 change in 1 file"));
        button->setStrName("btnMap");
        QVERIFY(SaveChanges(f.doc).pending().empty());
        button->Properties().Remove("y");
        QCOMPARE(SaveChanges::summary(SaveChanges(f.doc).pending()), QStringLiteral("1 change in 1 file"));
    }

private:
    // Sets every element's name and first value to what they are.
    static void touchAll(const clsElements &elements)
    {
        for (clsElement *element : elements) {
            element->setStrName(element->strName());
            if (element->Properties().Count() > 0)
                element->Properties().setValueAt(0, element->Properties().valueAt(0).toByteArray());
            QVERIFY(element->changedSinceSource());
            if (element->subElementCount() > 0)
                touchAll(element->SubElements());
        }
    }

    static void copyDemoSkin(const QString &to)
    {
        const QString from = QStringLiteral(KORVI_SOURCE_DIR "/samples/demo-skin");
        QDirIterator it(from, QDir::Files, QDirIterator::Subdirectories);
        while (it.hasNext()) {
            const QString path = it.next();
            const QString target = to + path.mid(from.size());
            QDir().mkpath(QFileInfo(target).absolutePath());
            QVERIFY(QFile::copy(path, target));
        }
    }
};

QTEST_GUILESS_MAIN(TestSaveChanges)
#include "tst_savechanges.moc"
