// SPDX-License-Identifier: MIT
#pragma once

#include <QFileInfo>
#include <QString>

// What is wrong with a picture file that was found but cannot be shown as it
// stands: an empty file, a header that promises an absurd size, data cut short.
struct PictureProblem
{
    // A few words on what is wrong ("not a picture (RL header says 65535 × 65535)");
    // empty when nothing is.
    QString what;
    // Nothing of the picture can be shown, so the placeholder is drawn in its
    // place. A picture cut short within its rows keeps the rows it has.
    bool unreadable = false;

    bool isProblem() const { return !what.isEmpty(); }

    static PictureProblem unreadableBecause(const QString &what) { return { what, true }; }
    static PictureProblem partlyReadBecause(const QString &what) { return { what, false }; }

    // The report line for the information box: the file's name and what is wrong.
    QString reportLine(const QString &path) const
    {
        return QFileInfo(path).fileName() + QStringLiteral(": ") + what + QStringLiteral("\r\n");
    }
};
