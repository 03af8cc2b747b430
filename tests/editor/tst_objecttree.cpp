// SPDX-License-Identifier: MIT
#include "NodeKey.h"
#include "ObjectTreeModel.h"
#include "TreeDump.h"
#include "SkinContext.h"
#include "SkinDocument.h"
#include "SkinLoader.h"
#include "TestFiles.h"
#include "UiFileReader.h"
#include "clsKorviInterface.h"

#include <QAbstractItemModelTester>
#include <QFile>
#include <QtTest>

namespace {

void readText(clsKorviInterface &doc, const QByteArray &text, bool imported = false)
{
    UiFileReader reader(doc, imported);
    reader.readBytes(text, QStringLiteral("test.ui"));
}

// The tree of a document as the editor makes it.
struct TreeModel
{
    explicit TreeModel(clsKorviInterface &document) : skin(document, context), model(skin) { }

    SkinContext context;
    SkinDocument skin;
    ObjectTreeModel model;
};

QStringList topKeys(const ObjectTreeModel &model)
{
    QStringList keys;
    for (int row = 0; row < model.rowCount(); ++row)
        keys << QString::fromLatin1(model.nodeKey(model.index(row, 0)));
    return keys;
}

const QByteArray kSmallSkin = "<header>\n"
                              "\t<VAR skin_name=Demo>\n"
                              "</header>\n"
                              "<TEMPLATE tplA x=1>\n"
                              "<FONTTYPE ftA font=Arial>\n"
                              "<LAYER ui_Main z=2>\n"
                              "\t<USELAYER ui_Top/>\n"
                              "\t<TEXT txtTitle x=10 text=\"Hi\" visible>\n"
                              "\t<LIST lst x=1>\n"
                              "</LAYER>\n"
                              "<LAYER ui_Top>\n"
                              "</LAYER>\n"
                              "<STATE st_Night>\n"
                              "</STATE>\n"
                              "<ELEMENT_TEMPLATE elRow>\n"
                              "</ELEMENT_TEMPLATE>\n";

} // namespace

class TestObjectTree : public QObject
{
    Q_OBJECT

private slots:
    void documentWithoutHeaderVariablesHasNoHeadersNode()
    {
        clsKorviInterface doc;
        readText(doc, "<LAYER ui_Main>\n</LAYER>\n");
        TreeModel tree(doc);
        ObjectTreeModel &model = tree.model;
        model.BuildObjectTree(false);
        QCOMPARE(topKeys(model), QStringList{ "Lui_Main" });
        QCOMPARE(model.nodeText(model.index(0, 0)), QStringLiteral("LAYER:ui_Main"));
    }

    void twoLayersWithTheSameNameHaveTheirOwnKeys()
    {
        clsKorviInterface doc;
        readText(doc, "<LAYER ui_Main x=1>\n</LAYER>\n<LAYER ui_Main x=2>\n</LAYER>\n");
        TreeModel tree(doc);
        ObjectTreeModel &model = tree.model;
        model.BuildObjectTree(false);
        QCOMPARE(topKeys(model), (QStringList{ "Lui_Main", "Lui_Main[0]" }));
        const NodeTarget first = model.ResolveNodeKey("Lui_Main");
        const NodeTarget second = model.ResolveNodeKey("Lui_Main[0]");
        QVERIFY(first.found && second.found);
        QCOMPARE(first.element, doc.Layers().at(0));
        QCOMPARE(second.element, doc.Layers().at(1));
        QCOMPARE(model.resolve(model.index(1, 0)).element, doc.Layers().at(1));
    }

    void useLayerChildOfAMissingLayerResolvesToNone()
    {
        clsKorviInterface doc;
        readText(doc, "<LAYER ui_Main>\n\t<USELAYER ui_Gone/>\n</LAYER>\n");
        TreeModel tree(doc);
        ObjectTreeModel &model = tree.model;
        model.BuildObjectTree(false);
        const QModelIndex use = model.index(0, 0, model.index(0, 0));
        QCOMPARE(model.nodeKey(use), QByteArray("Lui_Main|Uui_Gone"));
        const NodeTarget target = model.resolve(use);
        QVERIFY(!target.found);
        QVERIFY(!target.element);
    }

    void useLayerChildResolvesToTheLayerItUses()
    {
        clsKorviInterface doc;
        readText(doc, kSmallSkin);
        const NodeTarget target = NodeKey::ResolveNodeKey(doc, "Lui_Main|Uui_Top");
        QVERIFY(target.found);
        QCOMPARE(target.element, doc.Layers().Find("ui_Top"));
    }

    void nodesOfASmallSkin()
    {
        clsKorviInterface doc;
        readText(doc, kSmallSkin);
        TreeModel tree(doc);
        ObjectTreeModel &model = tree.model;
        model.BuildObjectTree(false);
        QStringList lines;
        dumpTree(model, QModelIndex(), 0, lines);
        const QStringList expected = {
            "HEADERS | HEADERS",
            // A header variable has no name: its key is empty, and so is the
            // start of its node key.
            "   | VAR:",
            "    |Pskin_name | skin_name=Demo",
            "TtplA | TEMPLATE:tplA",
            "  TtplA|Px | x=1",
            "Lui_Main | LAYER:ui_Main",
            "  Lui_Main|Pz | z=2",
            "  Lui_Main|Uui_Top | USELAYER:ui_Top",
            "  Lui_Main|EtxtTitle | TEXT:txtTitle",
            "    Lui_Main|EtxtTitle|Px | x=10",
            "    Lui_Main|EtxtTitle|Ptext | text=\"Hi\"",
            "    Lui_Main|EtxtTitle|Pvisible | visible",
            "  Lui_Main|Elst | LIST:lst",
            "    Lui_Main|Elst|Px | x=1",
            "Lui_Top | LAYER:ui_Top",
            "Sst_Night | STATE:st_Night",
            "LelRow | ELEMENT_TEMPLATE:elRow",
        };
        if (lines != expected)
            qWarning().noquote() << lines.join('\n');
        QCOMPARE(lines, expected);
    }

    void propertyNodeTextIsTheNameAloneForAFlag()
    {
        clsKorviInterface doc;
        readText(doc, "<LAYER l>\n\t<TEXT t hide x=5 x=6>\n</LAYER>\n");
        const clsProperties &props = doc.Layers().at(0)->SubElements().at(0)->Properties();
        QCOMPARE(NodeKey::propertyText(props.Item("hide"), SkinCodec()), QStringLiteral("hide"));
        QCOMPARE(NodeKey::propertyText(props.Item("x"), SkinCodec()), QStringLiteral("x=5"));
        // A repeated key shows its plain name.
        QCOMPARE(NodeKey::propertyText(props.Item("x[0]"), SkinCodec()), QStringLiteral("x=6"));
    }

    void headerVariablesResolveThroughTheHeadersNode()
    {
        clsKorviInterface doc;
        readText(doc, "<header>\n\t<VAR Lui_Main=1>\n\t<VAR b=2>\n</header>\n<LAYER ui_Main>\n</LAYER>\n");
        TreeModel tree(doc);
        ObjectTreeModel &model = tree.model;
        model.BuildObjectTree(false);
        const QModelIndex headers = model.index(0, 0);
        QCOMPARE(model.nodeText(headers), QStringLiteral("HEADERS"));
        QVERIFY(!model.resolve(headers).element);
        // The keys carry no letter: "" and "[0]" are the variables' own keys.
        const QModelIndex second = model.index(1, 0, headers);
        QCOMPARE(model.nodeKey(second), QByteArray("[0]"));
        QCOMPARE(model.resolve(second).element, doc.Headers().at(1));
        QVERIFY(!model.ResolveNodeKey("[0]").found);
        const QModelIndex value = model.index(0, 0, second);
        QCOMPARE(model.nodeKey(value), QByteArray("[0]|Pb"));
        const NodeTarget property = model.resolve(value);
        QVERIFY(property.found);
        QCOMPARE(property.element, doc.Headers().at(1));
        QCOMPARE(property.property.value(), QByteArray("2"));
        QCOMPARE(model.indexOfKey("[0]|Pb"), value);
    }

    void importedTemplatesHaveNoNodes()
    {
        clsKorviInterface doc;
        readText(doc, "<TEMPLATE shared>\n", true);
        readText(doc, "<TEMPLATE own>\n<LAYER l>\n</LAYER>\n");
        TreeModel tree(doc);
        ObjectTreeModel &model = tree.model;
        model.BuildObjectTree(false);
        QCOMPARE(topKeys(model), (QStringList{ "Town", "Ll" }));
    }

    void layersOnlyShowsLayersAndStates()
    {
        clsKorviInterface doc;
        readText(doc, kSmallSkin);
        TreeModel tree(doc);
        ObjectTreeModel &model = tree.model;
        model.BuildObjectTree(true);
        QCOMPARE(topKeys(model), (QStringList{ "Lui_Main", "Lui_Top", "Sst_Night" }));
    }

    void keysThatNameNothing_data()
    {
        QTest::addColumn<QByteArray>("key");
        QTest::newRow("missing layer") << QByteArray("Lnope");
        QTest::newRow("missing child") << QByteArray("Lui_Main|Enope");
        QTest::newRow("child of nothing") << QByteArray("Lnope|EtxtTitle");
        QTest::newRow("unknown letter") << QByteArray("Xui_Main");
        QTest::newRow("empty") << QByteArray();
        QTest::newRow("empty segment") << QByteArray("Lui_Main||EtxtTitle");
        QTest::newRow("template is not a layer") << QByteArray("LtplA");
    }
    void keysThatNameNothing()
    {
        QFETCH(QByteArray, key);
        clsKorviInterface doc;
        readText(doc, kSmallSkin);
        const NodeTarget target = NodeKey::ResolveNodeKey(doc, key);
        QVERIFY(!target.found);
        QVERIFY(!target.element);
        QVERIFY(target.property.isNull());
    }

    void aPropertyThatIsGoneStillNamesItsOwner()
    {
        clsKorviInterface doc;
        readText(doc, kSmallSkin);
        const NodeTarget target = NodeKey::ResolveNodeKey(doc, "Lui_Main|EtxtTitle|Pnope");
        QVERIFY(!target.found);
        QVERIFY(target.property.isNull());
        QVERIFY(target.element);
        QCOMPARE(target.element->strName(), QByteArray("txtTitle"));
        // A missing element on the way still names nothing.
        QVERIFY(!NodeKey::ResolveNodeKey(doc, "Lui_Main|Enope|Ptext").element);
    }

    void thePropertyKeyPartOfANodeKey()
    {
        QCOMPARE(NodeKey("Lui_Main|EtxtTitle|Px[0]").propertyKey(), QByteArray("x[0]"));
        QCOMPARE(NodeKey("|Pskin_name").propertyKey(), QByteArray("skin_name"));
        QCOMPARE(NodeKey("Lui_Main|EtxtTitle").propertyKey(), QByteArray());
        QCOMPARE(NodeKey("TtplA").propertyKey(), QByteArray());
    }

    void keysAreBuiltFromWhereAnElementLives()
    {
        clsKorviInterface doc;
        readText(doc, kSmallSkin + "<ELEMENT_TEMPLATE elCell>\n\t<TEXT inner>\n</ELEMENT_TEMPLATE>\n");
        const clsElement *main = doc.Layers().Find("ui_Main");
        QCOMPARE(NodeKey::of(doc, main).bytes(), QByteArray("Lui_Main"));
        QCOMPARE(NodeKey::of(doc, doc.Layers().Find("st_Night")).bytes(), QByteArray("Sst_Night"));
        QCOMPARE(NodeKey::of(doc, main->SubElements().Find("txtTitle")).bytes(), QByteArray("Lui_Main|EtxtTitle"));
        // A used layer is keyed as its tree node is: "U", the layer it uses.
        QCOMPARE(NodeKey::of(doc, main->SubElements().Find("ui_Top")).bytes(), QByteArray("Lui_Main|Uui_Top"));
        QCOMPARE(NodeKey::of(doc, doc.Templates().Find("tplA")).bytes(), QByteArray("TtplA"));
        QCOMPARE(NodeKey::of(doc, doc.Layers().Find("elCell")->SubElements().Find("inner")).bytes(),
                 QByteArray("LelCell|Einner"));
        QCOMPARE(NodeKey::of(doc, doc.Headers().at(0)).bytes(), doc.Headers().at(0)->ElementKey());
        clsElement alone;
        QVERIFY(NodeKey::of(doc, &alone).isEmpty());
        const NodeKey text = NodeKey::of(doc, main->SubElements().Find("txtTitle"));
        QCOMPARE(NodeKey::property(text, "x").bytes(), QByteArray("Lui_Main|EtxtTitle|Px"));
        QCOMPARE(NodeKey::property(text, "x").parent(), text);
        QVERIFY(NodeKey::of(doc, main).isAncestorOf(text));
        QVERIFY(!text.isAncestorOf(text));
        QVERIFY(!NodeKey(QByteArray("Lui_Ma")).isAncestorOf(text));
    }

    void aNodesOwnLetterIsThatOfItsLastSegment()
    {
        QCOMPARE(NodeKey::ownLetterOf("Lui_Main|EtxtTitle"), 'E');
        QCOMPARE(NodeKey::ownLetterOf("Lui_Main|EtxtTitle|Px"), 'P');
        QCOMPARE(NodeKey::ownLetterOf("Sst_Night"), 'S');
        QCOMPARE(NodeKey::ownLetterOf("Lui_Main|Uui_Top"), 'U');
        QCOMPARE(NodeKey::ownLetterOf(""), char(0));
        QCOMPARE(NodeKey::letterOf("Lui_Main|EtxtTitle"), 'L');
    }

    void nodesAreFoundByKeysThatDifferInCase()
    {
        clsKorviInterface doc;
        readText(doc, kSmallSkin);
        TreeModel tree(doc);
        tree.model.BuildObjectTree(false);
        const QModelIndex node = tree.model.indexOfKey("Lui_Main|EtxtTitle|Px");
        QVERIFY(node.isValid());
        QCOMPARE(tree.model.indexOfKey("LUI_MAIN|ETXTTITLE|PX"), node);
        // The letters name the kind of a segment and are not folded.
        QVERIFY(!tree.model.indexOfKey("lui_Main|EtxtTitle|Px").isValid());
    }

    void propertyKeyGivesElementAndProperty()
    {
        clsKorviInterface doc;
        readText(doc, kSmallSkin);
        const NodeTarget target = NodeKey::ResolveNodeKey(doc, "Lui_Main|EtxtTitle|Ptext");
        QVERIFY(target.found);
        QCOMPARE(target.element->strName(), QByteArray("txtTitle"));
        QCOMPARE(target.property.value(), QByteArray("\"Hi\""));
        // Keys are found as the collections find them: without regard to case.
        QCOMPARE(NodeKey::ResolveNodeKey(doc, "lUI_MAIN|etxttitle").element, nullptr);
        QCOMPARE(NodeKey::ResolveNodeKey(doc, "LUI_MAIN|ETXTTITLE").element->strName(),
                 QByteArray("txtTitle"));
    }

    void demoSkinTreeHasTheseNodes()
    {
        clsKorviInterface doc;
        SkinLoader::openSkinFile(doc, demoSkinMainFile());
        TreeModel tree(doc);
        ObjectTreeModel &model = tree.model;
        model.BuildObjectTree(false);
        QStringList lines;
        dumpTree(model, QModelIndex(), 0, lines);
        QFile expected(QStringLiteral(KORVI_TEST_DATA) + "/editor/demo-skin-tree.txt");
        QVERIFY(expected.open(QIODevice::ReadOnly));
        const QStringList wanted = QString::fromLatin1(expected.readAll()).split('\n', Qt::SkipEmptyParts);
        if (lines != wanted)
            qWarning().noquote() << lines.join('\n');
        QCOMPARE(lines, wanted);
        // Every node's key resolves back to what the node shows.
        checkEveryNodeResolves(model, QModelIndex());
    }

    void addedNodesGetTheirKeys()
    {
        clsKorviInterface doc;
        readText(doc, kSmallSkin);
        TreeModel tree(doc);
        ObjectTreeModel &model = tree.model;
        model.BuildObjectTree(false);
        QAbstractItemModelTester tester(&model, QAbstractItemModelTester::FailureReportingMode::QtTest);
        const QModelIndex layer = model.indexOfKey("Lui_Top");
        QVERIFY(layer.isValid());
        QVERIFY(tree.skin.addElement("Lui_Top", "btnNew", "BUTTON"));
        const QModelIndex node = model.index(model.rowCount(layer) - 1, 0, layer);
        QCOMPARE(model.nodeKey(node), QByteArray("Lui_Top|EbtnNew"));
        QCOMPARE(model.nodeText(node), QStringLiteral("BUTTON:btnNew"));
        QCOMPARE(tree.skin.addProperty("Lui_Top|EbtnNew", "x", "0"), 0);
        const QModelIndex prop = model.index(model.rowCount(node) - 1, 0, node);
        QCOMPARE(model.nodeKey(prop), QByteArray("Lui_Top|EbtnNew|Px"));
        QCOMPARE(model.nodeText(prop), QStringLiteral("x=0"));
        QCOMPARE(model.indexOfKey("Lui_Top|EbtnNew|Px"), prop);
        QVERIFY(tree.skin.takeElement("Lui_Top", 0));
        QVERIFY(!model.indexOfKey("Lui_Top|EbtnNew").isValid());
        QCOMPARE(model.rowCount(layer), 0);
    }

    void removingATopNodeKeepsTheRowsOfTheOthers()
    {
        clsKorviInterface doc;
        readText(doc, kSmallSkin);
        TreeModel tree(doc);
        ObjectTreeModel &model = tree.model;
        model.BuildObjectTree(false);
        QAbstractItemModelTester tester(&model, QAbstractItemModelTester::FailureReportingMode::QtTest);
        QVERIFY(tree.skin.takeElement(QByteArray(), doc.Layers().indexOf("ui_Main")));
        const QModelIndex state = model.indexOfKey("Sst_Night");
        QCOMPARE(model.index(state.row(), 0), state);
        QCOMPARE(model.parent(model.index(0, 0, state.siblingAtRow(0))), state.siblingAtRow(0));
    }

    void theModelPassesTheItemModelChecks()
    {
        clsKorviInterface doc;
        SkinLoader::openSkinFile(doc, demoSkinMainFile());
        TreeModel tree(doc);
        ObjectTreeModel &model = tree.model;
        QAbstractItemModelTester tester(&model, QAbstractItemModelTester::FailureReportingMode::QtTest);
        model.BuildObjectTree(false);
        model.BuildObjectTree(true);
        model.clear();
    }

    void manyLayersMakeOnlyTheTopNodes()
    {
        clsKorviInterface doc;
        QByteArray text;
        for (int i = 0; i < 20000; ++i)
            text += "<LAYER l" + QByteArray::number(i) + ">\n\t<TEXT t x=1>\n</LAYER>\n";
        readText(doc, text);
        TreeModel tree(doc);
        ObjectTreeModel &model = tree.model;
        model.BuildObjectTree(false);
        QCOMPARE(model.rowCount(), 20000);
        const QModelIndex last = model.index(19999, 0);
        QVERIFY(model.hasChildren(last));
        QCOMPARE(model.nodeKey(model.index(0, 0, model.index(0, 0, last))), QByteArray("Ll19999|Et|Px"));
        QCOMPARE(model.parent(model.index(0, 0, last)), last);
    }

private:
    void checkEveryNodeResolves(const ObjectTreeModel &model, const QModelIndex &parent)
    {
        for (int row = 0; row < model.rowCount(parent); ++row) {
            const QModelIndex node = model.index(row, 0, parent);
            if (model.nodeKind(node) == ObjectTreeNode::Headers)
                QVERIFY(!model.resolve(node).element);
            else if (model.nodeKind(node) == ObjectTreeNode::Property)
                QCOMPARE(NodeKey::propertyText(model.resolve(node).property, SkinCodec()), model.nodeText(node));
            else if (NodeKey::ownLetterOf(model.nodeKey(node)) != 'U')
                QCOMPARE(NodeKey::elementText(*model.resolve(node).element, SkinCodec()), model.nodeText(node));
            checkEveryNodeResolves(model, node);
        }
    }
};

QTEST_GUILESS_MAIN(TestObjectTree)
#include "tst_objecttree.moc"
