// SPDX-License-Identifier: MIT
#pragma once

#include <QComboBox>

// The grid's drop-down editor (cmbInput). Enter asks to commit and Escape to
// cancel; a choice picked from the open list commits at once, while stepping
// through the choices with the keys only moves the choice.
class GridComboEditor : public QComboBox
{
    Q_OBJECT

public:
    explicit GridComboEditor(QWidget *parent = nullptr);

signals:
    void enterPressed();
    void escapePressed();
    void picked();
    void focusLost();

protected:
    void keyPressEvent(QKeyEvent *event) override;
    void focusOutEvent(QFocusEvent *event) override;

private:
    bool mStepping = false;
};
