// SPDX-License-Identifier: MIT
#include "ProblemFilter.h"

#include "ProblemListModel.h"

ProblemFilter::ProblemFilter(QObject *parent)
    : QSortFilterProxyModel(parent)
{
    setSortRole(ProblemListModel::SortRole);
}

void ProblemFilter::setSeverity(std::optional<Problem::Severity> severity)
{
    mSeverity = severity;
    invalidateFilter();
}

void ProblemFilter::setCode(const QString &code)
{
    mCode = code;
    invalidateFilter();
}

bool ProblemFilter::filterAcceptsRow(int sourceRow, const QModelIndex &sourceParent) const
{
    const QModelIndex index = sourceModel()->index(sourceRow, 0, sourceParent);
    if (mSeverity && index.data(ProblemListModel::SeverityRole).toInt() != int(*mSeverity))
        return false;
    return mCode.isEmpty() || index.data(ProblemListModel::CodeRole).toString() == mCode;
}
