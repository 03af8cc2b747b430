// SPDX-License-Identifier: MIT
#pragma once

#include <QComboBox>

// The grid's drop-down editor (cmbInput). A choice picked from the open list
// commits at once, while stepping through the choices with the keys only moves
// the choice. (Enter, Escape and leaving it are GridEditorKeys'.)
class GridComboEditor : public QComboBox
{
    Q_OBJECT

public:
    explicit GridComboEditor(QWidget *parent = nullptr);

signals:
    void picked();

protected:
    void keyPressEvent(QKeyEvent *event) override;

private:
    bool mStepping = false;
};
