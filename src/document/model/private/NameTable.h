// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QByteArrayView>
#include <memory>

// The element names met while reading, each kept once. Skins repeat the same
// object names on screen after screen ("btnBack", "lblTitle"), so elements of
// the same name share its bytes instead of each holding a copy. Names compare
// exactly: spelling is kept.
class NameTable
{
public:
    // The name's shared copy; the reference stays valid until the next call.
    const QByteArray &intern(QByteArrayView name);

private:
    void grow();
    const QByteArray &keep(QByteArrayView name, size_t hash, quint32 at);

    // Open addressing; a null array marks a free entry.
    std::unique_ptr<QByteArray[]> mEntries;
    quint32 mSize = 0;
    quint32 mUsed = 0;
    // What intern() returns for a name it does not keep.
    QByteArray mUnkept;
};
