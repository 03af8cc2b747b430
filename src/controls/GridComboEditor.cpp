// SPDX-License-Identifier: MIT
#include "GridComboEditor.h"

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
    mStepping = true;
    QComboBox::keyPressEvent(event);
    mStepping = false;
}
