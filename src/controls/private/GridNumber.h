// SPDX-License-Identifier: MIT
#pragma once

#include <QLocale>
#include <QString>
#include <QVariant>

#include <optional>

// How the grid reads and writes numbers in cell texts. Numbers are read and
// written with the decimal separator of the user's number settings (the default
// QLocale), never with grouping.
class GridNumber
{
public:
    static constexpr int MaxFractionDigits = 17;

    // The number a text stands for: blanks around, an optional sign, digits with
    // at most one decimal separator (at least one digit in all) and an optional
    // exponent. Nothing when the text is not a number.
    static std::optional<double> parse(const QString &text, const QLocale &locale = QLocale());
    // A value that holds a number is that number; a text is parsed.
    static std::optional<double> parse(const QVariant &value, const QLocale &locale = QLocale());
    // The plain text of a number: no exponent, no grouping, no trailing zeros.
    static QString plain(double value, const QLocale &locale = QLocale());
    // The decimal formatting of a decimal cell: every "." becomes ",", the
    // number is written with up to 17 fraction digits, and a trailing ","
    // is dropped. It is made for number settings whose decimal separator is the
    // comma, where it stores decimals with a comma whatever was typed; with a
    // point as separator a text with a comma is simply not a number. Nothing
    // when the text is not a number.
    static std::optional<QString> decimal(const QString &text, const QLocale &locale = QLocale());
};
