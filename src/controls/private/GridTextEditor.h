// SPDX-License-Identifier: MIT
#pragma once

#include "GridDataType.h"

#include <QLineEdit>

// The grid's text editor (txtInput). (Enter, Escape and leaving it are
// GridEditorKeys'.) In a number cell only digits, backspace, "+" and "-" may be typed, in a
// decimal cell digits, backspace and one decimal comma (typed as "," or ".").
// Keys that type no character (arrows, Delete, Home...) are never filtered.
// Pasted text (the paste keys, the context menu) goes through the same filter
// one character at a time, and nothing is dropped onto a filtered cell.
class GridTextEditor : public QLineEdit
{
    Q_OBJECT

public:
    explicit GridTextEditor(QWidget *parent = nullptr);

    void setDataType(int type) { mDataType = type; }
    int dataType() const { return mDataType; }

protected:
    void keyPressEvent(QKeyEvent *event) override;
    void contextMenuEvent(QContextMenuEvent *event) override;
    void dragEnterEvent(QDragEnterEvent *event) override;
    void dropEvent(QDropEvent *event) override;

private:
    // The character to insert for a typed one: itself, a substitute, or
    // nothing (QChar()) when the key is discarded.
    QChar filtered(QChar typed) const;
    bool isFiltered() const { return mDataType == dtNumber || mDataType == dtDecimal; }
    // Pastes the clipboard's text, each character as if it were typed.
    void pasteFiltered();

    int mDataType = dtText;
};
