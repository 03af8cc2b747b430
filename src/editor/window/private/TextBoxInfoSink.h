// SPDX-License-Identifier: MIT
#pragma once

#include "InfoSink.h"

#include <QPlainTextEdit>
#include <QPointer>

// The information box of the main window as the place where the renderer's
// report lines go (missing pictures, missing fonts).
class TextBoxInfoSink : public InfoSink
{
public:
    explicit TextBoxInfoSink(QPlainTextEdit *box) : mBox(box) { }

    void append(const QString &text) override
    {
        if (!mBox)
            return;
        // The lines come with their own line ends: added as they stand, at the end.
        QTextCursor end(mBox->document());
        end.movePosition(QTextCursor::End);
        end.insertText(text);
        mBox->setTextCursor(end);
        mBox->ensureCursorVisible();
    }

private:
    QPointer<QPlainTextEdit> mBox;
};
