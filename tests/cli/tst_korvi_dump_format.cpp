// SPDX-License-Identifier: MIT
#include "TestFiles.h"
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QTemporaryDir>
#include <QtTest>

namespace {

struct Run
{
    int exitCode = -1;
    QByteArray out;
    QByteArray err;
};

Run korvi(const QStringList &args)
{
    QProcess p;
    p.start(QStringLiteral(KORVI_EXECUTABLE), args);
    p.waitForFinished(60000);
    return { p.exitCode(), p.readAllStandardOutput(), p.readAllStandardError() };
}

QString writeFile(const QTemporaryDir &dir, const QString &name, const QByteArray &bytes)
{
    const QString path = dir.filePath(name);
    writeTestFile(path, bytes);
    return path;
}

} // namespace

class TestKorviDumpFormat : public QObject
{
    Q_OBJECT

private slots:
    void dumpPrintsTheDocumentAsJson()
    {
        QTemporaryDir dir;
        const QString shared = writeFile(dir, "t.ui", "<TEMPLATE tmp bmp=b.bmp>\r\n");
        const QString file = writeFile(dir, "m.ui", "<LAYER ui_Main x=1>\r\n<TEXT t text=\"caf\xe9\">\r\n");
        const Run run = korvi({ "dump", "-i", shared, file });
        QCOMPARE(run.exitCode, 0);
        // Bytes above 0x7F are printed as \u escapes: the output is plain ASCII.
        QVERIFY(run.out.contains("caf\\u00e9"));
        const QJsonObject dump = QJsonDocument::fromJson(run.out).object();
        QVERIFY(dump.value("error").isNull());
        const QJsonObject tmp = dump.value("Templates").toArray().at(0).toObject();
        QCOMPARE(tmp.value("imported").toBool(), true);
        QCOMPARE(tmp.value("key").toString(), QStringLiteral("tmp"));
        const QJsonObject layer = dump.value("Layers").toArray().at(0).toObject();
        QCOMPARE(layer.value("type").toString(), QStringLiteral("LAYER"));
        QCOMPARE(layer.value("properties").toArray().at(0).toArray(), (QJsonArray { "x", "1" }));
        const QJsonObject text = layer.value("children").toArray().at(0).toObject();
        QCOMPARE(text.value("properties").toArray().at(0).toArray().at(1).toString(),
                 QString::fromLatin1("\"caf\xe9\""));
    }

    // By default a byte is the character of its number; with a code page the
    // skin's text is decoded.
    void dumpIsByteExactUnlessGivenACodePage()
    {
        QTemporaryDir dir;
        const QString file = writeFile(dir, "main.ui", "<LAYER ui_Main>\r\n\t<TEXT txtA text=\"\xc6\">\r\n</LAYER>\r\n");
        const Run exact = korvi({ "dump", file });
        QCOMPARE(exact.exitCode, 0);
        QVERIFY2(exact.out.contains("[\"text\", \"\\\"\\u00c6\\\"\"]"), exact.out.constData());
        const Run decoded = korvi({ "dump", "--code-page", "cp1251", file });
        QCOMPARE(decoded.exitCode, 0);
        QVERIFY2(decoded.out.contains("[\"text\", \"\\\"\\u0416\\\"\"]"), decoded.out.constData());
        const QJsonDocument json = QJsonDocument::fromJson(decoded.out);
        const QJsonArray property = json[QStringLiteral("Layers")][0][QStringLiteral("children")][0][QStringLiteral("properties")][0].toArray();
        QCOMPARE(property.at(1).toString(), QString::fromUtf8("\"\xd0\x96\""));
    }

    void dumpOfAFileThatStopsReportsTheLineAndTheDocumentSoFar()
    {
        QTemporaryDir dir;
        const QString file = writeFile(dir, "bad.ui", "<LAYER a>\n</LAYER>\n<TEXT orphan>\n<LAYER b>\n");
        const Run run = korvi({ "dump", file });
        QCOMPARE(run.exitCode, 1);
        const QJsonObject dump = QJsonDocument::fromJson(run.out).object();
        QCOMPARE(dump.value("error").toObject().value("line").toInt(), 3);
        QCOMPARE(dump.value("error").toObject().value("file").toString(), file);
        QCOMPARE(dump.value("Layers").toArray().size(), 1);
    }

    void importedFileWithAnErrorStopsBeforeTheNextFile()
    {
        QTemporaryDir dir;
        const QString shared = writeFile(dir, "t.ui", "<TEXT orphan>\n");
        const QString file = writeFile(dir, "m.ui", "<LAYER a>\n");
        const Run run = korvi({ "dump", "-i", shared, file });
        QCOMPARE(run.exitCode, 1);
        const QJsonObject dump = QJsonDocument::fromJson(run.out).object();
        QCOMPARE(dump.value("error").toObject().value("file").toString(), shared);
        QCOMPARE(dump.value("Layers").toArray().size(), 0);
    }

    void importedFilesMayFollowTheFileAndUnknownOptionsAreNamed()
    {
        QTemporaryDir dir;
        const QString shared = writeFile(dir, "t.ui", "<TEMPLATE tmp bmp=b.bmp>\r\n");
        const QString other = writeFile(dir, "u.ui", "<TEMPLATE tmq bmp=c.bmp>\r\n");
        const QString file = writeFile(dir, "m.ui", "<LAYER ui_Main x=1>\r\n</LAYER>\r\n");
        const Run run = korvi({ "dump", file, "-i", shared, "-i", other });
        QCOMPARE(run.exitCode, 0);
        QVERIFY(run.out.contains("tmp"));
        QVERIFY(run.out.contains("tmq"));
        const Run unknown = korvi({ "dump", "--bogus", file });
        QCOMPARE(unknown.exitCode, 2);
        QVERIFY(unknown.err.contains("bogus"));
    }

    void usageErrorsExitWithTwo()
    {
        QCOMPARE(korvi({ "dump" }).exitCode, 2);
        QCOMPARE(korvi({ "dump", "-i" }).exitCode, 2);
        QCOMPARE(korvi({ "format", "only-one.ui" }).exitCode, 2);
        QCOMPARE(korvi({ "no-such-subcommand" }).exitCode, 2);
        QCOMPARE(korvi({}).exitCode, 2);
        QVERIFY(!korvi({ "dump" }).err.isEmpty());
    }

    void formatWritesTheFileAndKeepsABackup()
    {
        QTemporaryDir dir;
        const QString file = writeFile(dir, "m.ui", "<layer a x=1>\n\t<text t visible>\n</layer>\n");
        const Run run = korvi({ "format", file, file });
        QCOMPARE(run.exitCode, 0);
        QCOMPARE(readTestFile(file), QByteArray("<LAYER a x=1>\r\n\t<TEXT t VISIBLE>\r\n</LAYER>\r\n\r\n"));
        QCOMPARE(readTestFile(dir.filePath("m.bak")), QByteArray("<layer a x=1>\n\t<text t visible>\n</layer>\n"));
    }

    void formatLeavesImportedEntriesOut()
    {
        QTemporaryDir dir;
        const QString shared = writeFile(dir, "t.ui", "<TEMPLATE shared x=1>\n");
        const QString file = writeFile(dir, "m.ui", "<TEMPLATE own>\n");
        QCOMPARE(korvi({ "format", "-i", shared, file, dir.filePath("out.ui") }).exitCode, 0);
        QCOMPARE(readTestFile(dir.filePath("out.ui")), QByteArray("<TEMPLATE own>\r\n"));
    }

    void formatReportsAReadingErrorAndWritesNothing()
    {
        QTemporaryDir dir;
        const QString file = writeFile(dir, "bad.ui", "<TEXT orphan>\n");
        const Run run = korvi({ "format", file, dir.filePath("out.ui") });
        QCOMPARE(run.exitCode, 1);
        QVERIFY(run.err.contains("line 1"));
        QVERIFY(!QFile::exists(dir.filePath("out.ui")));
    }

    void formatReportsAWriteError()
    {
        QTemporaryDir dir;
        const QString file = writeFile(dir, "m.ui", "<LAYER a>\n");
        const Run run = korvi({ "format", file, "/proc/self/out.ui" });
        QCOMPARE(run.exitCode, 1);
        QVERIFY(run.err.startsWith("Error saving file: "));
    }
};

QTEST_GUILESS_MAIN(TestKorviDumpFormat)
#include "tst_korvi_dump_format.moc"
