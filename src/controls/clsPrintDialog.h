// SPDX-License-Identifier: MIT
#pragma once

#include "Dialogs.h"

#include <QPrinter>

// Asks the user for a printer and a page range, preset with the application's
// current printer. When the user confirms, the chosen printer, with its
// orientation, duplex, number of copies and paper size, becomes the current
// printer, and FromPage/ToPage hold the chosen range ("all pages" is Min..Max).
class clsPrintDialog
{
public:
    clsPrintDialog(Dialogs &dialogs, QPrinter &currentPrinter)
        : mDialogs(dialogs), mPrinter(currentPrinter) { }

    qint16 Min() const { return mMin; }
    void setMin(qint16 New_Min) { mMin = New_Min; }
    qint16 Max() const { return mMax; }
    void setMax(qint16 New_Max) { mMax = New_Max; }
    qint16 FromPage() const { return mFromPage; }
    void setFromPage(qint16 New_FromPage) { mFromPage = New_FromPage; }
    qint16 ToPage() const { return mToPage; }
    void setToPage(qint16 New_ToPage) { mToPage = New_ToPage; }

    // Shows the dialog and applies the result; returns whether the user
    // confirmed. A cancel changes nothing.
    bool ShowPrinter();

private:
    void applyChoice(const QPrinter &chosen);

    Dialogs &mDialogs;
    QPrinter &mPrinter;
    qint16 mMin = 1;
    qint16 mMax = 1;
    qint16 mFromPage = 1;
    qint16 mToPage = 1;
    // When set, a cancel throws PrintCancelledError. Nothing sets it: this
    // program treats a cancelled print dialog as a quiet "no".
    bool mCancelError = false;
};
