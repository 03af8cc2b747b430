// SPDX-License-Identifier: MIT
#include "SourceEdits.h"

#include <QRandomGenerator>
#include <QtTest>

// Edits made on a copy of the bytes and made on the bytes themselves give the
// same text.
class TestSourceEdits : public QObject
{
    Q_OBJECT

private slots:
    void editsMadeInPlaceGiveTheSameText_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<QList<int>>("ranges");
        QTest::addColumn<QList<QByteArray>>("texts");
        QTest::addColumn<QByteArray>("expected");
        QTest::newRow("same length") << QByteArray("x=100 y=2") << QList<int> { 2, 5 } << QList<QByteArray> { "222" }
                                     << QByteArray("x=222 y=2");
        QTest::newRow("longer") << QByteArray("x=1 y=2") << QList<int> { 2, 3 } << QList<QByteArray> { "1000" }
                                << QByteArray("x=1000 y=2");
        QTest::newRow("shorter") << QByteArray("x=1000 y=2") << QList<int> { 2, 6 } << QList<QByteArray> { "1" }
                                 << QByteArray("x=1 y=2");
        // The part between the edits moves back while the end moves on.
        QTest::newRow("shorter, then longer") << QByteArray("aaaaXXXXbbbbYcccc") << QList<int> { 4, 8, 12, 13 }
                                              << QList<QByteArray> { "", "YYYYYYYYYY" }
                                              << QByteArray("aaaabbbbYYYYYYYYYYcccc");
        QTest::newRow("longer, then shorter") << QByteArray("aaaaXbbbbYYYYYYYYYYcccc") << QList<int> { 4, 5, 9, 19 }
                                              << QList<QByteArray> { "XXXXXXXX", "" }
                                              << QByteArray("aaaaXXXXXXXXbbbbcccc");
        QTest::newRow("insert at both ends") << QByteArray("middle") << QList<int> { 0, 0, 6, 6 }
                                             << QList<QByteArray> { "<", ">" } << QByteArray("<middle>");
        QTest::newRow("all removed") << QByteArray("gone") << QList<int> { 0, 4 } << QList<QByteArray> { "" }
                                     << QByteArray();
    }

    void editsMadeInPlaceGiveTheSameText()
    {
        QFETCH(QByteArray, bytes);
        QFETCH(QList<int>, ranges);
        QFETCH(QList<QByteArray>, texts);
        QFETCH(QByteArray, expected);
        SourceEdits edits;
        for (int i = 0; i < texts.size(); ++i)
            edits.replace(ranges.at(2 * i), ranges.at(2 * i + 1), texts.at(i));
        QByteArray copied;
        QVERIFY(edits.apply(bytes, copied));
        QCOMPARE(copied, expected);
        QByteArray inPlace = bytes;
        QVERIFY(edits.applyInPlace(inPlace));
        QCOMPARE(inPlace, expected);
    }

    void randomEditsMadeInPlaceGiveTheSameText()
    {
        QRandomGenerator random(15);
        for (int round = 0; round < 2000; ++round) {
            QByteArray bytes;
            const int size = random.bounded(60);
            for (int i = 0; i < size; ++i)
                bytes += char('a' + random.bounded(26));
            SourceEdits edits;
            qsizetype at = 0;
            while (at <= size && random.bounded(3) != 0) {
                const qsizetype begin = at + random.bounded(qsizetype(size - at + 1));
                const qsizetype end = begin + random.bounded(qsizetype(size - begin + 1) / 2 + 1);
                edits.replace(begin, end, QByteArray(random.bounded(12), char('A' + random.bounded(26))));
                at = end + 1;
            }
            QByteArray copied;
            QVERIFY(edits.apply(bytes, copied));
            QByteArray inPlace = bytes;
            QVERIFY(edits.applyInPlace(inPlace));
            QCOMPARE(inPlace, copied);
        }
    }

    void overlappingEditsLeaveTheBytesAlone()
    {
        SourceEdits edits;
        edits.replace(2, 6, "x");
        edits.replace(4, 8, "y");
        QByteArray bytes("0123456789");
        QVERIFY(!edits.applyInPlace(bytes));
        QCOMPARE(bytes, QByteArray("0123456789"));
    }
};

QTEST_GUILESS_MAIN(TestSourceEdits)
#include "tst_sourceedits.moc"
