// SPDX-License-Identifier: MIT
#include "ProblemListModel.h"

#include <QFileInfo>
#include <algorithm>

ProblemListModel::ProblemListModel(QObject *parent)
    : QAbstractTableModel(parent)
{
}

void ProblemListModel::setProblems(const QVector<Problem> &problems)
{
    beginResetModel();
    mProblems = problems;
    endResetModel();
}

int ProblemListModel::count(Problem::Severity severity) const
{
    return int(std::count_if(mProblems.begin(), mProblems.end(),
                             [&](const Problem &p) { return p.severity == severity; }));
}

int ProblemListModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : int(mProblems.size());
}

int ProblemListModel::columnCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : ColumnCount;
}

QVariant ProblemListModel::display(const Problem &problem, int column) const
{
    switch (column) {
    case SeverityColumn:
        return Problem::severityName(problem.severity);
    case CodeColumn:
        return problem.code;
    case FileColumn:
        return QFileInfo(problem.file).fileName();
    case LineColumn:
        return problem.line > 0 ? QVariant(problem.line) : QVariant(QString());
    case MessageColumn:
        return problem.message;
    default:
        return {};
    }
}

QVariant ProblemListModel::data(const QModelIndex &index, int role) const
{
    if (!index.isValid() || index.row() >= mProblems.size())
        return {};
    const Problem &problem = mProblems.at(index.row());
    switch (role) {
    case Qt::DisplayRole:
        return display(problem, index.column());
    case Qt::ToolTipRole:
        return index.column() == FileColumn ? problem.file : problem.message;
    case NodeKeyRole:
        return problem.nodeKey;
    case FileRole:
        return problem.file;
    case LineRole:
        return problem.line;
    case SeverityRole:
        return int(problem.severity);
    case CodeRole:
        return problem.code;
    case SortRole:
        // Within a file, problems sort by line; the line column by file too.
        if (index.column() == SeverityColumn)
            return int(problem.severity);
        if (index.column() == LineColumn || index.column() == FileColumn)
            return QStringLiteral("%1\n%2").arg(problem.file).arg(problem.line, 12, 10, QLatin1Char('0'));
        return display(problem, index.column());
    default:
        return {};
    }
}

QVariant ProblemListModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole)
        return {};
    static const char *const titles[] = { "Severity", "Code", "File", "Line", "Message" };
    return section >= 0 && section < ColumnCount ? QString(QLatin1String(titles[section])) : QVariant();
}
