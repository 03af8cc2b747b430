// SPDX-License-Identifier: MIT
#include "SkinNumber.h"

#include <QByteArray>
#include <cmath>
#include <limits>

namespace {

bool isBlank(char c)
{
    return c == ' ' || c == '\t';
}

bool isDigit(char c)
{
    return c >= '0' && c <= '9';
}

qsizetype skipDigits(QByteArrayView t, qsizetype i)
{
    while (i < t.size() && isDigit(t[i]))
        ++i;
    return i;
}

// End of the number that starts at `i` (after the blanks), or `i` when none does.
qsizetype numberEnd(QByteArrayView t, qsizetype i)
{
    const qsizetype start = i;
    if (i < t.size() && (t[i] == '+' || t[i] == '-'))
        ++i;
    const qsizetype intStart = i;
    i = skipDigits(t, i);
    bool digits = i > intStart;
    if (i < t.size() && t[i] == '.') {
        const qsizetype fracEnd = skipDigits(t, i + 1);
        if (fracEnd > i + 1 || digits) {
            digits = digits || fracEnd > i + 1;
            i = fracEnd;
        }
    }
    if (!digits)
        return start;
    if (i < t.size() && (t[i] == 'e' || t[i] == 'E')) {
        qsizetype j = i + 1;
        if (j < t.size() && (t[j] == '+' || t[j] == '-'))
            ++j;
        const qsizetype expEnd = skipDigits(t, j);
        if (expEnd > j)
            i = expEnd;
    }
    return i;
}

// Most numbers of a skin are a few digits, perhaps signed: read without a
// copy, exactly (a double holds every integer of 15 digits).
bool readPlainInteger(QByteArrayView run, double &value)
{
    qsizetype k = 0;
    const bool negative = !run.isEmpty() && run[0] == '-';
    if (!run.isEmpty() && (run[0] == '-' || run[0] == '+'))
        ++k;
    if (k == run.size() || run.size() - k > 15)
        return false;
    qint64 whole = 0;
    for (; k < run.size(); ++k) {
        if (!isDigit(run[k]))
            return false;
        whole = whole * 10 + (run[k] - '0');
    }
    value = negative ? -double(whole) : double(whole);
    return true;
}

} // namespace

namespace SkinNumber {

double leading(QByteArrayView text, qsizetype *consumed)
{
    qsizetype i = 0;
    while (i < text.size() && isBlank(text[i]))
        ++i;
    const qsizetype end = numberEnd(text, i);
    if (consumed)
        *consumed = end > i ? end : 0;
    if (end == i)
        return 0.0;
    double plain = 0;
    if (readPlainInteger(text.sliced(i, end - i), plain))
        return plain;
    const QByteArray number = text.sliced(i, end - i).toByteArray();
    // QByteArray::toDouble reads the C locale whatever the user's locale is.
    bool ok = false;
    const double value = number.toDouble(&ok);
    return ok ? value : 0.0;
}

bool isWholeNumber(QByteArrayView text)
{
    qsizetype consumed = 0;
    leading(text, &consumed);
    if (consumed == 0)
        return false;
    for (qsizetype i = consumed; i < text.size(); ++i) {
        if (!isBlank(text[i]))
            return false;
    }
    return true;
}

qint64 roundHalfEven(double value)
{
    if (std::isnan(value))
        return 0;
    const double rounded = std::nearbyint(value); // default mode: to nearest, ties to even
    if (rounded >= 9.2233720368547748e18)
        return std::numeric_limits<qint64>::max();
    if (rounded <= -9.2233720368547758e18)
        return std::numeric_limits<qint64>::min();
    return qint64(rounded);
}

qint64 leadingInteger(QByteArrayView text)
{
    return roundHalfEven(leading(text));
}

} // namespace SkinNumber
