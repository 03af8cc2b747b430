// SPDX-License-Identifier: MIT
// Runs arbitrary sequences of edits on a property list, the way the reader and
// the editor make them, and checks every step against a plain list of pairs
// numbered by the same rule. Short and long keys and values are mixed, so that
// slots change size, and lists made for an element's own allocation are edited
// too.
#include "AsciiCase.h"
#include "KeyIndex.h"
#include "PropertyPack.h"
#include "clsElements.h"
#include "clsProperties.h"

#include <fuzzer/FuzzedDataProvider.h>

#include <cstdlib>
#include <utility>
#include <vector>

namespace {

using Pairs = std::vector<std::pair<QByteArray, QByteArray>>;

bool taken(const Pairs &pairs, QByteArrayView key)
{
    for (const auto &pair : pairs) {
        if (KeyIndex::sameKey(pair.first, key))
            return true;
    }
    return false;
}

// The key a new property that wants `wanted` gets: itself when free, else the
// first free "wanted[n]", counting from 0.
QByteArray numbered(const Pairs &pairs, const QByteArray &wanted)
{
    if (!taken(pairs, wanted))
        return wanted;
    for (int n = 0;; ++n) {
        const QByteArray candidate = wanted + '[' + QByteArray::number(n) + ']';
        if (!taken(pairs, candidate))
            return candidate;
    }
}

// Keys and values too long for a compact slot are few in one run: every step
// compares them whole.
struct Picker
{
    FuzzedDataProvider &in;
    int longOnesLeft = 3;

    bool pickLong()
    {
        if (longOnesLeft == 0 || in.ConsumeIntegralInRange(0, 15) != 0)
            return false;
        --longOnesLeft;
        return true;
    }

    QByteArray key()
    {
        static const char *const kKeys[] = { "x", "X", "x[0]", "X[1]", "y", "text", "", "bmp" };
        if (in.ConsumeBool())
            return kKeys[in.ConsumeIntegralInRange<size_t>(0, std::size(kKeys) - 1)];
        // Long keys differ in length by more than a number suffix adds, so that
        // comparing two of them seldom has to go byte by byte.
        if (pickLong())
            return QByteArray(65536 + 100 * in.ConsumeIntegralInRange(0, 3), char(in.ConsumeIntegral<unsigned char>()));
        const std::string bytes = in.ConsumeRandomLengthString(4);
        return QByteArray(bytes.data(), qsizetype(bytes.size()));
    }

    QByteArray value()
    {
        static const int kLongLengths[] = { 65535, 65536, 70000 };
        const char fill = char(in.ConsumeIntegral<unsigned char>());
        if (pickLong())
            return QByteArray(kLongLengths[in.ConsumeIntegralInRange(0, 2)], fill);
        return QByteArray(in.ConsumeIntegralInRange(0, 40), fill);
    }
};

void check(const clsProperties &props, const Pairs &expected)
{
    if (props.Count() != int(expected.size()))
        abort();
    for (int i = 0; i < props.Count(); ++i) {
        const QByteArray &key = expected[size_t(i)].first;
        // Looked up in another case, except long keys: those cost a byte loop
        // under the fuzzer's instrumentation, every step.
        const QByteArray lookUp = key.size() <= 64 ? AsciiCase::uppered(key) : key;
        if (props.keyAt(i) != QByteArrayView(key) || props.valueAt(i) != QByteArrayView(expected[size_t(i)].second)
            || props.indexOf(lookUp) != i)
            abort();
    }
}

// A list made the way the reader makes an element's: from a pack whose repeated
// keys were numbered first, in the element's own allocation.
clsElement *elementFromPack(FuzzedDataProvider &in, Picker &pick, clsElements &owner, Pairs &expected)
{
    PropertyPack pack;
    const int count = in.ConsumeIntegralInRange(0, 40);
    for (int i = 0; i < count; ++i) {
        const QByteArray key = pick.key();
        const QByteArray value = pick.value();
        pack.add(key, value);
        expected.emplace_back(numbered(expected, key), value);
    }
    PropertyPack room;
    pack.numberRepeatedKeys(room);
    return owner.Add("e", "TEXT", pack);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    FuzzedDataProvider in(data, size);
    Picker pick { in };
    clsElements owner;
    Pairs expected;
    clsProperties &props = elementFromPack(in, pick, owner, expected)->Properties();
    check(props, expected);
    for (int step = 0; step < 64 && in.remaining_bytes() > 0; ++step) {
        switch (in.ConsumeIntegralInRange(0, 6)) {
        case 0: {
            const QByteArray key = pick.key();
            const QByteArray value = pick.value();
            expected.emplace_back(numbered(expected, key), value);
            props.Add(key, value);
            break;
        }
        case 1: {
            PropertyPack pack;
            for (int i = in.ConsumeIntegralInRange(0, 6); i > 0; --i) {
                const QByteArray key = pick.key();
                const QByteArray value = pick.value();
                pack.add(key, value);
                expected.emplace_back(numbered(expected, key), value);
            }
            props.AddPacked(pack);
            break;
        }
        case 2: {
            const QByteArray key = pick.key();
            if (taken(expected, key))
                break;
            const int position = in.ConsumeIntegralInRange(0, int(expected.size()));
            const QByteArray value = pick.value();
            expected.insert(expected.begin() + position, { key, value });
            props.Insert(position, key, value);
            break;
        }
        case 3:
            if (!expected.empty()) {
                const int position = in.ConsumeIntegralInRange(1, int(expected.size()));
                expected.erase(expected.begin() + position - 1);
                props.Remove(position);
            }
            break;
        case 4:
            if (!expected.empty()) {
                const int index = in.ConsumeIntegralInRange(0, int(expected.size()) - 1);
                const QByteArray value = pick.value();
                expected[size_t(index)].second = value;
                props.setValueAt(index, value);
            }
            break;
        case 5: {
            const clsProperties copy = props;
            check(copy, expected);
            break;
        }
        case 6:
            if (in.ConsumeIntegralInRange(0, 7) == 0) {
                props.Clear();
                expected.clear();
            }
            break;
        }
        check(props, expected);
    }
    return 0;
}
