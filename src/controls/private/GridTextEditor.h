// SPDX-License-Identifier: MIT
#pragma once

#include "GridDataType.h"

#include <QLineEdit>

// The grid's text editor (txtInput). Enter asks to commit and Escape to cancel;
// in a number cell only digits, backspace, "+" and "-" may be typed, in a
// decimal cell digits, backspace and one decimal comma (typed as "," or ".").
// Keys that type no character (arrows, Delete, Home...) are never filtered.
class GridTextEditor : public QLineEdit
{
    Q_OBJECT

public:
    explicit GridTextEditor(QWidget *parent = nullptr);

    void setDataType(int type) { mDataType = type; }
    int dataType() const { return mDataType; }

signals:
    void enterPressed();
    void escapePressed();
    void focusLost();

protected:
    void keyPressEvent(QKeyEvent *event) override;
    void focusOutEvent(QFocusEvent *event) override;

private:
    // The character to insert for a typed one: itself, a substitute, or
    // nothing (QChar()) when the key is discarded.
    QChar filtered(QChar typed) const;

    int mDataType = dtText;
};
