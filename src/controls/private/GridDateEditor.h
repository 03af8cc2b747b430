// SPDX-License-Identifier: MIT
#pragma once

#include <QDateTimeEdit>

// The grid's date and time editor (dtpInput). Enter asks to commit and Escape to
// cancel.
class GridDateEditor : public QDateTimeEdit
{
    Q_OBJECT

public:
    explicit GridDateEditor(QWidget *parent = nullptr);

signals:
    void enterPressed();
    void escapePressed();
    void focusLost();

protected:
    void keyPressEvent(QKeyEvent *event) override;
    void focusOutEvent(QFocusEvent *event) override;
};
