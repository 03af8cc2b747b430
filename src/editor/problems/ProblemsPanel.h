// SPDX-License-Identifier: MIT
#pragma once

#include "Problem.h"

#include <QWidget>

class ProblemFilter;
class ProblemListModel;
class QComboBox;
class QModelIndex;
class QTreeView;

// The list of a skin's problems: sortable by any column, filtered by severity
// and by code. A double-click on a problem asks for its node to be selected
// and its file and line to be shown (problemActivated); the panel itself does
// neither, so it stands apart from the window that shows it.
class ProblemsPanel : public QWidget
{
    Q_OBJECT

public:
    explicit ProblemsPanel(QWidget *parent = nullptr);

    void setProblems(const QVector<Problem> &problems);
    int errorCount() const;
    int warningCount() const;

    // The controls, for the window and for tests.
    QTreeView *view() const { return mView; }
    QComboBox *severityFilter() const { return mSeverity; }
    QComboBox *codeFilter() const { return mCode; }
    ProblemFilter *filter() const { return mFilter; }

signals:
    void problemActivated(const QByteArray &nodeKey, const QString &file, qint64 line);
    void countsChanged(int errors, int warnings);

private:
    void activate(const QModelIndex &index);
    void applyFilters();

    ProblemListModel *mModel;
    ProblemFilter *mFilter;
    QComboBox *mSeverity;
    QComboBox *mCode;
    QTreeView *mView;
};
