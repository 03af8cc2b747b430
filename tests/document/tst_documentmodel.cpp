// SPDX-License-Identifier: MIT
#include "MissingKeyError.h"
#include "clsKorviInterface.h"
#include "KeyIndex.h"
#include "PropertyPack.h"

#include <QtTest>

class TestDocumentModel : public QObject
{
    Q_OBJECT

private slots:
    void anElementsKindFollowsItsTagWord()
    {
        clsElements blocks;
        QVERIFY(blocks.Add("a", "layer")->IsLayer());
        QVERIFY(blocks.Add("b", "STATE")->IsState());
        QVERIFY(blocks.Add("c", "element_template")->IsElementTemplate());
        for (const char *type : { "LAYER", "STATE", "ELEMENT_TEMPLATE", "OBSERVER" })
            QVERIFY(blocks.Add("d", type)->IsBlock());
        for (const char *type : { "TEXT", "TEMPLATE", "USELAYER", "VAR" }) {
            const clsElement *element = blocks.Add("e", type);
            QVERIFY(!element->IsBlock());
            QVERIFY(!element->IsLayer());
            QVERIFY(!element->IsState());
        }
    }

    void repeatedKeyGetsNumberedSuffixesFromZero()
    {
        clsProperties props;
        props.Add("x", "1");
        props.Add("x", "2");
        props.Add("x", "3");
        QCOMPARE(props.Count(), 3);
        QList<QByteArray> keys;
        for (const clsProperty p : props) {
            keys << p.Key();
            QCOMPARE(p.IDKey(), QByteArray("x"));
        }
        QCOMPARE(keys, (QList<QByteArray> { "x", "x[0]", "x[1]" }));
        QCOMPARE(props.Item("x[1]").value(), QByteArray("3"));
    }

    void stringValueDropsOneMatchingPairOfQuotes_data()
    {
        QTest::addColumn<QByteArray>("value");
        QTest::addColumn<QByteArray>("expected");
        QTest::newRow("single quotes") << QByteArray("'Main menu'") << QByteArray("Main menu");
        QTest::newRow("double quotes") << QByteArray("\"Main menu\"") << QByteArray("Main menu");
        QTest::newRow("mixed quotes unchanged") << QByteArray("'Main menu\"") << QByteArray("'Main menu\"");
        QTest::newRow("mixed quotes the other way") << QByteArray("\"abc'") << QByteArray("\"abc'");
        QTest::newRow("only the outer pair") << QByteArray("\"\"a\"\"") << QByteArray("\"a\"");
        QTest::newRow("no quotes") << QByteArray("abc") << QByteArray("abc");
        QTest::newRow("empty quotes") << QByteArray("''") << QByteArray("");
    }
    void stringValueDropsOneMatchingPairOfQuotes()
    {
        QFETCH(QByteArray, value);
        QFETCH(QByteArray, expected);
        clsProperties props;
        QCOMPARE(props.Add("text", value).StringValue(), expected);
    }

    void idKeyIsTheTextBeforeTheFirstBracket()
    {
        QCOMPARE(clsProperty::idKeyOf("font[12]"), QByteArray("font"));
        QCOMPARE(clsProperty::idKeyOf("font"), QByteArray("font"));
        QCOMPARE(clsProperty::idKeyOf("a[0][1]"), QByteArray("a"));
    }

    void elementValueWinsOverItsTemplate()
    {
        clsKorviInterface doc;
        doc.Templates().Add("tmpButton", "template")->Properties().Add("x", "5");
        clsElement *layer = doc.Layers().Add("ui_Main", "layer");
        clsElement *button = layer->SubElements().Add("btn", "button");
        button->Properties().Add("template", "tmpButton");
        button->Properties().Add("x", "10");
        QCOMPARE(doc.GetElementValue("x", button), QByteArray("10"));
    }

    void templateChainIsFollowedToTheEnd()
    {
        clsKorviInterface doc;
        doc.Templates().Add("A", "template")->Properties().Add("template", "B");
        doc.Templates().Add("B", "template")->Properties().Add("template", "C");
        doc.Templates().Add("C", "template")->Properties().Add("bmp", "c.bmp");
        clsElement *e = doc.Layers().Add("l", "layer")->SubElements().Add("e", "text");
        e->Properties().Add("template", "A");
        QCOMPARE(doc.GetElementValue("bmp", e), QByteArray("c.bmp"));
    }

    void quotedTemplateNameFindsNothing()
    {
        clsKorviInterface doc;
        doc.Templates().Add("A", "template")->Properties().Add("bmp", "a.bmp");
        clsElement *e = doc.Layers().Add("l", "layer");
        e->Properties().Add("template", "\"A\"");
        QCOMPARE(doc.GetElementValue("bmp", e), QByteArray(""));
    }

    void firstTemplateWithTheValueWins()
    {
        clsKorviInterface doc;
        doc.Templates().Add("missing-not", "template");
        doc.Templates().Add("A", "template")->Properties().Add("bmp", "a.bmp");
        doc.Templates().Add("B", "template")->Properties().Add("bmp", "b.bmp");
        clsElement *e = doc.Layers().Add("l", "layer");
        e->Properties().Add("template", "nowhere");
        e->Properties().Add("template", "A");
        e->Properties().Add("template", "B");
        QCOMPARE(doc.GetElementValue("bmp", e), QByteArray("a.bmp"));
    }

    void templatesComeBeforeFontTypes()
    {
        clsKorviInterface doc;
        doc.Fonts().Add("fnt", "fonttype")->Properties().Add("color", "#111111");
        doc.Templates().Add("tmp", "template")->Properties().Add("color", "#222222");
        clsElement *e = doc.Layers().Add("l", "layer");
        e->Properties().Add("fonttype", "fnt");
        e->Properties().Add("template", "tmp");
        QCOMPARE(doc.GetElementValue("color", e), QByteArray("#222222"));
    }

    void fontTypeChainGivesTheValue()
    {
        clsKorviInterface doc;
        doc.Fonts().Add("big", "fonttype")->Properties().Add("fonttype", "base");
        doc.Fonts().Add("base", "fonttype")->Properties().Add("font", "Tahoma");
        clsElement *e = doc.Layers().Add("l", "layer");
        e->Properties().Add("fonttype", "big");
        QCOMPARE(doc.GetElementValue("font", e), QByteArray("Tahoma"));
    }

    void missingValueIsEmpty()
    {
        clsKorviInterface doc;
        clsElement *e = doc.Layers().Add("l", "layer");
        QVERIFY(doc.GetElementValue("x", e).isEmpty());
        QVERIFY(doc.GetElementValue("x", nullptr).isEmpty());
    }

    void cyclicTemplateChainStopsAndTheNextLinkIsTried()
    {
        clsKorviInterface doc;
        doc.Templates().Add("A", "template")->Properties().Add("template", "B");
        doc.Templates().Add("B", "template")->Properties().Add("template", "A");
        doc.Templates().Add("Self", "template")->Properties().Add("template", "self");
        doc.Templates().Add("C", "template")->Properties().Add("w", "30");
        clsElement *e = doc.Layers().Add("l", "layer");
        e->Properties().Add("template", "A");
        e->Properties().Add("template", "Self");
        e->Properties().Add("template", "C");
        QCOMPARE(doc.GetElementValue("w", e), QByteArray("30"));
        QCOMPARE(doc.GetElementValue("h", e), QByteArray(""));
    }

    void missingKeyFailsWithAnErrorNamingIt()
    {
        clsElements elements;
        elements.Add("a", "layer");
        try {
            elements.Item("nope");
            QFAIL("Item with a missing key must fail");
        } catch (const MissingKeyError &error) {
            QCOMPARE(error.key(), QByteArray("nope"));
            QVERIFY(QByteArray(error.what()).contains("nope"));
        }
        clsProperties props;
        QVERIFY_THROWS_EXCEPTION(MissingKeyError, props.Item("x"));
        QVERIFY(!props.ItemExist("x"));
        QVERIFY(props.Find("x").isNull());
        QVERIFY(elements.Find("nope") == nullptr);
    }

    void keysIgnoreAsciiCaseAndKeepTheirSpelling()
    {
        clsElements layers;
        clsElement *first = layers.Add("Main", "layer");
        clsElement *second = layers.Add("main", "layer");
        QCOMPARE(first->ElementKey(), QByteArray("Main"));
        QCOMPARE(second->ElementKey(), QByteArray("main[0]"));
        QCOMPARE(layers.Item("MAIN"), first);
        QCOMPARE(layers.Item("MAIN[0]"), second);
        QVERIFY(layers.ItemExist("mAiN"));
    }

    void scriptLineKeyCollidesWithAnAttributeOfAnotherCase()
    {
        clsProperties props;
        props.Add("scriptline", "<NOV>");
        QCOMPARE(props.Add("ScriptLine", "a = 1").Key(), QByteArray("ScriptLine[0]"));
    }

    void emptyKeysAreOneKey()
    {
        clsElements elements;
        elements.Add("", "var");
        QCOMPARE(elements.Add("", "var")->ElementKey(), QByteArray("[0]"));
        QVERIFY(elements.ItemExist(""));
        QVERIFY(KeyIndex::sameKey(QByteArrayView(), QByteArrayView("")));
    }

    void elementTypeIsUpperCased()
    {
        clsElements layers;
        clsElement *e = layers.Add("a", "layer");
        QCOMPARE(e->ElementType(), QByteArray("LAYER"));
        e->setElementType("element_template");
        QCOMPARE(e->ElementType(), QByteArray("ELEMENT_TEMPLATE"));
        QVERIFY(layers.Add("u", "uselayer")->IsUseLayer());
        QVERIFY(layers.Add("t", "Text")->IsText());
        QVERIFY(layers.Add("t", "template")->IsTemplate());
    }

    void renamingKeepsTheKey()
    {
        clsElements layers;
        clsElement *e = layers.Add("a", "layer");
        e->setStrName("b");
        QCOMPARE(e->ElementKey(), QByteArray("a"));
        QCOMPARE(layers.Find("a"), e);
        QVERIFY(layers.Find("b") == nullptr);
    }

    // Most elements are stored under their name; the key must still be what
    // it was made as through renames, numbering, and a move to another place.
    void keyStaysThroughRenamesAndMoves()
    {
        clsElement alone;
        QCOMPARE(alone.ElementKey(), QByteArray());
        alone.setStrName("x");
        QCOMPARE(alone.ElementKey(), QByteArray());

        clsElements layers;
        clsElement *first = layers.Add("a", "layer");
        clsElement *second = layers.Add("A", "layer");
        QCOMPARE(second->ElementKey(), QByteArray("A[0]"));
        first->setStrName("c");
        first->setStrName("a");
        first->setStrName("d");
        QCOMPARE(first->ElementKey(), QByteArray("a"));
        second->setStrName("A[0]");
        QCOMPARE(second->ElementKey(), QByteArray("A[0]"));
        std::unique_ptr<clsElement> taken = layers.Take(1);
        taken->setStrName("e");
        clsElements other;
        other.Insert(0, std::move(taken));
        QCOMPARE(other.Find("a[0]")->strName(), QByteArray("e"));
        QCOMPARE(other.at(0)->ElementKey(), QByteArray("A[0]"));
        QCOMPARE(layers.Find("A"), first);
    }

    void freedNumberIsReusedAfterARemoval()
    {
        clsProperties props;
        props.Add("x", "1");
        props.Add("x", "2");
        props.Add("x", "3");
        props.Remove("x[0]");
        QCOMPARE(props.Add("x", "4").Key(), QByteArray("x[0]"));
        QCOMPARE(props.Add("x", "5").Key(), QByteArray("x[2]"));
    }

    void manyRepeatedKeysStayInOrder()
    {
        clsProperties props;
        for (int i = 0; i < 5000; ++i)
            props.Add("ScriptLine", QByteArray::number(i));
        QCOMPARE(props.Count(), 5000);
        QCOMPARE(props.Item(5000).Key(), QByteArray("ScriptLine[4998]"));
        QCOMPARE(props.Item("scriptline[4998]").value(), QByteArray("4999"));
    }

    void elementFindsItsOwnIndex()
    {
        clsElements layers;
        layers.Add("a", "layer");
        clsElement *b = layers.Add("b", "layer");
        QCOMPARE(b->Index(), 2);
        layers.Remove(1);
        QCOMPARE(b->Index(), 1);
        QCOMPARE(layers.Item(1), b);
    }

    void takenElementGoesBackWithItsKeyAndChildren()
    {
        clsElements layers;
        layers.Add("a", "layer");
        clsElement *b = layers.Add("a", "layer");
        b->SubElements().Add("child", "text")->Properties().Add("x", "1");
        layers.Add("c", "layer");
        std::unique_ptr<clsElement> taken = layers.Take(1);
        QCOMPARE(layers.Count(), 2);
        layers.Insert(1, std::move(taken));
        QCOMPARE(layers.Item(2)->ElementKey(), QByteArray("a[0]"));
        QCOMPARE(layers.Item("a[0]")->SubElements().Item("child")->Properties().Item("x").value(),
                 QByteArray("1"));
    }

    void valueChangesKeepTheOtherProperties()
    {
        clsProperties props;
        props.Add("x", "1");
        props.Add("text", "\"short\"");
        props.Add("y", "2");
        props.setValueAt(props.Item("text").position(), "\"a much longer value than before\"");
        props.setValueAt(props.Item("x").position(), "");
        for (int i = 0; i < 200; ++i)
            props.setValueAt(props.Item("y").position(), QByteArray(300, 'y') + QByteArray::number(i));
        QCOMPARE(props.Item("x").value(), QByteArray(""));
        QCOMPARE(props.Item("text").value(), QByteArray("\"a much longer value than before\""));
        QCOMPARE(props.Item("y").value(), QByteArray(300, 'y') + "199");
        QVERIFY(props.memoryUsed() < 4096);
    }

    void insertedPropertyTakesItsPlace()
    {
        clsProperties props;
        props.Add("x", "1");
        props.Add("y", "2");
        props.Insert(1, "w", "3");
        QCOMPARE(props.Item(2).Key(), QByteArray("w"));
        QCOMPARE(props.Item("y").Index(), 3);
    }

    // A tag line's attributes are stored together; the keys must come out as
    // if each had been added on its own.
    void propertiesAddedTogetherGetTheKeysOfSeparateAdds_data()
    {
        QTest::addColumn<QList<QByteArray>>("keys");
        QTest::newRow("distinct") << QList<QByteArray> { "x", "y", "bmp", "font", "fontsize" };
        QTest::newRow("same print, different key") << QList<QByteArray> { "ab", "Ab", "ac", "bb", "xb" };
        QTest::newRow("repeat in any case") << QList<QByteArray> { "x", "y", "X", "x", "y" };
        QTest::newRow("repeat after a numbered spelling") << QList<QByteArray> { "x", "x[0]", "x", "x" };
        QTest::newRow("empty keys") << QList<QByteArray> { "", "a", "" };
        QList<QByteArray> many;
        for (int i = 0; i < 40; ++i)
            many << QByteArray("k") + QByteArray::number(i % 25);
        QTest::newRow("more than are checked at once") << many;
    }

    void propertiesAddedTogetherGetTheKeysOfSeparateAdds()
    {
        QFETCH(QList<QByteArray>, keys);
        for (const QByteArray &first : { QByteArray(), QByteArray("x") }) {
            clsProperties oneByOne;
            clsProperties together;
            if (!first.isNull()) {
                oneByOne.Add(first, "0");
                together.Add(first, "0");
            }
            PropertyPack pack;
            for (int i = 0; i < keys.size(); ++i) {
                const QByteArray value = QByteArray::number(i * 7);
                oneByOne.Add(keys[i], value);
                pack.add(keys[i], value);
            }
            together.AddPacked(pack);
            QCOMPARE(together.Count(), oneByOne.Count());
            for (int i = 0; i < oneByOne.Count(); ++i) {
                QCOMPARE(together.keyAt(i), oneByOne.keyAt(i));
                QCOMPARE(together.valueAt(i), oneByOne.valueAt(i));
                QCOMPARE(together.indexOf(oneByOne.keyAt(i)), i);
            }
        }
    }

    // The reader numbers a tag line's repeated keys before it makes the
    // element; they must be the keys separate adds to a new element give.
    void packNumbersRepeatedKeysAsSeparateAddsDo_data()
    {
        propertiesAddedTogetherGetTheKeysOfSeparateAdds_data();
        QTest::newRow("numbers past one digit")
            << QList<QByteArray>(PropertyPack::kMostChecked, QByteArray("K"));
        QTest::newRow("numbered spellings taken before their turn")
            << QList<QByteArray> { "a[1]", "a", "A", "a[0]", "a", "a[2]", "a" };
    }

    void packNumbersRepeatedKeysAsSeparateAddsDo()
    {
        QFETCH(QList<QByteArray>, keys);
        clsProperties oneByOne;
        PropertyPack pack;
        for (int i = 0; i < keys.size(); ++i) {
            oneByOne.Add(keys[i], QByteArray::number(i));
            pack.add(keys[i], QByteArray::number(i));
        }
        PropertyPack room;
        const bool numbered = pack.numberRepeatedKeys(room);
        const bool repeats = pack.distinctLeadingKeys() < pack.count();
        QCOMPARE(numbered, keys.size() <= int(PropertyPack::kMostChecked));
        QCOMPARE(pack.count(), oneByOne.Count());
        if (!numbered) {
            // Left as it was, for the collection to number one by one.
            QVERIFY(repeats);
            for (int i = 0; i < keys.size(); ++i)
                QCOMPARE(pack.keyAt(i), QByteArrayView(keys[i]));
            return;
        }
        QVERIFY(!repeats);
        for (int i = 0; i < oneByOne.Count(); ++i) {
            QCOMPARE(pack.keyAt(i), oneByOne.keyAt(i));
            QCOMPARE(pack.valueAt(i), oneByOne.valueAt(i));
        }
        clsElements children;
        const clsProperties &held = children.Add("t", "TEXT", pack)->Properties();
        QVERIFY(held.usesLentStorage());
        QCOMPARE(held.Count(), oneByOne.Count());
        QCOMPARE(held.keyAt(held.Count() - 1), oneByOne.keyAt(oneByOne.Count() - 1));
    }

    // Large collections remember where numbering a key stopped; a small one
    // that grows past that size numbers on from what it already holds.
    void numberingGoesOnAsACollectionGrowsLarge()
    {
        clsProperties props;
        for (int i = 0; i < 10; ++i)
            props.Add("x", QByteArray::number(i));
        for (int i = 0; i < 30; ++i)
            props.Add("k" + QByteArray::number(i), "v");
        QCOMPARE(props.Add("X", "a").Key(), QByteArray("X[9]"));
        QCOMPARE(props.Add("x", "b").Key(), QByteArray("x[10]"));
        props.Remove(QByteArrayView("x[3]"));
        props.Insert(3, "x[3]", "back");
        QCOMPARE(props.Add("x", "c").Key(), QByteArray("x[11]"));
        QCOMPARE(props.Add("k0", "d").Key(), QByteArray("k0[0]"));
        QCOMPARE(props.indexOf("x[11]"), props.Count() - 2);
    }

    // Keys and values of 64 KB and more take wider slots than short ones;
    // a collection switches when the first one comes, by any way in.
    void propertiesOfAnyLengthLiveBesideShortOnes()
    {
        const QByteArray longValue(70000, 'v');
        const QByteArray longKey = "k" + QByteArray(65535, 'e');
        auto checkAll = [](const clsProperties &props, const QList<QPair<QByteArray, QByteArray>> &expected) {
            QCOMPARE(props.Count(), expected.size());
            for (int i = 0; i < expected.size(); ++i) {
                QCOMPARE(props.keyAt(i), QByteArrayView(expected[i].first));
                QCOMPARE(props.valueAt(i), QByteArrayView(expected[i].second));
                QCOMPARE(props.indexOf(expected[i].first), i);
            }
        };

        clsProperties added;
        added.Add("x", "1");
        added.Add("y", "2");
        added.Add("text", longValue);
        added.Add(longKey, "3");
        checkAll(added, { { "x", "1" }, { "y", "2" }, { "text", longValue }, { longKey, "3" } });

        clsProperties set;
        set.Add("x", "1");
        set.Add("y", "2");
        set.setValueAt(0, longValue);
        checkAll(set, { { "x", longValue }, { "y", "2" } });
        set.Remove(1);
        set.setValueAt(0, "short");
        checkAll(set, { { "y", "short" } });

        clsProperties inserted;
        inserted.Add("x", "1");
        inserted.Insert(0, longKey, "2");
        inserted.Insert(1, "z", longValue);
        checkAll(inserted, { { longKey, "2" }, { "z", longValue }, { "x", "1" } });
        const clsProperties copy = inserted;
        checkAll(copy, { { longKey, "2" }, { "z", longValue }, { "x", "1" } });

        PropertyPack pack;
        pack.add("a", "1");
        pack.add("b", longValue);
        pack.add("a", "2");
        QVERIFY(!pack.fitsCompactSlots());
        clsProperties packed;
        packed.AddPacked(pack);
        checkAll(packed, { { "a", "1" }, { "b", longValue }, { "a[0]", "2" } });
        PropertyPack room;
        QVERIFY(pack.numberRepeatedKeys(room));
        QVERIFY(!pack.fitsCompactSlots());
        clsElements children;
        const clsProperties &held = children.Add("t", "TEXT", pack)->Properties();
        QVERIFY(held.usesLentStorage());
        checkAll(held, { { "a", "1" }, { "b", longValue }, { "a[0]", "2" } });
        pack.clear();
        QVERIFY(pack.fitsCompactSlots());
    }

    // A collection emptied by removals takes a pack over the text its removed
    // properties left; that text no longer counts as waste.
    void packStoredAfterEveryPropertyWasRemovedLeavesNoWasteBehind()
    {
        clsProperties props;
        props.Add("first", QByteArray(100, 'a'));
        props.Add("second", QByteArray(100, 'b'));
        props.Remove(1);
        props.Remove(1);
        QCOMPARE(props.Count(), 0);
        PropertyPack pack;
        pack.add("x", "1");
        props.AddPacked(pack);
        const clsProperties copy = props;
        QCOMPARE(copy.Count(), 1);
        QCOMPARE(copy.valueAt(0), QByteArrayView("1"));
        props.setValueAt(0, "");
        props.Add("y", QByteArray(300, 'c'));
        props.Remove(2);
        QCOMPARE(props.Count(), 1);
        QCOMPARE(props.keyAt(0), QByteArrayView("x"));
        QVERIFY(props.memoryUsed() < 1000);
    }

    void packOfEmptyKeysAndValuesIsStoredWhole()
    {
        PropertyPack pack;
        pack.add("", "");
        pack.add("", "");
        QCOMPARE(pack.textSize(), quint32(0));
        clsProperties props;
        props.AddPacked(pack);
        QCOMPARE(props.Count(), 2);
        QCOMPARE(props.keyAt(1), QByteArrayView("[0]"));
        PropertyPack room;
        QVERIFY(pack.numberRepeatedKeys(room));
        clsElements children;
        const clsProperties &held = children.Add("t", "TEXT", pack)->Properties();
        QCOMPARE(held.Count(), 2);
        QCOMPARE(held.keyAt(0), QByteArrayView(""));
        QCOMPARE(held.valueAt(1), QByteArrayView(""));
    }

    void propertiesCopiedFromTheirOwnCollectionSurviveItsGrowth()
    {
        clsProperties props;
        props.Add("text", QByteArray(40, 't'));
        for (int i = 0; i < 50; ++i)
            props.Add(props.keyAt(0), props.valueAt(i));
        QCOMPARE(props.Count(), 51);
        QCOMPARE(props.Item(51).Key(), QByteArray("text[49]"));
        QCOMPARE(props.Item(51).value(), QByteArray(40, 't'));
        PropertyPack again;
        again.add(props.keyAt(0), props.valueAt(2));
        again.add(props.keyAt(0), props.valueAt(0));
        props.AddPacked(again);
        QCOMPARE(props.Item(52).Key(), QByteArray("text[50]"));
        QCOMPARE(props.Item(53).Key(), QByteArray("text[51]"));
        QCOMPARE(props.Item(53).value(), QByteArray(40, 't'));
        props.Insert(0, "copy", props.valueAt(52));
        QCOMPARE(props.Item(1).value(), QByteArray(40, 't'));
    }

    // Past a few items a collection finds keys through a hash table, which
    // grows, and is rebuilt after removals and insertions.
    void largeCollectionsFindEveryKeyAfterGrowthAndRemovals()
    {
        clsElements layers;
        for (int i = 0; i < 3000; ++i)
            layers.Add("Layer" + QByteArray::number(i), "LAYER");
        QCOMPARE(layers.indexOf("layer2999"), 2999);
        QCOMPARE(layers.indexOf("LAYER0"), 0);
        QCOMPARE(layers.indexOf("layer3000"), -1);
        QCOMPARE(layers.Add("LAYER17", "LAYER")->ElementKey(), QByteArray("LAYER17[0]"));
        layers.Remove(QByteArrayView("layer5"));
        QCOMPARE(layers.indexOf("layer6"), 5);
        QCOMPARE(layers.indexOf("layer5"), -1);
        std::unique_ptr<clsElement> taken = layers.Take(0);
        layers.Insert(100, std::move(taken));
        QCOMPARE(layers.indexOf("layer0"), 100);
        QCOMPARE(layers.indexOf("layer17[0]"), layers.Count() - 1);
        QCOMPARE(layers.Add("layer5", "LAYER")->ElementKey(), QByteArray("layer5"));
    }

    // Each add looks its name up and records the new key at once; at every
    // size, through the growth of the table, every key stays found in any
    // case and a repeat is numbered.
    void everyKeyIsFoundAtEverySizeAsElementsAreAdded()
    {
        clsElements layers;
        QList<QByteArray> keys;
        for (int i = 0; i < 200; ++i) {
            const QByteArray name = i % 7 == 3 ? keys[i / 2].toUpper() : "Name" + QByteArray::number(i);
            keys << layers.Add(name, "LAYER")->ElementKey();
            if (i % 7 == 3)
                QCOMPARE(keys.last(), name + "[0]");
            for (int k = 0; k < keys.size(); ++k)
                QCOMPARE(layers.indexOf(keys[k].toLower()), k);
            QCOMPARE(layers.indexOf("missing"), -1);
        }
    }

    void elementsNumberRepeatedNamesPastOneDigit()
    {
        clsElements layers;
        for (int i = 0; i < 105; ++i)
            layers.Add("Same", "LAYER");
        QCOMPARE(layers.Item(1)->ElementKey(), QByteArray("Same"));
        QCOMPARE(layers.Item(12)->ElementKey(), QByteArray("Same[10]"));
        QCOMPARE(layers.Item(105)->ElementKey(), QByteArray("Same[103]"));
        QCOMPARE(layers.indexOf("same[99]"), 100);
    }

    // An element made with its properties holds them in its own allocation
    // until they outgrow it; every kind of change works the same either way.
    void elementMadeWithItsPropertiesTakesEveryChange()
    {
        PropertyPack pack;
        pack.add("x", "10");
        pack.add("text", "'Hello'");
        pack.add("visible", "<NOV>");
        clsElements children;
        clsElement *element = children.Add("t", "text", pack);
        QCOMPARE(element->ElementType(), QByteArray("TEXT"));
        clsProperties &props = element->Properties();
        QVERIFY(props.usesLentStorage());
        QCOMPARE(props.Count(), 3);
        QCOMPARE(props.Item("TEXT").value(), QByteArray("'Hello'"));
        const qsizetype sizeBefore = element->memoryUsed();

        props.setValueAt(0, "1");
        QVERIFY(props.usesLentStorage());
        props.setValueAt(1, "'A much longer text than before'");
        props.Add("x", "20");
        QVERIFY(!props.usesLentStorage());
        QVERIFY(element->memoryUsed() > sizeBefore);
        QCOMPARE(props.Item("x").value(), QByteArray("1"));
        QCOMPARE(props.Item("x[0]").value(), QByteArray("20"));
        QCOMPARE(props.Item("text").value(), QByteArray("'A much longer text than before'"));
        props.Remove(QByteArrayView("visible"));
        props.Insert(0, "y", "5");
        QCOMPARE(props.keyAt(0), QByteArrayView("y"));
        QCOMPARE(props.Count(), 4);

        const clsProperties copy = props;
        QCOMPARE(copy.Item("x[0]").value(), QByteArray("20"));
        props.Clear();
        QCOMPARE(props.Count(), 0);
        QCOMPARE(copy.Count(), 4);

        std::unique_ptr<clsElement> taken = children.Take(0);
        QCOMPARE(taken.get(), element);
    }

    void elementMadeWithRepeatedKeysNumbersThem()
    {
        PropertyPack pack;
        pack.add("x", "1");
        pack.add("X", "2");
        clsElements children;
        const clsProperties &props = children.Add("t", "TEXT", pack)->Properties();
        QCOMPARE(props.keyAt(1), QByteArrayView("X[0]"));
        QCOMPARE(children.Add("u", "TEXT", PropertyPack())->Properties().Count(), 0);
    }

    void packCountsTheKeysBeforeTheFirstRepeat()
    {
        PropertyPack pack;
        QCOMPARE(pack.distinctLeadingKeys(), 0);
        pack.add("a", "1");
        pack.add("ab", "2");
        pack.add("b", "3");
        QCOMPARE(pack.distinctLeadingKeys(), 3);
        pack.add("AB", "4");
        pack.add("c", "5");
        QCOMPARE(pack.distinctLeadingKeys(), 3);
        QCOMPARE(pack.count(), 5);
        pack.clear();
        pack.add("AB", "4");
        QCOMPARE(pack.distinctLeadingKeys(), 1);
        QCOMPARE(pack.keyAt(0), QByteArrayView("AB"));
        QCOMPARE(pack.valueAt(0), QByteArrayView("4"));
    }

    // A writer may fill a reserved area bit by bit; asking for more room
    // before committing must not lose what it wrote.
    void packKeepsReservedBytesWhenItGrows()
    {
        PropertyPack pack;
        pack.add("first", "1");
        char *out = pack.reserve(3);
        memcpy(out, "key", 3);
        out = pack.reserve(3 + 5000) + 3;
        memset(out, 'v', 5000);
        pack.commit(3, 5000);
        QCOMPARE(pack.count(), 2);
        QCOMPARE(pack.keyAt(0), QByteArrayView("first"));
        QCOMPARE(pack.keyAt(1), QByteArrayView("key"));
        QCOMPARE(pack.valueAt(1), QByteArrayView(QByteArray(5000, 'v')));
        for (int i = 0; i < 100; ++i)
            pack.add("k" + QByteArray::number(i), "v");
        QCOMPARE(pack.count(), 102);
        QCOMPARE(pack.keyAt(101), QByteArrayView("k99"));
    }
};

QTEST_GUILESS_MAIN(TestDocumentModel)
#include "tst_documentmodel.moc"
