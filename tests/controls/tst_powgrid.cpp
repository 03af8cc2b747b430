// SPDX-License-Identifier: MIT
// Mouse events go through the window, as the windowing system sends them, so the
// widget under the pointer receives them.
#define QTEST_QPA_MOUSE_HANDLING
#include "GridComboEditor.h"
#include "GridDateEditor.h"
#include "GridTextEditor.h"
#include "OleColor.h"
#include "PowGrid.h"
#include "PropertyBag.h"
#include "Twips.h"
#include "clsComboList.h"

#include <QScrollBar>
#include <QSpinBox>
#include <QToolTip>
#include <QClipboard>
#include <QContextMenuEvent>
#include <QLineEdit>
#include <QMenu>
#include <QtTest>

class TestPowGrid : public QObject
{
    Q_OBJECT

    QWidget *host = nullptr;
    PowGrid *grid = nullptr;
    std::unique_ptr<QSignalSpy> gridChanged;
    std::unique_ptr<QSignalSpy> modelChanged;

    // Columns: 0 "Property" (text, not editable), 1 "Value" (text), 2 "..." (button).
    void setUpColumns(int valueType = dtText)
    {
        Header *name = grid->Headers()->Add(QStringLiteral("Property"), 1500, true, dtText);
        name->ColumnEditable = false;
        grid->Headers()->Add(QStringLiteral("Value"), 1500, true, valueType);
        grid->Headers()->Add(QStringLiteral("..."), 750, true, dtButton);
    }

    PowGridItem *addRow(const QString &name, const QString &value)
    {
        PowGridItem *row = grid->Items()->Add();
        row->SetItemColumns({ name, value, QStringLiteral("...") });
        return row;
    }

    void click(int row, int column)
    {
        const QRect cell = grid->cellRect(row, column);
        QVERIFY2(!cell.isEmpty(), "cell is not shown");
        QTest::mouseClick(grid, Qt::LeftButton, Qt::NoModifier, cell.center());
    }

    void typeAndPress(QWidget *editor, const QString &text, Qt::Key key)
    {
        QTest::keyClicks(editor, text);
        QTest::keyClick(editor, key);
    }

    void activateHost()
    {
        host->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(host));
    }

    void startSpies()
    {
        gridChanged = std::make_unique<QSignalSpy>(grid, &PowGrid::ItemChanged);
        modelChanged = std::make_unique<QSignalSpy>(grid->Items(), &clsPowGridItems::ItemChanged);
    }

private slots:
    void init()
    {
        host = new QWidget;
        host->resize(420, 300);
        grid = new PowGrid(host);
        grid->setGeometry(0, 0, 420, 300);
        host->show();
        QVERIFY(QTest::qWaitForWindowExposed(host));
    }
    void cleanup()
    {
        gridChanged.reset();
        modelChanged.reset();
        delete host;
        host = nullptr;
        QLocale::setDefault(QLocale::c());
    }

    // ---- design-time properties ------------------------------------------

    void newGridTakesTheDefaults()
    {
        PowGrid fresh(host);
        const QFont ambient = host->font();
        QCOMPARE(fresh.HeadlineColor(), 0x8000000Fu);
        QCOMPARE(fresh.ShadowColor(), 0x80000010u);
        QCOMPARE(fresh.TextColor(), 0x80000012u);
        QCOMPARE(fresh.SelRow(), 0);
        QCOMPARE(fresh.Font(), ambient);
        QCOMPARE(fresh.HeaderFont(), ambient);
        QCOMPARE(fresh.HeaderHeight(), 0);
        QCOMPARE(fresh.CellHeight(), 0);
        QCOMPARE(fresh.AllowEdit(), true);
        QCOMPARE(fresh.ColorUneditable(), 0xFFFFFFu);
        QCOMPARE(fresh.ColorEditable(), 0xFFFFFFu);
        QCOMPARE(fresh.ColorSelectedRow(), 0x8000000Du);
        QCOMPARE(fresh.ShowSelectedRow(), false);
        QCOMPARE(fresh.ColorSelectedText(), 0x8000000Eu);
        QCOMPARE(fresh.ColorLightShadow(), 0x80000010u);
        QCOMPARE(fresh.ColorDarkShadow(), 0x80000015u);
        QCOMPARE(fresh.ColorUnused(), 0xC8C8C8u);
        QCOMPARE(fresh.ColorGrid(), 0x80000010u);
        QVERIFY(fresh.ImageList().isEmpty());
        QCOMPARE(fresh.HScrollIncrement(), 750);
        QCOMPARE(fresh.AutoRefresh(), true);
        QCOMPARE(fresh.CellHeightMargin(), 120);
        QCOMPARE(fresh.ColorHeadlineShadow(), 0xC8C8C8u);
        QCOMPARE(fresh.ShowVerticalBar(), true);
        QCOMPARE(fresh.CellLines(), 1);
        QCOMPARE(fresh.BorderStyle(), 1);
        QCOMPARE(fresh.ColorHeadlineText(), 0x80000012u);
        QCOMPARE(fresh.ColorUneditableAlternate(), 0xFFFFFFu);
        QCOMPARE(fresh.AlternateColors(), false);
        QCOMPARE(fresh.UseTouchScreen(), false);
        QVERIFY(fresh.ImageListHeader().isEmpty());
        QCOMPARE(fresh.ButtonFont(), ambient);
        QCOMPARE(fresh.ButtonRoundSize(), 20);
        QCOMPARE(fresh.ButtonColor(), 0xC8C8C8u);
        QCOMPARE(fresh.ButtonBorderColor(), 0x505050u);
        QCOMPARE(fresh.ButtonClickColor(), 0x00FFFFu);
        QCOMPARE(fresh.ColorProgressBar(), 0xFF0000u);
        QCOMPARE(fresh.ColorEmptyProgressBar(), 0xFFFFFFu);
        QCOMPARE(fresh.TitleFont(), ambient);
        QCOMPARE(fresh.ColorTitleBackground(), 0xFFFFFFu);
        QCOMPARE(fresh.ColorTitleText(), 0u);
        QCOMPARE(fresh.AllowExpandCollapse(), true);
    }

    void propertiesAreSavedUnderTheirNamesInOrder()
    {
        QVariantMap bag;
        grid->WriteProperties(bag);
        const QStringList expected {
            "HeadlineColor", "ShadowColor", "TextColor", "SelRow", "Font", "HeaderFont",
            "HeaderHeight", "CellHeight", "AllowEdit", "ColorUneditable", "ColorEditable",
            "ColorSelectedRow", "ShowSelectedRow", "ColorSelectedText", "ColorLightShadow",
            "ColorDarkShadow", "ColorUnused", "ColorGrid", "ImageList", "HScrollIncrement",
            "AutoRefresh", "CellHeightMargin", "ColorHeadlineShadow", "ShowVerticalBar",
            "CellLines", "BorderStyle", "ColorHeadlineText", "ColorUneditableAlternate",
            "AlternateColors", "UseTouchScreen", "ImageListHeader", "ButtonFont",
            "ButtonRoundSize", "ButtonColor", "ButtonBorderColor", "ButtonClickColor",
            "ColorProgressBar", "ColorEmptyProgressBar", "TitleFont", "ColorTitleBackground",
            "ColorTitleText", "AllowExpandCollapse"
        };
        QCOMPARE(PropertyBag::names(*grid), expected);
        QCOMPARE(bag.size(), expected.size());
    }

    void propertiesRoundTripThroughAMap()
    {
        grid->setColorGrid(0x123456u);
        grid->setAllowEdit(false);
        grid->setCellHeightMargin(60);
        QFont title(QStringLiteral("DejaVu Serif"), 15);
        grid->setTitleFont(title);
        QPixmap red(8, 8);
        red.fill(Qt::red);
        grid->setImageList({ red });
        QVariantMap bag;
        grid->WriteProperties(bag);

        PowGrid other(host);
        other.setButtonRoundSize(3); // not default: reading resets it
        other.ReadProperties(bag);
        QCOMPARE(other.ColorGrid(), 0x123456u);
        QCOMPARE(other.AllowEdit(), false);
        QCOMPARE(other.CellHeightMargin(), 60);
        QCOMPARE(other.TitleFont(), title);
        QCOMPARE(other.ImageList().size(), 1);
        QCOMPARE(other.ButtonRoundSize(), 20);

        bag.remove(QStringLiteral("ColorGrid"));
        other.ReadProperties(bag);
        QCOMPARE(other.ColorGrid(), 0x80000010u); // a missing name keeps its default
    }

    void propertiesRoundTripThroughSettings()
    {
        QTemporaryDir dir;
        const QString file = dir.filePath(QStringLiteral("form.ini"));
        grid->setHScrollIncrement(300);
        grid->setShowSelectedRow(true);
        grid->setColorTitleText(0x0000FFu);
        QFont header(QStringLiteral("DejaVu Sans"), 11, QFont::Bold);
        grid->setHeaderFont(header);
        {
            QSettings settings(file, QSettings::IniFormat);
            settings.beginGroup(QStringLiteral("pgrProperty"));
            grid->WriteProperties(settings);
        }
        PowGrid other(host);
        QSettings settings(file, QSettings::IniFormat);
        settings.beginGroup(QStringLiteral("pgrProperty"));
        other.ReadProperties(settings);
        QCOMPARE(other.HScrollIncrement(), 300);
        QCOMPARE(other.ShowSelectedRow(), true);
        QCOMPARE(other.ColorTitleText(), 0x0000FFu);
        QCOMPARE(other.HeaderFont(), header);
        QCOMPARE(other.ColorUnused(), 0xC8C8C8u);
        QCOMPARE(other.AllowExpandCollapse(), true);
    }

    void gridColoursTranslateSystemIndexes()
    {
        const QPalette palette = grid->palette();
        QCOMPARE(OleColor::toColor(grid->ColorSelectedRow(), palette),
                 palette.color(QPalette::Highlight));
        QCOMPARE(OleColor::toColor(grid->ButtonClickColor(), palette), QColor(255, 255, 0));
        QCOMPARE(OleColor::toColor(grid->ColorProgressBar(), palette), QColor(0, 0, 255));
    }

    // ---- display ----------------------------------------------------------

    void cellsShowTheirDataType()
    {
        setUpColumns();
        PowGridItem *row = addRow(QStringLiteral("p"), QString());
        auto shows = [&](int type, const QString &text) {
            row->DataType = type;
            row->setCellText(1, text);
            return grid->DisplayText(row, 1);
        };
        QCOMPARE(shows(dtText, QStringLiteral("plain")), QStringLiteral("plain"));
        QCOMPARE(shows(dtPassword, QStringLiteral("secret")), QStringLiteral("******"));
        QCOMPARE(shows(dtDate, QStringLiteral("2024-03-05")), QStringLiteral("05/03/24"));
        QCOMPARE(shows(dtDate, QStringLiteral("not a date")), QStringLiteral("not a date"));
        QCOMPARE(shows(dtTime, QStringLiteral("13:45:10")), QStringLiteral("13.45.10"));
        QCOMPARE(shows(dtNumber, QStringLiteral("007")), QStringLiteral("7"));
        QCOMPARE(shows(dtNumber, QStringLiteral("abc")), QStringLiteral("abc"));
        QCOMPARE(shows(dtDecimal, QStringLiteral("abc")), QStringLiteral("???"));
        QCOMPARE(shows(dtProgress, QStringLiteral("50")), QStringLiteral("50 %"));
        QCOMPARE(shows(dtButton, QStringLiteral("Go")), QStringLiteral("Go"));
        QCOMPARE(shows(99, QStringLiteral("other")), QStringLiteral("other"));
    }

    void comboCellWithUnknownKeyShowsQuestionMarks()
    {
        setUpColumns(dtCombo);
        auto list = std::make_shared<clsComboList>();
        list->Add(QStringLiteral("Bee"), QStringLiteral("b"));
        grid->Headers()->Item(2)->ComboList = list;
        PowGridItem *known = addRow(QStringLiteral("known"), QStringLiteral("b"));
        PowGridItem *unknown = addRow(QStringLiteral("unknown"), QStringLiteral("zz"));
        QCOMPARE(grid->DisplayText(known, 1), QStringLiteral("Bee"));
        QCOMPARE(grid->DisplayText(unknown, 1), QStringLiteral("???"));
        // An item combo (in a text column) looks in the row's own list, and
        // in the column's while the row has none.
        grid->Headers()->Item(2)->ColumnDataType = dtText;
        known->DataType = dtItemCombo;
        QCOMPARE(grid->DisplayText(known, 1), QStringLiteral("Bee"));
        grid->Headers()->Item(2)->ComboList.reset();
        QCOMPARE(grid->DisplayText(known, 1), QStringLiteral("???"));
        known->ComboList = std::make_shared<clsComboList>();
        known->ComboList->Add(QStringLiteral("Own bee"), QStringLiteral("b"));
        QCOMPARE(grid->DisplayText(known, 1), QStringLiteral("Own bee"));
    }

    void rowDataTypeWinsInEditableTextColumnsOnly()
    {
        setUpColumns(dtText);
        PowGridItem *row = addRow(QStringLiteral("secret"), QStringLiteral("abc"));
        QCOMPARE(grid->CellDataType(row, 1), int(dtText));
        row->DataType = dtPassword;
        QCOMPARE(grid->CellDataType(row, 1), int(dtPassword));
        QCOMPARE(grid->CellDataType(row, 0), int(dtText));   // not editable: the name
        QCOMPARE(grid->CellDataType(row, 2), int(dtButton)); // not plain text: the button
        grid->Headers()->Item(1)->ColumnEditable = true;
        QCOMPARE(grid->CellDataType(row, 0), int(dtPassword));
        row->DataType = dtNone;
        QCOMPARE(grid->CellDataType(row, 1), int(dtText));
    }

    // ---- editing ----------------------------------------------------------

    void editingTextCommitsWithEnter()
    {
        setUpColumns();
        PowGridItem *row = addRow(QStringLiteral("name"), QStringLiteral("old"));
        startSpies();
        QSignalSpy before(grid, &PowGrid::BeforeEdit);
        QSignalSpy begin(grid, &PowGrid::BeginEdit);
        click(1, 1);
        QVERIFY(grid->txtInput()->isVisible());
        QCOMPARE(grid->txtInput()->text(), QStringLiteral("old"));
        QCOMPARE(grid->txtInput()->geometry(), grid->cellRect(1, 1));
        QCOMPARE(before.count(), 1);
        QCOMPARE(begin.count(), 1);
        QCOMPARE(begin.at(0).at(2).toInt(), 1);
        QTest::keyClick(grid->txtInput(), Qt::Key_End);
        typeAndPress(grid->txtInput(), QStringLiteral("er"), Qt::Key_Return);
        QVERIFY(!grid->txtInput()->isVisible());
        QCOMPARE(row->CellText(1), QStringLiteral("older"));
        QCOMPARE(modelChanged->count(), 1);
        QCOMPARE(gridChanged->count(), 1);
        QCOMPARE(gridChanged->at(0).at(0).value<PowGridItem *>(), row);
        QCOMPARE(gridChanged->at(0).at(1).toInt(), 1);
    }

    void committingTheSameTextStoresNothingButRaisesItemChanged()
    {
        setUpColumns();
        addRow(QStringLiteral("name"), QStringLiteral("same"));
        startSpies();
        click(1, 1);
        QTest::keyClick(grid->txtInput(), Qt::Key_Enter);
        QCOMPARE(modelChanged->count(), 0);
        QCOMPARE(gridChanged->count(), 1);
    }

    void escapeLeavesTheCellUnchanged()
    {
        setUpColumns();
        PowGridItem *row = addRow(QStringLiteral("name"), QStringLiteral("keep"));
        startSpies();
        click(1, 1);
        typeAndPress(grid->txtInput(), QStringLiteral("typed"), Qt::Key_Escape);
        QVERIFY(!grid->txtInput()->isVisible());
        QCOMPARE(row->CellText(1), QStringLiteral("keep"));
        QCOMPARE(modelChanged->count(), 0);
        QCOMPARE(gridChanged->count(), 0);
    }

    void clickingElsewhereCommitsTheEdit()
    {
        setUpColumns();
        PowGridItem *first = addRow(QStringLiteral("a"), QStringLiteral("1"));
        addRow(QStringLiteral("b"), QStringLiteral("2"));
        startSpies();
        click(1, 1);
        QTest::keyClick(grid->txtInput(), Qt::Key_End);
        QTest::keyClicks(grid->txtInput(), QStringLiteral("1"));
        click(2, 0);
        QCOMPARE(first->CellText(1), QStringLiteral("11"));
        QCOMPARE(gridChanged->count(), 1);
        QCOMPARE(grid->SelRow(), 2);
    }

    // The three cell editors answer Enter, Escape and the focus leaving them
    // alike: the value typed is kept, dropped, kept.
    void everyEditorCommitsOnEnterAndLeavingAndCancelsOnEscape_data()
    {
        QTest::addColumn<int>("type");
        QTest::addColumn<int>("ending");
        QTest::addColumn<bool>("kept");
        const QList<QPair<const char *, int>> editors{ { "text", dtText }, { "combo", dtCombo }, { "date", dtDate } };
        for (const auto &editor : editors) {
            QTest::addRow("%s, Enter", editor.first) << editor.second << int(Qt::Key_Return) << true;
            QTest::addRow("%s, Escape", editor.first) << editor.second << int(Qt::Key_Escape) << false;
            QTest::addRow("%s, click elsewhere", editor.first) << editor.second << 0 << true;
        }
    }

    void everyEditorCommitsOnEnterAndLeavingAndCancelsOnEscape()
    {
        QFETCH(int, type);
        QFETCH(int, ending);
        QFETCH(bool, kept);
        setUpColumns(type);
        const QStringList values = type == dtDate ? QStringList{ "2024-03-15", "2024-03-16" }
                                                  : QStringList{ "a", "b" };
        if (type == dtCombo) {
            auto list = std::make_shared<clsComboList>();
            list->Add(QStringLiteral("Ant"), QStringLiteral("a"));
            list->Add(QStringLiteral("Bee"), QStringLiteral("b"));
            grid->Headers()->Item(2)->ComboList = list;
        }
        PowGridItem *row = addRow(QStringLiteral("edited"), values.at(0));
        addRow(QStringLiteral("other"), values.at(0));
        click(1, 1);
        QWidget *editor = type == dtText ? static_cast<QWidget *>(grid->txtInput())
            : type == dtCombo            ? static_cast<QWidget *>(grid->cmbInput())
                                         : static_cast<QWidget *>(grid->dtpInput());
        QVERIFY(editor->isVisible());
        if (type == dtText) {
            grid->txtInput()->setText(values.at(1));
        } else if (type == dtCombo) {
            QTest::keyClick(editor, Qt::Key_Down);
        } else {
            grid->dtpInput()->setCurrentSection(QDateTimeEdit::DaySection);
            QTest::keyClick(editor, Qt::Key_Up);
        }
        QVERIFY(editor->isVisible());
        if (ending)
            QTest::keyClick(editor, Qt::Key(ending));
        else
            click(2, 0);
        QVERIFY(!editor->isVisible());
        QCOMPARE(row->CellText(1), kept ? values.at(1) : values.at(0));
    }

    void uneditableCellsAndGridsShowNoEditor()
    {
        setUpColumns();
        addRow(QStringLiteral("name"), QStringLiteral("v"));
        click(1, 0);
        QVERIFY(!grid->txtInput()->isVisible());
        grid->setAllowEdit(false);
        click(1, 1);
        QVERIFY(!grid->txtInput()->isVisible());
    }

    void passwordEditorHidesTheText()
    {
        setUpColumns(dtPassword);
        PowGridItem *row = addRow(QStringLiteral("pw"), QStringLiteral("abc"));
        QCOMPARE(grid->DisplayText(row, 1), QStringLiteral("***"));
        click(1, 1);
        QCOMPARE(grid->txtInput()->echoMode(), QLineEdit::Password);
        QTest::keyClick(grid->txtInput(), Qt::Key_End);
        typeAndPress(grid->txtInput(), QStringLiteral("d"), Qt::Key_Return);
        QCOMPARE(row->CellText(1), QStringLiteral("abcd"));
    }

    void numberEditorAcceptsDigitsSignsAndBackspaceOnly()
    {
        setUpColumns(dtNumber);
        PowGridItem *row = addRow(QStringLiteral("n"), QString());
        click(1, 1);
        QTest::keyClicks(grid->txtInput(), QStringLiteral("1a2.,x+-"));
        QCOMPARE(grid->txtInput()->text(), QStringLiteral("12+-"));
        QTest::keyClick(grid->txtInput(), Qt::Key_Backspace);
        QTest::keyClick(grid->txtInput(), Qt::Key_Backspace);
        QCOMPARE(grid->txtInput()->text(), QStringLiteral("12"));
        QTest::keyClick(grid->txtInput(), Qt::Key_Return);
        QCOMPARE(row->CellText(1), QStringLiteral("12"));
    }

    void numberEditorPastesOnlyWhatCanBeTyped()
    {
        setUpColumns(dtNumber);
        addRow(QStringLiteral("n"), QString());
        click(1, 1);
        QGuiApplication::clipboard()->setText(QStringLiteral("1a2x-"));
        QTest::keyClick(grid->txtInput(), Qt::Key_V, Qt::ControlModifier);
        QCOMPARE(grid->txtInput()->text(), QStringLiteral("12-"));

        // The context menu's Paste filters the same way.
        grid->txtInput()->clear();
        QContextMenuEvent menuEvent(QContextMenuEvent::Mouse, QPoint(2, 2), grid->txtInput()->mapToGlobal(QPoint(2, 2)));
        QApplication::sendEvent(grid->txtInput(), &menuEvent);
        QMenu *menu = grid->txtInput()->findChild<QMenu *>();
        QVERIFY(menu);
        QAction *paste = nullptr;
        for (QAction *action : menu->actions()) {
            if (action->text().startsWith(QLineEdit::tr("&Paste")))
                paste = action;
        }
        QVERIFY(paste);
        paste->trigger();
        menu->close();
        QCOMPARE(grid->txtInput()->text(), QStringLiteral("12-"));
    }

    void decimalEditorPastesOneCommaAndDigits()
    {
        setUpColumns(dtDecimal);
        addRow(QStringLiteral("d"), QString());
        click(1, 1);
        QGuiApplication::clipboard()->setText(QStringLiteral("1.5,3x"));
        QTest::keyClick(grid->txtInput(), Qt::Key_V, Qt::ControlModifier);
        QCOMPARE(grid->txtInput()->text(), QStringLiteral("1,53"));
    }

    void numberEditorStoresTheNumericValueOnly()
    {
        setUpColumns(dtNumber);
        PowGridItem *row = addRow(QStringLiteral("n"), QStringLiteral("5"));
        startSpies();
        click(1, 1);
        grid->txtInput()->clear();
        typeAndPress(grid->txtInput(), QStringLiteral("+007"), Qt::Key_Return);
        QCOMPARE(row->CellText(1), QStringLiteral("7"));
        click(1, 1);
        grid->txtInput()->clear();
        typeAndPress(grid->txtInput(), QStringLiteral("4-"), Qt::Key_Return);
        QCOMPARE(row->CellText(1), QStringLiteral("7")); // not a number: kept
        QCOMPARE(gridChanged->count(), 2);
        QCOMPARE(modelChanged->count(), 1);
    }

    void numberEditorHasAnUpDownWithinTheColumnRange()
    {
        setUpColumns(dtNumber);
        Header *value = grid->Headers()->Item(2);
        value->NumericMin = 0;
        value->NumericMax = 10;
        PowGridItem *row = addRow(QStringLiteral("n"), QStringLiteral("9"));
        click(1, 1);
        QSpinBox *upDown = grid->updInput();
        QVERIFY(upDown->isVisible());
        QCOMPARE(upDown->minimum(), 0);
        QCOMPARE(upDown->maximum(), 10);
        QCOMPARE(upDown->value(), 9);
        const QPoint upArrow(upDown->width() - 3, 3);
        QTest::mouseClick(upDown, Qt::LeftButton, Qt::NoModifier, upArrow);
        QTest::mouseClick(upDown, Qt::LeftButton, Qt::NoModifier, upArrow);
        QCOMPARE(upDown->value(), 10);
        QCOMPARE(grid->txtInput()->text(), QStringLiteral("10"));
        QVERIFY(grid->txtInput()->isVisible());
        QTest::keyClick(grid->txtInput(), Qt::Key_Return);
        QVERIFY(!upDown->isVisible());
        QCOMPARE(row->CellText(1), QStringLiteral("10"));
    }

    void typingDotTwiceIntoEmptyDecimalEditorYieldsOneComma()
    {
        setUpColumns(dtDecimal);
        addRow(QStringLiteral("d"), QString());
        click(1, 1);
        QTest::keyClicks(grid->txtInput(), QStringLiteral(".."));
        QCOMPARE(grid->txtInput()->text(), QStringLiteral(","));
        QTest::keyClicks(grid->txtInput(), QStringLiteral("5a,-+"));
        QCOMPARE(grid->txtInput()->text(), QStringLiteral(",5"));
    }

    void decimalCommitUnderACommaLocale_data()
    {
        QTest::addColumn<QString>("typed");
        QTest::addColumn<QString>("stored");
        QTest::newRow("3.50 typed") << QStringLiteral("3.50") << QStringLiteral("3,5");
        QTest::newRow("7. typed") << QStringLiteral("7.") << QStringLiteral("7");
        QTest::newRow("comma typed") << QStringLiteral("0,25") << QStringLiteral("0,25");
    }
    void decimalCommitUnderACommaLocale()
    {
        QFETCH(QString, typed);
        QFETCH(QString, stored);
        QLocale::setDefault(QLocale(QLocale::German, QLocale::Germany));
        setUpColumns(dtDecimal);
        PowGridItem *row = addRow(QStringLiteral("d"), QString());
        click(1, 1);
        typeAndPress(grid->txtInput(), typed, Qt::Key_Return);
        QCOMPARE(row->CellText(1), stored);
        QCOMPARE(grid->DisplayText(row, 1), stored);
    }

    void decimalTextWithPointsIsFormattedWithTheComma()
    {
        // The editor's text may hold points (put there by a host); the
        // formatting turns them into the comma.
        QLocale::setDefault(QLocale(QLocale::German, QLocale::Germany));
        setUpColumns(dtDecimal);
        PowGridItem *row = addRow(QStringLiteral("d"), QString());
        click(1, 1);
        grid->txtInput()->setText(QStringLiteral("3.50"));
        QTest::keyClick(grid->txtInput(), Qt::Key_Return);
        QCOMPARE(row->CellText(1), QStringLiteral("3,5"));
        click(1, 1);
        grid->txtInput()->setText(QStringLiteral("7."));
        QTest::keyClick(grid->txtInput(), Qt::Key_Return);
        QCOMPARE(row->CellText(1), QStringLiteral("7"));
    }

    void decimalWithCommaIsNoNumberUnderAPointLocale()
    {
        // Made for comma settings: with a point separator the comma text is
        // not a number, so nothing is stored and the cell shows "???".
        QLocale::setDefault(QLocale::c());
        setUpColumns(dtDecimal);
        PowGridItem *row = addRow(QStringLiteral("d"), QStringLiteral("2"));
        click(1, 1);
        grid->txtInput()->clear();
        typeAndPress(grid->txtInput(), QStringLiteral("3.5"), Qt::Key_Return);
        QCOMPARE(row->CellText(1), QStringLiteral("2"));
        row->setCellText(1, QStringLiteral("3,5"));
        QCOMPARE(grid->DisplayText(row, 1), QStringLiteral("???"));
    }

    void editingADate()
    {
        setUpColumns(dtDate);
        PowGridItem *row = addRow(QStringLiteral("when"), QStringLiteral("2024-03-15"));
        QCOMPARE(grid->DisplayText(row, 1), QStringLiteral("15/03/24"));
        click(1, 1);
        GridDateEditor *picker = grid->dtpInput();
        QVERIFY(picker->isVisible());
        QCOMPARE(picker->date(), QDate(2024, 3, 15));
        QCOMPARE(picker->displayFormat(), QStringLiteral("dd/MM/yy"));
        picker->setCurrentSection(QDateTimeEdit::DaySection);
        QTest::keyClick(picker, Qt::Key_Up);
        QTest::keyClick(picker, Qt::Key_Return);
        QVERIFY(!picker->isVisible());
        QCOMPARE(row->CellText(1), QStringLiteral("2024-03-16"));
    }

    void editingATimeAndCancelling()
    {
        setUpColumns(dtTime);
        PowGridItem *row = addRow(QStringLiteral("at"), QStringLiteral("13:45:10"));
        startSpies();
        click(1, 1);
        GridDateEditor *picker = grid->dtpInput();
        QCOMPARE(picker->displayFormat(), QStringLiteral("hh.mm.ss"));
        picker->setCurrentSection(QDateTimeEdit::HourSection);
        QTest::keyClick(picker, Qt::Key_Up);
        QTest::keyClick(picker, Qt::Key_Escape);
        QCOMPARE(row->CellText(1), QStringLiteral("13:45:10"));
        QCOMPARE(gridChanged->count(), 0);
        click(1, 1);
        picker->setCurrentSection(QDateTimeEdit::HourSection);
        QTest::keyClick(picker, Qt::Key_Up);
        QTest::keyClick(picker, Qt::Key_Return);
        QCOMPARE(row->CellText(1), QStringLiteral("14:45:10"));
        QCOMPARE(gridChanged->count(), 1);
    }

    void editingAComboStoresTheKeyOfTheChosenLine()
    {
        setUpColumns(dtCombo);
        auto list = std::make_shared<clsComboList>();
        list->Add(QStringLiteral("Ant"), QStringLiteral("a"));
        list->Add(QStringLiteral("Bee"), QStringLiteral("b"));
        list->Add(QStringLiteral("Cat"), QStringLiteral("c"));
        grid->Headers()->Item(2)->ComboList = list;
        PowGridItem *row = addRow(QStringLiteral("pet"), QStringLiteral("b"));
        click(1, 1);
        GridComboEditor *combo = grid->cmbInput();
        QVERIFY(combo->isVisible());
        QCOMPARE(combo->count(), 3);
        QCOMPARE(combo->currentText(), QStringLiteral("Bee"));
        QCOMPARE(list->Item(QStringLiteral("c"))->ComboListIndex, 2);
        QTest::keyClick(combo, Qt::Key_Down);
        QVERIFY(combo->isVisible()); // stepping does not commit
        QTest::keyClick(combo, Qt::Key_Return);
        QVERIFY(!combo->isVisible());
        QCOMPARE(row->CellText(1), QStringLiteral("c"));
        QCOMPARE(grid->DisplayText(row, 1), QStringLiteral("Cat"));
    }

    void aComboColumnTakesTheRowsOwnListWhenItHasOne()
    {
        setUpColumns(dtCombo);
        auto list = std::make_shared<clsComboList>();
        list->Add(QStringLiteral("Ant"), QStringLiteral("a"));
        grid->Headers()->Item(2)->ComboList = list;
        PowGridItem *own = addRow(QStringLiteral("own"), QStringLiteral("x"));
        own->ComboList = std::make_shared<clsComboList>();
        own->ComboList->Add(QStringLiteral("Ex"), QStringLiteral("x"));
        own->ComboList->Add(QStringLiteral("Why"), QStringLiteral("y"));
        addRow(QStringLiteral("column's"), QStringLiteral("a"));
        QCOMPARE(grid->DisplayText(own, 1), QStringLiteral("Ex"));
        click(1, 1);
        QCOMPARE(grid->cmbInput()->count(), 2);
        QCOMPARE(grid->cmbInput()->currentText(), QStringLiteral("Ex"));
        QTest::keyClick(grid->cmbInput(), Qt::Key_Escape);
        click(2, 1);
        QCOMPARE(grid->cmbInput()->count(), 1);
        QCOMPARE(grid->cmbInput()->currentText(), QStringLiteral("Ant"));
    }

    void itemComboUsesTheRowsOwnList()
    {
        setUpColumns(dtText);
        PowGridItem *row = addRow(QStringLiteral("format"), QStringLiteral("800_480"));
        row->DataType = dtItemCombo;
        row->ComboList = std::make_shared<clsComboList>();
        row->ComboList->Add(QStringLiteral("800_480"), QStringLiteral("800_480"));
        row->ComboList->Add(QStringLiteral("480_272"), QStringLiteral("480_272"));
        click(1, 1);
        QCOMPARE(grid->cmbInput()->currentText(), QStringLiteral("800_480"));
        QTest::keyClick(grid->cmbInput(), Qt::Key_Down);
        QTest::keyClick(grid->cmbInput(), Qt::Key_Escape);
        QCOMPARE(row->CellText(1), QStringLiteral("800_480"));
        click(1, 1);
        QTest::keyClick(grid->cmbInput(), Qt::Key_Down);
        QTest::keyClick(grid->cmbInput(), Qt::Key_Enter);
        QCOMPARE(row->CellText(1), QStringLiteral("480_272"));
    }

    void clickOnAButtonCellRaisesItemChangedWithItsColumn()
    {
        setUpColumns();
        PowGridItem *row = addRow(QStringLiteral("color"), QStringLiteral("#ff0000"));
        startSpies();
        const QPoint centre = grid->cellRect(1, 2).center();
        QTest::mousePress(grid, Qt::LeftButton, Qt::NoModifier, centre);
        QVERIFY(grid->isButtonDown(1, 2));
        QCOMPARE(gridChanged->count(), 0);
        QTest::mouseRelease(grid, Qt::LeftButton, Qt::NoModifier, centre);
        QVERIFY(!grid->isButtonDown(1, 2));
        QCOMPARE(gridChanged->count(), 1);
        QCOMPARE(gridChanged->at(0).at(0).value<PowGridItem *>(), row);
        QCOMPARE(gridChanged->at(0).at(1).toInt(), 2);
        QCOMPARE(modelChanged->count(), 0);
        QVERIFY(!grid->txtInput()->isVisible());
    }

    void clickOnACheckCellFlipsIt()
    {
        setUpColumns(dtCheck);
        PowGridItem *row = addRow(QStringLiteral("flag"), QStringLiteral("0"));
        startSpies();
        click(1, 1);
        QCOMPARE(row->CellText(1), QStringLiteral("1"));
        click(1, 1);
        QCOMPARE(row->CellText(1), QStringLiteral("0"));
        QCOMPARE(gridChanged->count(), 2);
        QVERIFY(PowGrid::isChecked(QStringLiteral("True")));
        QVERIFY(PowGrid::isChecked(QStringLiteral("-1")));
        QVERIFY(!PowGrid::isChecked(QStringLiteral("")));
    }

    void progressCellsAreNotEdited()
    {
        setUpColumns(dtProgress);
        addRow(QStringLiteral("done"), QStringLiteral("40"));
        click(1, 1);
        QVERIFY(!grid->txtInput()->isVisible());
    }

    void clickSelectsTheRow()
    {
        setUpColumns();
        addRow(QStringLiteral("a"), QString());
        PowGridItem *b = addRow(QStringLiteral("b"), QString());
        QSignalSpy selected(grid, &PowGrid::ItemSelected);
        click(2, 0);
        QCOMPARE(grid->SelRow(), 2);
        QCOMPARE(grid->SelectedItem(), b);
        QCOMPARE(selected.count(), 1);
        QCOMPARE(selected.at(0).at(0).value<PowGridItem *>(), b);
        QCOMPARE(selected.at(0).at(1).value<Header *>(), grid->Headers()->Item(1));
        grid->Items()->Clear();
        QCOMPARE(grid->SelRow(), 0);
        QVERIFY(grid->SelectedItem() == nullptr);
    }

    void upAndDownMoveTheSelectedRowAndScrollItIntoView()
    {
        activateHost();
        setUpColumns();
        for (int i = 1; i <= 40; ++i)
            addRow(QStringLiteral("name%1").arg(i), QString::number(i));
        grid->Items()->Item(3)->Visible = false;
        grid->RedrawGrid();
        QSignalSpy selected(grid, &PowGrid::ItemSelected);
        click(1, 0);
        QCOMPARE(grid->SelRow(), 1);
        QVERIFY(grid->hasFocus());
        QTest::keyClick(grid, Qt::Key_Down);
        QCOMPARE(grid->SelRow(), 2);
        // A hidden row is passed over.
        QTest::keyClick(grid, Qt::Key_Down);
        QCOMPARE(grid->SelRow(), 4);
        QTest::keyClick(grid, Qt::Key_Up);
        QCOMPARE(grid->SelRow(), 2);
        QCOMPARE(selected.last().at(0).value<PowGridItem *>(), grid->Items()->Item(2));
        // Up from the first row stays there; Down goes on below the visible rows, scrolling.
        QTest::keyClick(grid, Qt::Key_Up);
        QTest::keyClick(grid, Qt::Key_Up);
        QCOMPARE(grid->SelRow(), 1);
        for (int i = 0; i < 30; ++i)
            QTest::keyClick(grid, Qt::Key_Down);
        QCOMPARE(grid->SelRow(), 32);
        QVERIFY(grid->FirstVisible() > 1);
        QVERIFY(!grid->cellRect(32, 1).isEmpty());
    }

    void f2OrEnterEditsTheSelectedRowAndEscapeCancels()
    {
        activateHost();
        setUpColumns();
        addRow(QStringLiteral("first"), QStringLiteral("one"));
        PowGridItem *second = addRow(QStringLiteral("second"), QStringLiteral("two"));
        startSpies();
        click(1, 0);
        QVERIFY(!grid->txtInput()->isVisible());
        QTest::keyClick(grid, Qt::Key_Down);
        QTest::keyClick(grid, Qt::Key_F2);
        // The first editable cell: the value, not the name.
        QVERIFY(grid->txtInput()->isVisible());
        QCOMPARE(grid->editRow(), 2);
        QCOMPARE(grid->editColumn(), 1);
        QTest::keyClick(grid->txtInput(), Qt::Key_End);
        typeAndPress(grid->txtInput(), QStringLiteral("!"), Qt::Key_Escape);
        QVERIFY(!grid->txtInput()->isVisible());
        QCOMPARE(second->CellText(1), QStringLiteral("two"));
        QCOMPARE(gridChanged->count(), 0);
        // Back on the grid, Enter edits and the editor's Enter commits.
        QVERIFY(grid->hasFocus());
        QTest::keyClick(grid, Qt::Key_Return);
        QVERIFY(grid->txtInput()->isVisible());
        QTest::keyClick(grid->txtInput(), Qt::Key_End);
        typeAndPress(grid->txtInput(), QStringLiteral("!"), Qt::Key_Return);
        QCOMPARE(second->CellText(1), QStringLiteral("two!"));
        QCOMPARE(gridChanged->count(), 1);
        QVERIFY(grid->hasFocus());
    }

    void theSelectedRowShowsAFocusFrameWhileTheGridHasTheFocus()
    {
        activateHost();
        setUpColumns();
        addRow(QStringLiteral("first"), QStringLiteral("one"));
        addRow(QStringLiteral("second"), QStringLiteral("two"));
        click(2, 0);
        QVERIFY(grid->hasFocus());
        const QRect line = grid->cellRect(2, 0).united(grid->cellRect(2, 2));
        const QImage focused = grid->grab(line).toImage();
        auto *other = new QLineEdit(host);
        other->show();
        other->setFocus();
        QTRY_VERIFY(!grid->hasFocus());
        QCOMPARE(grid->SelRow(), 2);
        QVERIFY(grid->grab(line).toImage() != focused);
    }

    void keyPressReachesTheHostByReference()
    {
        setUpColumns();
        short seen = 0;
        connect(grid, &PowGrid::KeyPress, this, [&seen](short &key) {
            seen = key;
            key = 0;
        });
        grid->setFocus();
        QTest::keyClick(grid, Qt::Key_A, Qt::NoModifier);
        QCOMPARE(seen, short('a'));
    }

    // ---- title lines ------------------------------------------------------

    void collapsingAndExpandingATitleLine()
    {
        setUpColumns();
        PowGridItem *title = grid->Items()->Add();
        title->TitleLine = true;
        title->setCellText(0, QStringLiteral("Group"));
        addRow(QStringLiteral("a"), QString());
        addRow(QStringLiteral("b"), QString());
        PowGridItem *next = grid->Items()->Add();
        next->TitleLine = true;
        addRow(QStringLiteral("c"), QString());
        QStringList events;
        for (auto signal : { &PowGrid::BeforeCollapse, &PowGrid::AfterCollapse,
                             &PowGrid::BeforeExpand, &PowGrid::AfterExpand }) {
            connect(grid, signal, this, [&events, signal, this] {
                const QString name = signal == &PowGrid::BeforeCollapse ? "BeforeCollapse"
                                   : signal == &PowGrid::AfterCollapse  ? "AfterCollapse"
                                   : signal == &PowGrid::BeforeExpand   ? "BeforeExpand"
                                                                        : "AfterExpand";
                // Before the repaint the flags have already changed.
                events << name + QLatin1Char(':')
                              + QString::number(grid->Items()->CountVisible());
            });
        }
        QTest::mouseClick(grid, Qt::LeftButton, Qt::NoModifier, grid->titleBoxRect(1).center());
        QCOMPARE(events, (QStringList { "BeforeCollapse:3", "AfterCollapse:3" }));
        QVERIFY(!grid->Items()->Item(2)->Visible);
        QVERIFY(!grid->Items()->Item(3)->Visible);
        QVERIFY(grid->Items()->Item(5)->Visible);
        // The second title line is now drawn right under the first.
        QCOMPARE(grid->cellRect(4, 0).top(), grid->cellRect(1, 0).bottom() + 1);
        events.clear();
        QTest::mouseClick(grid, Qt::LeftButton, Qt::NoModifier, grid->titleBoxRect(1).center());
        QCOMPARE(events, (QStringList { "BeforeExpand:5", "AfterExpand:5" }));
    }

    void mixedGroupStaysMixedInverted()
    {
        setUpColumns();
        grid->Items()->Add()->TitleLine = true;
        addRow(QStringLiteral("a"), QString());
        addRow(QStringLiteral("b"), QString())->Visible = false;
        addRow(QStringLiteral("c"), QString());
        QSignalSpy collapse(grid, &PowGrid::BeforeCollapse);
        QTest::mouseClick(grid, Qt::LeftButton, Qt::NoModifier, grid->titleBoxRect(1).center());
        QCOMPARE(collapse.count(), 1);
        QCOMPARE(grid->Items()->Item(2)->Visible, false);
        QCOMPARE(grid->Items()->Item(3)->Visible, true);
        QCOMPARE(grid->Items()->Item(4)->Visible, false);
    }

    void titleLineWithoutRowsChangesNothing()
    {
        setUpColumns();
        grid->Items()->Add()->TitleLine = true;
        grid->Items()->Add()->TitleLine = true;
        addRow(QStringLiteral("a"), QString());
        int events = 0;
        for (auto signal : { &PowGrid::BeforeCollapse, &PowGrid::AfterCollapse,
                             &PowGrid::BeforeExpand, &PowGrid::AfterExpand })
            connect(grid, signal, this, [&events] { ++events; });
        QTest::mouseClick(grid, Qt::LeftButton, Qt::NoModifier, grid->titleBoxRect(1).center());
        QCOMPARE(events, 0);
        QCOMPARE(grid->Items()->CountVisible(), 3);
        // The last line with nothing after it, likewise.
        PowGridItem *last = grid->Items()->Add();
        last->TitleLine = true;
        QTest::mouseClick(grid, Qt::LeftButton, Qt::NoModifier, grid->titleBoxRect(4).center());
        QCOMPARE(events, 0);
    }

    void titleLinesStayOpenWhenNotAllowedToCollapse()
    {
        setUpColumns();
        grid->setAllowExpandCollapse(false);
        grid->Items()->Add()->TitleLine = true;
        addRow(QStringLiteral("a"), QString());
        QTest::mouseClick(grid, Qt::LeftButton, Qt::NoModifier, grid->titleBoxRect(1).center());
        QVERIFY(grid->Items()->Item(2)->Visible);
    }

    void clicksFindRowsBehindCollapsedGroups()
    {
        setUpColumns();
        grid->Items()->Add()->TitleLine = true;
        addRow(QStringLiteral("hidden 1"), QString());
        addRow(QStringLiteral("hidden 2"), QString());
        grid->Items()->Add()->TitleLine = true;
        PowGridItem *shown = addRow(QStringLiteral("shown"), QStringLiteral("v"));
        grid->CollapseAll();
        QCOMPARE(grid->Items()->CountVisible(), 2);
        QSignalSpy selected(grid, &PowGrid::ItemSelected);
        // The third line on the screen is row 5... but it is collapsed too:
        QVERIFY(!shown->Visible);
        QTest::mouseClick(grid, Qt::LeftButton, Qt::NoModifier, grid->titleBoxRect(4).center());
        QVERIFY(shown->Visible);
        click(5, 1);
        QCOMPARE(grid->SelectedItem(), shown);
        QCOMPARE(grid->rowAt(grid->cellRect(5, 1).center()), 5);
        QVERIFY(grid->txtInput()->isVisible());
    }

    // ---- scrolling --------------------------------------------------------

    void verticalBarAndWheelScroll()
    {
        setUpColumns();
        for (int i = 1; i <= 40; ++i)
            addRow(QStringLiteral("row %1").arg(i), QString::number(i));
        const int fit = grid->VisibleCells();
        QVERIFY(fit > 3 && fit < 40);
        QCOMPARE(grid->FirstVisible(), 1);
        QSignalSpy scrolled(grid, &PowGrid::ScrollGrid);
        QScrollBar *bar = grid->verticalBar();
        QVERIFY(bar->isVisible());
        QCOMPARE(bar->maximum(), 40 - fit);
        QTest::mouseClick(bar, Qt::LeftButton, Qt::NoModifier, QPoint(bar->width() / 2, bar->height() - 3));
        QCOMPARE(grid->FirstVisible(), 2);
        QCOMPARE(scrolled.count(), 1);
        QVERIFY(grid->cellRect(1, 0).isEmpty());
        QCOMPARE(grid->rowAt(grid->cellRect(2, 0).center()), 2);

        const QPoint inside = grid->cellRect(5, 1).center();
        QWheelEvent down(inside, grid->mapToGlobal(inside), QPoint(), QPoint(0, -120), Qt::NoButton,
                         Qt::NoModifier, Qt::NoScrollPhase, false);
        QApplication::sendEvent(grid, &down);
        QCOMPARE(grid->FirstVisible(), 2 + PowGrid::WheelRowsPerNotch);
        QCOMPARE(bar->value(), 1 + PowGrid::WheelRowsPerNotch);
        grid->MouseWheel(60);
        QCOMPARE(grid->FirstVisible(), 2 + PowGrid::WheelRowsPerNotch); // half a notch
        grid->MouseWheel(60);
        QCOMPARE(grid->FirstVisible(), 2);
        grid->MouseWheel(100 * 120);
        QCOMPARE(grid->FirstVisible(), 1);
        grid->MouseWheel(-100 * 120);
        QCOMPARE(grid->FirstVisible(), 40 - fit + 1);
        QVERIFY(!grid->cellRect(40, 0).isEmpty());
    }

    void horizontalBarShowsForWideColumns()
    {
        setUpColumns();
        QVERIFY(!grid->horizontalBar()->isVisible());
        grid->Headers()->Add(QStringLiteral("Wide"), 6000, true, dtText);
        addRow(QStringLiteral("a"), QString());
        QScrollBar *bar = grid->horizontalBar();
        QVERIFY(bar->isVisible());
        const int left = grid->cellRect(1, 1).left();
        bar->setValue(1);
        QCOMPARE(grid->cellRect(1, 1).left(), left - Twips::toPixelsX(750, grid));
        grid->setHScrollIncrement(1500);
        bar->setValue(1);
        QCOMPARE(grid->cellRect(1, 1).left(), left - Twips::toPixelsX(1500, grid));
    }

    void hiddenVerticalBarStillScrollsWithTheWheel()
    {
        setUpColumns();
        grid->setShowVerticalBar(false);
        for (int i = 1; i <= 40; ++i)
            addRow(QStringLiteral("row %1").arg(i), QString());
        QVERIFY(!grid->verticalBar()->isVisible());
        grid->MouseWheel(-120);
        QCOMPARE(grid->FirstVisible(), 1 + PowGrid::WheelRowsPerNotch);
    }

    // ---- layout -----------------------------------------------------------

    void rowHeightComesFromTheFontAndTheMargin()
    {
        const int line = QFontMetrics(grid->Font()).height();
        QCOMPARE(grid->rowHeight(), line + Twips::toPixelsY(120, grid));
        grid->setCellHeight(450);
        QCOMPARE(grid->rowHeight(), Twips::toPixelsY(450, grid));
    }

    void resizeRaisesResize()
    {
        QSignalSpy resized(grid, &PowGrid::Resize);
        grid->resize(300, 200);
        QCOMPARE(resized.count(), 1);
        QCOMPARE(grid->ScaleWidth(), Twips::fromPixelsX(298, grid));
    }

    void autoSizeHeadersFitsTheTexts()
    {
        setUpColumns();
        addRow(QStringLiteral("a much longer property name"), QStringLiteral("v"));
        PowGridItem *hidden = addRow(QStringLiteral("x"), QStringLiteral("an even much longer hidden value text"));
        hidden->Visible = false;
        grid->AutoSizeHeaders();
        const QFontMetrics m(grid->Font());
        const int nameWidth = Twips::toPixelsX(grid->Headers()->Item(1)->ColumnWidth, grid);
        QVERIFY(nameWidth >= m.horizontalAdvance(QStringLiteral("a much longer property name")));
        const int valueWidth = Twips::toPixelsX(grid->Headers()->Item(2)->ColumnWidth, grid);
        QVERIFY(valueWidth < m.horizontalAdvance(hidden->CellText(1)));
        grid->AutoSizeHeadersFull();
        const int fullWidth = Twips::toPixelsX(grid->Headers()->Item(2)->ColumnWidth, grid);
        QVERIFY(fullWidth >= m.horizontalAdvance(hidden->CellText(1)));
    }

    void editorsHideWhenTheModelLosesRows()
    {
        setUpColumns();
        addRow(QStringLiteral("a"), QStringLiteral("1"));
        startSpies();
        click(1, 1);
        QVERIFY(grid->txtInput()->isVisible());
        grid->Items()->Clear();
        QVERIFY(!grid->txtInput()->isVisible());
        QCOMPARE(gridChanged->count(), 0);
    }

    // ---- column widths, tooltips, buttons only where wanted ------------------

    void draggingAHeaderEdgeResizesTheColumn()
    {
        setUpColumns();
        addRow(QStringLiteral("x"), QStringLiteral("1"));
        QSignalSpy resized(grid, &PowGrid::ColumnResized);
        const QRect value = grid->cellRect(1, 1);
        const QPoint edge(value.right() + 1, value.top() - grid->headerHeight() / 2);
        QCOMPARE(grid->columnEdgeAt(edge), 1);
        const int before = grid->columnWidthPixels(1);
        QTest::mousePress(grid, Qt::LeftButton, Qt::NoModifier, edge);
        QTest::mouseMove(grid, edge + QPoint(60, 0));
        QTest::mouseRelease(grid, Qt::LeftButton, Qt::NoModifier, edge + QPoint(60, 0));
        QCOMPARE(resized.count(), 1);
        QCOMPARE(resized.at(0).at(0).toInt(), 1);
        QVERIFY(qAbs(grid->columnWidthPixels(1) - (before + 60)) <= 1);
        // The press on the edge neither selected a row nor began an edit.
        QCOMPARE(grid->editRow(), 0);
    }

    void aColumnCannotBeDraggedNarrowerThanItsMinimum()
    {
        setUpColumns();
        addRow(QStringLiteral("x"), QStringLiteral("1"));
        const QRect value = grid->cellRect(1, 1);
        const QPoint edge(value.right() + 1, value.top() - grid->headerHeight() / 2);
        QTest::mousePress(grid, Qt::LeftButton, Qt::NoModifier, edge);
        QTest::mouseMove(grid, QPoint(value.left() - 40, edge.y()));
        QTest::mouseRelease(grid, Qt::LeftButton, Qt::NoModifier, QPoint(value.left() - 40, edge.y()));
        QVERIFY(qAbs(grid->columnWidthPixels(1) - PowGrid::MinimumColumnPixels) <= 1);
    }

    void aTextThatDoesNotFitHasItsWholeTextAsToolTip()
    {
        setUpColumns();
        const QString longText = QStringLiteral("'ShowLayer ui_Information; SetVar a 1; Redraw'");
        addRow(QStringLiteral("onrelease"), longText);
        addRow(QStringLiteral("x"), QStringLiteral("1"));
        QCOMPARE(grid->toolTipAt(grid->cellRect(1, 1).center()), longText);
        QCOMPARE(grid->toolTipAt(grid->cellRect(2, 1).center()), QString());

        QHelpEvent help(QEvent::ToolTip, grid->cellRect(1, 1).center(),
                        grid->mapToGlobal(grid->cellRect(1, 1).center()));
        QApplication::sendEvent(grid, &help);
        QCOMPARE(QToolTip::text(), longText);
        QToolTip::hideText();
    }

    void aRowsOwnToolTipComesBeforeTheCellText()
    {
        setUpColumns();
        PowGridItem *row = addRow(QStringLiteral("color"), QStringLiteral("#FF0000"));
        row->ToolTip = QStringLiteral("from somewhere else");
        QCOMPARE(grid->toolTipAt(grid->cellRect(1, 0).center()), row->ToolTip);
        grid->Headers()->Item(2)->ColumnWidth = 60;
        grid->RedrawGrid();
        QCOMPARE(grid->toolTipAt(grid->cellRect(1, 1).center()),
                 row->ToolTip + QLatin1Char('\n') + QStringLiteral("#FF0000"));
    }

    void anEmptyButtonCellIsHiddenAndIgnoresClicks()
    {
        setUpColumns();
        grid->Headers()->Item(3)->HideEmptyButtons = true;
        PowGridItem *plain = grid->Items()->Add();
        plain->SetItemColumns({ QStringLiteral("x"), QStringLiteral("1"), QString() });
        addRow(QStringLiteral("color"), QStringLiteral("#FF0000"));
        QVERIFY(!grid->isButtonShown(plain, 2));
        QVERIFY(grid->isButtonShown(grid->Items()->Item(2), 2));
        startSpies();
        click(1, 2);
        QCOMPARE(gridChanged->count(), 0);
        click(2, 2);
        QCOMPARE(gridChanged->count(), 1);
        QCOMPARE(gridChanged->at(0).at(1).toInt(), 2);
    }

    void anEmptyButtonCellStillWorksWhenItsColumnDoesNotHideIt()
    {
        setUpColumns();
        PowGridItem *plain = grid->Items()->Add();
        plain->SetItemColumns({ QStringLiteral("x"), QStringLiteral("1"), QString() });
        QVERIFY(grid->isButtonShown(plain, 2));
        startSpies();
        click(1, 2);
        QCOMPARE(gridChanged->count(), 1);
    }

    void aDimmedRowIsDrawnInGrey()
    {
        setUpColumns();
        grid->Headers()->Item(1)->ColumnWidth = 3000;
        PowGridItem *row = addRow(QStringLiteral("WWWWWWWW"), QString());
        const auto darkest = [this] {
            const QImage image = grid->grab(grid->cellRect(1, 0)).toImage();
            int value = 255;
            for (int y = 0; y < image.height(); ++y)
                for (int x = 0; x < image.width(); ++x)
                    value = std::min(value, qGray(image.pixel(x, y)));
            return value;
        };
        const int normal = darkest();
        row->Dimmed = true;
        grid->RedrawGrid();
        QVERIFY2(darkest() > normal + 40, "the text of a dimmed row is lighter");
    }
};

QTEST_MAIN(TestPowGrid)
#include "tst_powgrid.moc"
