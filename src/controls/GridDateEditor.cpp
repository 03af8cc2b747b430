// SPDX-License-Identifier: MIT
#include "GridDateEditor.h"

GridDateEditor::GridDateEditor(QWidget *parent)
    : QDateTimeEdit(parent)
{
    setObjectName(QStringLiteral("dtpInput"));
}
