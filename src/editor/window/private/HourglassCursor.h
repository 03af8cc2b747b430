// SPDX-License-Identifier: MIT
#pragma once

#include <QApplication>

// The hourglass pointer for as long as a long command runs; restored when the
// command ends, whichever way it ends, or earlier for a message box.
class HourglassCursor
{
public:
    HourglassCursor() { QApplication::setOverrideCursor(Qt::WaitCursor); }
    ~HourglassCursor() { restore(); }
    HourglassCursor(const HourglassCursor &) = delete;
    HourglassCursor &operator=(const HourglassCursor &) = delete;

    void restore()
    {
        if (mActive)
            QApplication::restoreOverrideCursor();
        mActive = false;
    }

private:
    bool mActive = true;
};
