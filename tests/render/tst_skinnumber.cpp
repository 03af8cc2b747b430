// SPDX-License-Identifier: MIT
#include "SkinNumber.h"

#include <QtTest>

class TestSkinNumber : public QObject
{
    Q_OBJECT

private slots:
    void leadingNumberOfText_data()
    {
        QTest::addColumn<QByteArray>("text");
        QTest::addColumn<double>("expected");
        QTest::newRow("plain") << QByteArray("12") << 12.0;
        QTest::newRow("unit after the number") << QByteArray("12px") << 12.0;
        QTest::newRow("not a number") << QByteArray("abc") << 0.0;
        QTest::newRow("empty") << QByteArray("") << 0.0;
        QTest::newRow("blanks before") << QByteArray(" \t 7") << 7.0;
        QTest::newRow("sign") << QByteArray("-3") << -3.0;
        QTest::newRow("plus sign") << QByteArray("+7") << 7.0;
        QTest::newRow("fraction") << QByteArray("2.5x") << 2.5;
        QTest::newRow("dot and digits") << QByteArray(".5") << 0.5;
        QTest::newRow("digits and dot") << QByteArray("3.") << 3.0;
        QTest::newRow("lone dot") << QByteArray(".") << 0.0;
        QTest::newRow("exponent") << QByteArray("1e2") << 100.0;
        QTest::newRow("signed exponent") << QByteArray("15E-1") << 1.5;
        QTest::newRow("exponent without digits") << QByteArray("4e") << 4.0;
        QTest::newRow("exponent sign without digits") << QByteArray("4e+") << 4.0;
        QTest::newRow("blank inside ends the number") << QByteArray("1 2") << 1.0;
        QTest::newRow("hex is not read") << QByteArray("0x10") << 0.0;
    }
    void leadingNumberOfText()
    {
        QFETCH(QByteArray, text);
        QFETCH(double, expected);
        QCOMPARE(SkinNumber::leading(text), expected);
    }

    void leadingNumberIgnoresTheUserLocale()
    {
        const QLocale saved;
        QLocale::setDefault(QLocale(QLocale::German));
        const double value = SkinNumber::leading("1.5");
        QLocale::setDefault(saved);
        QCOMPARE(value, 1.5);
    }

    void wholeNumberAllowsBlanksAround()
    {
        QVERIFY(SkinNumber::isWholeNumber(" 12 "));
        QVERIFY(SkinNumber::isWholeNumber("1e2"));
        QVERIFY(!SkinNumber::isWholeNumber("12px"));
        QVERIFY(!SkinNumber::isWholeNumber(""));
        QVERIFY(!SkinNumber::isWholeNumber("  "));
    }

    void roundsHalvesToEven()
    {
        QCOMPARE(SkinNumber::roundHalfEven(2.5), qint64(2));
        QCOMPARE(SkinNumber::roundHalfEven(3.5), qint64(4));
        QCOMPARE(SkinNumber::roundHalfEven(-2.5), qint64(-2));
        QCOMPARE(SkinNumber::roundHalfEven(2.6), qint64(3));
        QCOMPARE(SkinNumber::leadingInteger("0.5"), qint64(0));
        QCOMPARE(SkinNumber::leadingInteger("1.5"), qint64(2));
    }

    void hugeValuesAreClamped()
    {
        QCOMPARE(SkinNumber::roundHalfEven(1e300), std::numeric_limits<qint64>::max());
        QCOMPARE(SkinNumber::roundHalfEven(-1e300), std::numeric_limits<qint64>::min());
    }
};

QTEST_GUILESS_MAIN(TestSkinNumber)
#include "tst_skinnumber.moc"
