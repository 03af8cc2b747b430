// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

// Where the information lines go (missing pictures, missing fonts): the
// information box of the editor, a string in tests, stderr in the command line.
class InfoSink
{
public:
    virtual ~InfoSink() = default;
    // Appends text as it stands; callers supply their own line ends.
    virtual void append(const QString &text) = 0;
};
