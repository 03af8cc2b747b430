#include "KeyIndex.h"

#include "AsciiCase.h"

#include <cstring>

QByteArray KeyIndex::folded(QByteArrayView key)
{
    return AsciiCase::lowered(key.toByteArray());
}

bool KeyIndex::sameKey(QByteArrayView a, QByteArrayView b)
{
    if (a.size() != b.size())
        return false;
    // Empty keys are equal; memcmp must not see their (possibly null) data.
    if (a.isEmpty() || memcmp(a.data(), b.data(), size_t(a.size())) == 0)
        return true;
    for (qsizetype i = 0; i < a.size(); ++i) {
        if (a[i] != b[i] && AsciiCase::lower(a[i]) != AsciiCase::lower(b[i]))
            return false;
    }
    return true;
}

size_t KeyIndex::foldedHash(QByteArrayView key)
{
    // FNV-1a over the lower-cased bytes.
    size_t h = 14695981039346656037ull;
    for (char c : key) {
        h ^= static_cast<unsigned char>(AsciiCase::lower(c));
        h *= 1099511628211ull;
    }
    return h;
}

void KeyIndex::insertEntry(quint32 hash, int index) const
{
    const quint32 mask = mTableSize - 1;
    quint32 at = hash & mask;
    while (mTable[at].indexPlusOne != 0)
        at = (at + 1) & mask;
    mTable[at] = { hash, index + 1 };
    ++mUsed;
}

// Keeps the table at most half full, so probe runs stay short.
void KeyIndex::growTable() const
{
    const std::unique_ptr<Entry[]> old = std::move(mTable);
    const quint32 oldSize = mTableSize;
    allocateTable(oldSize * 2);
    for (quint32 i = 0; i < oldSize; ++i) {
        if (old[i].indexPlusOne != 0)
            insertEntry(old[i].hash, old[i].indexPlusOne - 1);
    }
}

void KeyIndex::allocateTable(quint32 size) const
{
    mTable.reset(new Entry[size]);
    mTableSize = size;
    mUsed = 0;
}

void KeyIndex::buildTable(const Keys &keys) const
{
    quint32 size = 16;
    while (size < quint32(keys.count) * 2)
        size *= 2;
    allocateTable(size);
    for (int i = 0; i < keys.count; ++i)
        insertEntry(quint32(foldedHash(keys.keyAt(keys.owner, i))), i);
}

int KeyIndex::indexOf(QByteArrayView key, const Keys &keys) const
{
    if (keys.count <= kHashThreshold && !mTable) {
        for (int i = 0; i < keys.count; ++i) {
            const QByteArrayView candidate = keys.keyAt(keys.owner, i);
            if (candidate.size() == key.size() && sameKey(candidate, key))
                return i;
        }
        return -1;
    }
    if (!mTable)
        buildTable(keys);
    const quint32 hash = quint32(foldedHash(key));
    const quint32 mask = mTableSize - 1;
    for (quint32 at = hash & mask; mTable[at].indexPlusOne != 0; at = (at + 1) & mask) {
        const Entry &e = mTable[at];
        if (e.hash == hash && sameKey(keys.keyAt(keys.owner, e.indexPlusOne - 1), key))
            return e.indexPlusOne - 1;
    }
    return -1;
}

QByteArray KeyIndex::numberedKeyIfTaken(QByteArrayView wanted, const Keys &keys)
{
    if (indexOf(wanted, keys) < 0)
        return QByteArray();
    // Small collections simply try every number from 0; large ones remember
    // where the last search for this key ended.
    const bool hinted = keys.count > kHashThreshold;
    const QByteArray base = hinted ? folded(wanted) : QByteArray();
    int n = 0;
    if (hinted && mSuffixHints)
        n = mSuffixHints->value(base, 0);
    QByteArray candidate;
    candidate.reserve(wanted.size() + 12);
    for (;; ++n) {
        candidate.clear();
        candidate.append(wanted).append('[').append(QByteArray::number(n)).append(']');
        if (indexOf(candidate, keys) < 0)
            break;
    }
    if (hinted) {
        if (!mSuffixHints)
            mSuffixHints = std::make_unique<QHash<QByteArray, int>>();
        mSuffixHints->insert(base, n + 1);
    }
    return candidate;
}

void KeyIndex::appended(QByteArrayView key, int index)
{
    if (!mTable)
        return;
    if ((mUsed + 1) * 2 > mTableSize)
        growTable();
    insertEntry(quint32(foldedHash(key)), index);
}

void KeyIndex::invalidate()
{
    mTable.reset();
    mTableSize = 0;
    mUsed = 0;
    mSuffixHints.reset();
}

qsizetype KeyIndex::memoryUsed() const
{
    return qsizetype(mTableSize * sizeof(Entry));
}
