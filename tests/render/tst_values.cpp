// SPDX-License-Identifier: MIT
#include "SkinValues.h"

#include <QtTest>

using namespace SkinValues;

class TestValues : public QObject
{
    Q_OBJECT

private slots:
    void alignmentWords_data()
    {
        QTest::addColumn<QByteArray>("text");
        QTest::addColumn<int>("defaultCode");
        QTest::addColumn<int>("code");
        QTest::addColumn<int>("offset");
        QTest::newRow("center") << QByteArray("center") << int(AlignLeft) << int(AlignCenter) << 0;
        QTest::newRow("center in capitals") << QByteArray("CENTER") << int(AlignLeft) << int(AlignCenter) << 0;
        QTest::newRow("right") << QByteArray("Right") << int(AlignLeft) << int(AlignRight) << 0;
        QTest::newRow("bottom") << QByteArray("bottom") << int(AlignTop) << int(AlignBottom) << 0;
        QTest::newRow("word with more after it") << QByteArray("centered") << int(AlignLeft) << int(AlignCenter) << 0;
        QTest::newRow("unknown word keeps the default") << QByteArray("middle") << int(AlignCenter) << int(AlignCenter) << 0;
        QTest::newRow("left gives the default") << QByteArray("left") << int(AlignTop) << int(AlignTop) << 0;
        QTest::newRow("empty gives the default") << QByteArray("") << int(AlignLeft) << int(AlignLeft) << 0;
        QTest::newRow("short word") << QByteArray("cent") << int(AlignLeft) << int(AlignLeft) << 0;
        QTest::newRow("center+5") << QByteArray("center+5") << int(AlignLeft) << int(AlignCenter) << 5;
        QTest::newRow("right-3") << QByteArray("right-3") << int(AlignLeft) << int(AlignRight) << -3;
        QTest::newRow("offset without a word") << QByteArray("+7") << int(AlignTop) << int(AlignTop) << 7;
        QTest::newRow("offset with a unit") << QByteArray("left+4px") << int(AlignLeft) << int(AlignLeft) << 4;
        // Both signs: positions 2 ("-") and 4 ("+") add up to 6, past the end.
        QTest::newRow("both signs read from the summed position") << QByteArray("c-1+2") << int(AlignLeft) << int(AlignLeft) << 0;
        // "-" at 2, "+" at 3: the offset is read from position 5, "12".
        QTest::newRow("both signs read later") << QByteArray("x-+912") << int(AlignLeft) << int(AlignLeft) << 12;
        QTest::newRow("non-ASCII letters are not folded") << QByteArray("\xc7" "enter") << int(AlignLeft) << int(AlignLeft) << 0;
    }
    void alignmentWords()
    {
        QFETCH(QByteArray, text);
        QFETCH(int, defaultCode);
        QFETCH(int, code);
        QFETCH(int, offset);
        const Alignment a = ParseAlign(text, defaultCode);
        QCOMPARE(a.code, code);
        QCOMPARE(a.offset, offset);
    }

    void colours_data()
    {
        QTest::addColumn<QByteArray>("text");
        QTest::addColumn<QColor>("colour");
        QTest::newRow("empty is black") << QByteArray("") << QColor(0, 0, 0);
        QTest::newRow("red") << QByteArray("#FF0000") << QColor(255, 0, 0);
        QTest::newRow("mixed") << QByteArray("#12aB7f") << QColor(0x12, 0xab, 0x7f);
        QTest::newRow("first character skipped whatever it is") << QByteArray("x00FF00") << QColor(0, 255, 0);
        QTest::newRow("short text") << QByteArray("#80") << QColor(0x80, 0, 0);
        QTest::newRow("non-hex digits stop a channel") << QByteArray("#1G0000") << QColor(1, 0, 0);
    }
    void colours()
    {
        QFETCH(QByteArray, text);
        QFETCH(QColor, colour);
        QCOMPARE(QColor(ParseColor(text)), colour);
    }

    void hexadecimalNumbers_data()
    {
        QTest::addColumn<QByteArray>("text");
        QTest::addColumn<double>("value");
        QTest::newRow("empty") << QByteArray("") << 0.0;
        QTest::newRow("FF") << QByteArray("FF") << 255.0;
        QTest::newRow("FFFF is unsigned") << QByteArray("FFFF") << 65535.0;
        QTest::newRow("two groups") << QByteArray("10000") << 65536.0;
        QTest::newRow("eight digits") << QByteArray("FFFFFFFF") << 4294967295.0;
        QTest::newRow("leading digits of each group") << QByteArray("0F0Z") << 240.0;
        QTest::newRow("group without digits") << QByteArray("ZZ01") << 0.0;
        QTest::newRow("lower case") << QByteArray("ab") << 171.0;
    }
    void hexadecimalNumbers()
    {
        QFETCH(QByteArray, text);
        QFETCH(double, value);
        QCOMPARE(HexToNumber(text), value);
    }

    void numericOrDefault_data()
    {
        QTest::addColumn<QByteArray>("text");
        QTest::addColumn<qint64>("value");
        QTest::newRow("number") << QByteArray("12") << qint64(12);
        QTest::newRow("blanks around") << QByteArray("  12 ") << qint64(12);
        QTest::newRow("unit is not numeric") << QByteArray("12px") << qint64(-1);
        QTest::newRow("empty") << QByteArray("") << qint64(-1);
        QTest::newRow("exponent") << QByteArray("1e2") << qint64(100);
        QTest::newRow("half to even down") << QByteArray("2.5") << qint64(2);
        QTest::newRow("half to even up") << QByteArray("3.5") << qint64(4);
        QTest::newRow("negative") << QByteArray("-4") << qint64(-4);
        QTest::newRow("word") << QByteArray("top") << qint64(-1);
    }
    void numericOrDefault()
    {
        QFETCH(QByteArray, text);
        QFETCH(qint64, value);
        QCOMPARE(ValOrDefault(text, -1), value);
    }

    void leadingNumbersAreHeldWithinAMillion()
    {
        QCOMPARE(Number("12px"), 12);
        QCOMPARE(Number("abc"), 0);
        QCOMPARE(Number("2.5"), 2);
        QCOMPARE(Number("1e12"), 1000000);
        QCOMPARE(Number("-1e12"), -1000000);
    }
};

QTEST_GUILESS_MAIN(TestValues)
#include "tst_values.moc"
