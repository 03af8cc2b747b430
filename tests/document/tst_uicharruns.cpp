// SPDX-License-Identifier: MIT
#include "UiCharRuns.h"

#include <QtTest>
#include <algorithm>
#include <memory>

namespace {

// A run of `length` copies of byte `c`, then a CR, with room to read past it.
QByteArray runOf(unsigned char c, int length)
{
    QByteArray bytes(length, char(c));
    bytes += '\r';
    bytes += QByteArray(UiCharRuns::kSlack + 1, '\0');
    return bytes;
}

} // namespace

class TestUiCharRuns : public QObject
{
    Q_OBJECT

private slots:
    // Whatever way runs are measured, they follow the scanner's character
    // table, byte for byte, and runs of every length around a block's end.
    void runsFollowTheCharacterTable()
    {
        for (int c = 0; c < 256; ++c) {
            const bool name = UiCharClasses::table[size_t(c)] & UiCharClasses::NameChar;
            const bool value = UiCharClasses::table[size_t(c)] & UiCharClasses::ValueChar;
            for (int length : { 1, 15, 16, 17, 40 }) {
                const QByteArray bytes = runOf(static_cast<unsigned char>(c), length);
                // The CR ends every run; a NUL byte never starts one.
                QCOMPARE(UiCharRuns::valueRun(bytes.constData()), value ? qsizetype(length) : 0);
                QByteArray out(length + UiCharRuns::kSlack, '\0');
                QCOMPARE(UiCharRuns::copyLoweredName(out.data(), bytes.constData()), name ? qsizetype(length) : 0);
                if (name)
                    QCOMPARE(out.left(length), QByteArray(length, char(UiCharClasses::loweredName[size_t(c)])));
            }
        }
    }

    void namesAreLoweredAndEndAtTheFirstOtherByte()
    {
        const QByteArray line = "AbC_/9zZ=value\r" + QByteArray(UiCharRuns::kSlack + 1, '\0');
        QByteArray out(32, '\0');
        QCOMPARE(UiCharRuns::copyLoweredName(out.data(), line.constData()), qsizetype(8));
        QCOMPARE(out.left(8), QByteArray("abc_/9zz"));
        QCOMPARE(UiCharRuns::valueRun(line.constData() + 9), qsizetype(5));
    }

    void copiesKeepEveryByte()
    {
        for (int length : { 0, 1, 16, 17, 100 }) {
            QByteArray from(length + UiCharRuns::kSlack, 'x');
            for (int i = 0; i < length; ++i)
                from[i] = char(i * 7);
            QByteArray to(length + UiCharRuns::kSlack, '\0');
            UiCharRuns::copyRun(to.data(), from.constData(), length);
            QCOMPARE(to.left(length), from.left(length));
        }
    }

    // A line ends at its first CR or LF, wherever that falls around a block,
    // and the search never reads past the end it is given.
    void lineEndsAtTheFirstCrOrLfAndStaysInBounds()
    {
        for (char terminator : { '\r', '\n' }) {
            for (int at : { 0, 1, 15, 16, 17, 31, 32, 50 }) {
                for (int size : { at, at + 1, at + 20 }) {
                    // Exactly `size` bytes on the heap, so that reading past
                    // them is a sanitizer's error.
                    std::unique_ptr<char[]> bytes(new char[size_t(size)]);
                    for (int i = 0; i < size; ++i)
                        bytes[i] = char(i == at ? terminator : 'a' + i % 26);
                    const char *end = bytes.get() + size;
                    QCOMPARE(UiCharRuns::lineEnd(bytes.get(), end) - bytes.get(), qptrdiff(std::min(at, size)));
                }
            }
        }
        const QByteArray mixed = "key=value\t\x80\xff and more text\r\n";
        QCOMPARE(UiCharRuns::lineEnd(mixed.constData(), mixed.constData() + mixed.size()) - mixed.constData(),
                 qptrdiff(mixed.size() - 2));
    }
};

QTEST_GUILESS_MAIN(TestUiCharRuns)
#include "tst_uicharruns.moc"
