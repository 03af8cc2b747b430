// SPDX-License-Identifier: MIT
#pragma once

#include <QDateTimeEdit>

// The grid's date and time editor (dtpInput). (Enter, Escape and leaving it are
// GridEditorKeys'.)
class GridDateEditor : public QDateTimeEdit
{
    Q_OBJECT

public:
    explicit GridDateEditor(QWidget *parent = nullptr);
};
