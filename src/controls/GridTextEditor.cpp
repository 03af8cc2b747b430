// SPDX-License-Identifier: MIT
#include "GridTextEditor.h"

#include <QAction>
#include <QClipboard>
#include <QContextMenuEvent>
#include <QDragEnterEvent>
#include <QDropEvent>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QMenu>

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
    const bool filteredType = isFiltered();
    if (filteredType && event->matches(QKeySequence::Paste)) {
        pasteFiltered();
        return;
    }
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

void GridTextEditor::pasteFiltered()
{
    const QString pasted = QGuiApplication::clipboard()->text();
    if (hasSelectedText())
        del();
    for (const QChar c : pasted) {
        const QChar accepted = filtered(c);
        if (!accepted.isNull() && accepted != QLatin1Char('\b'))
            insert(QString(accepted));
    }
}

void GridTextEditor::contextMenuEvent(QContextMenuEvent *event)
{
    QMenu *menu = createStandardContextMenu();
    if (isFiltered()) {
        // The menu's own Paste would take the text whole: it pastes through
        // the filter instead (found by its connection, whatever its caption).
        for (QAction *action : menu->actions()) {
            const bool wasPaste = disconnect(action, &QAction::triggered, this, &QLineEdit::paste)
                || disconnect(action, SIGNAL(triggered()), this, SLOT(paste()));
            if (wasPaste)
                connect(action, &QAction::triggered, this, &GridTextEditor::pasteFiltered);
        }
    }
    menu->setAttribute(Qt::WA_DeleteOnClose);
    menu->popup(event->globalPos());
}

void GridTextEditor::dragEnterEvent(QDragEnterEvent *event)
{
    if (isFiltered()) {
        event->ignore();
        return;
    }
    QLineEdit::dragEnterEvent(event);
}

void GridTextEditor::dropEvent(QDropEvent *event)
{
    if (isFiltered()) {
        event->ignore();
        return;
    }
    QLineEdit::dropEvent(event);
}

