// SPDX-License-Identifier: MIT
#include "NameWord.h"
#include "SkinCodec.h"
#include "UiFileReader.h"
#include "ValueSpelling.h"
#include "clsKorviInterface.h"

#include <QRandomGenerator>
#include <QtTest>

// Values and names are stored so that the reader reads them back as typed;
// every answer is checked against the reader itself.
namespace {

// What the reader makes of a text element carrying `attribute` and then "z=9".
const clsElement *readBack(clsKorviInterface &doc, const QByteArray &name, const QByteArray &attribute)
{
    UiFileReader(doc, false).readBytes("<LAYER l>\r\n\t<TEXT " + name + ' ' + attribute + " z=9>\r\n</LAYER>\r\n", "v.ui");
    const clsElements &children = doc.Layers().Item("l")->SubElements();
    return children.Count() == 1 ? children.at(0) : nullptr;
}

QByteArray randomText(QRandomGenerator &rng)
{
    static const QByteArray alphabet = QByteArrayLiteral("aZ09_/\\+-#.=\"' <>;|,!()\t\xe9\x80:");
    QByteArray text;
    const int length = int(rng.bounded(7));
    for (int i = 0; i < length; ++i)
        text += alphabet.at(int(rng.bounded(alphabet.size())));
    if (rng.bounded(40) == 0)
        text.insert(int(rng.bounded(text.size() + 1)), rng.bounded(2) ? '\n' : '\r');
    return text;
}

} // namespace

class TestValueSpelling : public QObject
{
    Q_OBJECT

private slots:
    void plainValueIsStoredAsTyped()
    {
        QCOMPARE(ValueSpelling::of("120", SkinCodec()).spelling, QByteArray("120"));
        QCOMPARE(ValueSpelling::of("icons/a.bmp#6", SkinCodec()).spelling, QByteArray("icons/a.bmp#6"));
    }

    void valueWithABlankIsStoredInDoubleQuotes()
    {
        QCOMPARE(ValueSpelling::of("Go home now", SkinCodec()).spelling, QByteArray("\"Go home now\""));
        QCOMPARE(ValueSpelling::of("caf\xe9", SkinCodec()).spelling, QByteArray("\"caf\xe9\""));
        QCOMPARE(ValueSpelling::of("65|0|100", SkinCodec()).spelling, QByteArray("\"65|0|100\""));
        // The reader passes over a leading "." ("x=.5" reads 5).
        QCOMPARE(ValueSpelling::of(".5", SkinCodec()).spelling, QByteArray("\".5\""));
        QCOMPARE(ValueSpelling::of("", SkinCodec()).spelling, QByteArray("\"\""));
    }

    void valueWithADoubleQuoteIsStoredInSingleQuotes()
    {
        QCOMPARE(ValueSpelling::of("say \"hi\"", SkinCodec()).spelling, QByteArray("'say \"hi\"'"));
    }

    void valueWithNoSpellingThatReadsBackIsRefused()
    {
        const ValueSpelling::Result both = ValueSpelling::of("it's \"x\"", SkinCodec());
        QVERIFY(!both.ok());
        QVERIFY(both.problem.contains(QStringLiteral("\u201cit's \"x\"\u201d")));
        QVERIFY(!ValueSpelling::of("two\nlines", SkinCodec()).ok());
    }

    void aValueOverTwoLinesIsStoredInQuotes()
    {
        // As the reader reads a quoted value that runs on to the next line.
        QCOMPARE(ValueSpelling::of("two\rlines", SkinCodec()).spelling, QByteArray("\"two\rlines\""));
        QCOMPARE(ValueSpelling::of("'two\rlines'", SkinCodec()).spelling, QByteArray("'two\rlines'"));
    }

    void everySpellingReadsBackThroughTheReader()
    {
        QRandomGenerator rng(15);
        int refused = 0;
        for (int i = 0; i < 20000; ++i) {
            const QByteArray typed = randomText(rng);
            const ValueSpelling::Result result = ValueSpelling::of(typed, SkinCodec());
            if (!result.ok()) {
                ++refused;
                QVERIFY2(typed.contains('\n') || (typed.contains('"') && typed.contains('\'')), typed.constData());
                continue;
            }
            clsKorviInterface doc;
            const clsElement *text = readBack(doc, "t", "k=" + result.spelling);
            QVERIFY2(text, typed.constData());
            QCOMPARE(text->Properties().Count(), 2);
            QCOMPARE(text->Properties().valueAt(0), result.spelling);
            QCOMPARE(text->Properties().valueAt(1), QByteArray("9"));
            // What the grid shows is what was typed.
            if (result.spelling != typed)
                QCOMPARE(clsProperty::stringValueOf(result.spelling), typed);
            QCOMPARE(ValueSpelling::readsBack(typed), result.spelling == typed);
        }
        QVERIFY(refused > 0);
    }

    void scriptLineReadsBackAsItself()
    {
        QVERIFY(ValueSpelling::readsBackAsScriptLine("a = 1"));
        QVERIFY(!ValueSpelling::readsBackAsScriptLine(" a"));
        QVERIFY(!ValueSpelling::readsBackAsScriptLine("a\tb"));
        QVERIFY(!ValueSpelling::readsBackAsScriptLine("<b"));
        // Blanks and "." are passed over where a token is looked for.
        QVERIFY(!ValueSpelling::readsBackAsScriptLine(". <b"));
        QVERIFY(ValueSpelling::readsBackAsScriptLine("a <b"));
        for (const QByteArray &line : { QByteArray("a <b"), QByteArray(". <b"), QByteArray("x"), QByteArray(". ,") }) {
            clsKorviInterface doc;
            UiFileReader(doc, false).readBytes("<SCRIPT s>\n" + line + "\n</SCRIPT>\n", "s.ui");
            const clsElement *s = doc.Layers().Item("s");
            const bool readBack = s->Properties().Count() == 1 && s->Properties().valueAt(0) == line;
            QCOMPARE(ValueSpelling::readsBackAsScriptLine(line), readBack);
        }
    }

    void nameWithABlankIsRefused()
    {
        QCOMPARE(NameWord::problemWithName(QStringLiteral("big button")),
                 QStringLiteral("\u201c" "big button" "\u201d cannot be a name: use letters, digits, _ and /"));
        QVERIFY(NameWord::problemWithName(QStringLiteral("btn_Map/2")).isEmpty());
        QVERIFY(!NameWord::problemWithName(QStringLiteral("caf\u00e9")).isEmpty());
        QVERIFY(!NameWord::problemWithName(QString()).isEmpty());
        QVERIFY(!NameWord::problemWithKey(QStringLiteral("/")).isEmpty());
        QVERIFY(NameWord::problemWithKey(QStringLiteral("fontsize")).isEmpty());
    }

    void everyAcceptedNameReadsBackThroughTheReader()
    {
        QRandomGenerator rng(7);
        for (int i = 0; i < 5000; ++i) {
            const QByteArray name = randomText(rng);
            if (name.contains('\n') || name.contains('\r'))
                continue;
            const bool accepted = NameWord::problemWithName(QString::fromLatin1(name)).isEmpty();
            clsKorviInterface doc;
            const clsElement *text = nullptr;
            try {
                text = readBack(doc, name, "x=1");
            } catch (...) {
            }
            const bool readsBack = text && text->strName() == name && text->Properties().Count() == 2;
            QVERIFY2(accepted == readsBack, name.constData());
        }
    }
};

QTEST_GUILESS_MAIN(TestValueSpelling)
#include "tst_valuespelling.moc"
