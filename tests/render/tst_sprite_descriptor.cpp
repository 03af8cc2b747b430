// SPDX-License-Identifier: MIT
#include "SpriteDescriptor.h"

#include <QtTest>

// Reading the small text files that go with sprite pictures.
class TestSpriteDescriptor : public QObject
{
    Q_OBJECT

private slots:
    void stripesAndGrabCentre_data()
    {
        QTest::addColumn<QByteArray>("text");
        QTest::addColumn<int>("stripes");
        QTest::addColumn<bool>("grabCenter");
        QTest::newRow("nothing") << QByteArray("") << 0 << false;
        QTest::newRow("plain") << QByteArray("Stripes=3\r\n") << 3 << false;
        QTest::newRow("blanks around") << QByteArray("Stripes = 20\r\n") << 20 << false;
        QTest::newRow("any case") << QByteArray("STRIPES=7") << 7 << false;
        QTest::newRow("last line wins") << QByteArray("Stripes=3\nStripes=5\n") << 5 << false;
        QTest::newRow("text after the number") << QByteArray("Stripes=12px") << 12 << false;
        QTest::newRow("no number") << QByteArray("Stripes=many") << 0 << false;
        QTest::newRow("half to even down") << QByteArray("Stripes=2.5") << 2 << false;
        QTest::newRow("half to even up") << QByteArray("Stripes=3.5") << 4 << false;
        QTest::newRow("exponent") << QByteArray("Stripes=1e1") << 10 << false;
        QTest::newRow("first equals counts") << QByteArray("Stripes=4=9") << 4 << false;
        QTest::newRow("without equals from the line start") << QByteArray("Stripes 8") << 0 << false;
        QTest::newRow("number before the word") << QByteArray(" 6 stripes") << 6 << false;
        QTest::newRow("clamped to 32 bits") << QByteArray("Stripes=1e12") << 2147483647 << false;
        QTest::newRow("grab centre") << QByteArray("defflags = grab_center\r\n") << 0 << true;
        QTest::newRow("grab centre alone does nothing") << QByteArray("GRAB_CENTER\r\n") << 0 << false;
        QTest::newRow("def flags alone does nothing") << QByteArray("DefFlags = NONE\r\n") << 0 << false;
        QTest::newRow("both in one line only") << QByteArray("DefFlags\nGRAB_CENTER") << 0 << false;
        QTest::newRow("lone CR ends a line") << QByteArray("Stripes=3\rStripes=9") << 9 << false;
        QTest::newRow("lone CR splits the flag line") << QByteArray("DefFlags\rGRAB_CENTER") << 0 << false;
        QTest::newRow("both kinds") << QByteArray("[sprite]\nStripes=2\nDefFlags=GRAB_CENTER|LOOP\n") << 2 << true;
    }
    void stripesAndGrabCentre()
    {
        QFETCH(QByteArray, text);
        QFETCH(int, stripes);
        QFETCH(bool, grabCenter);
        const SpriteDescriptor descriptor = SpriteDescriptor::fromBytes(text);
        QCOMPARE(int(descriptor.Stripes), stripes);
        QCOMPARE(descriptor.GrabCenter, grabCenter);
    }

    void missingFileGivesDefaults()
    {
        const SpriteDescriptor descriptor = SpriteDescriptor::readFile(QStringLiteral("/nonexistent/folder/x.spr"));
        QCOMPARE(descriptor.Stripes, 0);
        QCOMPARE(descriptor.GrabCenter, false);
    }
};

QTEST_GUILESS_MAIN(TestSpriteDescriptor)
#include "tst_sprite_descriptor.moc"
