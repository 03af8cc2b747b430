// SPDX-License-Identifier: MIT
#include "GridComboEditor.h"

#include <QAbstractItemView>
#include <QKeyEvent>

GridComboEditor::GridComboEditor(QWidget *parent)
    : QComboBox(parent)
{
    setObjectName(QStringLiteral("cmbInput"));
    connect(this, &QComboBox::activated, this, [this] {
        if (!mStepping)
            emit picked();
    });
}

void GridComboEditor::keyPressEvent(QKeyEvent *event)
{
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) {
        emit enterPressed();
        return;
    }
    if (event->key() == Qt::Key_Escape) {
        emit escapePressed();
        return;
    }
    mStepping = true;
    QComboBox::keyPressEvent(event);
    mStepping = false;
}

void GridComboEditor::focusOutEvent(QFocusEvent *event)
{
    QComboBox::focusOutEvent(event);
    // Opening the list moves the focus to it; that is not leaving the editor.
    if (isVisible() && !(view() && view()->isVisible()))
        emit focusLost();
}
