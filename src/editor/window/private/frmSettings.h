// SPDX-License-Identifier: MIT
#pragma once

#include <QDialog>

class Dialogs;
class PowGrid;
class PowGridItem;
class QPushButton;
struct SkinContext;

// The settings window: the default skin directory and the current skin format in
// a grid. OK copies both into the editor's values; Cancel leaves them. Nothing
// is written to disk here: the directory goes to Settings.ini when the main
// window closes.
class frmSettings : public QDialog
{
    Q_OBJECT

public:
    frmSettings(SkinContext &context, Dialogs &dialogs, QWidget *parent = nullptr);

    PowGrid *pgrSettings;
    QPushButton *cmdOK;
    QPushButton *cmdCancel;

    // The two rows: the directory and the format.
    PowGridItem *directoryRow() const;
    PowGridItem *formatRow() const;

    enum Column { ColProperty = 0, ColValue = 1, ColAction = 2 };

private:
    void setUpGrid();
    void pgrSettings_ItemChanged(PowGridItem *item, int column);
    void cmdOK_Click();

    SkinContext &mContext;
    Dialogs &mDialogs;
};
