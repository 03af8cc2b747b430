// SPDX-License-Identifier: MIT
#pragma once

#include <QLockFile>
#include <QString>
#include <memory>

// Keeps every other save of one file waiting while this one reads, checks
// and writes it: the editor and any number of korvi commands on the same
// file take turns, so the later one sees the earlier one's result as a change
// on disk instead of writing over it. The lock is the file "NAME.lock" beside
// the file ("main.ui" gives "main.ui.lock"); it is released when this object
// goes, and a lock left by a program that died is taken over.
class SaveLock
{
public:
    explicit SaveLock(const QString &path);
    ~SaveLock();

    // Waits up to `waitMs` for the lock; on failure `error` says why.
    bool lock(QString &error, int waitMs = 120000);

    static QString lockPathFor(const QString &path) { return path + QStringLiteral(".lock"); }

private:
    QString mPath;
    QLockFile mLock;
};
