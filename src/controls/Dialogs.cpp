// SPDX-License-Identifier: MIT
#include "Dialogs.h"

#include <QStringList>

Dialogs::~Dialogs() = default;

QString Dialogs::toolkitFilter(const QString &filter)
{
    const QStringList parts = filter.split(QLatin1Char('|'));
    QStringList entries;
    for (int i = 0; i + 1 < parts.size(); i += 2) {
        QString patterns = parts[i + 1];
        patterns.replace(QLatin1Char(';'), QLatin1Char(' '));
        entries << parts[i] + QStringLiteral(" (") + patterns + QLatin1Char(')');
    }
    if (parts.size() % 2 == 1 && !parts.last().isEmpty())
        entries << parts.last();
    return entries.join(QStringLiteral(";;"));
}

QString Dialogs::askTextFrom(const QString &title, const QString &prompt, const QStringList &, const QString &defaultText)
{
    return askText(title, prompt, defaultText);
}
