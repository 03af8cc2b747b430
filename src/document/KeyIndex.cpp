#include "KeyIndex.h"

namespace {
inline char lowerAscii(char c)
{
    return (c >= 'A' && c <= 'Z') ? char(c + ('a' - 'A')) : c;
}
} // namespace

QByteArray KeyIndex::folded(QByteArrayView key)
{
    QByteArray out(key.size(), Qt::Uninitialized);
    for (qsizetype i = 0; i < key.size(); ++i)
        out[i] = lowerAscii(key[i]);
    return out;
}

bool KeyIndex::sameKey(QByteArrayView a, QByteArrayView b)
{
    if (a.size() != b.size())
        return false;
    for (qsizetype i = 0; i < a.size(); ++i) {
        if (a[i] != b[i] && lowerAscii(a[i]) != lowerAscii(b[i]))
            return false;
    }
    return true;
}

void KeyIndex::buildHash(int count, const KeyAt &keyAt) const
{
    mHash = std::make_unique<QHash<QByteArray, int>>();
    mHash->reserve(count);
    for (int i = 0; i < count; ++i)
        mHash->insert(folded(keyAt(i)), i);
}

int KeyIndex::indexOf(QByteArrayView key, int count, const KeyAt &keyAt) const
{
    if (count <= kHashThreshold && !mHash) {
        for (int i = 0; i < count; ++i) {
            if (sameKey(keyAt(i), key))
                return i;
        }
        return -1;
    }
    if (!mHash)
        buildHash(count, keyAt);
    return mHash->value(folded(key), -1);
}

QByteArray KeyIndex::uniqueKey(const QByteArray &wanted, int count, const KeyAt &keyAt)
{
    if (indexOf(wanted, count, keyAt) < 0)
        return wanted;
    const QByteArray base = folded(wanted);
    int n = 0;
    if (mSuffixHints)
        n = mSuffixHints->value(base, 0);
    QByteArray candidate;
    for (;; ++n) {
        candidate = wanted + '[' + QByteArray::number(n) + ']';
        if (indexOf(candidate, count, keyAt) < 0)
            break;
    }
    if (!mSuffixHints)
        mSuffixHints = std::make_unique<QHash<QByteArray, int>>();
    mSuffixHints->insert(base, n + 1);
    return candidate;
}

void KeyIndex::appended(QByteArrayView key, int index)
{
    if (mHash)
        mHash->insert(folded(key), index);
}

void KeyIndex::invalidate()
{
    mHash.reset();
    mSuffixHints.reset();
}
