// SPDX-License-Identifier: MIT
#include "GridNumber.h"

#include <cmath>

namespace {

bool isDigit(QChar c)
{
    return c >= QLatin1Char('0') && c <= QLatin1Char('9');
}

// Moves `i` past a run of digits; returns how many there were.
int skipDigits(const QString &s, int &i)
{
    const int start = i;
    while (i < s.size() && isDigit(s[i]))
        ++i;
    return i - start;
}

bool isSign(QChar c)
{
    return c == QLatin1Char('+') || c == QLatin1Char('-');
}

// The text in the C locale's spelling when it has the shape of a number.
std::optional<QString> canonical(const QString &text, QChar separator)
{
    const QString s = text.trimmed();
    int i = 0;
    if (i < s.size() && isSign(s[i]))
        ++i;
    int digits = skipDigits(s, i);
    int separatorAt = -1;
    if (i < s.size() && s[i] == separator) {
        separatorAt = i++;
        digits += skipDigits(s, i);
    }
    if (digits == 0)
        return std::nullopt;
    if (i < s.size() && (s[i] == QLatin1Char('e') || s[i] == QLatin1Char('E'))) {
        int j = i + 1;
        if (j < s.size() && isSign(s[j]))
            ++j;
        if (skipDigits(s, j) == 0)
            return std::nullopt;
        i = j;
    }
    if (i != s.size())
        return std::nullopt;
    QString c = s;
    if (separatorAt >= 0)
        c[separatorAt] = QLatin1Char('.');
    return c;
}

} // namespace

std::optional<double> GridNumber::parse(const QString &text, const QLocale &locale)
{
    const QString sep = locale.decimalPoint();
    const auto c = canonical(text, sep.isEmpty() ? QLatin1Char('.') : sep.front());
    if (!c)
        return std::nullopt;
    bool ok = false;
    const double value = QLocale::c().toDouble(*c, &ok);
    if (!ok || !std::isfinite(value))
        return std::nullopt;
    return value;
}

std::optional<double> GridNumber::parse(const QVariant &value, const QLocale &locale)
{
    switch (value.typeId()) {
    case QMetaType::Int:
    case QMetaType::UInt:
    case QMetaType::LongLong:
    case QMetaType::ULongLong:
    case QMetaType::Double:
    case QMetaType::Float:
    case QMetaType::Short:
    case QMetaType::UShort:
    case QMetaType::Long:
    case QMetaType::ULong:
        return value.toDouble();
    default:
        return parse(value.toString(), locale);
    }
}

QString GridNumber::plain(double value, const QLocale &locale)
{
    QString text = QLocale::c().toString(value, 'f', QLocale::FloatingPointShortest);
    const QString sep = locale.decimalPoint();
    if (!sep.isEmpty())
        text.replace(QLatin1Char('.'), sep);
    return text;
}

std::optional<QString> GridNumber::decimal(const QString &text, const QLocale &locale)
{
    QString commas = text;
    commas.replace(QLatin1Char('.'), QLatin1Char(','));
    const auto value = parse(commas, locale);
    if (!value)
        return std::nullopt;
    QString formatted = plain(*value, locale);
    const QString sep = locale.decimalPoint();
    const qsizetype at = formatted.indexOf(sep);
    if (at >= 0 && formatted.size() - at - 1 > MaxFractionDigits) {
        // More fraction digits than the format shows: round to that many and
        // drop the zeros the rounding leaves at the end.
        formatted = QLocale::c().toString(*value, 'f', MaxFractionDigits);
        while (formatted.endsWith(QLatin1Char('0')))
            formatted.chop(1);
        if (formatted.endsWith(QLatin1Char('.')))
            formatted.chop(1);
        formatted.replace(QLatin1Char('.'), sep);
    }
    if (formatted.endsWith(QLatin1Char(',')))
        formatted.chop(1);
    return formatted;
}
