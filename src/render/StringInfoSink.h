// SPDX-License-Identifier: MIT
#pragma once

#include "InfoSink.h"

// An information sink that collects everything in one string.
class StringInfoSink : public InfoSink
{
public:
    void append(const QString &text) override { mText += text; }
    QString text() const { return mText; }
    void clear() { mText.clear(); }

private:
    QString mText;
};
