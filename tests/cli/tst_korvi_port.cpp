// SPDX-License-Identifier: MIT
// korvi port run as a user runs it: the report, the boxes the renderer draws
// in the ported skin, a dry run, and the refusals.

#include "../ProgramRun.h"
#include "TestFiles.h"

#include <QDirIterator>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTemporaryDir>
#include <QtTest>

namespace {

const QString kKorvi = QStringLiteral(KORVI_EXECUTABLE);
const QString kDemo = QStringLiteral(KORVI_SOURCE_DIR "/samples/demo-skin");

void copyTree(const QString &from, const QString &to)
{
    QDirIterator files(from, QDir::Files | QDir::Hidden, QDirIterator::Subdirectories);
    while (files.hasNext()) {
        const QString path = files.next();
        writeTestFile(to + QLatin1Char('/') + QDir(from).relativeFilePath(path), readTestFile(path));
    }
}

QStringList entriesIn(const QString &folder)
{
    QStringList names;
    QDirIterator it(folder, QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot, QDirIterator::Subdirectories);
    while (it.hasNext())
        names << QDir(folder).relativeFilePath(it.next());
    names.sort();
    return names;
}

QJsonArray boxesOf(const QString &skin, const QString &format, const QString &out)
{
    const QString file = skin + QStringLiteral("/%1/ui/main_%1.ui").arg(format);
    const ProgramRun run = runProgram(kKorvi, { QStringLiteral("render"), file, QStringLiteral("--skin-dir"), skin,
                                                QStringLiteral("--all-layers"), QStringLiteral("-o"), out,
                                                QStringLiteral("--boxes"), out + QStringLiteral("/boxes.json") });
    if (run.exitCode != 0)
        qWarning() << run.err;
    return QJsonDocument::fromJson(readTestFile(out + QStringLiteral("/boxes.json"))).array();
}

} // namespace

class TestKorviPort : public QObject
{
    Q_OBJECT

private slots:
    void portingToTwiceTheSizeDoublesEveryDrawnBox()
    {
        QTemporaryDir dir;
        const QString skin = dir.filePath(QStringLiteral("skin"));
        copyTree(kDemo, skin);
        const QString report = dir.filePath(QStringLiteral("report.json"));
        const ProgramRun run = runProgram(kKorvi, { QStringLiteral("port"), skin, QStringLiteral("--from"),
                                                    QStringLiteral("800_480"), QStringLiteral("--to"),
                                                    QStringLiteral("1600_960"), QStringLiteral("--report"), report });
        QCOMPARE(run.exitCode, 0);
        QVERIFY(run.out.contains("1600_960/btn_menu.bmp: 180x240 -> 360x480 (2 frames) [resized]"));
        QVERIFY(run.out.contains("800_480 -> 1600_960 (x 2, y 2)"));
        const QJsonObject json = QJsonDocument::fromJson(readTestFile(report)).object();
        QCOMPARE(json.value(QStringLiteral("to")).toString(), QStringLiteral("1600_960"));
        QCOMPARE(json.value(QStringLiteral("pictures")).toArray().size(), 10);
        QCOMPARE(json.value(QStringLiteral("notes")).toArray().size(), 3);

        const QJsonArray before = boxesOf(skin, QStringLiteral("800_480"), dir.filePath(QStringLiteral("before")));
        const QJsonArray after = boxesOf(skin, QStringLiteral("1600_960"), dir.filePath(QStringLiteral("after")));
        QVERIFY(before.size() > 30);
        QCOMPARE(after.size(), before.size());
        int pictureBoxes = 0;
        // The sliders' knob and the pin's icons are pictures of common/,
        // which keep their size: only their boxes may differ.
        const QStringList keepingPictures { "Lui_Settings|EsldVolume", "Lui_Map|EsldZoom", "Lui_Map|EbtnPin" };
        for (int i = 0; i < before.size(); ++i) {
            const QJsonObject a = before.at(i).toObject();
            const QJsonObject b = after.at(i).toObject();
            QCOMPARE(b.value(QStringLiteral("key")), a.value(QStringLiteral("key")));
            // A box that only a text placed is where the font put the text.
            if (a.value(QStringLiteral("width")).toInt() == 0)
                continue;
            ++pictureBoxes;
            const QString key = a.value(QStringLiteral("key")).toString();
            for (const char *side : { "left", "top", "width", "height" }) {
                const QString name = QString::fromLatin1(side);
                QVERIFY2(b.value(name).toInt() == 2 * a.value(name).toInt() || keepingPictures.contains(key),
                         qPrintable(key + QLatin1Char(' ') + name));
            }
        }
        QVERIFY(pictureBoxes > 20);
        // The pictures of each layer are twice the size.
        // The pictures of each layer are twice the size (a PNG's width and
        // height stand at bytes 16 and 20).
        const QByteArray small = readTestFile(dir.filePath(QStringLiteral("before/ui_Main.png")));
        const QByteArray large = readTestFile(dir.filePath(QStringLiteral("after/ui_Main.png")));
        QCOMPARE(small.mid(16, 8).toHex(), QByteArray("00000320000001e0"));
        QCOMPARE(large.mid(16, 8).toHex(), QByteArray("00000640000003c0"));

        // Both formats side by side, layer by layer.
        const QString compare = dir.filePath(QStringLiteral("compare"));
        ProgramRun sheet = runProgram(kKorvi, { QStringLiteral("render"), skin + QStringLiteral("/800_480/ui/main_800_480.ui"),
                                                QStringLiteral("--skin-dir"), skin, QStringLiteral("--all-layers"),
                                                QStringLiteral("--compare"), QStringLiteral("1600_960"),
                                                QStringLiteral("-o"), compare });
        QCOMPARE(sheet.exitCode, 0);
        // 800 + a gap of 16 + 1600 wide, 960 high.
        QCOMPARE(readTestFile(compare + QStringLiteral("/ui_Main.png")).mid(16, 8).toHex(), QByteArray("00000970000003c0"));
        QCOMPARE(readTestFile(compare + QStringLiteral("/st_Night.png")).mid(16, 8).toHex(), QByteArray("00000970000003c0"));
        sheet = runProgram(kKorvi, { QStringLiteral("render"), skin + QStringLiteral("/800_480/ui/main_800_480.ui"),
                                     QStringLiteral("--skin-dir"), skin, QStringLiteral("--all-layers"),
                                     QStringLiteral("--compare"), QStringLiteral("480_272"), QStringLiteral("-o"), compare });
        QCOMPARE(sheet.exitCode, 1);
        QVERIFY(sheet.err.contains("to compare with"));
        sheet = runProgram(kKorvi, { QStringLiteral("render"), skin + QStringLiteral("/800_480/ui/main_800_480.ui"),
                                     QStringLiteral("--all-layers"), QStringLiteral("--compare"), QStringLiteral("big"),
                                     QStringLiteral("-o"), compare });
        QCOMPARE(sheet.exitCode, 2);
    }

    void aDryRunPrintsTheReportAndWritesNothing()
    {
        QTemporaryDir dir;
        const QString skin = dir.filePath(QStringLiteral("skin"));
        copyTree(kDemo, skin);
        const QStringList before = entriesIn(dir.path());
        const ProgramRun run = runProgram(kKorvi, { QStringLiteral("port"), skin, QStringLiteral("--from"),
                                                    QStringLiteral("800_480"), QStringLiteral("--to"),
                                                    QStringLiteral("1024_600"), QStringLiteral("--dry-run") });
        QCOMPARE(run.exitCode, 0);
        QVERIFY(run.out.contains("nothing written (dry run)"));
        QVERIFY(run.out.contains("1024_600/map.jpg: 800x480 -> 1024x600 [resized]"));
        QCOMPARE(entriesIn(dir.path()), before);
    }

    void anExistingTargetIsRefusedAndUsageErrorsSaySo()
    {
        QTemporaryDir dir;
        const QString skin = dir.filePath(QStringLiteral("skin"));
        copyTree(kDemo, skin);
        QVERIFY(QDir().mkpath(skin + QStringLiteral("/1024_600")));
        const QStringList args { QStringLiteral("port"), skin, QStringLiteral("--from"), QStringLiteral("800_480"),
                                 QStringLiteral("--to"), QStringLiteral("1024_600") };
        ProgramRun run = runProgram(kKorvi, args);
        QCOMPARE(run.exitCode, 1);
        QVERIFY(run.err.contains("exists already; --force replaces it"));
        QCOMPARE(entriesIn(skin + QStringLiteral("/1024_600")), QStringList());
        run = runProgram(kKorvi, args + QStringList { QStringLiteral("--force") });
        QCOMPARE(run.exitCode, 0);
        QVERIFY(QFileInfo::exists(skin + QStringLiteral("/1024_600/ui/main_1024_600.ui")));

        run = runProgram(kKorvi, { QStringLiteral("port"), skin, QStringLiteral("--to"), QStringLiteral("1024_600") });
        QCOMPARE(run.exitCode, 2);
        run = runProgram(kKorvi, args + QStringList { QStringLiteral("--aspect"), QStringLiteral("wide") });
        QCOMPARE(run.exitCode, 2);
        run = runProgram(kKorvi, args + QStringList { QStringLiteral("--fonts"), dir.filePath(QStringLiteral("none.txt")),
                                                      QStringLiteral("--force") });
        QCOMPARE(run.exitCode, 1);
        QVERIFY(run.err.contains("cannot read the font map"));
    }
};

QTEST_GUILESS_MAIN(TestKorviPort)
#include "tst_korvi_port.moc"
