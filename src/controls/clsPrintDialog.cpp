// SPDX-License-Identifier: MIT
#include "clsPrintDialog.h"

#include "PrintCancelledError.h"

#include <QPrinterInfo>

namespace {

// The dialog works on a scratch printer preset from the current one, so that a
// cancel leaves the current printer as it was.
void preset(QPrinter &scratch, const QPrinter &current)
{
    if (current.outputFormat() == QPrinter::NativeFormat)
        scratch.setPrinterName(current.printerName());
    else {
        scratch.setOutputFormat(current.outputFormat());
        scratch.setOutputFileName(current.outputFileName());
    }
    scratch.setPageOrientation(current.pageLayout().orientation());
    scratch.setDuplex(current.duplex());
    scratch.setCopyCount(current.copyCount());
    scratch.setPageSize(current.pageLayout().pageSize());
}

// The installed printer whose name is `name` without regard to case.
QString installedPrinter(const QString &name)
{
    const QString wanted = name.toUpper();
    for (const QString &installed : QPrinterInfo::availablePrinterNames())
        if (installed.toUpper() == wanted)
            return installed;
    return QString();
}

} // namespace

bool clsPrintDialog::ShowPrinter()
{
    QPrinter scratch;
    preset(scratch, mPrinter);
    Dialogs::PrintRequest request;
    request.printer = &scratch;
    request.Min = mMin;
    request.Max = mMax;
    request.FromPage = mFromPage;
    request.ToPage = mToPage;
    if (!mDialogs.print(request)) {
        if (mCancelError)
            throw PrintCancelledError();
        return false;
    }
    mFromPage = qint16(request.FromPage);
    mToPage = qint16(request.ToPage);
    applyChoice(scratch);
    return true;
}

void clsPrintDialog::applyChoice(const QPrinter &chosen)
{
    if (chosen.outputFormat() == QPrinter::NativeFormat) {
        const QString name = installedPrinter(chosen.printerName());
        if (!name.isEmpty())
            mPrinter.setPrinterName(name);
    } else {
        mPrinter.setOutputFormat(chosen.outputFormat());
        mPrinter.setOutputFileName(chosen.outputFileName());
    }
    mPrinter.setPageOrientation(chosen.pageLayout().orientation());
    mPrinter.setDuplex(chosen.duplex());
    mPrinter.setCopyCount(chosen.copyCount());
    mPrinter.setPageSize(chosen.pageLayout().pageSize());
}
