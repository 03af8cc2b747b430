// SPDX-License-Identifier: MIT
#include "KeyIndex.h"

#include "AsciiCase.h"

#include <cstring>
#include <iterator>

QByteArray KeyIndex::folded(QByteArrayView key)
{
    return AsciiCase::lowered(key.toByteArray());
}

bool KeyIndex::sameKey(QByteArrayView a, QByteArrayView b)
{
    return AsciiCase::sameIgnoringCase(a, b);
}

namespace {

quint64 load64(const char *p)
{
    quint64 w;
    memcpy(&w, p, 8);
    return w;
}

quint64 load32(const char *p)
{
    quint32 w;
    memcpy(&w, p, 4);
    return w;
}

quint64 mix(quint64 h)
{
    h ^= h >> 32;
    h *= 0xd6e8feb86659fd93ull;
    h ^= h >> 32;
    return h;
}

} // namespace

size_t KeyIndex::foldedHash(QByteArrayView key)
{
    // Eight bytes at a time, each with its case bit set, so that upper- and
    // lower-case letters hash alike. The few other bytes this folds together
    // (such as "@" and "`") only share a hash; they never compare equal.
    constexpr quint64 kCaseBits = 0x2020202020202020ull;
    const char *p = key.data();
    const qsizetype n = key.size();
    quint64 h = 0x9e3779b97f4a7c15ull ^ quint64(n);
    qsizetype i = 0;
    for (; i + 8 < n; i += 8)
        h = mix(h ^ (load64(p + i) | kCaseBits));
    // The last one to eight bytes; a longer key's last word overlaps the one
    // before it.
    quint64 tail = 0;
    if (n >= 8)
        tail = load64(p + n - 8);
    else if (n >= 4)
        tail = load32(p) | load32(p + n - 4) << 32;
    else if (n > 0)
        tail = quint64(quint8(p[0])) | quint64(quint8(p[n / 2])) << 8 | quint64(quint8(p[n - 1])) << 16;
    return size_t(mix(h ^ (tail | kCaseBits)));
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
    // A free entry has indexPlusOne 0.
    return mTable[probe(key, quint32(foldedHash(key)), keys)].indexPlusOne - 1;
}

// The entry of the item with this key, or the free entry where it would go.
// Forced inline: the reader runs through it for every element it adds.
Q_ALWAYS_INLINE quint32 KeyIndex::probe(QByteArrayView key, quint32 hash, const Keys &keys) const
{
    const quint32 mask = mTableSize - 1;
    quint32 at = hash & mask;
    for (; mTable[at].indexPlusOne != 0; at = (at + 1) & mask) {
        const Entry &e = mTable[at];
        if (e.hash == hash && sameKey(keys.keyAt(keys.owner, e.indexPlusOne - 1), key))
            break;
    }
    return at;
}

QByteArray KeyIndex::numberedKey(QByteArrayView wanted, const Keys &keys)
{
    // Small collections simply try every number from 0; large ones remember
    // where the last search for this key ended.
    const bool hinted = keys.count > kHintThreshold;
    const QByteArray base = hinted ? folded(wanted) : QByteArray();
    int n = 0;
    if (hinted && mSuffixHints)
        n = mSuffixHints->value(base, 0);
    // "wanted[n]", rewritten in place for each number tried.
    QByteArray candidate(wanted.size() + kLongestNumberSuffix, Qt::Uninitialized);
    if (!wanted.isEmpty())
        memcpy(candidate.data(), wanted.data(), size_t(wanted.size()));
    for (;; ++n) {
        const qsizetype length = wanted.size() + writeNumberSuffix(candidate.data() + wanted.size(), unsigned(n));
        if (indexOf(QByteArrayView(candidate.constData(), length), keys) < 0) {
            candidate.truncate(length);
            break;
        }
    }
    if (hinted) {
        if (!mSuffixHints)
            mSuffixHints = std::make_unique<QHash<QByteArray, int>>();
        mSuffixHints->insert(base, n + 1);
    }
    return candidate;
}

qsizetype KeyIndex::writeNumberSuffix(char *to, unsigned n)
{
    char digits[10];
    char *d = std::end(digits);
    for (unsigned v = n; d == std::end(digits) || v != 0; v /= 10)
        *--d = char('0' + v % 10);
    const qsizetype length = std::end(digits) - d;
    to[0] = '[';
    memcpy(to + 1, d, size_t(length));
    to[length + 1] = ']';
    return length + 2;
}

bool KeyIndex::claimIfFree(QByteArrayView key, const Keys &keys)
{
    if (keys.count <= kHashThreshold && !mTable)
        return indexOf(key, keys) < 0;
    if (!mTable)
        buildTable(keys);
    const quint32 hash = quint32(foldedHash(key));
    const quint32 at = probe(key, hash, keys);
    if (mTable[at].indexPlusOne != 0)
        return false;
    if ((mUsed + 1) * 2 > mTableSize) {
        growTable();
        insertEntry(hash, keys.count);
    } else {
        mTable[at] = { hash, keys.count + 1 };
        ++mUsed;
    }
    return true;
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
