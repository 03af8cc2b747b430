// SPDX-License-Identifier: MIT
#include "GridEditorKeys.h"

#include <QAbstractItemView>
#include <QComboBox>
#include <QKeyEvent>

namespace {

bool listIsOpen(const QObject &editor)
{
    const auto *combo = qobject_cast<const QComboBox *>(&editor);
    return combo && combo->view() && combo->view()->isVisible();
}

} // namespace

GridEditorKeys::GridEditorKeys(QObject *parent)
    : QObject(parent)
{
}

void GridEditorKeys::watch(QWidget &editor)
{
    editor.installEventFilter(this);
}

bool GridEditorKeys::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::KeyPress) {
        const int key = static_cast<QKeyEvent *>(event)->key();
        if (key == Qt::Key_Return || key == Qt::Key_Enter) {
            emit enterPressed();
            return true;
        }
        if (key == Qt::Key_Escape) {
            emit escapePressed();
            return true;
        }
    } else if (event->type() == QEvent::FocusOut) {
        // The editor still gets the event: leaving also ends its own editing.
        if (static_cast<QWidget *>(watched)->isVisible() && !listIsOpen(*watched))
            emit focusLost();
    }
    return QObject::eventFilter(watched, event);
}
