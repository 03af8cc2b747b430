// SPDX-License-Identifier: MIT
#include "PropertyPane.h"

#include "PowGrid.h"

#include <QCheckBox>
#include <QHBoxLayout>
#include <QLineEdit>
#include <QVBoxLayout>

PropertyPane PropertyPane::create()
{
    PropertyPane made;
    made.grid = new PowGrid;
    made.grid->setObjectName(QStringLiteral("pgrProperty"));
    made.filter = new QLineEdit;
    made.filter->setObjectName(QStringLiteral("txtPropertyFilter"));
    made.filter->setPlaceholderText(QStringLiteral("Filter properties"));
    made.filter->setClearButtonEnabled(true);
    made.inherited = new QCheckBox(QStringLiteral("Inherited"));
    made.inherited->setObjectName(QStringLiteral("chkInherited"));
    made.inherited->setToolTip(QStringLiteral("Also list the values taken from templates and font types"));
    made.pane = new QWidget;
    auto *layout = new QVBoxLayout(made.pane);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(2);
    auto *filterLine = new QHBoxLayout;
    filterLine->addWidget(made.filter);
    filterLine->addWidget(made.inherited);
    layout->addLayout(filterLine);
    layout->addWidget(made.grid);
    return made;
}
