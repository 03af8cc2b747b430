// SPDX-License-Identifier: MIT
#include "DocumentJson.h"
#include "SkinReadError.h"
#include "UiFileReader.h"
#include "clsKorviInterface.h"

#include <QtTest>

namespace {

// Reads skin text as if it were a file; returns the error line, 0 when none.
qint64 read(clsKorviInterface &doc, const QByteArray &text, bool imported = false)
{
    try {
        UiFileReader(doc, imported).readBytes(text, QStringLiteral("test.ui"));
    } catch (const SkinReadError &error) {
        return error.line();
    }
    return 0;
}

// The document read from `text`, with the line of any error, as JSON.
QByteArray dumpOf(const QByteArray &text)
{
    clsKorviInterface doc;
    try {
        UiFileReader(doc, false).readBytes(text, QStringLiteral("test.ui"));
    } catch (const SkinReadError &error) {
        return documentToJson(doc, &error);
    }
    return documentToJson(doc, nullptr);
}

// The lines of `lines` joined with `end` after each but the last, and after
// the last too when `endLast` is set.
QByteArray joined(const QList<QByteArray> &lines, const QByteArray &end, bool endLast)
{
    QByteArray text = lines.join(end);
    if (endLast)
        text += end;
    return text;
}

QList<QByteArray> keysOf(const clsProperties &props)
{
    QList<QByteArray> keys;
    for (const clsProperty p : props)
        keys << p.Key();
    return keys;
}

} // namespace

class TestUiReader : public QObject
{
    Q_OBJECT

private slots:
    // Tag words are remembered as they come; a file with more distinct ones
    // than are kept still reads every tag by its own word, in any case, and
    // so does the empty tag word.
    void everyTagWordIsReadForWhatItIsAmongManyOthers()
    {
        QByteArray text = "<LAYER a>\r\n";
        for (int round = 0; round < 2; ++round) {
            for (int i = 0; i < 150; ++i)
                text += "<Word" + QByteArray::number(i) + " w" + QByteArray::number(i) + ">\r\n";
            text += "<text t" + QByteArray::number(round) + ">\r\n<TEXT u" + QByteArray::number(round) + ">\r\n<>\r\n";
        }
        text += "</LAYER>\r\n<VAR v=1>\r\n";
        clsKorviInterface doc;
        QCOMPARE(read(doc, text), 0);
        const clsElements &children = doc.Layers().Item("a")->SubElements();
        QCOMPARE(children.Count(), 2 * 153);
        QCOMPARE(children.Item("w149[0]")->ElementType(), QByteArray("WORD149"));
        QCOMPARE(children.Item("w0")->ElementType(), QByteArray("WORD0"));
        QCOMPARE(children.Item("t1")->ElementType(), QByteArray("TEXT"));
        QCOMPARE(children.Item("u1")->ElementType(), QByteArray("TEXT"));
        QCOMPARE(children.Item("[0]")->ElementType(), QByteArray());
        QCOMPARE(children.Item("[0]")->strName(), QByteArray());
        QCOMPARE(doc.Layers().Count(), 2);
        QCOMPARE(doc.Layers().Item(2)->ElementType(), QByteArray("VAR"));
    }

    void repeatedAttributesOfAnyCaseAreKept()
    {
        clsKorviInterface doc;
        QCOMPARE(read(doc, "<LAYER a>\r\n<text t1 x=1 X=2 x=3>\r\n"), 0);
        const clsProperties &props = doc.Layers().Item("a")->SubElements().Item("t1")->Properties();
        QCOMPARE(keysOf(props), (QList<QByteArray> { "x", "x[0]", "x[1]" }));
        QCOMPARE(props.Item("x").value(), QByteArray("1"));
        QCOMPARE(props.Item("x[0]").value(), QByteArray("2"));
        QCOMPARE(props.Item("x[1]").value(), QByteArray("3"));
    }

    void bareWordIsAFlag()
    {
        clsKorviInterface doc;
        QCOMPARE(read(doc, "<LAYER a>\n<text t visible>\n"), 0);
        QCOMPARE(doc.Layers().Item("a")->SubElements().Item("t")->Properties().Item("visible").value(),
                 QByteArray("<NOV>"));
    }

    void quotedValueRunsOnToTheNextLine()
    {
        clsKorviInterface doc;
        QCOMPARE(read(doc, "<LAYER a>\r\n<TEXT t text='Hello\r\nworld' y=2>\r\n<TEXT u>\r\n"), 0);
        const clsElement *layer = doc.Layers().Item("a");
        const clsProperties &props = layer->SubElements().Item("t")->Properties();
        QCOMPARE(props.Item("text").value(), QByteArray("'Hello\rworld'"));
        QCOMPARE(props.Item("y").value(), QByteArray("2"));
        // The second line was consumed by the value, not read again as a line.
        QCOMPARE(layer->subElementCount(), 2);
        QCOMPARE(layer->SubElements().Item(2)->strName(), QByteArray("u"));
    }

    // Whatever ends the lines, the reader sees the same lines, each ended by
    // one CR: a skin reads alike with CR LF, lone CR and lone LF, and with the
    // kinds mixed. This holds for a line read where it stands in the file and
    // for one copied out of it, as the last lines of a file are, and for
    // quoted values that pull in the lines after them.
    void everyKindOfLineEndReadsAlike()
    {
        const QList<QByteArray> body = {
            "<header>", "\t<VAR v=1 note='two", "lines'>", "</header>",
            "<LAYER a x=1 text=\"open", "", "still open\" y=2>", "\t<TEXT t bmp=x.bmp VISIBLE>",
            "\t<SCRIPT s>", "\t\tif x > 1 then", "  call it(\"a\")  ", "\t</SCRIPT>",
            "\t<TEXT u text='last", "line'>",
            // Nothing after "=": the value is empty, whatever begins the next line.
            "\t<TEXT e w=", "plain", "</LAYER>", "<LAYER b q='x",
        };
        // Long enough that the body's lines stand far from the end of the file.
        QList<QByteArray> padded = body;
        for (int i = 0; i < 8; ++i)
            padded << QByteArray("\t<TEXT p") + QByteArray::number(i) + " x=" + QByteArray::number(i) + ">";
        for (const QList<QByteArray> &lines : { body, padded }) {
            for (bool endLast : { false, true }) {
                const QByteArray expected = dumpOf(joined(lines, "\r\n", endLast));
                QVERIFY(expected.contains("still open"));
                QVERIFY(expected.contains("[\"w\", \"\"]"));
                QCOMPARE(dumpOf(joined(lines, "\r", endLast)), expected);
                QCOMPARE(dumpOf(joined(lines, "\n", endLast)), expected);
                // Mixed: the kind of end changes from line to line.
                QByteArray mixed;
                const QByteArray ends[] = { "\r\n", "\n", "\r" };
                for (int i = 0; i < lines.size(); ++i) {
                    mixed += lines[i];
                    if (i + 1 < lines.size() || endLast)
                        mixed += ends[i % 3];
                }
                QCOMPARE(dumpOf(mixed), expected);
            }
        }
    }

    void scriptLinesLoseTabsAndOuterBlanks()
    {
        clsKorviInterface doc;
        QCOMPARE(read(doc, "<script s>\r\n  a = 1\t\r\n</script>\r\n"), 0);
        QCOMPARE(doc.Layers().Count(), 1);
        const clsElement *script = doc.Layers().Item(1);
        QCOMPARE(script->ElementType(), QByteArray("SCRIPT"));
        QCOMPARE(script->strName(), QByteArray("s"));
        QCOMPARE(script->Properties().Count(), 1);
        QCOMPARE(script->Properties().Item(1).Key(), QByteArray("ScriptLine"));
        QCOMPARE(script->Properties().Item(1).value(), QByteArray("a = 1"));
    }

    void plainLinesOutsideAScriptAreIgnored()
    {
        clsKorviInterface doc;
        QCOMPARE(read(doc, "; note\nhello\n<LAYER a>\n; note\nhello\n"), 0);
        QCOMPARE(doc.Layers().Count(), 1);
        QCOMPARE(doc.Layers().Item(1)->Properties().Count(), 0);
        QCOMPARE(doc.Layers().Item(1)->subElementCount(), 0);
    }

    void tagInsideAScriptIsATag()
    {
        clsKorviInterface doc;
        QCOMPARE(read(doc, "<LAYER a>\n<script s>\nline\n  <TEXT t>\n</script>\n"), 0);
        const clsElement *layer = doc.Layers().Item("a");
        QCOMPARE(layer->subElementCount(), 2);
        QCOMPARE(layer->SubElements().Item(2)->ElementType(), QByteArray("TEXT"));
        QCOMPARE(layer->SubElements().Item("s")->Properties().Count(), 1);
    }

    void onlyTheFirstTagOfALineIsRead()
    {
        clsKorviInterface doc;
        QCOMPARE(read(doc, "<LAYER l>\n<a b><c d>\n"), 0);
        const clsElements &children = doc.Layers().Item("l")->SubElements();
        QCOMPARE(children.Count(), 1);
        QCOMPARE(children.Item(1)->ElementType(), QByteArray("A"));
        QCOMPARE(children.Item(1)->strName(), QByteArray("b"));
        QCOMPARE(children.Item(1)->Properties().Count(), 0);
    }

    void sameNameTwiceInALayerIsKeptInOrder()
    {
        clsKorviInterface doc;
        QCOMPARE(read(doc, "<LAYER l>\n<TEXT name x=1>\n<TEXT name x=2>\n</LAYER>\n"), 0);
        const clsElements &children = doc.Layers().Item("l")->SubElements();
        QCOMPARE(children.Item(1)->ElementKey(), QByteArray("name"));
        QCOMPARE(children.Item(2)->ElementKey(), QByteArray("name[0]"));
        QCOMPARE(children.Item(2)->Properties().Item("x").value(), QByteArray("2"));
    }

    void wordAfterTheTagIsAlwaysTheName()
    {
        clsKorviInterface doc;
        QCOMPARE(read(doc, "<LAYER l>\n<TEXT x=1>\n"), 0);
        const clsElement *e = doc.Layers().Item("l")->SubElements().Item(1);
        QCOMPARE(e->strName(), QByteArray("x"));
        QCOMPARE(e->Properties().Item("1").value(), QByteArray("<NOV>"));
    }

    void varTakesTheNameOfTheTagBeforeIt()
    {
        clsKorviInterface doc;
        QCOMPARE(read(doc, "<header>\n<VAR  version=2>\n</header>\n<TEMPLATE tmp>\n<VAR a=1>\n"), 0);
        QCOMPARE(doc.Headers().Item(1)->strName(), QByteArray(""));
        QCOMPARE(doc.Headers().Item(1)->Properties().Item("version").value(), QByteArray("2"));
        QCOMPARE(doc.Layers().Item(1)->ElementType(), QByteArray("VAR"));
        QCOMPARE(doc.Layers().Item(1)->strName(), QByteArray("tmp"));
    }

    void usedLayerNameLosesItsSlash()
    {
        clsKorviInterface doc;
        QCOMPARE(read(doc, "<LAYER l>\n<USELAYER ui_Status/>\n"), 0);
        QCOMPARE(doc.Layers().Item("l")->SubElements().Item(1)->strName(), QByteArray("ui_Status"));
    }

    void observerClosingTagIsAChild()
    {
        clsKorviInterface doc;
        QCOMPARE(read(doc, "<observer o>\n<TEXT t>\n</observer>\n"), 0);
        const clsElements &children = doc.Layers().Item("o")->SubElements();
        QCOMPARE(children.Count(), 2);
        QCOMPARE(children.Item(2)->ElementType(), QByteArray("/OBSERVER"));
        QCOMPARE(children.Item(2)->strName(), QByteArray(""));
    }

    void templatesNeverBecomeChildrenAndKeepTheBlockOpen()
    {
        clsKorviInterface doc;
        QCOMPARE(read(doc, "<LAYER l>\n<TEMPLATE t x=1>\n<FONTTYPE f>\n<TEXT a>\n", true), 0);
        QCOMPARE(doc.Templates().Item("t")->IsImported, true);
        QCOMPARE(doc.Fonts().Item("f")->IsImported, true);
        QCOMPARE(doc.Layers().Item("l")->subElementCount(), 1);
        QCOMPARE(doc.Layers().Item("l")->IsImported, false);
    }

    void keysAreLowerCasedAndValuesKeptVerbatim()
    {
        clsKorviInterface doc;
        QCOMPARE(read(doc, "<Layer Main BMP=Pic.BMP Text=\"A b\">\n"), 0);
        const clsElement *e = doc.Layers().Item("main");
        QCOMPARE(e->strName(), QByteArray("Main"));
        QCOMPARE(e->ElementType(), QByteArray("LAYER"));
        QCOMPARE(keysOf(e->Properties()), (QList<QByteArray> { "bmp", "text" }));
        QCOMPARE(e->Properties().Item("text").value(), QByteArray("\"A b\""));
    }

    void leadingDotOfAValueIsPassedOver()
    {
        clsKorviInterface doc;
        QCOMPARE(read(doc, "<LAYER l x=.5>\n"), 0);
        QCOMPARE(doc.Layers().Item("l")->Properties().Item("x").value(), QByteArray("5"));
    }

    void highBytesAreKeptAsTheyStand()
    {
        clsKorviInterface doc;
        QCOMPARE(read(doc, "<LAYER l text=\"caf\xe9 \x80\">\n"), 0);
        QCOMPARE(doc.Layers().Item("l")->Properties().Item("text").value(), QByteArray("\"caf\xe9 \x80\""));
    }

    // Lines end at CR LF, a lone CR or a lone LF; a final terminator adds no line.
    void everyLineEndCounts()
    {
        const QByteArray text = "a\r\nb\rc\nd";
        const auto lines = UiFileReader::splitLines(text);
        QCOMPARE(lines.size(), 4);
        QCOMPARE(text.mid(lines[1].offset, lines[1].length), QByteArray("b"));
        QCOMPARE(text.mid(lines[3].offset, lines[3].length), QByteArray("d"));
        QCOMPARE(UiFileReader::splitLines("a\n").size(), 1);
        QCOMPARE(UiFileReader::splitLines("a\r\n\r\n").size(), 2);
        QCOMPARE(UiFileReader::splitLines("").size(), 0);
    }

    // After the last line one more, empty, line is read: an unclosed script gets
    // an empty script line from it.
    void oneEmptyLineFollowsTheLast()
    {
        clsKorviInterface doc;
        QCOMPARE(read(doc, "<script s>\nx\n"), 0);
        const clsProperties &props = doc.Layers().Item("s")->Properties();
        QCOMPARE(props.Count(), 2);
        QCOMPARE(props.Item(2).value(), QByteArray(""));
    }

    void emptyFileIsOneEmptyLine()
    {
        clsKorviInterface doc;
        QCOMPARE(read(doc, ""), 0);
        QCOMPARE(doc.Layers().Count(), 0);
    }

    void positionPastTheEndIsTheEndOfTheLine()
    {
        clsKorviInterface doc;
        QCOMPARE(read(doc, "<LAYER l x=1"), 0);
        QCOMPARE(doc.Layers().Item("l")->Properties().Item("x").value(), QByteArray("1"));
    }

    void equalsAtTheEndOfALineGivesAnEmptyValue()
    {
        clsKorviInterface doc;
        QCOMPARE(read(doc, "<LAYER l x=\n<LAYER m y= \t\n"), 0);
        QCOMPARE(doc.Layers().Item("l")->Properties().Item("x").value(), QByteArray(""));
        QCOMPARE(doc.Layers().Item("m")->Properties().Item("y").value(), QByteArray(""));
    }

    void strayCharactersWhereAKeyIsExpectedAreSteppedOver()
    {
        clsKorviInterface doc;
        QCOMPARE(read(doc, "<LAYER l - + \\ # ; x=1>\n"), 0);
        const clsProperties &props = doc.Layers().Item("l")->Properties();
        QVERIFY(props.ItemExist("x"));
        QCOMPARE(props.Item("x").value(), QByteArray("1"));
    }

    void quoteOpenAtTheEndOfTheFileEndsThere()
    {
        clsKorviInterface doc;
        QCOMPARE(read(doc, "<LAYER l text=\"abc\r\ndef"), 0);
        // The CR of each line belongs to the value; the empty last line adds nothing.
        QCOMPARE(doc.Layers().Item("l")->Properties().Item("text").value(), QByteArray("\"abc\rdef\r"));
    }

    void childTagWithoutABlockStopsWithTheLineNumber()
    {
        clsKorviInterface doc;
        try {
            UiFileReader(doc, false).readBytes("<LAYER a>\n</LAYER>\n\n<TEXT t>\n<LAYER b>\n", "skin.ui");
            QFAIL("a child tag outside a block must stop the reading");
        } catch (const SkinReadError &error) {
            QCOMPARE(error.line(), qint64(4));
            QCOMPARE(error.file(), QStringLiteral("skin.ui"));
            QVERIFY(QString::fromStdString(error.what()).contains(QLatin1String("skin.ui")));
        }
        // What was read before stays; nothing after is read.
        QCOMPARE(doc.Layers().Count(), 1);
    }

    void attributeWithoutAnElementStops()
    {
        clsKorviInterface doc;
        QCOMPARE(read(doc, "<header x=1>\n"), 1);
    }

    // A lone "=" where a key is expected starts a value: the next word is read as
    // the value of an empty key, which is not kept.
    void loneEqualsSignSwallowsTheNextWord()
    {
        clsKorviInterface doc;
        QCOMPARE(read(doc, "<LAYER l = x y=1>\n"), 0);
        const clsProperties &props = doc.Layers().Item("l")->Properties();
        QVERIFY(!props.ItemExist("x"));
        QCOMPARE(props.Item("y").value(), QByteArray("1"));
    }

    void lessThanIsNeverSteppedOver()
    {
        clsKorviInterface doc;
        QCOMPARE(read(doc, "<LAYER l><x=1>\n"), 0);
        QCOMPARE(doc.Layers().Item("l")->Properties().Count(), 0);
    }

    void veryLongLinesAreReadWhole()
    {
        QByteArray line = "<LAYER l";
        for (int i = 0; i < 5000; ++i)
            line += " k" + QByteArray::number(i) + "=" + QByteArray::number(i);
        line += " last=" + QByteArray(40000, 'z') + ">";
        QVERIFY(line.size() > 70000);
        clsKorviInterface doc;
        QCOMPARE(read(doc, line), 0);
        const clsProperties &props = doc.Layers().Item("l")->Properties();
        QCOMPARE(props.Count(), 5001);
        QCOMPARE(props.Item("last").value().size(), 40000);
    }

    void keysAndValuesOfAnyLengthAreReadWhole()
    {
        for (int length : { 1, 7, 15, 16, 17, 31, 32, 33, 100 }) {
            QByteArray key;
            QByteArray value;
            for (int i = 0; i < length; ++i) {
                key += char((i % 2 ? 'A' : 'b') + i % 20);
                value += "aZ9_/#.+-\\"[i % 10];
            }
            clsKorviInterface doc;
            QCOMPARE(read(doc, "<LAYER l " + key + "=" + value + " " + key + "_flag>\r\n"), 0);
            const clsProperties &props = doc.Layers().Item("l")->Properties();
            QCOMPARE(props.Count(), 2);
            QCOMPARE(props.keyAt(0), QByteArrayView(key.toLower()));
            QCOMPARE(props.valueAt(0), QByteArrayView(value));
            QCOMPARE(props.keyAt(1), QByteArrayView(key.toLower() + "_flag"));
            QCOMPARE(props.valueAt(1), QByteArrayView("<NOV>"));
        }
    }

    // The value pulls in lines longer than anything gathered so far for the
    // element: the key read before it must survive.
    void quotedValueOverSeveralLongLinesKeepsItsKey()
    {
        const QByteArray first(300, 'a');
        const QByteArray second(700, 'b');
        clsKorviInterface doc;
        QCOMPARE(read(doc, "<LAYER l short=1 AVeryLongKeyForThisValue='" + first + "\r\n" + second + "' after=2>\r\n<TEXT t>\r\n"),
                 0);
        const clsElement *layer = doc.Layers().Item("l");
        const clsProperties &props = layer->Properties();
        QCOMPARE(props.Count(), 3);
        QCOMPARE(props.Item("averylongkeyforthisvalue").value(), "'" + first + "\r" + second + "'");
        QCOMPARE(props.Item("after").value(), QByteArray("2"));
        QCOMPARE(layer->subElementCount(), 1);
    }

    // An end tag makes no element: its attributes go to the current element.
    void attributesOfAnEndTagGoToTheCurrentElement()
    {
        clsKorviInterface doc;
        QCOMPARE(read(doc, "<LAYER a>\n</LAYER n x=1>\n"), 0);
        QCOMPARE(doc.Layers().Item("a")->Properties().Item("x").value(), QByteArray("1"));
    }

    // The element is checked for once the first attribute has been read, so a
    // quoted value that pulls in lines moves the reported line on.
    void attributeWithoutAnElementIsReportedAfterItsValue()
    {
        clsKorviInterface doc;
        QCOMPARE(read(doc, "<header h k='a\nb'>\n"), 2);
        QCOMPARE(read(doc, "<LAYER a>\n<SCRIPT s>\n</SCRIPT x=1>\n"), 3);
    }

    void repeatedKeysOnATagLineAreNumberedPastOneDigit()
    {
        QByteArray line = "<LAYER l";
        for (int i = 0; i < 120; ++i)
            line += " x=" + QByteArray::number(i);
        clsKorviInterface doc;
        QCOMPARE(read(doc, line + ">\n"), 0);
        const clsProperties &props = doc.Layers().Item("l")->Properties();
        QCOMPARE(props.Count(), 120);
        QCOMPARE(props.keyAt(0), QByteArrayView("x"));
        QCOMPARE(props.keyAt(11), QByteArrayView("x[10]"));
        QCOMPARE(props.keyAt(119), QByteArrayView("x[118]"));
        QCOMPARE(props.Item("X[100]").value(), QByteArray("101"));
    }

    // Skins repeat object names on screen after screen: elements of one name
    // share its bytes, and a change to one name leaves the others alone.
    void elementsOfOneNameShareItsBytes()
    {
        clsKorviInterface doc;
        QCOMPARE(read(doc, "<LAYER a>\n<TEXT btnBack>\n<LAYER b>\n<TEXT btnBack>\n<TEXT BtnBack>\n"), 0);
        clsElement *first = doc.Layers().Item("a")->SubElements().Item(1);
        clsElement *second = doc.Layers().Item("b")->SubElements().Item(1);
        clsElement *otherCase = doc.Layers().Item("b")->SubElements().Item(2);
        QVERIFY(first->strName().isSharedWith(second->strName()));
        QCOMPARE(otherCase->strName(), QByteArray("BtnBack"));
        QCOMPARE(otherCase->ElementKey(), QByteArray("BtnBack[0]"));
        second->setStrName("btnNext");
        QCOMPARE(first->strName(), QByteArray("btnBack"));
        QCOMPARE(first->ElementKey(), QByteArray("btnBack"));
    }

    // Past tens of thousands of distinct names the table of names stops
    // growing; later names are copied as they are, var tags still take the
    // name before them, and names already kept are still shared.
    void namesPastTheTableOfNamesAreKeptToo()
    {
        QByteArray text = "<LAYER a>\n";
        const int names = 40000;
        for (int i = 0; i < names; ++i)
            text += "<TEXT n" + QByteArray::number(i) + ">\n";
        text += "<TEXT n5>\n</LAYER>\n<LAYER last>\n<VAR v=1>\n";
        clsKorviInterface doc;
        QCOMPARE(read(doc, text), 0);
        const clsElements &children = doc.Layers().Item("a")->SubElements();
        QCOMPARE(children.Count(), names + 1);
        QCOMPARE(children.at(names - 1)->strName(), QByteArray("n" + QByteArray::number(names - 1)));
        QCOMPARE(children.Item("n39999")->Index(), names);
        QVERIFY(children.Item("n5[0]")->strName().isSharedWith(children.Item("n5")->strName()));
        QCOMPARE(doc.Layers().Item(3)->strName(), QByteArray("last"));
        QCOMPARE(doc.Layers().Item(3)->ElementKey(), QByteArray("last[0]"));
    }

    void missingFileIsAnError()
    {
        clsKorviInterface doc;
        QVERIFY_THROWS_EXCEPTION(SkinReadError, ReadUiFile(doc, "/nonexistent/none.ui", false));
    }

    void readingAddsToTheDocument()
    {
        clsKorviInterface doc;
        QCOMPARE(read(doc, "<TEMPLATE t>\n", true), 0);
        QCOMPARE(read(doc, "<TEMPLATE t>\n<LAYER l>\n"), 0);
        QCOMPARE(doc.Templates().Count(), 2);
        QCOMPARE(doc.Templates().Item(2)->ElementKey(), QByteArray("t[0]"));
        QVERIFY(doc.Templates().Item(1)->IsImported);
        QVERIFY(!doc.Templates().Item(2)->IsImported);
    }
};

QTEST_GUILESS_MAIN(TestUiReader)
#include "tst_uireader.moc"
