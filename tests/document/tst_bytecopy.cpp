// SPDX-License-Identifier: MIT
#include "ByteCopy.h"

#include <QtTest>
#include <memory>

class TestByteCopy : public QObject
{
    Q_OBJECT

private slots:
    // Every length around the word sizes, each byte set apart in turn.
    void copiesAreExactAtEveryLength()
    {
        for (quint32 length = 0; length <= 40; ++length) {
            std::unique_ptr<char[]> from(new char[length + 1]);
            for (quint32 i = 0; i < length; ++i)
                from[i] = char(i * 31 + 7);
            std::unique_ptr<char[]> to(new char[length + 1]);
            to[length] = '#';
            ByteCopy::copySmall(to.get(), from.get(), length);
            QCOMPARE(QByteArrayView(to.get(), length), QByteArrayView(from.get(), length));
            QCOMPARE(to[length], '#');
        }
    }

    // Equal runs compare equal; a difference in any one byte is seen. The
    // compared bytes are exactly the length, on the heap, so that reading
    // past them is a sanitizer's error.
    void comparesSeeEveryByteAndNoMore()
    {
        for (size_t length = 0; length <= 40; ++length) {
            std::unique_ptr<char[]> a(new char[length]);
            std::unique_ptr<char[]> b(new char[length]);
            for (size_t i = 0; i < length; ++i)
                a[i] = b[i] = char('a' + i % 26);
            QVERIFY(ByteCopy::sameSmall(a.get(), b.get(), length));
            for (size_t i = 0; i < length; ++i) {
                b[i] = char(b[i] ^ 0x20);
                QVERIFY2(!ByteCopy::sameSmall(a.get(), b.get(), length),
                         qPrintable(QStringLiteral("length %1, byte %2").arg(length).arg(i)));
                b[i] = a[i];
            }
        }
    }
};

QTEST_GUILESS_MAIN(TestByteCopy)
#include "tst_bytecopy.moc"
