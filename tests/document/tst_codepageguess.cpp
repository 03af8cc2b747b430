// SPDX-License-Identifier: MIT
#include "CodePageGuess.h"

#include <QtTest>

// Which code page a skin's bytes look like, judged from its words beyond ASCII.
namespace {

SkinCodec codec(const char16_t *name)
{
    return *SkinCodec::named(QStringView(name));
}

QString guess(const QByteArray &bytes, const char16_t *current)
{
    const std::optional<SkinCodec> better = CodePageGuess::better({ QByteArrayView(bytes) }, codec(current));
    return better ? better->name() : QStringLiteral("(none)");
}

QByteArray skinWith(const QString &text, const char16_t *page)
{
    return "<LAYER ui_Main>\r\n\t<TEXT t text=\"" + *codec(page).toBytes(text) + "\" x=1>\r\n</LAYER>\r\n";
}

} // namespace

class TestCodePageGuess : public QObject
{
    Q_OBJECT

private slots:
    void wordsOfAnotherCodePageAreSeen_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("page");
        QTest::newRow("Russian") << QStringLiteral("Настройки звука, Главное меню") << QStringLiteral("windows-1251");
        QTest::newRow("Ukrainian") << QStringLiteral("Налаштування, Мапа") << QStringLiteral("windows-1251");
        QTest::newRow("Polish") << QStringLiteral("Ustawienia dźwięku, Głośność") << QStringLiteral("windows-1250");
        QTest::newRow("Greek") << QStringLiteral("Ρυθμίσεις ήχου, Χάρτης") << QStringLiteral("windows-1253");
    }
    void wordsOfAnotherCodePageAreSeen()
    {
        QFETCH(QString, text);
        QFETCH(QString, page);
        const QByteArray bytes = skinWith(text, reinterpret_cast<const char16_t *>(page.utf16()));
        QCOMPARE(guess(bytes, u"windows-1252"), page);
        // Read in its own code page, nothing is offered.
        QCOMPARE(guess(bytes, reinterpret_cast<const char16_t *>(page.utf16())), QStringLiteral("(none)"));
    }

    void westernTextIsLeftInTheWesternCodePage()
    {
        QCOMPARE(guess(skinWith(QStringLiteral("Einstellungen, Menü, Lautstärke, Café"), u"windows-1252"),
                       u"windows-1252"),
                 QStringLiteral("(none)"));
    }

    void utf8IsSeenByItsSequences()
    {
        QCOMPARE(guess(QStringLiteral("<LAYER l>\r\n<TEXT t text=\"Карта\">\r\n").toUtf8(), u"windows-1252"),
                 QStringLiteral("utf-8"));
        QCOMPARE(guess(QStringLiteral("<LAYER l>\r\n<TEXT t text=\"Карта\">\r\n").toUtf8(), u"utf-8"),
                 QStringLiteral("(none)"));
    }

    void anAsciiSkinGetsNoGuess()
    {
        QCOMPARE(guess("<LAYER l>\r\n<TEXT t text=\"Main menu\" x=1>\r\n</LAYER>\r\n", u"windows-1252"),
                 QStringLiteral("(none)"));
        QCOMPARE(guess("<LAYER l>\r\n<TEXT t text=\"Main menu\" x=1>\r\n</LAYER>\r\n", u"windows-1251"),
                 QStringLiteral("(none)"));
    }
};

QTEST_GUILESS_MAIN(TestCodePageGuess)
#include "tst_codepageguess.moc"
