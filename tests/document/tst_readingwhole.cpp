// SPDX-License-Identifier: MIT
#include "FailingDevice.h"
#include "SkinReadError.h"
#include "UiFileReader.h"
#include "clsKorviInterface.h"

#include <QBuffer>
#include <QTemporaryDir>
#include <QtTest>

namespace {

// A file that claims more bytes than it gives.
class ShortDevice : public QBuffer
{
public:
    explicit ShortDevice(QByteArray *content) : QBuffer(content) { }
    qint64 size() const override { return QBuffer::size() + 10; }
};

const QByteArray kSkin = "<LAYER ui_Main>\r\n\t<TEXT a x=1>\r\n\t<TEXT b x=2>\r\n</LAYER>\r\n";

} // namespace

class TestReadingWhole : public QObject
{
    Q_OBJECT

private slots:
    void inputOutputErrorHalfWayIsAnErrorNamingTheFile()
    {
        FailingDevice device(kSkin, 20);
        QVERIFY(device.open(QIODevice::ReadOnly));
        clsKorviInterface doc;
        try {
            UiFileReader(doc, false).readDevice(device, QStringLiteral("skin/main.ui"));
            QFAIL("a failed read passed for the whole file");
        } catch (const SkinReadError &error) {
            QCOMPARE(error.file(), QStringLiteral("skin/main.ui"));
            QVERIFY2(error.message().contains(QStringLiteral("Input/output error")), qPrintable(error.message()));
            QVERIFY(QString::fromStdString(error.what()).contains(QStringLiteral("skin/main.ui")));
        }
        // Nothing of the part that was read is taken for the file.
        QCOMPARE(doc.Layers().Count(), 0);
    }

    void fewerBytesThanTheSizeIsAnError()
    {
        QByteArray content = kSkin;
        ShortDevice device(&content);
        QVERIFY(device.open(QIODevice::ReadOnly));
        clsKorviInterface doc;
        QVERIFY_THROWS_EXCEPTION(SkinReadError, UiFileReader(doc, false).readDevice(device, QStringLiteral("m.ui")));
        QCOMPARE(doc.Layers().Count(), 0);
    }

    void missingFileIsAnErrorNamingTheFile()
    {
        QTemporaryDir dir;
        const QString path = dir.filePath(QStringLiteral("absent.ui"));
        clsKorviInterface doc;
        try {
            ReadUiFile(doc, path, false);
            QFAIL("a missing file was read");
        } catch (const SkinReadError &error) {
            QCOMPARE(error.file(), path);
        }
    }

    void wholeFileIsReadThroughADevice()
    {
        QByteArray content = kSkin;
        QBuffer device(&content);
        QVERIFY(device.open(QIODevice::ReadOnly));
        clsKorviInterface doc;
        UiFileReader(doc, false).readDevice(device, QStringLiteral("m.ui"));
        QCOMPARE(doc.Layers().Item("ui_Main")->subElementCount(), 2);
    }

    void fileLargerThanOneReadIsReadWhole()
    {
        QTemporaryDir dir;
        const QString path = dir.filePath(QStringLiteral("big.ui"));
        QByteArray text = "<LAYER l>\n";
        for (int i = 0; i < 20000; ++i)
            text += "\t<TEXT t" + QByteArray::number(i) + " x=" + QByteArray::number(i) + ">\n";
        QFile f(path);
        QVERIFY(f.open(QIODevice::WriteOnly));
        f.write(text);
        f.close();
        clsKorviInterface doc;
        ReadUiFile(doc, path, false);
        QCOMPARE(doc.Layers().Item("l")->subElementCount(), 20000);
    }
};

QTEST_GUILESS_MAIN(TestReadingWhole)
#include "tst_readingwhole.moc"
