// SPDX-License-Identifier: MIT
#pragma once

#include "Problem.h"

#include <QAbstractTableModel>
#include <QVector>

// The problems of a skin as a table: severity, code, file, line, message. Each
// row also gives its problem's node key, file and line through roles, and a
// sort key per column (lines sort as numbers, errors before warnings).
class ProblemListModel : public QAbstractTableModel
{
    Q_OBJECT

public:
    enum Column { SeverityColumn, CodeColumn, FileColumn, LineColumn, MessageColumn, ColumnCount };
    enum Role {
        NodeKeyRole = Qt::UserRole + 1, // QByteArray
        FileRole,                       // QString, the full path
        LineRole,                       // qint64, 0 when not known
        SeverityRole,                   // int, Problem::Severity
        CodeRole,                       // QString
        SortRole,
    };

    explicit ProblemListModel(QObject *parent = nullptr);

    void setProblems(const QVector<Problem> &problems);
    const QVector<Problem> &problems() const { return mProblems; }
    int count(Problem::Severity severity) const;

    int rowCount(const QModelIndex &parent = QModelIndex()) const override;
    int columnCount(const QModelIndex &parent = QModelIndex()) const override;
    QVariant data(const QModelIndex &index, int role = Qt::DisplayRole) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role = Qt::DisplayRole) const override;

private:
    QVariant display(const Problem &problem, int column) const;

    QVector<Problem> mProblems;
};
