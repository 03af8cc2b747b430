// SPDX-License-Identifier: MIT
#include "SkinLoader.h"
#include "SkinReadError.h"
#include "SourceElement.h"
#include "CorpusCases.h"
#include "UiFileReader.h"
#include "clsKorviInterface.h"

#include <QDirIterator>
#include <QtTest>
#include <set>

// Every element read from a file knows where it stands there, and scanning its
// lines again gives back exactly the properties the reader gave it.
namespace {

struct Checker
{
    const clsKorviInterface &document;
    QStringList problems;
    std::set<std::pair<int, quint32>> seen;

    void checkAll()
    {
        for (const clsElements *c : { &document.Headers(), &document.Templates(), &document.Fonts(), &document.Layers() })
            checkElements(*c);
    }

    void checkElements(const clsElements &elements)
    {
        for (const clsElement *element : elements) {
            checkElement(*element);
            if (element->subElementCount() > 0)
                checkElements(element->SubElements());
        }
    }

    void checkElement(const clsElement &element)
    {
        const QString where = QStringLiteral("%1 %2").arg(QString::fromLatin1(element.ElementType()),
                                                          QString::fromLatin1(element.strName()));
        const SkinSourceFile *file = document.Sources().file(element.sourceFile());
        if (!file) {
            problems << where + QStringLiteral(": no source");
            return;
        }
        if (!seen.insert({ element.sourceFile(), element.sourceRecord() }).second)
            problems << where + QStringLiteral(": record shared");
        // Read and left alone, it says so without being compared.
        if (element.changedSinceSource())
            problems << where + QStringLiteral(": counts as changed since read");
        const SourceElement read = SourceElement::read(*file, element.sourceRecord());
        const QByteArray &bytes = file->bytes();
        const QByteArray word = bytes.mid(read.tag.wordBegin, read.tag.wordEnd - read.tag.wordBegin).toUpper();
        if (!read.tag.isTag || word != element.ElementType())
            problems << where + QStringLiteral(": tag word ") + QString::fromLatin1(word);
        if (element.ElementType() != "VAR") {
            const QByteArray name = bytes.mid(read.tag.nameBegin, read.tag.nameEnd - read.tag.nameBegin);
            if (name != element.strName())
                problems << where + QStringLiteral(": name ") + QString::fromLatin1(name);
        }
        const clsProperties &props = element.Properties();
        if (int(read.properties.size()) != props.Count()) {
            problems << where + QStringLiteral(": %1 properties found again, %2 read").arg(read.properties.size()).arg(props.Count());
            return;
        }
        for (int i = 0; i < props.Count(); ++i) {
            const SourceElement::Property &p = read.properties[size_t(i)];
            if (p.key != props.keyAt(i) || p.value != props.valueAt(i))
                problems << where + QStringLiteral(": property %1 found again as %2=%3").arg(i).arg(
                                QString::fromLatin1(p.key), QString::fromLatin1(p.value));
            if (!p.isScriptLine && p.attribute.hasValue
                && bytes.mid(p.attribute.keyBegin, p.attribute.keyEnd - p.attribute.keyBegin).toLower() != p.key.left(p.attribute.keyEnd - p.attribute.keyBegin))
                problems << where + QStringLiteral(": key span of %1").arg(i);
        }
        if (read.closingBegin >= 0 && !bytes.mid(read.closingBegin, read.closingNext - read.closingBegin).contains("</"))
            problems << where + QStringLiteral(": closing line");
    }
};

QStringList problemsOf(const clsKorviInterface &document)
{
    Checker checker { document, {}, {} };
    checker.checkAll();
    return checker.problems;
}

} // namespace

class TestSourceRecords : public QObject
{
    Q_OBJECT

private slots:
    void everyCorpusElementIsFoundAgainAsRead_data() { CorpusCases::addCorpusRows(); }
    void everyCorpusElementIsFoundAgainAsRead()
    {
        QFETCH(QString, base);
        clsKorviInterface doc;
        const qint64 errorLine = CorpusCases::readCorpusCase(doc, base);
        if (errorLine > 0)
            QCOMPARE(doc.Sources().file(doc.Sources().count())->errorLine(), errorLine);
        const QStringList problems = problemsOf(doc);
        QVERIFY2(problems.isEmpty(), qPrintable(problems.join('\n')));
    }

    void demoSkinIsFoundAgainAsRead()
    {
        QDirIterator it(QStringLiteral(KORVI_SOURCE_DIR "/samples/demo-skin"), { "*.ui" }, QDir::Files,
                        QDirIterator::Subdirectories);
        int files = 0;
        while (it.hasNext()) {
            const QString path = it.next();
            clsKorviInterface doc;
            SkinLoader::openSkinFile(doc, path);
            const QStringList problems = problemsOf(doc);
            QVERIFY2(problems.isEmpty(), qPrintable(path + ": " + problems.join('\n')));
            ++files;
        }
        QVERIFY(files > 0);
    }

    void documentKeepsTheBytesOfEveryFileRead()
    {
        clsKorviInterface doc;
        UiFileReader(doc, true).readBytes("<TEMPLATE t x=1>\n", "t.ui");
        UiFileReader(doc, false).readBytes("<LAYER l>\r\n\t<TEXT a y=2>\r\n</LAYER>\r\n", "m.ui");
        QCOMPARE(doc.Sources().count(), 2);
        QCOMPARE(doc.Sources().file(1)->bytes(), QByteArray("<TEMPLATE t x=1>\n"));
        QVERIFY(doc.Sources().file(1)->imported());
        QCOMPARE(doc.Layers().Item("l")->sourceFile(), 2);
        QCOMPARE(doc.Templates().Item("t")->sourceFile(), 1);
        doc.Clear();
        QCOMPARE(doc.Sources().count(), 0);
    }

    void propertySpansCoverKeyEqualsAndValue()
    {
        clsKorviInterface doc;
        const QByteArray text = "<LAYER l>\n\t<TEXT a x=1 text=\"two\nlines\" VISIBLE>\n</LAYER>\n";
        UiFileReader(doc, false).readBytes(text, "m.ui");
        const clsElement *a = doc.Layers().Item("l")->SubElements().Item("a");
        const SourceElement read = SourceElement::read(*doc.Sources().file(1), a->sourceRecord());
        QCOMPARE(read.properties.size(), size_t(3));
        const SourceScan::Attribute &quoted = read.properties[1].attribute;
        QCOMPARE(text.mid(quoted.keyBegin, quoted.valueEnd - quoted.keyBegin), QByteArray("text=\"two\nlines\""));
        const SourceScan::Attribute &flag = read.properties[2].attribute;
        QCOMPARE(text.mid(flag.keyBegin, flag.valueEnd - flag.keyBegin), QByteArray("VISIBLE"));
        // The tag line takes both lines; the reading stopped at the ">".
        QCOMPARE(text.mid(read.tag.begin, read.tag.next - read.tag.begin),
                 QByteArray("\t<TEXT a x=1 text=\"two\nlines\" VISIBLE>\n"));
        QCOMPARE(text.at(read.tag.stop), '>');
        const clsElement *l = doc.Layers().Item("l");
        const SourceElement layer = SourceElement::read(*doc.Sources().file(1), l->sourceRecord());
        QCOMPARE(text.mid(layer.closingBegin, layer.closingNext - layer.closingBegin), QByteArray("</LAYER>\n"));
    }

    void scriptLinesAndTheirClosingLineAreTheScripts()
    {
        clsKorviInterface doc;
        const QByteArray text = "<LAYER l>\r<SCRIPT s>\r\t a = 1 \t\r<TEXT t>\r</SCRIPT>\r</LAYER>\r";
        UiFileReader(doc, false).readBytes(text, "m.ui");
        const clsElement *s = doc.Layers().Item("l")->SubElements().Item("s");
        const SourceElement read = SourceElement::read(*doc.Sources().file(1), s->sourceRecord());
        QCOMPARE(read.properties.size(), size_t(1));
        QVERIFY(read.properties[0].isScriptLine);
        QCOMPARE(read.properties[0].value, QByteArray("a = 1"));
        QCOMPARE(text.mid(read.closingBegin, read.closingNext - read.closingBegin), QByteArray("</SCRIPT>\r"));
    }
};

QTEST_GUILESS_MAIN(TestSourceRecords)
#include "tst_sourcerecords.moc"
