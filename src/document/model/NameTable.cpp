// SPDX-License-Identifier: MIT
#include "NameTable.h"

#include "ByteCopy.h"
#include "KeyIndex.h"

#include <cstring>

namespace {

// Past this many distinct names (only in unusual files) new names are no
// longer kept: the table stays small, and names are copied as before.
constexpr quint32 kMostEntries = 1u << 16;

bool sameBytes(const QByteArray &a, QByteArrayView b)
{
    return a.size() == b.size() && ByteCopy::sameSmall(a.constData(), b.data(), size_t(b.size()));
}

} // namespace

const QByteArray &NameTable::intern(QByteArrayView name)
{
    if (name.isEmpty())
        return mUnkept = name.toByteArray();
    if (mSize == 0)
        grow();
    const size_t hash = KeyIndex::foldedHash(name);
    const quint32 mask = mSize - 1;
    quint32 at = quint32(hash) & mask;
    for (; !mEntries[at].isNull(); at = (at + 1) & mask) {
        if (sameBytes(mEntries[at], name))
            return mEntries[at];
    }
    return keep(name, hash, at);
}

// A name met for the first time, whose free entry is `at`: kept while the
// table may grow.
const QByteArray &NameTable::keep(QByteArrayView name, size_t hash, quint32 at)
{
    if ((mUsed + 1) * 2 > mSize) {
        if (mSize >= kMostEntries)
            return mUnkept = name.toByteArray();
        grow();
        const quint32 mask = mSize - 1;
        for (at = quint32(hash) & mask; !mEntries[at].isNull(); at = (at + 1) & mask) { }
    }
    mEntries[at] = name.toByteArray();
    ++mUsed;
    return mEntries[at];
}

void NameTable::grow()
{
    const quint32 oldSize = mSize;
    std::unique_ptr<QByteArray[]> old = std::move(mEntries);
    mSize = oldSize ? oldSize * 2 : 256;
    mEntries.reset(new QByteArray[mSize]);
    const quint32 mask = mSize - 1;
    for (quint32 i = 0; i < oldSize; ++i) {
        if (old[i].isNull())
            continue;
        quint32 at = quint32(KeyIndex::foldedHash(old[i])) & mask;
        while (!mEntries[at].isNull())
            at = (at + 1) & mask;
        mEntries[at] = std::move(old[i]);
    }
}
