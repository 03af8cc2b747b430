// SPDX-License-Identifier: MIT
#include "PowGrid.h"
#include "PrintCancelledError.h"
#include "ScriptedDialogs.h"
#include "clsPrintDialog.h"

#include <QProcess>
#include <QStandardPaths>
#include <QtTest>

class TestPrinting : public QObject
{
    Q_OBJECT

    static void pdfPrinter(QPrinter &printer, const QString &file)
    {
        printer.setOutputFormat(QPrinter::PdfFormat);
        printer.setOutputFileName(file);
    }

    // The text of a PDF file through pdftotext, when the machine has it.
    static std::optional<QString> pdfText(const QString &file)
    {
        const QString tool = QStandardPaths::findExecutable(QStringLiteral("pdftotext"));
        if (tool.isEmpty())
            return std::nullopt;
        QProcess process;
        process.start(tool, { QStringLiteral("-layout"), file, QStringLiteral("-") });
        if (!process.waitForFinished(30000))
            return std::nullopt;
        return QString::fromUtf8(process.readAllStandardOutput());
    }

    static int pdfPageCount(const QByteArray &pdf)
    {
        return int(pdf.count("/Type /Page\n") + pdf.count("/Type /Page ") + pdf.count("/Type/Page\n"));
    }

private slots:
    void showPrinterPassesTheRangeAndTakesTheChoice()
    {
        ScriptedDialogs dialogs;
        ScriptedDialogs::PrintAnswer answer;
        answer.FromPage = 2;
        answer.ToPage = 3;
        answer.orientation = QPageLayout::Landscape;
        answer.duplex = QPrinter::DuplexLongSide;
        dialogs.answerPrint(answer);
        QPrinter current;
        QTemporaryDir dir;
        pdfPrinter(current, dir.filePath(QStringLiteral("out.pdf")));
        clsPrintDialog dialog(dialogs, current);
        dialog.setMin(1);
        dialog.setMax(5);
        dialog.setFromPage(1);
        dialog.setToPage(5);
        QVERIFY(dialog.ShowPrinter());
        QCOMPARE(dialogs.asked().size(), 1);
        const ScriptedDialogs::Asked &asked = dialogs.asked().first();
        QCOMPARE(asked.kind, QStringLiteral("print"));
        QCOMPARE(asked.Min, 1);
        QCOMPARE(asked.Max, 5);
        QCOMPARE(asked.FromPage, 1);
        QCOMPARE(asked.ToPage, 5);
        QCOMPARE(dialog.FromPage(), qint16(2));
        QCOMPARE(dialog.ToPage(), qint16(3));
        QCOMPARE(current.pageLayout().orientation(), QPageLayout::Landscape);
        // PDF output knows no duplex, so only a real printer would keep it.
        QCOMPARE(current.outputFileName(), dir.filePath(QStringLiteral("out.pdf")));
    }

    void cancelLeavesTheCurrentPrinterAlone()
    {
        ScriptedDialogs dialogs;
        ScriptedDialogs::PrintAnswer answer;
        answer.accepted = false;
        answer.orientation = QPageLayout::Landscape;
        dialogs.answerPrint(answer);
        QPrinter current;
        current.setPageOrientation(QPageLayout::Portrait);
        clsPrintDialog dialog(dialogs, current);
        dialog.setFromPage(4);
        bool confirmed = true;
        try {
            confirmed = dialog.ShowPrinter();
        } catch (const PrintCancelledError &) {
            QFAIL("a cancel returns quietly");
        }
        QVERIFY(!confirmed);
        QCOMPARE(current.pageLayout().orientation(), QPageLayout::Portrait);
        QCOMPARE(dialog.FromPage(), qint16(4));
    }

    void printGridWritesTheGridsTextsToAPdf()
    {
        QWidget host;
        PowGrid grid(&host);
        grid.Headers()->Add(QStringLiteral("Property"), 2000, true, dtText);
        grid.Headers()->Add(QStringLiteral("Value"), 2000, true, dtText);
        grid.Headers()->Add(QStringLiteral("Hidden"), 2000, false, dtText);
        PowGridItem *title = grid.Items()->Add();
        title->TitleLine = true;
        title->setCellText(0, QStringLiteral("Layout"));
        grid.Items()->Add()->SetItemColumns({ QStringLiteral("width"), QStringLiteral("800"),
                                              QStringLiteral("secretcolumn") });
        PowGridItem *hidden = grid.Items()->Add();
        hidden->SetItemColumns({ QStringLiteral("collapsedrow"), QStringLiteral("1") });
        hidden->Visible = false;
        for (int i = 1; i <= 120; ++i)
            grid.Items()->Add()->SetItemColumns({ QStringLiteral("row%1").arg(i),
                                                  QStringLiteral("value%1").arg(i) });

        QTemporaryDir dir;
        const QString file = dir.filePath(QStringLiteral("grid.pdf"));
        QPrinter printer;
        pdfPrinter(printer, file);
        grid.PrintGrid(printer);

        QFile pdf(file);
        QVERIFY(pdf.open(QIODevice::ReadOnly));
        const QByteArray bytes = pdf.readAll();
        QVERIFY(bytes.startsWith("%PDF"));
        QVERIFY2(bytes.size() > 2000, "the PDF holds hardly anything");
        QVERIFY2(pdfPageCount(bytes) >= 2, "120 rows take more than one page");

        const auto text = pdfText(file);
        if (text) {
            for (const char *shown : { "Property", "Value", "Layout", "width", "800", "row1",
                                       "value120" })
                QVERIFY2(text->contains(QLatin1String(shown)), shown);
            QVERIFY(!text->contains(QLatin1String("collapsedrow")));
            QVERIFY(!text->contains(QLatin1String("secretcolumn")));
            QVERIFY(text->count(QLatin1String("Property")) >= 2); // the header on every page
        }
    }

    void autoSizeForPrintFitsThePage()
    {
        QWidget host;
        PowGrid grid(&host);
        grid.Headers()->Add(QStringLiteral("A"), 100, true, dtText);
        grid.Headers()->Add(QStringLiteral("B"), 100, true, dtText);
        grid.Items()->Add()->SetItemColumns({ QString(300, QLatin1Char('x')), QStringLiteral("y") });
        QPrinter printer;
        printer.setOutputFormat(QPrinter::PdfFormat);
        grid.AutoSizeHeadersForPrint(printer);
        const int total = grid.Headers()->Item(1)->ColumnWidth + grid.Headers()->Item(2)->ColumnWidth;
        const QRectF page = printer.pageLayout().paintRect(QPageLayout::Inch);
        QVERIFY(total <= int(page.width() * 1440) + 1);
        QVERIFY(grid.Headers()->Item(1)->ColumnWidth > grid.Headers()->Item(2)->ColumnWidth);
    }
};

QTEST_MAIN(TestPrinting)
#include "tst_printing.moc"
