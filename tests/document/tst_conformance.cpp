// SPDX-License-Identifier: MIT
#include "TestFiles.h"
#include "DocumentJson.h"
#include "SkinReadError.h"
#include "UiFileReader.h"
#include "UiFileWriter.h"
#include "clsKorviInterface.h"

#include <QJsonDocument>
#include <QJsonObject>
#include <QtTest>

// The generated skin files of tests/data/ui, each with the expected document
// (as `korvi dump` prints it), the expected bytes written back, and the document
// that reading those bytes again gives.
namespace {

const QString kDataDir = QStringLiteral(KORVI_TEST_DATA "/ui");

// Of "error" only whether it is null and its line count.
QJsonObject comparable(QJsonObject dump)
{
    const QJsonValue error = dump.value("error");
    dump.insert("error", error.isNull() ? QJsonValue() : error.toObject().value("line"));
    return dump;
}

QJsonObject dumpOf(const QStringList &imported, const QString &file, bool *failed)
{
    clsKorviInterface doc;
    QByteArray json;
    *failed = false;
    try {
        for (const QString &path : imported)
            ReadUiFile(doc, path, true);
        ReadUiFile(doc, file, false);
        json = documentToJson(doc, nullptr);
    } catch (const SkinReadError &error) {
        json = documentToJson(doc, &error);
        *failed = true;
    }
    return QJsonDocument::fromJson(json).object();
}

struct CaseFiles
{
    QStringList imported;
    QString file;
};

CaseFiles filesOf(const QString &base)
{
    CaseFiles c;
    if (QFile::exists(base + ".imported.ui"))
        c.imported << base + ".imported.ui";
    c.file = base + ".ui";
    return c;
}

} // namespace

class TestConformance : public QObject
{
    Q_OBJECT

private slots:
    void corpusIsPresent()
    {
        const QStringList cases = QDir(kDataDir).entryList({ "case*.json" });
        QVERIFY2(cases.size() >= 80, qPrintable(kDataDir));
    }

    void readsAndWritesEveryCase_data()
    {
        QTest::addColumn<QString>("base");
        const QStringList names = QDir(kDataDir).entryList({ "case?????.ui" }, QDir::Files, QDir::Name);
        for (const QString &name : names) {
            const QString base = kDataDir + '/' + name.chopped(3);
            QTest::newRow(qPrintable(name.chopped(3))) << base;
        }
    }
    void readsAndWritesEveryCase()
    {
        QFETCH(QString, base);
        const CaseFiles files = filesOf(base);
        const QJsonObject expected = QJsonDocument::fromJson(readTestFile(base + ".json")).object();
        QVERIFY(!expected.isEmpty());

        clsKorviInterface doc;
        QByteArray json;
        try {
            for (const QString &path : files.imported)
                ReadUiFile(doc, path, true);
            ReadUiFile(doc, files.file, false);
            json = documentToJson(doc, nullptr);
        } catch (const SkinReadError &error) {
            json = documentToJson(doc, &error);
        }
        QCOMPARE(comparable(QJsonDocument::fromJson(json).object()), comparable(expected));
        // What was read is written, even after a reading error.
        QCOMPARE(UiFileWriter(doc).fileText(), readTestFile(base + ".out.ui"));
    }

    void rereadsEveryWrittenCase_data()
    {
        QTest::addColumn<QString>("base");
        const QStringList names = QDir(kDataDir).entryList({ "case?????.reread.json" });
        for (const QString &name : names)
            QTest::newRow(qPrintable(name.left(9))) << kDataDir + '/' + name.left(9);
    }
    void rereadsEveryWrittenCase()
    {
        QFETCH(QString, base);
        bool failed = false;
        const QJsonObject reread = dumpOf({}, base + ".out.ui", &failed);
        const QJsonObject expected = QJsonDocument::fromJson(readTestFile(base + ".reread.json")).object();
        QVERIFY(!expected.isEmpty());
        QCOMPARE(comparable(reread), comparable(expected));
    }

    // Saving and reading back is stable from the second save on, but for the
    // observer blocks, which grow by one closing child per save.
    void secondSaveOfAnObserverGainsOneMoreClosingChild()
    {
        clsKorviInterface doc;
        UiFileReader(doc, false).readBytes("<observer o>\r\n<TEXT t>\r\n</observer>\r\n", "o.ui");
        QCOMPARE(doc.Layers().Item("o")->subElementCount(), 2);
        clsKorviInterface again;
        UiFileReader(again, false).readBytes(UiFileWriter(doc).fileText(), "o2.ui");
        QCOMPARE(again.Layers().Item("o")->subElementCount(), 3);
        QCOMPARE(again.Layers().Item("o")->SubElements().Item(3)->ElementType(), QByteArray("/OBSERVER"));
    }
};

QTEST_GUILESS_MAIN(TestConformance)
#include "tst_conformance.moc"
