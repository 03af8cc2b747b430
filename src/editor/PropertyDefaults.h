#pragma once

#include <QByteArray>

// The value a property added from the "Add Property" menu starts with, by its
// (lower-case) name: "0" for positions and sizes, an empty quoted text for
// texts and file names, two single quotes for scripts, the no-value marker for
// flags, and nothing for any other name.
class PropertyDefaults
{
public:
    static QByteArray valueFor(const QByteArray &name);
};
