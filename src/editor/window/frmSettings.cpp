// SPDX-License-Identifier: MIT
#include "frmSettings.h"

#include "Dialogs.h"
#include "PowGrid.h"
#include "SkinContext.h"
#include "SkinFolderListing.h"
#include "Twips.h"
#include "clsComboList.h"

#include <QHBoxLayout>
#include <QPushButton>
#include <QVBoxLayout>

namespace {

// The columns are 100 pixels wide each (the grid keeps widths in twips).
int columnWidthTwips(const QWidget *grid)
{
    return Twips::fromPixelsX(100, grid);
}

} // namespace

frmSettings::frmSettings(SkinContext &context, Dialogs &dialogs, QWidget *parent)
    : QDialog(parent)
    , mContext(context)
    , mDialogs(dialogs)
{
    setObjectName(QStringLiteral("frmSettings"));
    setWindowTitle(QStringLiteral("Settings"));
    pgrSettings = new PowGrid(this);
    pgrSettings->setObjectName(QStringLiteral("pgrSettings"));
    cmdOK = new QPushButton(QStringLiteral("OK"), this);
    cmdOK->setObjectName(QStringLiteral("cmdOK"));
    cmdCancel = new QPushButton(QStringLiteral("Cancel"), this);
    cmdCancel->setObjectName(QStringLiteral("cmdCancel"));

    // The grid takes all the room; the buttons keep to the bottom right.
    auto *buttons = new QHBoxLayout;
    buttons->addStretch(1);
    buttons->addWidget(cmdOK);
    buttons->addWidget(cmdCancel);
    auto *layout = new QVBoxLayout(this);
    layout->addWidget(pgrSettings, 1);
    layout->addLayout(buttons);

    setUpGrid();
    connect(pgrSettings, &PowGrid::ItemChanged, this, &frmSettings::pgrSettings_ItemChanged);
    connect(cmdOK, &QPushButton::clicked, this, &frmSettings::cmdOK_Click);
    connect(cmdCancel, &QPushButton::clicked, this, &QDialog::reject);
}

void frmSettings::setUpGrid()
{
    const int width = columnWidthTwips(pgrSettings);
    Header *name = pgrSettings->Headers()->Add(QStringLiteral("Property"), width, true, dtText);
    // The names are labels, not values.
    name->ColumnEditable = false;
    pgrSettings->Headers()->Add(QStringLiteral("Value"), width, true, dtText);
    Header *action = pgrSettings->Headers()->Add(QStringLiteral("Action"), width, true, dtButton);
    action->ColumnEditable = false;

    PowGridItem *directory = pgrSettings->Items()->Add();
    directory->setCellText(ColProperty, QStringLiteral("Default Korvi Skin Directory"));
    directory->setCellText(ColValue, mContext.SkinDirectory);
    directory->setCellText(ColAction, QStringLiteral("..."));

    PowGridItem *format = pgrSettings->Items()->Add();
    format->setCellText(ColProperty, QStringLiteral("Current Skin Format"));
    format->DataType = dtItemCombo;
    format->ComboList = std::make_shared<clsComboList>();
    for (const QString &name : SkinFolderListing::formatNamesIn(mContext.SkinDirectory)) {
        if (!format->ComboList->ItemExist(name))
            format->ComboList->Add(name, name);
    }
    format->setCellText(ColValue, mContext.SkinFormat);
    // The columns start 100 wide; a folder path would not fit, so they grow to
    // what they show, and the window with them.
    pgrSettings->AutoSizeHeaders();
    int columns = 0;
    for (int column = 0; column < 3; ++column)
        columns += pgrSettings->columnWidthPixels(column);
    resize(qMax(columns + 60, 420), 200);
}

PowGridItem *frmSettings::directoryRow() const
{
    return pgrSettings->Items()->Item(1);
}

PowGridItem *frmSettings::formatRow() const
{
    return pgrSettings->Items()->Item(2);
}

void frmSettings::pgrSettings_ItemChanged(PowGridItem *item, int column)
{
    if (column != ColAction || item != directoryRow())
        return;
    const QString folder = mDialogs.folder(QStringLiteral("Select Korvi Default Directory"),
                                           item->CellText(ColValue));
    if (!folder.isEmpty())
        item->setCellText(ColValue, folder);
}

void frmSettings::cmdOK_Click()
{
    mContext.SkinDirectory = directoryRow()->CellText(ColValue);
    mContext.SkinFormat = formatRow()->CellText(ColValue);
    accept();
}
