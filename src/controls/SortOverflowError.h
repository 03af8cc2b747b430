// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <stdexcept>

// Sorted insertion by a numeric value compares the rows' texts as 16-bit whole
// numbers; a row text beyond -32768..32767 is this error. The limit is kept on
// purpose: sorted lists of the grid are short lists of small numbers.
class SortOverflowError : public std::overflow_error
{
public:
    explicit SortOverflowError(const QString &text)
        : std::overflow_error((QStringLiteral("Overflow: \"") + text + QStringLiteral("\" does not fit a 16-bit whole number"))
                                  .toStdString())
        , mText(text)
    {
    }
    QString text() const { return mText; }

private:
    QString mText;
};
