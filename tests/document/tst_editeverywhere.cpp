// SPDX-License-Identifier: MIT
#include "CorpusCases.h"
#include "SaveChanges.h"
#include "SkinReadError.h"
#include "TestFiles.h"
#include "UiFileReader.h"
#include "clsKorviInterface.h"

#include <QTemporaryDir>
#include <QtTest>
#include <functional>

// Every element of every generated skin (mixed line ends, values over several
// lines, empty values, stray characters...) takes a new key and is saved in
// place so that the file reads back as edited, as korvi set saves it; and a
// value over two lines can be set back to itself.
namespace {

// The elements of the document read from its own file, in reading order.
std::vector<clsElement *> ownElements(clsKorviInterface &document)
{
    std::vector<clsElement *> all;
    std::function<void(clsElement *)> walk = [&](clsElement *element) {
        all.push_back(element);
        if (element->subElementCount() > 0) {
            for (clsElement *child : element->SubElements())
                walk(child);
        }
    };
    for (clsElements *collection : { &document.Headers(), &document.Templates(), &document.Fonts(), &document.Layers() }) {
        for (clsElement *element : *collection)
            walk(element);
    }
    return all;
}

} // namespace

class TestEditEverywhere : public QObject
{
    Q_OBJECT

private slots:
    void everyElementTakesANewKey_data() { CorpusCases::addCorpusRows(); }
    void everyElementTakesANewKey()
    {
        QFETCH(QString, base);
        const QString path = base + QStringLiteral(".ui");
        QTemporaryDir dir;
        const QString output = dir.filePath(QStringLiteral("out.ui"));
        clsKorviInterface first;
        try {
            ReadUiFile(first, path, false);
        } catch (const SkinReadError &) {
            // A file with a reading error is not edited at all.
            return;
        }
        const size_t count = ownElements(first).size();
        for (size_t i = 0; i < count; ++i) {
            clsKorviInterface document;
            ReadUiFile(document, path, false);
            clsElement *element = ownElements(document).at(i);
            // A new script line is not a key.
            if (element->ElementType() == "SCRIPT")
                continue;
            element->Properties().Add("zz_new", "1");
            SaveChanges saver(document);
            saver.setFileForNewElements(path);
            saver.redirect(path, output);
            const SaveChanges::Result result = saver.save([](const QString &) { return false; });
            QVERIFY2(result.outcome == SaveChanges::Result::Outcome::Saved,
                     qPrintable(QStringLiteral("element %1 (%2 %3): %4")
                                    .arg(i)
                                    .arg(QString::fromLatin1(element->ElementType()), QString::fromLatin1(element->strName()),
                                         result.error)));
            clsKorviInterface again;
            ReadUiFile(again, output, false);
            const clsElement *edited = ownElements(again).at(i);
            QCOMPARE(edited->ElementType(), element->ElementType());
            QCOMPARE(edited->Properties().Count(), element->Properties().Count());
            QCOMPARE(edited->Properties().valueAt(edited->Properties().Count() - 1), QByteArray("1"));
        }
    }

    void aValueOverTwoLinesIsSetBackToItself()
    {
        QTemporaryDir dir;
        const QString path = dir.filePath(QStringLiteral("main.ui"));
        const QByteArray skin = "<LAYER l>\r\n\t<TEXT t text='one\r\ntwo' x=1>\r\n</LAYER>\r\n";
        QVERIFY(writeTestFile(path, skin));
        clsKorviInterface document;
        ReadUiFile(document, path, false);
        clsElement *text = document.Layers().Item("l")->SubElements().Item("t");
        QCOMPARE(text->Properties().valueAt(0), QByteArray("'one\rtwo'"));
        text->Properties().setValueAt(0, "'three\rfour'");
        SaveChanges saver(document);
        saver.setFileForNewElements(path);
        const SaveChanges::Result result = saver.save([](const QString &) { return false; });
        QVERIFY2(result.ok(), qPrintable(result.error));
        QCOMPARE(readTestFile(path), QByteArray("<LAYER l>\r\n\t<TEXT t text='three\r\nfour' x=1>\r\n</LAYER>\r\n"));
    }

    void aKeyAddedAfterAnEmptyValueStaysItsOwn()
    {
        QTemporaryDir dir;
        const QString path = dir.filePath(QStringLiteral("main.ui"));
        const QByteArray skin = "<State s visible Y=>\r\n";
        QVERIFY(writeTestFile(path, skin));
        clsKorviInterface document;
        ReadUiFile(document, path, false);
        clsElement *state = document.Layers().Item("s");
        QVERIFY(state);
        state->Properties().Add("x", "5");
        SaveChanges saver(document);
        saver.setFileForNewElements(path);
        const SaveChanges::Result result = saver.save([](const QString &) { return false; });
        QVERIFY2(result.ok(), qPrintable(result.error));
        clsKorviInterface again;
        ReadUiFile(again, path, false);
        const clsProperties &props = again.Layers().Item("s")->Properties();
        QCOMPARE(props.Count(), 3);
        QCOMPARE(props.valueAt(1), QByteArray());
        QCOMPARE(props.valueAt(2), QByteArray("5"));
    }
};

QTEST_GUILESS_MAIN(TestEditEverywhere)
#include "tst_editeverywhere.moc"
