// SPDX-License-Identifier: MIT
#include "ProblemFilter.h"
#include "ProblemListModel.h"
#include "ProblemsPanel.h"

#include <QComboBox>
#include <QSignalSpy>
#include <QTreeView>
#include <QtTest>

// The Problems panel on its own: its rows, sorting, filters, counts, and the
// jump a double-click asks for.
namespace {

Problem problem(Problem::Severity severity, const QString &code, const QString &file, qint64 line,
                const QByteArray &nodeKey, const QString &message)
{
    Problem p;
    p.severity = severity;
    p.code = code;
    p.file = file;
    p.line = line;
    p.column = 3;
    p.nodeKey = nodeKey;
    p.message = message;
    return p;
}

QVector<Problem> someProblems()
{
    using S = Problem::Severity;
    return {
        problem(S::Warning, "split-value", "/skin/ui/main.ui", 25, "Lui_Settings|EsldVolume", "value=65|0|100 reads as value=65"),
        problem(S::Error, "missing-picture", "/skin/ui/main.ui", 9, "Lui_Main|EbtnMap", "btn.bmp is found nowhere"),
        problem(S::Error, "missing-used-layer", "/skin/ui/main.ui", 100, "Lui_Main|Uui_Status", "USELAYER ui_Status names no layer"),
        problem(S::Warning, "unused-picture", "/skin/old.bmp", 0, "", "old.bmp is named by no object"),
    };
}

QStringList column(const QTreeView *view, int column)
{
    QStringList texts;
    for (int row = 0; row < view->model()->rowCount(); ++row)
        texts << view->model()->index(row, column).data().toString();
    return texts;
}

} // namespace

class TestProblemsPanel : public QObject
{
    Q_OBJECT

private slots:
    void showsEveryProblemSortedByFileAndLine()
    {
        ProblemsPanel panel;
        panel.setProblems(someProblems());
        QCOMPARE(panel.view()->model()->rowCount(), 4);
        QCOMPARE(column(panel.view(), ProblemListModel::LineColumn), QStringList({ "", "9", "25", "100" }));
        QCOMPARE(column(panel.view(), ProblemListModel::FileColumn).first(), QStringLiteral("old.bmp"));
    }

    void sortsByAnyColumn()
    {
        ProblemsPanel panel;
        panel.setProblems(someProblems());
        panel.view()->sortByColumn(ProblemListModel::SeverityColumn, Qt::AscendingOrder);
        QCOMPARE(column(panel.view(), ProblemListModel::SeverityColumn),
                 QStringList({ "error", "error", "warning", "warning" }));
        panel.view()->sortByColumn(ProblemListModel::CodeColumn, Qt::DescendingOrder);
        QCOMPARE(column(panel.view(), ProblemListModel::CodeColumn).first(), QStringLiteral("unused-picture"));
    }

    void filtersBySeverityAndCode()
    {
        ProblemsPanel panel;
        panel.setProblems(someProblems());
        panel.severityFilter()->setCurrentIndex(panel.severityFilter()->findData(int(Problem::Severity::Error)));
        QCOMPARE(column(panel.view(), ProblemListModel::CodeColumn),
                 QStringList({ "missing-picture", "missing-used-layer" }));
        panel.codeFilter()->setCurrentIndex(panel.codeFilter()->findData(QStringLiteral("missing-used-layer")));
        QCOMPARE(column(panel.view(), ProblemListModel::CodeColumn), QStringList({ "missing-used-layer" }));
        panel.severityFilter()->setCurrentIndex(panel.severityFilter()->findData(int(Problem::Severity::Warning)));
        QCOMPARE(panel.view()->model()->rowCount(), 0);
        panel.severityFilter()->setCurrentIndex(0);
        panel.codeFilter()->setCurrentIndex(0);
        QCOMPARE(panel.view()->model()->rowCount(), 4);
    }

    void countsErrorsAndWarnings()
    {
        ProblemsPanel panel;
        QSignalSpy counts(&panel, &ProblemsPanel::countsChanged);
        panel.setProblems(someProblems());
        QCOMPARE(panel.errorCount(), 2);
        QCOMPARE(panel.warningCount(), 2);
        QCOMPARE(counts.size(), 1);
        QCOMPARE(counts.first().at(0).toInt(), 2);
        QCOMPARE(counts.first().at(1).toInt(), 2);
    }

    void doubleClickAsksToJumpToTheNodeAndLine()
    {
        ProblemsPanel panel;
        panel.resize(800, 300);
        panel.setProblems(someProblems());
        panel.show();
        QVERIFY(QTest::qWaitForWindowExposed(&panel));
        QSignalSpy jumps(&panel, &ProblemsPanel::problemActivated);
        // Sorted by file and line: the third row is the problem on line 25.
        const QModelIndex index = panel.view()->model()->index(2, ProblemListModel::MessageColumn);
        const QPoint at = panel.view()->visualRect(index).center();
        QTest::mouseClick(panel.view()->viewport(), Qt::LeftButton, {}, at);
        QTest::mouseDClick(panel.view()->viewport(), Qt::LeftButton, {}, at);
        QCOMPARE(jumps.size(), 1);
        QCOMPARE(jumps.first().at(0).toByteArray(), QByteArray("Lui_Settings|EsldVolume"));
        QCOMPARE(jumps.first().at(1).toString(), QStringLiteral("/skin/ui/main.ui"));
        QCOMPARE(jumps.first().at(2).toLongLong(), qint64(25));
    }
};

QTEST_MAIN(TestProblemsPanel)
#include "tst_problemspanel.moc"
