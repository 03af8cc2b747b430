// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QString>
#include <QtGlobal>

// One thing wrong with a skin, as the checker reports it: how bad, a short
// code, where (file, 1-based line and column, 0 when not known; the tree's node
// key of the element, empty when there is none), and what to do about it.
struct Problem
{
    // An error: the skin shows or does something other than what it says (a
    // name that finds nothing, a file not read to its end). A warning: it works,
    // but likely not as meant, or something is left over.
    enum class Severity { Error, Warning };

    Severity severity = Severity::Warning;
    QString code;
    QString file;
    qint64 line = 0;
    qint64 column = 0;
    QByteArray nodeKey;
    QString message;

    bool isError() const { return severity == Severity::Error; }
    static QString severityName(Severity severity)
    {
        return severity == Severity::Error ? QStringLiteral("error") : QStringLiteral("warning");
    }
};
