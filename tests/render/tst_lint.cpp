// SPDX-License-Identifier: MIT
#include "ProblemCodes.h"
#include "SkinChecker.h"
#include "SkinContext.h"
#include "SkinOpenPlan.h"
#include "SourceLines.h"
#include "clsKorviInterface.h"

#include <QDir>
#include <QtTest>

// The checker on one small skin per problem code: the skin that has the
// problem gets exactly the expected reports, the one near to it gets none.
namespace {

const QString kLintData = QStringLiteral(KORVI_TEST_DATA "/lint");
const QString kDemoSkin = QStringLiteral(KORVI_SOURCE_DIR "/samples/demo-skin");

struct Checked
{
    clsKorviInterface document;
    QVector<Problem> problems;
};

void check(Checked &checked, const SkinOpenPlan &plan, const QString &skinDirectory = {})
{
    const QVector<SkinReadError> errors = plan.readInto(checked.document);
    SkinContext context { plan.uiFilePath, skinDirectory, plan.skinFormat };
    checked.problems = SkinChecker::check(checked.document, context, errors, plan.wholeFolder);
}

QString describe(const QVector<Problem> &problems)
{
    QStringList lines;
    for (const Problem &p : problems)
        lines << QStringLiteral("%1:%2:%3 [%4] %5").arg(p.file).arg(p.line).arg(p.column).arg(p.code, p.message);
    return lines.join('\n');
}

QStringList placesOf(const QVector<Problem> &problems, const QDir &base)
{
    QStringList places;
    for (const Problem &p : problems)
        places << QStringLiteral("%1:%2:%3").arg(base.relativeFilePath(p.file)).arg(p.line).arg(p.column);
    return places;
}

const Problem *firstWithCode(const QVector<Problem> &problems, const QString &code)
{
    for (const Problem &p : problems) {
        if (p.code == code)
            return &p;
    }
    return nullptr;
}

} // namespace

class TestLint : public QObject
{
    Q_OBJECT

private slots:
    void everyCodeHasItsSkins()
    {
        for (const QString &code : ProblemCodes::all()) {
            QVERIFY2(QFileInfo(kLintData + '/' + code + "/bad/ui/skin.ui").isFile(), qPrintable(code));
            QVERIFY2(QFileInfo(kLintData + '/' + code + "/good/ui/skin.ui").isFile(), qPrintable(code));
        }
    }

    void skinWithTheProblemGetsExactlyItsReports_data()
    {
        QTest::addColumn<QString>("code");
        for (const QString &code : ProblemCodes::all())
            QTest::newRow(qPrintable(code)) << code;
    }
    void skinWithTheProblemGetsExactlyItsReports()
    {
        QFETCH(QString, code);
        const QDir base(kLintData + '/' + code + "/bad");
        Checked checked;
        check(checked, SkinOpenPlan::forFolder(base.filePath("ui")));
        QFile expectedFile(base.filePath("expected.txt"));
        QVERIFY(expectedFile.open(QIODevice::ReadOnly));
        const QStringList expected = QString::fromUtf8(expectedFile.readAll()).split('\n', Qt::SkipEmptyParts);
        QVERIFY(!expected.isEmpty());
        QCOMPARE(placesOf(checked.problems, base), expected);
        for (const Problem &p : checked.problems) {
            QVERIFY2(p.code == code, qPrintable(describe(checked.problems)));
            QVERIFY(!p.message.isEmpty());
        }
    }

    void skinWithoutTheProblemGetsNoReport_data() { skinWithTheProblemGetsExactlyItsReports_data(); }
    void skinWithoutTheProblemGetsNoReport()
    {
        QFETCH(QString, code);
        Checked checked;
        check(checked, SkinOpenPlan::forFolder(kLintData + '/' + code + "/good/ui"));
        QVERIFY2(checked.problems.isEmpty(), qPrintable(describe(checked.problems)));
    }

    void severitiesAreErrorsForNamesThatFindNothing()
    {
        const QStringList errors { ProblemCodes::MissingPicture, ProblemCodes::BadPicture, ProblemCodes::UnknownTemplate,
                                   ProblemCodes::UnknownFontType, ProblemCodes::UnknownElementTemplate,
                                   ProblemCodes::MissingUsedLayer, ProblemCodes::TemplateCycle,
                                   ProblemCodes::UnclosedScript, ProblemCodes::ReadingError,
                                   ProblemCodes::NonAsciiName };
        for (const QString &code : ProblemCodes::all()) {
            Checked checked;
            check(checked, SkinOpenPlan::forFolder(kLintData + '/' + code + "/bad/ui"));
            QVERIFY(!checked.problems.isEmpty());
            QCOMPARE(checked.problems.first().isError(), errors.contains(code));
        }
    }

    void problemsCarryTheTreesNodeKeys()
    {
        const auto keyOf = [](const QString &code) {
            Checked checked;
            check(checked, SkinOpenPlan::forFolder(kLintData + '/' + code + "/bad/ui"));
            QVector<QByteArray> keys;
            for (const Problem &p : checked.problems)
                keys << p.nodeKey;
            return keys;
        };
        QCOMPARE(keyOf(ProblemCodes::MissingUsedLayer), QVector<QByteArray>({ "Lui_Main|Uui_Status" }));
        QCOMPARE(keyOf(ProblemCodes::DuplicateName), QVector<QByteArray>({ "Lui_Main|EtxtA", "Lui_Main|EtxtA[0]" }));
        QCOMPARE(keyOf(ProblemCodes::SplitValue),
                 QVector<QByteArray>({ "Lui_Main|EsldA", "Lui_Main|EtxtA", "Lui_Main|EtxtA", "Lui_Main|EtxtB" }));
        // Font types have no node in the tree.
        QCOMPARE(keyOf(ProblemCodes::TemplateCycle), QVector<QByteArray>({ "TtplA", "" }));
        // A closing tag that closed nothing belongs to no element.
        QCOMPARE(keyOf(ProblemCodes::OrphanClosingTag).first(), QByteArray());
    }

    // Letters outside ASCII, quoted in the skin's own code page.
    void unquotedTextShowsTheTextAndTheFixInTheSkinsCodePage()
    {
        Checked checked;
        checked.document.setCodec(*SkinCodec::named(u"windows-1251"));
        check(checked, SkinOpenPlan::forFolder(kLintData + "/unquoted-text/bad/ui"));
        QCOMPARE(checked.problems.size(), 3);
        QCOMPARE(checked.problems.at(0).message,
                 QStringLiteral("text=Настройки reads as text=iconphase: letters outside ASCII end a value that is "
                                "not in quotes; write text=\"Настройки\""));
        QCOMPARE(checked.problems.at(2).message,
                 QStringLiteral("text=GPSприёмник reads as text=GPS: letters outside ASCII end a value that is not in "
                                "quotes; write text=\"GPSприёмник\""));
        QVERIFY(!checked.problems.at(0).isError());
    }

    void aNameWithOtherLettersIsAnError()
    {
        Checked checked;
        checked.document.setCodec(*SkinCodec::named(u"windows-1251"));
        check(checked, SkinOpenPlan::forFolder(kLintData + "/non-ascii-name/bad/ui"));
        QCOMPARE(checked.problems.size(), 2);
        QCOMPARE(checked.problems.at(0).message,
                 QStringLiteral("the name \u201cui_Карта\u201d reads as \u201cui_\u201d: a name is written with the ASCII "
                                "letters A-Z and a-z, digits, _ and / only"));
        QVERIFY(checked.problems.at(0).isError());
        QVERIFY(checked.problems.at(1).message.startsWith(QStringLiteral("the name \u201cКнопка\u201d reads as \u201cx\u201d")));
    }

    void messagesNameTheFix()
    {
        Checked split;
        check(split, SkinOpenPlan::forFolder(kLintData + "/split-value/bad/ui"));
        QCOMPARE(split.problems.first().message,
                 QStringLiteral("value=65|0|100 reads as value=65 and the flags 0 and 100: write value=\"65|0|100\""));
        Checked missing;
        check(missing, SkinOpenPlan::forFolder(kLintData + "/missing-picture/bad/ui"));
        const Problem *p = firstWithCode(missing.problems, ProblemCodes::MissingPicture);
        QVERIFY(p);
        // Every place the lookup tried, in its order.
        const QString base = QDir::cleanPath(kLintData + "/missing-picture");
        QVERIFY2(p->message.endsWith(QDir::toNativeSeparators(base + "/bad/nothere.bmp") + ", "
                                     + QDir::toNativeSeparators(base + "/common/nothere.bmp")),
                 qPrintable(p->message));
    }

    // The words the information box uses when such a picture is drawn, and
    // what is drawn instead.
    void aPictureThatCannotBeDecodedIsDescribedAsWhenItIsDrawn()
    {
        Checked checked;
        check(checked, SkinOpenPlan::forFolder(kLintData + "/bad-picture/bad/ui"));
        QStringList messages;
        for (const Problem &p : checked.problems)
            messages << p.message;
        const QString base = QDir::toNativeSeparators(QDir::cleanPath(kLintData + "/bad-picture/bad"));
        const QString times(QChar(0x00D7));
        QCOMPARE(messages.at(0), "bmp=huge.bmp names " + base + QDir::separator()
                     + "huge.bmp, which cannot be shown: not a picture (RL header says 65535 " + times
                     + " 65535); the placeholder is drawn in its place");
        QCOMPARE(messages.at(1), "bmp=cut.bmp names " + base + QDir::separator()
                     + "cut.bmp, which cannot be shown: RL file cut short in row 2 of 2; what is missing stays transparent");
        QVERIFY2(messages.at(2).endsWith("not a picture (empty file); the placeholder is drawn in its place"),
                 qPrintable(messages.at(2)));
        QVERIFY2(messages.at(3).contains("not a picture (BMP header says "), qPrintable(messages.at(3)));
        QVERIFY2(messages.at(4).contains("not a picture (no JPEG data that can be decoded, 25 bytes)"),
                 qPrintable(messages.at(4)));
        // A second name of the same file is reported where it stands too.
        QVERIFY(messages.at(5).startsWith("iconspr=huge.bmp names "));
    }

    void oneFileOpenedAloneReportsNoUnusedPicture()
    {
        Checked checked;
        check(checked, SkinOpenPlan::forFile(kLintData + "/unused-picture/bad/ui/skin.ui"));
        QVERIFY2(checked.problems.isEmpty(), qPrintable(describe(checked.problems)));
    }

    void aReadingErrorDoesNotStopTheOtherFiles()
    {
        Checked checked;
        SkinOpenPlan plan;
        plan.files.append({ kLintData + "/reading-error/bad/ui/skin.ui", false });
        plan.files.append({ kLintData + "/reading-error/good/ui/skin.ui", false });
        plan.files.append({ kLintData + "/no-such-file.ui", false });
        const QVector<SkinReadError> errors = plan.readInto(checked.document);
        QCOMPARE(errors.size(), 2);
        QCOMPARE(errors.at(0).line(), 1);
        QCOMPARE(errors.at(1).line(), 0);
        // The bad file stopped before its layer; the good one was read after it.
        QCOMPARE(checked.document.Layers().Count(), 1);
        QCOMPARE(checked.document.Layers().Item(1)->sourceFile(), 2);
    }

    // The demo skin shows the reader's odd corners on purpose; these, and only
    // these, are reported (README, "The demo skin").
    void demoSkinHasOnlyTheProblemsItHasOnPurpose()
    {
        const QStringList expected {
            "800_480/ui/main_800_480.ui:11 duplicate-name",
            "800_480/ui/main_800_480.ui:25 split-value",
            "800_480/ui/main_800_480.ui:33 lost-shared-marker",
            "800_480/ui/main_800_480.ui:35 split-value",
            "800_480/ui/templates_buttons.ui:1 lost-shared-marker",
            "800_480/ui/templates_buttons.ui:4 lost-shared-marker",
        };
        const QDir base(kDemoSkin);
        for (const SkinOpenPlan &plan : { SkinOpenPlan::forFolder(kDemoSkin + "/800_480/ui"),
                                          SkinOpenPlan::forFile(kDemoSkin + "/800_480/ui/main_800_480.ui") }) {
            Checked checked;
            check(checked, plan, kDemoSkin);
            QStringList found;
            for (const Problem &p : checked.problems)
                found << QStringLiteral("%1:%2 %3").arg(base.relativeFilePath(p.file)).arg(p.line).arg(p.code);
            found.sort();
            QCOMPARE(found, expected);
        }
    }

    // The editor checks a large skin a few elements at a time: the same
    // problems, in the same order, as a check made at once.
    void aCheckInStepsFindsWhatACheckAtOnceFinds()
    {
        for (const QString &code : ProblemCodes::all()) {
            Checked checked;
            const SkinOpenPlan plan = SkinOpenPlan::forFolder(kLintData + '/' + code + "/bad/ui");
            check(checked, plan);
            clsKorviInterface document;
            const QVector<SkinReadError> errors = plan.readInto(document);
            const SkinContext context { plan.uiFilePath, QString(), plan.skinFormat };
            SkinChecker inSteps(document, context, errors, plan.wholeFolder);
            int steps = 0;
            while (!inSteps.step(1))
                ++steps;
            QVERIFY(steps > 3);
            QCOMPARE(describe(inSteps.takeProblems()), describe(checked.problems));
        }
    }

    void linesCountedInPiecesAreLinesCountedAtOnce()
    {
        const QByteArray bytes("a\r\nbc\rd\n\nef\r\n\r\nlast");
        for (qsizetype piece = 1; piece <= 4; ++piece) {
            SourceLines lines = SourceLines::uncounted(bytes);
            while (!lines.countMore(bytes, piece)) { }
            const SourceLines atOnce(bytes);
            for (qsizetype at = 0; at <= bytes.size(); ++at) {
                QCOMPARE(lines.at(at).line, atOnce.at(at).line);
                QCOMPARE(lines.at(at).column, atOnce.at(at).column);
            }
        }
    }

    void linesAndColumnsCountAsTheReaderDoes()
    {
        const SourceLines lines("a\r\nbc\rd\n\nef");
        QCOMPARE(lines.at(0).line, 1);
        QCOMPARE(lines.at(3).line, 2);
        QCOMPARE(lines.at(4).column, 2);
        QCOMPARE(lines.at(6).line, 3);
        QCOMPARE(lines.at(8).line, 4);
        QCOMPARE(lines.at(10).line, 5);
        QCOMPARE(lines.at(10).column, 2);
        QCOMPARE(lines.lineStart(3), qsizetype(6));
    }
};

QTEST_GUILESS_MAIN(TestLint)
#include "tst_lint.moc"
