// SPDX-License-Identifier: MIT
#include "ColumnIndexError.h"
#include "DuplicateKeyError.h"
#include "SortOverflowError.h"
#include "clsComboList.h"
#include "clsHeaders.h"
#include "clsPowGridItems.h"

#include <QtTest>

class TestGridModel : public QObject
{
    Q_OBJECT

    static QStringList column0(const clsPowGridItems &items)
    {
        QStringList texts;
        for (const PowGridItem *item : items)
            texts << item->CellText(0);
        return texts;
    }

private slots:
    void addAtTopOnEmptyCollectionAppends()
    {
        clsPowGridItems items;
        PowGridItem *first = items.Add(true, QString());
        QCOMPARE(items.Count(), 1);
        QCOMPARE(first->Index(), 1);
        PowGridItem *second = items.Add(false);
        QCOMPARE(second->Index(), 2);
    }

    void addAtTopOnNonEmptyCollectionBecomesRowOne()
    {
        clsPowGridItems items;
        PowGridItem *a = items.Add();
        PowGridItem *b = items.Add(true);
        QCOMPARE(b->Index(), 1);
        QCOMPARE(a->Index(), 2);
        QCOMPARE(items.Item(1), b);
    }

    void addSetsKeyOwnerVisibleAndRaisesItemAdded()
    {
        clsPowGridItems items;
        QSignalSpy added(&items, &clsPowGridItems::ItemAdded);
        PowGridItem *row = items.Add(false, QStringLiteral("x"));
        QCOMPARE(added.count(), 1);
        QCOMPARE(row->Key, QStringLiteral("x"));
        QVERIFY(row->Visible);
        QCOMPARE(items.Item(QStringLiteral("x")), row);
        QCOMPARE(items.Item(QStringLiteral("X")), row); // keys ignore case
        QVERIFY(items.ItemExist(QStringLiteral("x")));
        QVERIFY(!items.ItemExist(QStringLiteral("y")));
    }

    void addWithKeyInUseThrows()
    {
        clsPowGridItems items;
        items.Add(false, QStringLiteral("k"));
        QVERIFY_THROWS_EXCEPTION(DuplicateKeyError, items.Add(false, QStringLiteral("K")));
        QVERIFY_THROWS_EXCEPTION(DuplicateKeyError, items.AddSorted(0, "a", QStringLiteral("k")));
        QCOMPARE(items.Count(), 1);
        clsHeaders headers;
        headers.Add(QStringLiteral("A"), 100, true, dtText, QStringLiteral("a"));
        QVERIFY_THROWS_EXCEPTION(DuplicateKeyError,
                                 headers.Add(QStringLiteral("B"), 100, true, dtText, QStringLiteral("a")));
        clsComboList list;
        list.Add(QStringLiteral("One"), QStringLiteral("1"));
        QVERIFY_THROWS_EXCEPTION(DuplicateKeyError, list.Add(QStringLiteral("Uno"), QStringLiteral("1")));
    }

    void itemOfMissingPositionOrKeyIsNothing()
    {
        clsPowGridItems items;
        items.Add();
        QVERIFY(items.Item(0) == nullptr);
        QVERIFY(items.Item(2) == nullptr);
        QVERIFY(items.Item(QStringLiteral("nope")) == nullptr);
    }

    void addSortedIntoEmptyCollectionAppends()
    {
        clsPowGridItems items;
        QSignalSpy added(&items, &clsPowGridItems::ItemAdded);
        PowGridItem *row = items.AddSorted(2, QStringLiteral("m"), QStringLiteral("key"));
        QCOMPARE(items.Count(), 1);
        QCOMPARE(row->CellText(2), QStringLiteral("m"));
        QCOMPARE(row->Key, QStringLiteral("key"));
        QVERIFY(row->Visible);
        QCOMPARE(added.count(), 1);
    }

    void addSortedTextGivesDescendingOrder()
    {
        clsPowGridItems items;
        items.AddSorted(0, QStringLiteral("b"));
        items.AddSorted(0, QStringLiteral("c"));
        items.AddSorted(0, QStringLiteral("a"));
        QCOMPARE(column0(items), (QStringList { "c", "b", "a" }));
    }

    void addSortedNumbersCompareAsNumbers()
    {
        clsPowGridItems items;
        for (int v : { 9, 100, 20 })
            items.AddSorted(0, v);
        QCOMPARE(column0(items), (QStringList { "100", "20", "9" }));
        items.AddSorted(0, QStringLiteral("50")); // a text that is a number counts as one
        QCOMPARE(column0(items), (QStringList { "100", "50", "20", "9" }));
    }

    void addSortedNumberOverflowsBeyondSixteenBits()
    {
        clsPowGridItems items;
        items.Add()->setCellText(0, QStringLiteral("40000"));
        QVERIFY_THROWS_EXCEPTION(SortOverflowError, items.AddSorted(0, 5));
        QCOMPARE(items.Count(), 1);
        items.Item(1)->setCellText(0, QStringLiteral("32767"));
        items.AddSorted(0, 5);
        QCOMPARE(items.Count(), 2);
        // Text values are compared as text: no overflow.
        items.Item(1)->setCellText(0, QStringLiteral("40000"));
        items.AddSorted(0, QStringLiteral("z"));
        QCOMPARE(items.Count(), 3);
    }

    void cellTextOfColumnFiftyOrMoreIsAnIndexError()
    {
        PowGridItem row;
        row.setCellText(49, QStringLiteral("last"));
        QCOMPARE(row.CellText(49), QStringLiteral("last"));
        QVERIFY_THROWS_EXCEPTION(ColumnIndexError, row.CellText(50));
        QVERIFY_THROWS_EXCEPTION(ColumnIndexError, row.setCellText(50, QStringLiteral("x")));
        QVERIFY_THROWS_EXCEPTION(ColumnIndexError, row.CellText(-1));
        clsPowGridItems items;
        QVERIFY_THROWS_EXCEPTION(ColumnIndexError, items.AddSorted(50, QStringLiteral("x")));
    }

    void settingCellTextToCurrentValueRaisesNoItemChanged()
    {
        clsPowGridItems items;
        PowGridItem *row = items.Add();
        QSignalSpy changed(&items, &clsPowGridItems::ItemChanged);
        row->setCellText(1, QStringLiteral("v"));
        QCOMPARE(changed.count(), 1);
        QCOMPARE(changed.at(0).at(0).value<PowGridItem *>(), row);
        QCOMPARE(changed.at(0).at(1).toInt(), 1);
        row->setCellText(1, QStringLiteral("v"));
        QCOMPARE(changed.count(), 1);
    }

    void rowWithoutOwnerReportsNothing()
    {
        PowGridItem row;
        row.setCellText(0, QStringLiteral("free"));
        QCOMPARE(row.Index(), 0);
    }

    void setItemColumnsSkipsOmittedValues()
    {
        clsPowGridItems items;
        PowGridItem *row = items.Add();
        row->setCellText(1, QStringLiteral("keep"));
        QSignalSpy changed(&items, &clsPowGridItems::ItemChanged);
        row->SetItemColumns({ QStringLiteral("a"), std::nullopt, QStringLiteral("c") });
        QCOMPARE(row->CellText(0), QStringLiteral("a"));
        QCOMPARE(row->CellText(1), QStringLiteral("keep"));
        QCOMPARE(row->CellText(2), QStringLiteral("c"));
        QCOMPARE(changed.count(), 2);
    }

    void clearOfThreeRowsRaisesItemRemovedOnce()
    {
        clsPowGridItems items;
        items.Add();
        items.Add();
        items.Add();
        QSignalSpy removed(&items, &clsPowGridItems::ItemRemoved);
        items.Clear();
        QCOMPARE(items.Count(), 0);
        QCOMPARE(removed.count(), 1);
    }

    void removeByPositionOrKeyKeepsIndexesRight()
    {
        clsPowGridItems items;
        items.Add(false, QStringLiteral("a"));
        PowGridItem *b = items.Add(false, QStringLiteral("b"));
        PowGridItem *c = items.Add(false, QStringLiteral("c"));
        QSignalSpy removed(&items, &clsPowGridItems::ItemRemoved);
        items.Remove(1);
        QCOMPARE(b->Index(), 1);
        QCOMPARE(c->Index(), 2);
        items.Remove(QStringLiteral("C"));
        QCOMPARE(items.Count(), 1);
        QCOMPARE(removed.count(), 2);
        QVERIFY(!items.ItemExist(QStringLiteral("c")));
        items.Add(false, QStringLiteral("c")); // the key is free again
        items.Remove(7);                       // nothing there: nothing happens
        QCOMPARE(removed.count(), 2);
    }

    void countVisibleOffsetOverVisibleHiddenHiddenVisibleIsTwo()
    {
        clsPowGridItems items;
        for (bool visible : { true, false, false, true })
            items.Add()->Visible = visible;
        QCOMPARE(items.CountVisible(), 2);
        QCOMPARE(items.CountVisibleOffset(2), 2);
        QCOMPARE(items.CountVisibleOffset(1), 0);
        QCOMPARE(items.CountVisibleOffset(0), 0);
        // The second visible row sits at position 2 + 2.
        QCOMPARE(2 + items.CountVisibleOffset(2), 4);
    }

    void enumerationWalksInOrder()
    {
        clsPowGridItems items;
        items.Add()->setCellText(0, "1");
        items.Add()->setCellText(0, "2");
        items.Add(true)->setCellText(0, "0");
        QCOMPARE(column0(items), (QStringList { "0", "1", "2" }));
    }

    void headersAddSetsValuesAndRaisesItemAdded()
    {
        clsHeaders headers;
        QSignalSpy added(&headers, &clsHeaders::ItemAdded);
        Header *h = headers.Add(QStringLiteral("Value"), 1500, false, dtCombo, QStringLiteral("v"));
        QCOMPARE(added.count(), 1);
        QCOMPARE(h->Caption, QStringLiteral("Value"));
        QCOMPARE(h->ColumnWidth, 1500);
        QCOMPARE(h->Visible, false);
        QCOMPARE(h->ColumnDataType, int(dtCombo));
        QVERIFY(h->NumericMin < h->NumericMax);
        QCOMPARE(h->NumericMin, double(std::numeric_limits<qint32>::min()));
        QCOMPARE(h->NumericMax, double(std::numeric_limits<qint32>::max()));
        QVERIFY(h->ColumnEditable);
        QCOMPARE(h->Alignment, int(alignLeft));
        Header *first = headers.Add(QStringLiteral("No key"), 100, true, dtText);
        QCOMPARE(first->Index(), 2);
        headers.Remove(1);
        QCOMPARE(first->Index(), 1);
        QCOMPARE(headers.Item(1), first);
        QVERIFY(!headers.ItemExist(QStringLiteral("v")));
        headers.Clear();
        QCOMPARE(headers.Count(), 0);
    }

    void comboListTextAndKeys()
    {
        clsComboList list;
        ComboItem *one = list.Add(QStringLiteral("One"), QStringLiteral("1"));
        list.Add(QStringLiteral("Two"), QStringLiteral("2"));
        QCOMPARE(one->strText, QStringLiteral("One"));
        QCOMPARE(list.ItemText(QStringLiteral("2")), QStringLiteral("Two"));
        QCOMPARE(list.ItemText(QStringLiteral("9")), QString());
        QCOMPARE(list.Count(), 2);
        int line = 0;
        for (ComboItem *item : list)
            item->ComboListIndex = line++;
        QCOMPARE(list.ItemKey(1), QStringLiteral("2"));
        QCOMPARE(list.ItemKey(0), QStringLiteral("1"));
    }

    void itemKeyOfPositionNoEntryCarriesIsEmpty()
    {
        clsComboList list;
        list.Add(QStringLiteral("One"), QStringLiteral("1"))->ComboListIndex = 0;
        QCOMPARE(list.ItemKey(5), QString());
        QCOMPARE(list.ItemKey(-1), QString());
        list.Remove(QStringLiteral("1"));
        QCOMPARE(list.Count(), 0);
    }
};

QTEST_MAIN(TestGridModel)
#include "tst_gridmodel.moc"
