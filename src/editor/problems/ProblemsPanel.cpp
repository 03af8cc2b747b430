// SPDX-License-Identifier: MIT
#include "ProblemsPanel.h"

#include "ProblemCodes.h"
#include "ProblemFilter.h"
#include "ProblemListModel.h"

#include <QComboBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QTreeView>
#include <QVBoxLayout>

ProblemsPanel::ProblemsPanel(QWidget *parent)
    : QWidget(parent)
    , mModel(new ProblemListModel(this))
    , mFilter(new ProblemFilter(this))
    , mSeverity(new QComboBox)
    , mCode(new QComboBox)
    , mView(new QTreeView)
{
    mFilter->setSourceModel(mModel);
    mSeverity->addItem(tr("All severities"));
    mSeverity->addItem(tr("Errors"), int(Problem::Severity::Error));
    mSeverity->addItem(tr("Warnings"), int(Problem::Severity::Warning));
    mCode->addItem(tr("All codes"));
    for (const QString &code : ProblemCodes::all())
        mCode->addItem(code, code);

    mView->setModel(mFilter);
    mView->setRootIsDecorated(false);
    mView->setUniformRowHeights(true);
    mView->setSortingEnabled(true);
    mView->sortByColumn(ProblemListModel::FileColumn, Qt::AscendingOrder);
    mView->setSelectionBehavior(QAbstractItemView::SelectRows);
    mView->setEditTriggers(QAbstractItemView::NoEditTriggers);
    mView->header()->setStretchLastSection(true);

    auto *filters = new QHBoxLayout;
    filters->setContentsMargins(0, 0, 0, 0);
    filters->addWidget(mSeverity);
    filters->addWidget(mCode);
    filters->addStretch();
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addLayout(filters);
    layout->addWidget(mView);

    connect(mSeverity, qOverload<int>(&QComboBox::currentIndexChanged), this, &ProblemsPanel::applyFilters);
    connect(mCode, qOverload<int>(&QComboBox::currentIndexChanged), this, &ProblemsPanel::applyFilters);
    connect(mView, &QTreeView::doubleClicked, this, &ProblemsPanel::activate);
}

void ProblemsPanel::setProblems(const QVector<Problem> &problems)
{
    mModel->setProblems(problems);
    emit countsChanged(errorCount(), warningCount());
}

int ProblemsPanel::errorCount() const
{
    return mModel->count(Problem::Severity::Error);
}

int ProblemsPanel::warningCount() const
{
    return mModel->count(Problem::Severity::Warning);
}

void ProblemsPanel::applyFilters()
{
    const QVariant severity = mSeverity->currentData();
    mFilter->setSeverity(severity.isValid() ? std::optional(Problem::Severity(severity.toInt())) : std::nullopt);
    mFilter->setCode(mCode->currentData().toString());
}

void ProblemsPanel::activate(const QModelIndex &index)
{
    if (!index.isValid())
        return;
    emit problemActivated(index.data(ProblemListModel::NodeKeyRole).toByteArray(),
                          index.data(ProblemListModel::FileRole).toString(),
                          index.data(ProblemListModel::LineRole).toLongLong());
}
