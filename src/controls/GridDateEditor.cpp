// SPDX-License-Identifier: MIT
#include "GridDateEditor.h"

#include <QKeyEvent>

GridDateEditor::GridDateEditor(QWidget *parent)
    : QDateTimeEdit(parent)
{
    setObjectName(QStringLiteral("dtpInput"));
}

void GridDateEditor::keyPressEvent(QKeyEvent *event)
{
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) {
        emit enterPressed();
        return;
    }
    if (event->key() == Qt::Key_Escape) {
        emit escapePressed();
        return;
    }
    QDateTimeEdit::keyPressEvent(event);
}

void GridDateEditor::focusOutEvent(QFocusEvent *event)
{
    QDateTimeEdit::focusOutEvent(event);
    if (isVisible())
        emit focusLost();
}
