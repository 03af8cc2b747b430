// SPDX-License-Identifier: MIT
#include "HostCodePage.h"
#include "SkinCodec.h"

#include <QStringDecoder>
#include <QtTest>

// Skin text in its code page: names, known characters of every table, bytes
// that survive a round trip, the refusal, and the tables against the host's
// own converter where the host has one.
namespace {

SkinCodec codec(const char *name)
{
    const std::optional<SkinCodec> found = SkinCodec::named(QString(QLatin1String(name)));
    if (!found)
        qFatal("no code page %s", name);
    return *found;
}

QByteArray everyByte()
{
    QByteArray bytes;
    for (int b = 0; b < 256; ++b)
        bytes.append(char(b));
    return bytes;
}

const char *const kSingleByteNames[] = { "windows-1250", "windows-1251", "windows-1252", "windows-1253",
                                         "windows-1254", "windows-1255", "windows-1256", "windows-1257",
                                         "windows-1258", "iso-8859-1",   "iso-8859-2",   "iso-8859-5",
                                         "iso-8859-7",   "iso-8859-9",   "iso-8859-15",  "koi8-r",
                                         "koi8-u",       "ibm866" };

} // namespace

class TestSkinCodec : public QObject
{
    Q_OBJECT

private slots:
    void namesAreFoundInAnyCaseAndByAlias_data()
    {
        QTest::addColumn<QString>("given");
        QTest::addColumn<QString>("name");
        QTest::newRow("IANA") << QStringLiteral("windows-1251") << QStringLiteral("windows-1251");
        QTest::newRow("upper case") << QStringLiteral("WINDOWS-1251") << QStringLiteral("windows-1251");
        QTest::newRow("cp alias") << QStringLiteral("CP1251") << QStringLiteral("windows-1251");
        QTest::newRow("number") << QStringLiteral("1250") << QStringLiteral("windows-1250");
        QTest::newRow("cp866") << QStringLiteral("cp866") << QStringLiteral("ibm866");
        QTest::newRow("IBM866") << QStringLiteral("IBM866") << QStringLiteral("ibm866");
        QTest::newRow("koi8-r") << QStringLiteral("KOI8-R") << QStringLiteral("koi8-r");
        QTest::newRow("latin1") << QStringLiteral("Latin1") << QStringLiteral("iso-8859-1");
        QTest::newRow("iso-8859-5") << QStringLiteral("ISO-8859-5") << QStringLiteral("iso-8859-5");
        QTest::newRow("utf8") << QStringLiteral("UTF8") << QStringLiteral("utf-8");
        QTest::newRow("blanks around") << QStringLiteral(" utf-8 ") << QStringLiteral("utf-8");
    }
    void namesAreFoundInAnyCaseAndByAlias()
    {
        QFETCH(QString, given);
        QFETCH(QString, name);
        const std::optional<SkinCodec> found = SkinCodec::named(given);
        QVERIFY(found);
        QCOMPARE(found->name(), name);
        QVERIFY(SkinCodec::availableNames().contains(name));
    }

    void unknownNamesAreRefused()
    {
        QVERIFY(!SkinCodec::named(u"windows-9999"));
        QVERIFY(!SkinCodec::named(u""));
        QVERIFY(!SkinCodec::named(u"cyrillic-ish"));
        QCOMPARE(SkinCodec::whyUnavailable(u"cyrillic-ish"), QStringLiteral("\u201ccyrillic-ish\u201d is no code page"));
        QCOMPARE(SkinCodec::whyUnavailable(u"CP1251"), QString());
    }

    void theDefaultIsTheWesternCodePage()
    {
        QCOMPARE(SkinCodec().name(), QStringLiteral("windows-1252"));
        QCOMPARE(SkinCodec().description(), QStringLiteral("Windows-1252 (Western European)"));
        QCOMPARE(codec("cp1251").description(), QStringLiteral("Windows-1251 (Cyrillic)"));
    }

    void theHostDefaultFollowsTheSystemCodePage()
    {
        const int ansi = HostCodePage::ansiCodePage();
        const SkinCodec host = SkinCodec::hostDefault();
        const std::optional<SkinCodec> system = SkinCodec::named(QString::number(ansi));
        QCOMPARE(host.name(), system ? system->name() : QStringLiteral("windows-1252"));
#ifndef Q_OS_WIN
        QCOMPARE(host.name(), QStringLiteral("windows-1252"));
#endif
    }

    // A few characters of every table, as the code pages' charts give them.
    void knownCharactersHaveTheirBytes_data()
    {
        QTest::addColumn<QString>("page");
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<QString>("text");
        QTest::newRow("1251") << QStringLiteral("windows-1251") << QByteArray("\xCD\xE0\xF1\xF2\xF0\xEE\xE9\xEA\xE8")
                              << QStringLiteral("Настройки");
        QTest::newRow("1251 Ж") << QStringLiteral("windows-1251") << QByteArray("\xC6") << QStringLiteral("Ж");
        QTest::newRow("1250") << QStringLiteral("windows-1250") << QByteArray("d\x9Fwi\xEAku")
                              << QStringLiteral("dźwięku");
        QTest::newRow("1252 euro") << QStringLiteral("windows-1252") << QByteArray("\x80") << QStringLiteral("€");
        QTest::newRow("1253") << QStringLiteral("windows-1253") << QByteArray("\xD9\xE1") << QStringLiteral("Ωα");
        QTest::newRow("1254") << QStringLiteral("windows-1254") << QByteArray("\xF0\xDD") << QStringLiteral("ğİ");
        QTest::newRow("1255") << QStringLiteral("windows-1255") << QByteArray("\xE0") << QStringLiteral("א");
        QTest::newRow("1256") << QStringLiteral("windows-1256") << QByteArray("\xC7") << QStringLiteral("ا");
        QTest::newRow("1257") << QStringLiteral("windows-1257") << QByteArray("\xE0") << QStringLiteral("ą");
        QTest::newRow("1258") << QStringLiteral("windows-1258") << QByteArray("\xFE") << QStringLiteral("₫");
        QTest::newRow("8859-1") << QStringLiteral("iso-8859-1") << QByteArray("\xE9\xA4") << QStringLiteral("é¤");
        QTest::newRow("8859-2") << QStringLiteral("iso-8859-2") << QByteArray("\xB3") << QStringLiteral("ł");
        QTest::newRow("8859-5") << QStringLiteral("iso-8859-5") << QByteArray("\xB6") << QStringLiteral("Ж");
        QTest::newRow("8859-7") << QStringLiteral("iso-8859-7") << QByteArray("\xD9") << QStringLiteral("Ω");
        QTest::newRow("8859-9") << QStringLiteral("iso-8859-9") << QByteArray("\xF0") << QStringLiteral("ğ");
        QTest::newRow("8859-15") << QStringLiteral("iso-8859-15") << QByteArray("\xA4") << QStringLiteral("€");
        QTest::newRow("koi8-r") << QStringLiteral("koi8-r") << QByteArray("\xF6\xD6") << QStringLiteral("Жж");
        QTest::newRow("koi8-u") << QStringLiteral("koi8-u") << QByteArray("\xA7") << QStringLiteral("ї");
        QTest::newRow("866") << QStringLiteral("ibm866") << QByteArray("\x86\xA6") << QStringLiteral("Жж");
        QTest::newRow("utf-8") << QStringLiteral("utf-8") << QByteArray("\xD0\x96") << QStringLiteral("Ж");
    }
    void knownCharactersHaveTheirBytes()
    {
        QFETCH(QString, page);
        QFETCH(QByteArray, bytes);
        QFETCH(QString, text);
        const SkinCodec c = *SkinCodec::named(page);
        QCOMPARE(c.toText(bytes), text);
        QCOMPARE(c.toBytes(text).value_or("(refused)"), bytes);
        QVERIFY(c.refusal(text).isEmpty());
    }

    // The characters skins are written with; some double-byte converters
    // move control characters other than these.
    void asciiIsAsciiInEveryCodePage()
    {
        QByteArray ascii("\t\r\n");
        for (int b = 0x20; b < 0x7F; ++b)
            ascii.append(char(b));
        for (const QString &name : SkinCodec::availableNames()) {
            const SkinCodec c = *SkinCodec::named(name);
            QCOMPARE(c.toText(ascii), QString::fromLatin1(ascii));
            QCOMPARE(c.toBytes(QString::fromLatin1(ascii)).value_or("(refused)"), ascii);
        }
    }

    // Bytes a code page leaves undefined still read back as themselves.
    void everyByteSurvivesARoundTrip()
    {
        const QByteArray bytes = everyByte();
        for (const char *name : kSingleByteNames) {
            const SkinCodec c = codec(name);
            QVERIFY(c.isSingleByte());
            const QString text = c.toText(bytes);
            QCOMPARE(text.size(), 256);
            QCOMPARE(c.toBytes(text).value_or("(refused)"), bytes);
        }
    }

    void undefinedBytesReadAsCharactersOfTheirOwn()
    {
        QCOMPARE(codec("windows-1252").toText("\x81"), QString(QChar(0x81)));
        QCOMPARE(codec("windows-1253").toText("\xAA"), QString(QChar(0xF7AA)));
        QVERIFY(!codec("windows-1251").toBytes(QString(QChar(0xF7AA))));
    }

    void aCharacterWithoutAByteIsRefusedWithTheReason()
    {
        const SkinCodec western = codec("windows-1252");
        QVERIFY(!western.toBytes(u"Жук"));
        QCOMPARE(western.refusal(u"abЖук"),
                 QStringLiteral("\u201cЖ\u201d cannot be written in Windows-1252, the code page of this skin"));
        QCOMPARE(codec("windows-1251").refusal(u"Ωμέγα"),
                 QStringLiteral("\u201cΩ\u201d cannot be written in Windows-1251, the code page of this skin"));
        QCOMPARE(western.refusal(u"\U0001F600"),
                 QStringLiteral("\u201c\U0001F600\u201d cannot be written in Windows-1252, the code page of this skin"));
        QCOMPARE(codec("utf-8").refusal(QString(QChar(0xD800))),
                 QStringLiteral("\u201c") + QChar(0xD800) + QStringLiteral("\u201d cannot be written in UTF-8, the code page of this skin"));
        QVERIFY(codec("utf-8").refusal(u"Жук \U0001F600").isEmpty());
    }

    // The tables carried in the source against the host's converter, for each
    // code page the host's converter knows (Qt without ICU, as on Windows,
    // knows only ISO-8859-1 of them).
    void tablesAgreeWithTheHostConverter()
    {
        const QByteArray bytes = everyByte();
        int compared = 0;
        for (const char *name : kSingleByteNames) {
            QStringDecoder host(name);
            if (!host.isValid()) {
                qInfo("the host's converter does not know %s: only the known characters check it", name);
                continue;
            }
            const QString ours = codec(name).toText(bytes);
            const QString theirs = host.decode(bytes);
            QCOMPARE(theirs.size(), ours.size());
            for (int b = 0x80; b < 256; ++b) {
                const QChar h = theirs.at(b);
                // Bytes the code page leaves undefined are read differently by
                // every converter.
                const char16_t o = ours.at(b).unicode();
                const bool undefinedHere = (o >= 0xF780 && o <= 0xF7FF) || (o >= 0x80 && o <= 0x9F);
                if (undefinedHere || h == QChar::ReplacementCharacter || h == QChar(0x1A))
                    continue;
                if (ours.at(b) != h)
                    QFAIL(qPrintable(QStringLiteral("%1 byte %2: table U+%3, host U+%4")
                                         .arg(QLatin1String(name)).arg(b, 2, 16)
                                         .arg(ours.at(b).unicode(), 4, 16, QLatin1Char('0'))
                                         .arg(h.unicode(), 4, 16, QLatin1Char('0'))));
            }
            ++compared;
        }
        qInfo("%d of %d tables compared with the host's converter", compared, int(std::size(kSingleByteNames)));
        QVERIFY(compared >= 1);
    }

    void doubleByteCodePagesGoThroughTheHost()
    {
        const QStringList available = SkinCodec::availableNames();
        for (const char *name : { "shift_jis", "gbk", "euc-kr", "big5" }) {
            if (!available.contains(QLatin1String(name))) {
                QVERIFY(!SkinCodec::named(QString(QLatin1String(name))));
                QVERIFY2(SkinCodec::whyUnavailable(QString(QLatin1String(name))).contains(QLatin1String("which this system cannot convert")),
                         qPrintable(SkinCodec::whyUnavailable(QString(QLatin1String(name)))));
                qInfo("the host cannot convert %s", name);
                continue;
            }
            const SkinCodec c = codec(name);
            QVERIFY(!c.isSingleByte());
            const QString text = QStringLiteral("ab\u4E2D");
            const std::optional<QByteArray> bytes = c.toBytes(text);
            QVERIFY(bytes);
            QCOMPARE(bytes->size(), 4);
            QCOMPARE(c.toText(*bytes), text);
            QVERIFY(!c.refusal(u"\u0416\u4E2D\U0001F600").isEmpty());
            QCOMPARE(SkinCodec::whyUnavailable(QString(QLatin1String(name))), QString());
        }
        QVERIFY(available.contains(QStringLiteral("utf-8")));
    }
};

QTEST_GUILESS_MAIN(TestSkinCodec)
#include "tst_skincodec.moc"
