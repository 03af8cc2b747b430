// SPDX-License-Identifier: MIT
#pragma once

class PowGrid;
class QCheckBox;
class QLineEdit;
class QWidget;

// The property grid "pgrProperty" under its line of controls: the filter
// field "txtPropertyFilter" and the "Inherited" check box "chkInherited".
struct PropertyPane
{
    QWidget *pane = nullptr;
    PowGrid *grid = nullptr;
    QLineEdit *filter = nullptr;
    QCheckBox *inherited = nullptr;

    static PropertyPane create();
};
