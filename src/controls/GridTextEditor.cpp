// SPDX-License-Identifier: MIT
#include "GridTextEditor.h"

#include <QKeyEvent>

GridTextEditor::GridTextEditor(QWidget *parent)
    : QLineEdit(parent)
{
    setObjectName(QStringLiteral("txtInput"));
    setFrame(false);
}

QChar GridTextEditor::filtered(QChar typed) const
{
    const bool digit = typed >= QLatin1Char('0') && typed <= QLatin1Char('9');
    if (digit || typed == QLatin1Char('\b'))
        return typed;
    if (mDataType == dtNumber)
        return typed == QLatin1Char('+') || typed == QLatin1Char('-') ? typed : QChar();
    // A decimal takes one separator, always a comma, whichever key typed it.
    const bool separator = typed == QLatin1Char(',') || typed == QLatin1Char('.');
    if (separator && !text().contains(QLatin1Char(',')))
        return QLatin1Char(',');
    return QChar();
}

void GridTextEditor::keyPressEvent(QKeyEvent *event)
{
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) {
        emit enterPressed();
        return;
    }
    if (event->key() == Qt::Key_Escape) {
        emit escapePressed();
        return;
    }
    const bool filteredType = mDataType == dtNumber || mDataType == dtDecimal;
    const QString typed = event->text();
    const bool typesACharacter = !typed.isEmpty()
        && (typed.front().isPrint() || typed.front() == QLatin1Char('\b'));
    if (!filteredType || !typesACharacter) {
        QLineEdit::keyPressEvent(event);
        return;
    }
    const QChar accepted = filtered(typed.front());
    if (accepted.isNull())
        return;
    if (accepted == QLatin1Char('\b') || accepted == typed.front()) {
        QLineEdit::keyPressEvent(event);
        return;
    }
    insert(QString(accepted));
}

void GridTextEditor::focusOutEvent(QFocusEvent *event)
{
    QLineEdit::focusOutEvent(event);
    if (isVisible())
        emit focusLost();
}
