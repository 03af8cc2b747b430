#include "KeyIndex.h"

#include "AsciiCase.h"

#include <cstring>


QByteArray KeyIndex::folded(QByteArrayView key)
{
    QByteArray out(key.size(), Qt::Uninitialized);
    for (qsizetype i = 0; i < key.size(); ++i)
        out[i] = AsciiCase::lower(key[i]);
    return out;
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

void KeyIndex::buildHash(const Keys &keys) const
{
    mHash = std::make_unique<QMultiHash<size_t, int>>();
    mHash->reserve(keys.count);
    for (int i = 0; i < keys.count; ++i)
        mHash->insert(foldedHash(keys.keyAt(keys.owner, i)), i);
}

int KeyIndex::indexOf(QByteArrayView key, const Keys &keys) const
{
    if (keys.count <= kHashThreshold && !mHash) {
        for (int i = 0; i < keys.count; ++i) {
            if (sameKey(keys.keyAt(keys.owner, i), key))
                return i;
        }
        return -1;
    }
    if (!mHash)
        buildHash(keys);
    const size_t hash = foldedHash(key);
    for (auto it = mHash->constFind(hash); it != mHash->cend() && it.key() == hash; ++it) {
        if (sameKey(keys.keyAt(keys.owner, it.value()), key))
            return it.value();
    }
    return -1;
}

QByteArray KeyIndex::numberedKeyIfTaken(QByteArrayView wanted, const Keys &keys)
{
    if (indexOf(wanted, keys) < 0)
        return QByteArray();
    const QByteArray base = folded(wanted);
    int n = 0;
    if (mSuffixHints)
        n = mSuffixHints->value(base, 0);
    QByteArray candidate;
    for (;; ++n) {
        candidate = wanted.toByteArray() + '[' + QByteArray::number(n) + ']';
        if (indexOf(candidate, keys) < 0)
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
        mHash->insert(foldedHash(key), index);
}

void KeyIndex::invalidate()
{
    mHash.reset();
    mSuffixHints.reset();
}
