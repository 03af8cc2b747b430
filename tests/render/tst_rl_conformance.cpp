// SPDX-License-Identifier: MIT
#include "ImageLoader.h"
#include "RlDecoder.h"

#include <QDir>
#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>
#include <QtTest>

// Generated RL pictures (a quarter of them malformed on purpose) with their
// expected sizes and pixels, worked out independently of this decoder.
class TestRlConformance : public QObject
{
    Q_OBJECT

private:
    static QString corpusDir() { return QStringLiteral(KORVI_TEST_DATA "/rl"); }

    static QByteArray readAll(const QString &path)
    {
        QFile file(path);
        if (!file.open(QIODevice::ReadOnly))
            return QByteArray();
        return file.readAll();
    }

private slots:
    void corpusIsThere()
    {
        const QStringList pictures = QDir(corpusDir()).entryList({ QStringLiteral("*.bmp") });
        QVERIFY2(pictures.size() >= 50, qPrintable(QString::number(pictures.size())));
    }

    void decodesAsExpected_data()
    {
        QTest::addColumn<QString>("name");
        const QStringList pictures = QDir(corpusDir()).entryList({ QStringLiteral("*.bmp") }, QDir::Files, QDir::Name);
        for (const QString &picture : pictures) {
            const QString name = picture.chopped(4);
            QTest::newRow(qPrintable(name)) << name;
        }
    }
    void decodesAsExpected()
    {
        QFETCH(QString, name);
        const QString base = corpusDir() + QLatin1Char('/') + name;
        const QJsonObject expected = QJsonDocument::fromJson(readAll(base + QStringLiteral(".json"))).object();
        const QSize expectedSize(expected.value(QStringLiteral("width")).toInt(-1),
                                 expected.value(QStringLiteral("height")).toInt(-1));

        QImage buffer;
        const QSize size = ImageLoader::LoadImageFile(base + QStringLiteral(".bmp"), buffer);
        QCOMPARE(size, expectedSize);
        if (expectedSize.isEmpty()) {
            QVERIFY(buffer.isNull());
            return;
        }
        const QImage want = QImage(base + QStringLiteral(".png")).convertToFormat(QImage::Format_RGB32);
        QCOMPARE(want.size(), expectedSize);
        QCOMPARE(buffer.size(), expectedSize);
        for (int y = 0; y < want.height(); ++y) {
            for (int x = 0; x < want.width(); ++x) {
                if (buffer.pixel(x, y) != want.pixel(x, y)) {
                    QFAIL(qPrintable(QStringLiteral("pixel (%1, %2): %3, expected %4")
                                         .arg(x).arg(y)
                                         .arg(buffer.pixel(x, y), 8, 16, QLatin1Char('0'))
                                         .arg(want.pixel(x, y), 8, 16, QLatin1Char('0'))));
                }
            }
        }
    }
};

QTEST_GUILESS_MAIN(TestRlConformance)
#include "tst_rl_conformance.moc"
