// SPDX-License-Identifier: MIT
#pragma once

#include "Problem.h"

#include <QSortFilterProxyModel>
#include <optional>

// Shows the problems of one severity, or of one code, or all; sorts by the
// model's sort keys.
class ProblemFilter : public QSortFilterProxyModel
{
    Q_OBJECT

public:
    explicit ProblemFilter(QObject *parent = nullptr);

    // No severity (or an empty code) shows them all.
    void setSeverity(std::optional<Problem::Severity> severity);
    void setCode(const QString &code);

protected:
    bool filterAcceptsRow(int sourceRow, const QModelIndex &sourceParent) const override;

private:
    std::optional<Problem::Severity> mSeverity;
    QString mCode;
};
