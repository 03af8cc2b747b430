// SPDX-License-Identifier: MIT
#include "ChangeValueCommand.h"
#include "ColorValueText.h"
#include "DragPosition.h"
#include "ElementCommands.h"
#include "ObjectTreeModel.h"
#include "TreeDump.h"
#include "PropertyCommands.h"
#include "PropertyKinds.h"
#include "SkinContext.h"
#include "SkinDocument.h"
#include "UiFileReader.h"
#include "UiFileWriter.h"
#include "clsKorviInterface.h"

#include <QUndoStack>
#include <QtTest>

namespace {

const QByteArray kSkin = "<LAYER ui_Main z=1>\n"
                         "\t<TEXT txtTitle x=10 y=20 font=\"a\" font=\"b\" text=\"Hi\">\n"
                         "\t<BUTTON btnOk x=1>\n"
                         "\t<SPRITE sprNoPlace bmp=\"a.bmp\">\n"
                         "</LAYER>\n"
                         "<LAYER ui_Second>\n"
                         "\t<TEXT txtOne x=5>\n"
                         "\t<TEXT txtTwo x=6>\n"
                         "</LAYER>\n"
                         "<LAYER ui_Third>\n"
                         "</LAYER>\n";

struct Fixture
{
    clsKorviInterface document;
    SkinContext context;
    SkinDocument surface { document, context };
    ObjectTreeModel tree { surface };
    // The node that is current after each step of the history.
    QByteArrayList shown;
    QUndoStack &stack = surface.undoStack();

    Fixture()
    {
        UiFileReader reader(document, false);
        reader.readBytes(kSkin, QStringLiteral("skin.ui"));
        tree.BuildObjectTree(false);
        QObject::connect(&stack, &QUndoStack::indexChanged, [this] { shown << surface.currentKey(); });
    }

    void select(const QByteArray &key) { surface.setCurrent(key); }

    QStringList nodes() const
    {
        QStringList lines;
        dumpTree(tree, QModelIndex(), 0, lines);
        return lines;
    }

    QByteArray text() const { return UiFileWriter(document).fileText(); }

    QByteArray value(const QByteArray &nodeKey) const
    {
        const NodeTarget target = surface.resolve(nodeKey);
        return target.property.isNull() ? QByteArray("(none)") : target.property.value();
    }
};

} // namespace

class TestEditCommands : public QObject
{
    Q_OBJECT

private slots:
    void settingAValueChangesDocumentThenNodeThenShowsIt()
    {
        Fixture f;
        f.select("Lui_Main|EtxtTitle");
        const QModelIndex node = f.tree.indexOfKey("Lui_Main|EtxtTitle|Px");
        QSignalSpy changed(&f.tree, &QAbstractItemModel::dataChanged);
        f.stack.push(new SetPropertyValueCommand(f.surface, "Lui_Main|EtxtTitle|Px", "42",
                                                 "Lui_Main|EtxtTitle"));
        QCOMPARE(f.value("Lui_Main|EtxtTitle|Px"), QByteArray("42"));
        QCOMPARE(f.tree.nodeText(node), QStringLiteral("x=42"));
        QCOMPARE(changed.count(), 1);
        QCOMPARE(f.shown.last(), QByteArray("Lui_Main|EtxtTitle"));
    }

    void undoAndRedoOfAValue()
    {
        Fixture f;
        const QByteArray before = f.text();
        f.stack.push(new SetPropertyValueCommand(f.surface, "Lui_Main|EtxtTitle|Pfont[0]", "\"c\"",
                                                 "Lui_Main|EtxtTitle"));
        QVERIFY(f.text() != before);
        f.stack.undo();
        QCOMPARE(f.text(), before);
        QCOMPARE(f.tree.nodeText(f.tree.indexOfKey("Lui_Main|EtxtTitle|Pfont[0]")),
                 QStringLiteral("font=\"b\""));
        f.stack.redo();
        QCOMPARE(f.value("Lui_Main|EtxtTitle|Pfont[0]"), QByteArray("\"c\""));
    }

    void aKeyThatNamesNoPropertyChangesNothing()
    {
        Fixture f;
        const QByteArray before = f.text();
        f.stack.push(new SetPropertyValueCommand(f.surface, "Lui_Main|EtxtTitle|Pnothing", "1", ""));
        // Nothing happened, so the history does not list it.
        QCOMPARE(f.stack.count(), 0);
        QCOMPARE(f.text(), before);
    }

    void addingAPropertyAppendsItAndItsNode()
    {
        Fixture f;
        auto *command = new AddPropertyCommand(f.surface, "Lui_Main|EbtnOk", "x", "0");
        f.stack.push(command);
        QCOMPARE(command->propertyKey(), QByteArray("x[0]"));
        clsElement *button = f.surface.resolve("Lui_Main|EbtnOk").element;
        QCOMPARE(button->Properties().Count(), 2);
        QCOMPARE(button->Properties().keyAt(1), QByteArrayView("x[0]"));
        const QModelIndex owner = f.tree.indexOfKey("Lui_Main|EbtnOk");
        QCOMPARE(f.tree.nodeText(f.tree.index(1, 0, owner)), QStringLiteral("x=0"));
        QCOMPARE(f.shown.last(), QByteArray("Lui_Main|EbtnOk"));
    }

    void undoAndRedoOfAnAddedProperty()
    {
        Fixture f;
        const QByteArray text = f.text();
        const QStringList nodes = f.nodes();
        f.stack.push(new AddPropertyCommand(f.surface, "Lui_Main|EtxtTitle", "hide", "<NOV>"));
        const QByteArray added = f.text();
        const QStringList addedNodes = f.nodes();
        QVERIFY(addedNodes.contains(QStringLiteral("    Lui_Main|EtxtTitle|Phide | hide")));
        f.stack.undo();
        QCOMPARE(f.text(), text);
        QCOMPARE(f.nodes(), nodes);
        f.stack.redo();
        QCOMPARE(f.text(), added);
        QCOMPARE(f.nodes(), addedNodes);
    }

    void undoOfARemovedPropertyPutsItBackAtItsPlace()
    {
        Fixture f;
        const QByteArray text = f.text();
        const QStringList nodes = f.nodes();
        auto *command = new RemovePropertyCommand(f.surface, "Lui_Main|EtxtTitle|Pfont");
        QVERIFY(command->isValid());
        f.stack.push(command);
        QVERIFY(!f.text().contains("font=\"a\""));
        QVERIFY(!f.nodes().contains(QStringLiteral("    Lui_Main|EtxtTitle|Pfont | font=\"a\"")));
        QCOMPARE(f.shown.last(), QByteArray("Lui_Main|EtxtTitle"));
        f.stack.undo();
        QCOMPARE(f.text(), text);
        QCOMPARE(f.nodes(), nodes);
        clsElement *title = f.surface.resolve("Lui_Main|EtxtTitle").element;
        QCOMPARE(title->Properties().keyAt(2), QByteArrayView("font"));
        QCOMPARE(title->Properties().keyAt(3), QByteArrayView("font[0]"));
        f.stack.redo();
        QVERIFY(!f.text().contains("font=\"a\""));
    }

    void addingAnObjectToALayer()
    {
        Fixture f;
        const QByteArray text = f.text();
        const QStringList nodes = f.nodes();
        auto *command = new AddElementCommand(f.surface, "Lui_Main", "btnOk", "button");
        f.stack.push(command);
        QCOMPARE(command->elementNodeKey(), QByteArray("Lui_Main|EbtnOk[0]"));
        clsElement *added = f.surface.resolve("Lui_Main|EbtnOk[0]").element;
        QVERIFY(added);
        QCOMPARE(added->ElementType(), QByteArray("BUTTON"));
        QCOMPARE(added->strName(), QByteArray("btnOk"));
        // The new object is selected, ready for its properties.
        QCOMPARE(f.shown.last(), QByteArray("Lui_Main|EbtnOk[0]"));
        const QStringList addedNodes = f.nodes();
        QVERIFY(addedNodes.contains(QStringLiteral("  Lui_Main|EbtnOk[0] | BUTTON:btnOk")));
        f.stack.undo();
        QCOMPARE(f.text(), text);
        QCOMPARE(f.nodes(), nodes);
        f.stack.redo();
        QCOMPARE(f.surface.resolve("Lui_Main|EbtnOk[0]").element, added);
        QCOMPARE(f.nodes(), addedNodes);
    }

    void addingALayer()
    {
        Fixture f;
        const QByteArray text = f.text();
        f.stack.push(new AddElementCommand(f.surface, QByteArray(), "ui_New", "LAYER"));
        QCOMPARE(f.document.Layers().Count(), 4);
        QCOMPARE(f.tree.nodeText(f.tree.index(3, 0)), QStringLiteral("LAYER:ui_New"));
        QCOMPARE(f.tree.nodeKey(f.tree.index(3, 0)), QByteArray("Lui_New"));
        f.stack.undo();
        QCOMPARE(f.text(), text);
        QCOMPARE(f.tree.rowCount(), 3);
    }

    void anObjectAddedAtAPlaceGoesThereAndUndoTakesItAway()
    {
        Fixture f;
        const QByteArray text = f.text();
        f.stack.push(new AddElementCommand(f.surface, "Lui_Second", "txtOne", "TEXT", 1));
        const clsElements &objects = f.document.Layers().Item("ui_Second")->SubElements();
        QCOMPARE(objects.Count(), 3);
        QCOMPARE(objects.at(1)->ElementKey(), QByteArray("txtOne[0]"));
        QCOMPARE(f.tree.nodeKey(f.tree.index(1, 0, f.tree.indexOfKey("Lui_Second"))),
                 QByteArray("Lui_Second|EtxtOne[0]"));
        QCOMPARE(f.shown.last(), QByteArray("Lui_Second|EtxtOne[0]"));
        f.stack.undo();
        QCOMPARE(f.text(), text);
        f.stack.redo();
        QCOMPARE(objects.at(1)->ElementKey(), QByteArray("txtOne[0]"));
    }

    void anObjectMovesOnePlaceKeepingItsKeyAndUndoPutsItBack()
    {
        Fixture f;
        const QByteArray text = f.text();
        const QStringList nodes = f.nodes();
        clsElement *title = f.surface.elementAt("Lui_Main|EtxtTitle");
        f.select("Lui_Main|EtxtTitle");
        f.stack.push(new ReorderElementCommand(f.surface, "Lui_Main|EtxtTitle", ReorderElementCommand::Direction::Down));
        QCOMPARE(f.document.Layers().Item("ui_Main")->SubElements().positionOf(title), 1);
        QCOMPARE(f.surface.elementAt("Lui_Main|EtxtTitle"), title);
        QCOMPARE(f.tree.indexOfKey("Lui_Main|EtxtTitle").row(), f.tree.indexOfKey("Lui_Main|EbtnOk").row() + 1);
        QCOMPARE(f.shown.last(), QByteArray("Lui_Main|EtxtTitle"));
        QVERIFY(f.text().indexOf("btnOk") < f.text().indexOf("txtTitle"));
        f.stack.undo();
        QCOMPARE(f.text(), text);
        QCOMPARE(f.nodes(), nodes);
        QCOMPARE(f.shown.last(), QByteArray("Lui_Main|EtxtTitle"));
    }

    void nothingMovesBeyondTheEndsOfItsSiblings()
    {
        Fixture f;
        using Direction = ReorderElementCommand::Direction;
        QVERIFY(!ReorderElementCommand::canMove(f.surface, "Lui_Main|EtxtTitle", Direction::Up));
        QVERIFY(ReorderElementCommand::canMove(f.surface, "Lui_Main|EtxtTitle", Direction::Down));
        QVERIFY(!ReorderElementCommand::canMove(f.surface, "Lui_Main|EsprNoPlace", Direction::Down));
        QVERIFY(!ReorderElementCommand::canMove(f.surface, "Lui_Third", Direction::Down));
        QVERIFY(ReorderElementCommand::canMove(f.surface, "Lui_Third", Direction::Up));
        QVERIFY(!ReorderElementCommand(f.surface, "Lui_Main|EtxtTitle|Px", Direction::Down).isValid());
        QVERIFY(!ReorderElementCommand(f.surface, "Lnothing", Direction::Down).isValid());
    }

    void aLayerMovesOnlyAmongTheLayersOfTheFileItIsWrittenInto()
    {
        Fixture f;
        UiFileReader(f.document, true).readBytes("<LAYER ui_Shared>\n</LAYER>\n", QStringLiteral("scheme.ui"));
        QCOMPARE(f.document.Layers().Count(), 4);
        using Direction = ReorderElementCommand::Direction;
        QVERIFY(!ReorderElementCommand::canMove(f.surface, "Lui_Third", Direction::Down));
        QVERIFY(!ReorderElementCommand::canMove(f.surface, "Lui_Shared", Direction::Up));
        QVERIFY(ReorderElementCommand::canMove(f.surface, "Lui_Third", Direction::Up));
        // A new layer goes into the open file: it moves among that file's layers only.
        f.context.UiFilePath = QStringLiteral("skin.ui");
        f.stack.push(new AddElementCommand(f.surface, QByteArray(), "ui_New", "LAYER", 3));
        QVERIFY(ReorderElementCommand::canMove(f.surface, "Lui_New", Direction::Up));
        QVERIFY(ReorderElementCommand::canMove(f.surface, "Lui_Third", Direction::Down));
        QVERIFY(!ReorderElementCommand::canMove(f.surface, "Lui_New", Direction::Down));
    }

    void undoOfARemovedObjectPutsItBackWithItsKeyAndPlace()
    {
        Fixture f;
        const QByteArray text = f.text();
        const QStringList nodes = f.nodes();
        clsElement *one = f.surface.resolve("Lui_Second|EtxtOne").element;
        f.stack.push(new RemoveElementCommand(f.surface, "Lui_Second|EtxtOne"));
        QVERIFY(!f.surface.resolve("Lui_Second|EtxtOne").found);
        QCOMPARE(f.shown.last(), QByteArray("Lui_Second"));
        f.stack.undo();
        QCOMPARE(f.surface.resolve("Lui_Second|EtxtOne").element, one);
        QCOMPARE(one->Index(), 1);
        QCOMPARE(f.text(), text);
        QCOMPARE(f.nodes(), nodes);
    }

    void undoOfARemovedLayerWithChildrenThenSaveWritesTheSameFile()
    {
        Fixture f;
        QTemporaryDir dir;
        const QString before = dir.filePath(QStringLiteral("before.ui"));
        const QString after = dir.filePath(QStringLiteral("after.ui"));
        const auto noReport = [](const QString &) { };
        QVERIFY(WriteUiFile(f.document, before, noReport));
        const QStringList nodes = f.nodes();
        f.stack.push(new RemoveElementCommand(f.surface, "Lui_Second"));
        QCOMPARE(f.document.Layers().Count(), 2);
        QCOMPARE(f.tree.rowCount(), 2);
        f.stack.undo();
        QVERIFY(WriteUiFile(f.document, after, noReport));
        QFile a(before), b(after);
        QVERIFY(a.open(QIODevice::ReadOnly));
        QVERIFY(b.open(QIODevice::ReadOnly));
        QCOMPARE(b.readAll(), a.readAll());
        QCOMPARE(f.nodes(), nodes);
        QCOMPARE(f.document.Layers().at(1)->ElementKey(), QByteArray("ui_Second"));
        QCOMPARE(f.document.Layers().at(1)->subElementCount(), 2);
    }

    void aMoveAddsMissingCoordinatesAndUndoTakesThemAway()
    {
        Fixture f;
        const QByteArray text = f.text();
        const QStringList nodes = f.nodes();
        f.stack.push(new MoveElementCommand(f.surface, "Lui_Main|EsprNoPlace", "3", "4", 0));
        QCOMPARE(f.value("Lui_Main|EsprNoPlace|Px"), QByteArray("3"));
        QCOMPARE(f.value("Lui_Main|EsprNoPlace|Py"), QByteArray("4"));
        QVERIFY(f.nodes().contains(QStringLiteral("    Lui_Main|EsprNoPlace|Py | y=4")));
        f.stack.undo();
        QCOMPARE(f.text(), text);
        QCOMPARE(f.nodes(), nodes);
    }

    void movesWithinOneSecondMergeIntoOneStep()
    {
        Fixture f;
        const QByteArray text = f.text();
        f.stack.push(new MoveElementCommand(f.surface, "Lui_Main|EtxtTitle", "11", "20", 1000));
        f.stack.push(new MoveElementCommand(f.surface, "Lui_Main|EtxtTitle", "12", "20", 1900));
        f.stack.push(new MoveElementCommand(f.surface, "Lui_Main|EtxtTitle", "13", "21", 2800));
        QCOMPARE(f.stack.count(), 1);
        QCOMPARE(f.value("Lui_Main|EtxtTitle|Px"), QByteArray("13"));
        f.stack.undo();
        QCOMPARE(f.text(), text);
    }

    void movesMoreThanOneSecondApartStaySeparate()
    {
        Fixture f;
        f.stack.push(new MoveElementCommand(f.surface, "Lui_Main|EtxtTitle", "11", "20", 1000));
        f.stack.push(new MoveElementCommand(f.surface, "Lui_Main|EtxtTitle", "12", "20", 2001));
        QCOMPARE(f.stack.count(), 2);
        f.stack.undo();
        QCOMPARE(f.value("Lui_Main|EtxtTitle|Px"), QByteArray("11"));
    }

    void movesOfTwoObjectsStaySeparate()
    {
        Fixture f;
        f.stack.push(new MoveElementCommand(f.surface, "Lui_Main|EtxtTitle", "11", "20", 1000));
        f.stack.push(new MoveElementCommand(f.surface, "Lui_Main|EbtnOk", "2", "0", 1100));
        QCOMPARE(f.stack.count(), 2);
    }

    void repeatedEditsOfOneValueMakeOneStep()
    {
        Fixture f;
        const QByteArray text = f.text();
        f.stack.push(new SetPropertyValueCommand(f.surface, "Lui_Main|EtxtTitle|Px", "11", "Lui_Main|EtxtTitle"));
        f.stack.push(new SetPropertyValueCommand(f.surface, "Lui_Main|EtxtTitle|Px", "12", "Lui_Main|EtxtTitle"));
        QCOMPARE(f.stack.count(), 1);
        QCOMPARE(f.value("Lui_Main|EtxtTitle|Px"), QByteArray("12"));
        f.stack.push(new SetPropertyValueCommand(f.surface, "Lui_Main|EtxtTitle|Py", "5", "Lui_Main|EtxtTitle"));
        QCOMPARE(f.stack.count(), 2);
        f.stack.undo();
        f.stack.undo();
        QCOMPARE(f.text(), text);
    }

    void editsBackToTheOldValueLeaveNoStep()
    {
        Fixture f;
        f.stack.push(new SetPropertyValueCommand(f.surface, "Lui_Main|EtxtTitle|Px", "11", "Lui_Main|EtxtTitle"));
        f.stack.push(new SetPropertyValueCommand(f.surface, "Lui_Main|EtxtTitle|Px", "10", "Lui_Main|EtxtTitle"));
        QCOMPARE(f.stack.count(), 0);
        QCOMPARE(f.value("Lui_Main|EtxtTitle|Px"), QByteArray("10"));
        f.stack.push(new SetPropertyValueCommand(f.surface, "Lui_Main|EtxtTitle|Px", "10", "Lui_Main|EtxtTitle"));
        QCOMPARE(f.stack.count(), 0);
    }

    void aChangeWhoseObjectIsGoneLeavesTheHistory()
    {
        Fixture f;
        f.stack.push(new SetPropertyValueCommand(f.surface, "Lui_Main|EtxtTitle|Px", "11", "Lui_Main|EtxtTitle"));
        QCOMPARE(f.stack.count(), 1);
        // Taken out behind the history's back: the step has nothing to undo.
        const std::unique_ptr<clsElement> title = f.surface.takeElement("Lui_Main", 0);
        QVERIFY(title);
        f.stack.undo();
        QCOMPARE(f.stack.count(), 0);
    }

    void theDocumentTellsExactlyWhatChanged()
    {
        Fixture f;
        QSignalSpy changed(&f.surface, &SkinDocument::propertyChanged);
        QSignalSpy added(&f.surface, &SkinDocument::propertyAdded);
        QSignalSpy removed(&f.surface, &SkinDocument::elementRemoved);
        QVERIFY(f.surface.setPropertyValue("Lui_Main|EtxtTitle", "y", "21"));
        QCOMPARE(changed.count(), 1);
        QCOMPARE(changed.first().at(0).toByteArray(), QByteArray("Lui_Main|EtxtTitle"));
        QCOMPARE(changed.first().at(1).toInt(), 1);
        // The same value again is no change.
        QVERIFY(f.surface.setPropertyValue("Lui_Main|EtxtTitle", "y", "21"));
        QCOMPARE(changed.count(), 1);
        QVERIFY(!f.surface.setPropertyValue("Lui_Main|EtxtTitle", "nothing", "1"));
        QCOMPARE(f.surface.addProperty("Lui_Main|EbtnOk", "y", "3"), 1);
        QCOMPARE(added.count(), 1);
        QVERIFY(f.surface.takeElement("Lui_Second", 1));
        QCOMPARE(removed.count(), 1);
        QCOMPARE(removed.first().at(0).toByteArray(), QByteArray("Lui_Second"));
        QCOMPARE(removed.first().at(1).toInt(), 1);
    }

    void aMoveIsToldAsOneChange()
    {
        Fixture f;
        QSignalSpy changed(&f.surface, &SkinDocument::changed);
        QSignalSpy added(&f.surface, &SkinDocument::propertyAdded);
        f.stack.push(new MoveElementCommand(f.surface, "Lui_Main|EsprNoPlace", "3", "4", 0));
        QCOMPARE(added.count(), 2);
        QCOMPARE(changed.count(), 1);
        f.stack.undo();
        QCOMPARE(changed.count(), 2);
        // A change made alone is told at once.
        QVERIFY(f.surface.setPropertyValue("Lui_Main|EtxtTitle", "x", "1"));
        QCOMPARE(changed.count(), 3);
    }

    void newEditorWideValuesAreToldOnce()
    {
        Fixture f;
        QSignalSpy changed(&f.surface, &SkinDocument::contextChanged);
        SkinContext context = f.surface.context();
        context.SkinFormat = QStringLiteral("800_480");
        f.surface.setContext(context);
        f.surface.setContext(context);
        QCOMPARE(changed.count(), 1);
        QCOMPARE(f.context.SkinFormat, QStringLiteral("800_480"));
    }

    void aMoveByDistanceAddsToTheCurrentPlace()
    {
        const auto moved = DragPosition::moved("10", "20px", -5, 3);
        QVERIFY(moved);
        QCOMPARE(moved->x, QByteArray("5"));
        QCOMPARE(moved->y, QByteArray("23"));
        QCOMPARE(DragPosition::moved("abc", "", 2, 2)->x, QByteArray("2"));
    }

    void aMoveBeyondThe32BitRangeChangesNothing()
    {
        QVERIFY(!DragPosition::moved("2147483647", "0", 1, 0));
        QVERIFY(!DragPosition::moved("0", "-2147483648", 0, -1));
        QCOMPARE(DragPosition::moved("2147483646", "0", 1, 0)->x, QByteArray("2147483647"));
    }

    void newPropertiesStartWithTheValueOfTheirName()
    {
        QCOMPARE(PropertyKinds::defaultValueOf("x"), QByteArray("0"));
        QCOMPARE(PropertyKinds::defaultValueOf("h"), QByteArray("0"));
        QCOMPARE(PropertyKinds::defaultValueOf("bmpvalign"), QByteArray("\"\""));
        QCOMPARE(PropertyKinds::defaultValueOf("iconspr"), QByteArray("\"\""));
        QCOMPARE(PropertyKinds::defaultValueOf("onlongclick"), QByteArray("''"));
        QCOMPARE(PropertyKinds::defaultValueOf("simpleclicklist"), QByteArray("<NOV>"));
        QCOMPARE(PropertyKinds::defaultValueOf("color"), QByteArray());
    }

    void aColourPresetReadsTheDigitsAsTheyStand()
    {
        // 0xFF0000 as a colour number with red in the lowest byte is pure blue.
        QCOMPARE(ColorValueText::presetFor("#FF0000"), QColor(0, 0, 255));
        QCOMPARE(ColorValueText::presetFor("#0000ff"), QColor(255, 0, 0));
        QCOMPARE(ColorValueText::presetFor("#123456"), QColor(0x56, 0x34, 0x12));
    }

    void aChosenColourIsWrittenRedGreenBlue()
    {
        QCOMPARE(ColorValueText::valueFor(QColor(255, 0, 0)), QByteArray("#FF0000"));
        QCOMPARE(ColorValueText::valueFor(QColor(0x12, 0x34, 0x56)), QByteArray("#123456"));
        QCOMPARE(ColorValueText::valueFor(QColor(0, 0, 10)), QByteArray("#00000A"));
    }
};

QTEST_MAIN(TestEditCommands)
#include "tst_editcommands.moc"
