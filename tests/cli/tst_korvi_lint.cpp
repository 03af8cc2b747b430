// SPDX-License-Identifier: MIT
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QRegularExpression>
#include <QtTest>

// korvi lint as a user and a CI job run it: the compiler's form of line, the
// summary, the JSON, and the exit codes.
namespace {

const QString kLintData = QStringLiteral(KORVI_SOURCE_DIR "/tests/data/lint");
const QString kDemoSkin = QStringLiteral(KORVI_SOURCE_DIR "/samples/demo-skin");

struct Run
{
    int exitCode = -1;
    QByteArray out;
    QByteArray err;
};

Run korvi(const QStringList &args, const QString &folder = QString())
{
    QProcess p;
    if (!folder.isEmpty())
        p.setWorkingDirectory(folder);
    p.start(QStringLiteral(KORVI_EXECUTABLE), QStringList { QStringLiteral("lint") } + args);
    p.waitForFinished(60000);
    return { p.exitCode(), p.readAllStandardOutput(), p.readAllStandardError() };
}

QStringList lines(const QByteArray &out)
{
    return QString::fromUtf8(out).split('\n', Qt::SkipEmptyParts);
}

} // namespace

class TestKorviLint : public QObject
{
    Q_OBJECT

private slots:
    void problemsArePrintedInTheCompilersForm()
    {
        const Run run = korvi({ "ui" }, kLintData + "/split-value/bad");
        QCOMPARE(run.exitCode, 0);
        const QStringList out = lines(run.out);
        QCOMPARE(out.size(), 5);
        QCOMPARE(out.first(), QStringLiteral("ui/skin.ui:2:36: warning: value=65|0|100 reads as value=65 and the "
                                             "flags 0 and 100: write value=\"65|0|100\" [split-value]"));
        const QRegularExpression form(QStringLiteral("^ui/skin\\.ui:\\d+:\\d+: warning: .+ \\[split-value\\]$"));
        for (int i = 0; i < 4; ++i)
            QVERIFY2(form.match(out.at(i)).hasMatch(), qPrintable(out.at(i)));
        QCOMPARE(out.last(), QStringLiteral("0 errors and 4 warnings"));
    }

    void aLineWithoutColumnOrAFileWithoutLineLeavesThemOut()
    {
        const Run reading = korvi({ "ui/skin.ui" }, kLintData + "/reading-error/bad");
        QCOMPARE(lines(reading.out).first(),
                 QStringLiteral("ui/skin.ui:1: error: reading stopped here: the tag <TEXT> stands outside any "
                                "block; the rest of the file is not read [reading-error]"));
        const Run unused = korvi({ "ui" }, kLintData + "/unused-picture/bad");
        QVERIFY2(lines(unused.out).first().startsWith("extra.bmp: warning: extra.bmp is named by no object"),
                 unused.out.constData());
    }

    void exitCodes()
    {
        QCOMPARE(korvi({ "ui" }, kLintData + "/split-value/good").exitCode, 0);
        QCOMPARE(korvi({ "ui" }, kLintData + "/split-value/bad").exitCode, 0);
        QCOMPARE(korvi({ "ui", "--werror" }, kLintData + "/split-value/bad").exitCode, 1);
        QCOMPARE(korvi({ "ui", "--werror" }, kLintData + "/split-value/good").exitCode, 0);
        QCOMPARE(korvi({ "ui" }, kLintData + "/missing-picture/bad").exitCode, 1);
        QCOMPARE(korvi({ "ui", "--disable", "missing-picture" }, kLintData + "/missing-picture/bad").exitCode, 0);
        // A file that is not there is a failure, as for every subcommand.
        QCOMPARE(korvi({ "no-such-file.ui" }, kLintData).exitCode, 1);
        // Usage errors.
        QCOMPARE(korvi({}).exitCode, 2);
        QCOMPARE(korvi({ "ui", "--disable", "no-such-code" }, kLintData + "/split-value/bad").exitCode, 2);
        QCOMPARE(korvi({ "ui", "--no-such-option" }, kLintData + "/split-value/bad").exitCode, 2);
        QCOMPARE(korvi({ "a.ui", "b.ui" }, kLintData).exitCode, 2);
    }

    void disabledCodesAreLeftOutOfListAndCount()
    {
        const Run run = korvi({ "ui", "--disable", "split-value,bad-colour" }, kLintData + "/split-value/bad");
        QCOMPARE(run.exitCode, 0);
        QCOMPARE(lines(run.out), QStringList { "0 errors and 0 warnings" });
    }

    void jsonListsEveryProblemWithItsFields()
    {
        const Run run = korvi({ "--json", "--skin-dir", kDemoSkin, "800_480/ui/main_800_480.ui" }, kDemoSkin);
        QCOMPARE(run.exitCode, 0);
        QJsonParseError error;
        const QJsonDocument json = QJsonDocument::fromJson(run.out, &error);
        QCOMPARE(error.error, QJsonParseError::NoError);
        QVERIFY(json.isArray());
        const QJsonArray problems = json.array();
        QCOMPARE(problems.size(), 6);
        const QStringList fields { "code", "column", "file", "line", "message", "node_key", "severity" };
        for (const QJsonValue &value : problems) {
            QStringList keys = value.toObject().keys();
            keys.sort();
            QCOMPARE(keys, fields);
        }
        QJsonObject split;
        for (const QJsonValue &value : problems) {
            if (value.toObject().value("line").toInt() == 25)
                split = value.toObject();
        }
        QCOMPARE(split.value("severity").toString(), QStringLiteral("warning"));
        QCOMPARE(split.value("code").toString(), QStringLiteral("split-value"));
        QCOMPARE(split.value("file").toString(), QStringLiteral("800_480/ui/main_800_480.ui"));
        QCOMPARE(split.value("column").toInt(), 51);
        QCOMPARE(split.value("node_key").toString(), QStringLiteral("Lui_Settings|EsldVolume"));
        QVERIFY(split.value("message").toString().startsWith("value=65|0|100 reads as value=65"));
        // The summary goes apart, so the output stays JSON.
        QCOMPARE(run.err.trimmed(), QByteArray("0 errors and 6 warnings"));
    }

    void aFolderIsCheckedAsAllOpensIt()
    {
        const Run run = korvi({ "--skin-dir", kDemoSkin, "--werror", "800_480/ui" }, kDemoSkin);
        QCOMPARE(run.exitCode, 1);
        QCOMPARE(lines(run.out).last(), QStringLiteral("0 errors and 6 warnings"));
    }
};

QTEST_GUILESS_MAIN(TestKorviLint)
#include "tst_korvi_lint.moc"
