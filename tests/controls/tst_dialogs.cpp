// SPDX-License-Identifier: MIT
#include "OleColor.h"
#include "ScriptedDialogs.h"
#include "Twips.h"

#include <QDialog>
#include <QWidget>
#include <QtTest>

class TestDialogs : public QObject
{
    Q_OBJECT

private slots:
    void scriptedAnswersComeInOrderAndQuestionsAreRecorded()
    {
        ScriptedDialogs dialogs;
        dialogs.answerText(QStringLiteral("LayerName"));
        dialogs.answerButton(Dialogs::Button::Yes);
        dialogs.answerPath(QStringLiteral("/skins/a.ui"));
        dialogs.answerPath(QStringLiteral("/skins"));
        dialogs.answerColor(QColor(1, 2, 3));
        QCOMPARE(dialogs.unanswered(), 5);

        Dialogs &asked = dialogs;
        QCOMPARE(asked.askText(QStringLiteral("Add Layer"), QStringLiteral("Name?"), QStringLiteral("L")),
                 QStringLiteral("LayerName"));
        QCOMPARE(asked.message(QStringLiteral("Save"), QStringLiteral("Overwrite?"),
                               Dialogs::Icon::Question, Dialogs::Buttons::YesNo),
                 Dialogs::Button::Yes);
        QCOMPARE(asked.openFileName(QStringLiteral("Open"), QStringLiteral("/skins"),
                                    QStringLiteral("User Interface File Korvi8|*.ui")),
                 QStringLiteral("/skins/a.ui"));
        QCOMPARE(asked.folder(QStringLiteral("Pick"), QStringLiteral("/")), QStringLiteral("/skins"));
        QCOMPARE(asked.color(Qt::red), std::optional<QColor>(QColor(1, 2, 3)));
        QCOMPARE(dialogs.unanswered(), 0);

        const auto &log = dialogs.asked();
        QCOMPARE(log.size(), 5);
        QCOMPARE(log[0].kind, QStringLiteral("text"));
        QCOMPARE(log[0].title, QStringLiteral("Add Layer"));
        QCOMPARE(log[0].text, QStringLiteral("Name?"));
        QCOMPARE(log[0].value, QStringLiteral("L"));
        QCOMPARE(log[1].icon, Dialogs::Icon::Question);
        QCOMPARE(log[1].buttons, Dialogs::Buttons::YesNo);
        QCOMPARE(log[2].filter, QStringLiteral("User Interface File Korvi8|*.ui"));
        QCOMPARE(log[2].value, QStringLiteral("/skins"));
        QCOMPARE(log[4].value, QColor(Qt::red).name());
    }

    void unansweredQuestionsAreCancelled()
    {
        ScriptedDialogs scripted;
        Dialogs &dialogs = scripted;
        QCOMPARE(dialogs.askText(QStringLiteral("t"), QStringLiteral("p")), QString());
        QCOMPARE(dialogs.saveFileName(QStringLiteral("t"), QString(), QString()), QString());
        QCOMPARE(dialogs.message(QStringLiteral("t"), QStringLiteral("m"), Dialogs::Icon::Warning,
                                 Dialogs::Buttons::YesNoCancel),
                 Dialogs::Button::Cancel);
        QCOMPARE(dialogs.message(QStringLiteral("t"), QStringLiteral("m")), Dialogs::Button::Ok);
        QVERIFY(!dialogs.color(Qt::blue).has_value());
        Dialogs::PrintRequest request;
        QPrinter printer;
        request.printer = &printer;
        QVERIFY(!dialogs.print(request));
    }

    void aChoiceIsRecordedWithWhatItOfferedAndAnsweredInOrder()
    {
        ScriptedDialogs dialogs;
        const QStringList offered{ QStringLiteral("/skins/a.ui"), QStringLiteral("/skins/b.ui") };
        dialogs.answerChoice(QStringLiteral("/skins/b.ui"));
        QCOMPARE(dialogs.choose(QStringLiteral("t"), QStringLiteral("Which?"), offered), QStringLiteral("/skins/b.ui"));
        QCOMPARE(dialogs.choose(QStringLiteral("t"), QStringLiteral("Which?"), offered), QString());
        QCOMPARE(dialogs.asked().size(), 2);
        QCOMPARE(dialogs.asked().first().kind, QStringLiteral("choice"));
        QCOMPARE(dialogs.asked().first().text, QStringLiteral("Which?"));
        QCOMPARE(dialogs.asked().first().choices, offered);
        QCOMPARE(dialogs.unanswered(), 0);
    }

    void anUnansweredOverwriteQuestionIsCancelled()
    {
        ScriptedDialogs dialogs;
        QCOMPARE(dialogs.message(QStringLiteral("t"), QStringLiteral("m"), Dialogs::Icon::Warning,
                                 Dialogs::Buttons::OverwriteCancel),
                 Dialogs::Button::Cancel);
    }

    void aFormIsFilledInByItsAnswerAndRejectedWithoutOne()
    {
        ScriptedDialogs scripted;
        scripted.answerForm([](QDialog &form) {
            form.setWindowTitle(QStringLiteral("filled in"));
            form.accept();
        });
        QCOMPARE(scripted.unanswered(), 1);
        Dialogs &dialogs = scripted;
        QDialog first;
        first.setObjectName(QStringLiteral("frmFirst"));
        dialogs.showForm(first);
        QCOMPARE(first.result(), int(QDialog::Accepted));
        QCOMPARE(first.windowTitle(), QStringLiteral("filled in"));
        QDialog second;
        second.setObjectName(QStringLiteral("frmSecond"));
        second.setResult(QDialog::Accepted);
        dialogs.showForm(second);
        QCOMPARE(second.result(), int(QDialog::Rejected));
        QCOMPARE(scripted.asked().size(), 2);
        QCOMPARE(scripted.asked().at(0).kind, QStringLiteral("form"));
        QCOMPARE(scripted.asked().at(0).title, QStringLiteral("frmFirst"));
        QCOMPARE(scripted.asked().at(1).title, QStringLiteral("frmSecond"));
        QCOMPARE(scripted.unanswered(), 0);
    }

    void filtersAreWrittenTheToolkitsWay()
    {
        QCOMPARE(Dialogs::toolkitFilter(QStringLiteral("User Interface File Korvi8|*.ui")),
                 QStringLiteral("User Interface File Korvi8 (*.ui)"));
        QCOMPARE(Dialogs::toolkitFilter(QStringLiteral("Pictures|*.bmp;*.jpg|All|*.*")),
                 QStringLiteral("Pictures (*.bmp *.jpg);;All (*.*)"));
        QCOMPARE(Dialogs::toolkitFilter(QString()), QString());
    }

    void coloursAreBlueGreenRed()
    {
        QPalette palette;
        QCOMPARE(OleColor::toColor(0x00FF0000u, palette), QColor(0, 0, 255));
        QCOMPARE(OleColor::toColor(0x000000FFu, palette), QColor(255, 0, 0));
        QCOMPARE(OleColor::fromColor(QColor(0x12, 0x34, 0x56)), 0x00563412u);
        QCOMPARE(OleColor::toRgb(0x00C8C8C8u, palette), 0x00C8C8C8u);
    }

    void systemColoursComeFromThePalette_data()
    {
        QTest::addColumn<uint>("value");
        QTest::addColumn<int>("role");
        QTest::newRow("highlight") << 0x8000000Du << int(QPalette::Highlight);
        QTest::newRow("highlighted text") << 0x8000000Eu << int(QPalette::HighlightedText);
        QTest::newRow("button face") << 0x8000000Fu << int(QPalette::Button);
        QTest::newRow("button shadow") << 0x80000010u << int(QPalette::Mid);
        QTest::newRow("button text") << 0x80000012u << int(QPalette::ButtonText);
        QTest::newRow("dark shadow") << 0x80000015u << int(QPalette::Dark);
    }
    void systemColoursComeFromThePalette()
    {
        QFETCH(uint, value);
        QFETCH(int, role);
        QPalette palette;
        palette.setColor(QPalette::ColorRole(role), QColor(10, 20, 30));
        QCOMPARE(OleColor::toColor(value, palette), QColor(10, 20, 30));
        QCOMPARE(OleColor::toRgb(value, palette), 0x001E140Au);
    }

    void untranslatableColoursGiveZero()
    {
        QPalette palette;
        QCOMPARE(OleColor::toRgb(0x80000099u, palette), 0u);
        QCOMPARE(OleColor::toRgb(0x01000000u, palette), 0u);
        QVERIFY(!OleColor::translate(0x80000099u, palette).has_value());
    }

    void twipsFollowTheDevicesResolution()
    {
        QWidget widget;
        const int dpi = widget.logicalDpiX();
        QCOMPARE(Twips::toPixelsX(1440, &widget), dpi);
        QCOMPARE(Twips::fromPixelsX(dpi, &widget), 1440);
        QCOMPARE(Twips::toPixelsX(0, &widget), 0);
        QImage image(10, 10, QImage::Format_RGB32);
        image.setDotsPerMeterX(int(std::lround(300 / 0.0254)));
        QCOMPARE(Twips::toPixelsX(1440, &image), 300);
    }
};

QTEST_MAIN(TestDialogs)
#include "tst_dialogs.moc"
