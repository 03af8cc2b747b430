// SPDX-License-Identifier: MIT
#include "TestFiles.h"
#include "ResourceLookup.h"
#include "SkinFileNames.h"
#include "StringInfoSink.h"

#include <QDir>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTemporaryDir>
#include <QtTest>

namespace {

const QString kCrLf = QStringLiteral("\r\n");

// The lookup writes the paths it tries with the host's separators.
QString native(const QString &path)
{
    return QDir::toNativeSeparators(path);
}

QString missing(const QString &name, const QString &path)
{
    return QStringLiteral("Unable to locate ") + name + QStringLiteral(" in ") + native(path) + kCrLf;
}

} // namespace

// Finding a skin's pictures in its own and in the shared folders, and the report of
// what was not found.
class TestLookup : public QObject
{
    Q_OBJECT

private:
    QTemporaryDir mRoot;
    QString root() const { return mRoot.path(); }

    // A skin at ROOT/skin with the open file ROOT/skin/800_480/ui/main.ui.
    SkinContext skin(const QString &directory, const QString &format) const
    {
        SkinContext context;
        context.UiFilePath = root() + QStringLiteral("/skin/800_480/ui/main.ui");
        context.SkinDirectory = directory;
        context.SkinFormat = format;
        return context;
    }

private slots:
    void init()
    {
        QVERIFY(mRoot.isValid());
        QDir(root()).removeRecursively();
        QVERIFY(QDir().mkpath(root() + QStringLiteral("/skin/800_480/ui")));
        QVERIFY(writeTestFile(root() + QStringLiteral("/skin/800_480/ui/main.ui"), ""));
    }

    void ordinaryReferenceWithoutSkinDirectoryMakesTwoProbes()
    {
        StringInfoSink info;
        const SkinContext context = skin(QString(), QStringLiteral("800_480"));
        const QString path = ResourceLookup(context, info).LocateSkinFile(QStringLiteral("pic.bmp"), false);
        const QString u = root() + QStringLiteral("/skin/800_480/ui");
        QCOMPARE(path, native(u + QStringLiteral("/../../common/pic.bmp")));
        QCOMPARE(info.text(),
                 missing(QStringLiteral("pic.bmp"), root() + QStringLiteral("/skin/800_480/pic.bmp"))
                     + missing(QStringLiteral("pic.bmp"), root() + QStringLiteral("/skin/common/pic.bmp"))
                     + kCrLf);
    }

    void sharedReferenceWithoutFormatMakesThreeProbes()
    {
        StringInfoSink info;
        const QString d = root() + QStringLiteral("/skin");
        const SkinContext context = skin(d, QString());
        const QString path = ResourceLookup(context, info).LocateSkinFile(QStringLiteral("$pic.bmp"), true);
        QCOMPARE(path, native(root() + QStringLiteral("/skin/800_480/ui/../pic.bmp")));
        QCOMPARE(info.text(),
                 missing(QStringLiteral("pic.bmp"), root() + QStringLiteral("/skin/common/pic.bmp"))
                     + missing(QStringLiteral("pic.bmp"), d + QStringLiteral("/common/pic.bmp"))
                     + missing(QStringLiteral("pic.bmp"), root() + QStringLiteral("/skin/800_480/pic.bmp"))
                     + kCrLf);
    }

    void everyProbeInOrderForBothKinds()
    {
        const QString u = root() + QStringLiteral("/skin/800_480/ui");
        const QString d = root() + QStringLiteral("/skin");
        const SkinContext context = skin(d, QStringLiteral("800_480"));
        const QStringList ordinary {
            u + QStringLiteral("/../x.bmp"), d + QStringLiteral("/800_480/x.bmp"),
            u + QStringLiteral("/../../common/x.bmp"), d + QStringLiteral("/common/x.bmp"),
            d + QStringLiteral("/common/vga/800_480/x.bmp"),
        };
        const QStringList shared {
            u + QStringLiteral("/../../common/x.bmp"), d + QStringLiteral("/common/x.bmp"),
            u + QStringLiteral("/../x.bmp"), d + QStringLiteral("/800_480/x.bmp"),
            d + QStringLiteral("/common/vga/800_480/x.bmp"),
        };
        for (const bool isShared : { false, true }) {
            StringInfoSink info;
            const QStringList &order = isShared ? shared : ordinary;
            QCOMPARE(ResourceLookup(context, info).LocateSkinFile(QStringLiteral("x.bmp"), isShared), native(order.last()));
            QString expected;
            for (const QString &probe : order)
                expected += missing(QStringLiteral("x.bmp"), ResourceLookup::CollapseParentDirs(native(probe)));
            QCOMPARE(info.text(), expected + kCrLf);
        }
    }

    void referenceIsLookedUpByItsFileNameOnly()
    {
        QVERIFY(writeTestFile(root() + QStringLiteral("/skin/800_480/pic.bmp"), "BM"));
        StringInfoSink info;
        const SkinContext context = skin(QString(), QString());
        const QString path = ResourceLookup(context, info).LocateSkinFile(QStringLiteral("sub\\pic$.bmp#2"), true);
        QCOMPARE(path, native(root() + QStringLiteral("/skin/800_480/ui/../pic.bmp")));
        QCOMPARE(SkinFileNames::GetFileName(QStringLiteral("sub\\pic$.bmp#2"), true), QStringLiteral("pic.bmp"));
    }

    void collapseLeavesAStepAtTheVeryStart()
    {
        QCOMPARE(ResourceLookup::CollapseParentDirs(QStringLiteral("/../x")), QStringLiteral("/../x"));
        QCOMPARE(ResourceLookup::CollapseParentDirs(QStringLiteral("\\..\\x"), QLatin1Char('\\')), QStringLiteral("\\..\\x"));
    }

    void collapseRemovesEveryStep_data()
    {
        QTest::addColumn<QString>("path");
        QTest::addColumn<QString>("expected");
        QTest::newRow("two steps") << QStringLiteral("C:/skins/a/ui/../../common/x.bmp") << QStringLiteral("C:/skins/common/x.bmp");
        QTest::newRow("one step") << QStringLiteral("/r/a/ui/../x.bmp") << QStringLiteral("/r/a/x.bmp");
        QTest::newRow("no step") << QStringLiteral("/r/a/x.bmp") << QStringLiteral("/r/a/x.bmp");
        QTest::newRow("step after a bare name") << QStringLiteral("a/../x") << QStringLiteral("x");
        QTest::newRow("more steps than folders") << QStringLiteral("a/../../x") << QStringLiteral("../x");
        QTest::newRow("trailing dots are not a step") << QStringLiteral("a/..") << QStringLiteral("a/..");
    }
    // Written with "/" above; the steps are taken at the host's separator.
    void collapseRemovesEveryStep()
    {
        QFETCH(QString, path);
        QFETCH(QString, expected);
        QCOMPARE(ResourceLookup::CollapseParentDirs(native(path)), native(expected));
    }

    void collapseWithBackslashes()
    {
        QCOMPARE(ResourceLookup::CollapseParentDirs(QStringLiteral("C:\\skins\\a\\ui\\..\\..\\common\\x.bmp"), QLatin1Char('\\')),
                 QStringLiteral("C:\\skins\\common\\x.bmp"));
    }

    void foundFileAddsNothingEvenAfterFailedProbes()
    {
        const QString d = root() + QStringLiteral("/skin");
        QVERIFY(writeTestFile(d + QStringLiteral("/common/vga/800_480/x.bmp"), "BM"));
        StringInfoSink info;
        const SkinContext context = skin(d, QStringLiteral("800_480"));
        QCOMPARE(ResourceLookup(context, info).LocateSkinFile(QStringLiteral("x.bmp"), false),
                 native(d + QStringLiteral("/common/vga/800_480/x.bmp")));
        QCOMPARE(info.text(), QString());
    }

    void successiveReportsEachEndWithAnEmptyLine()
    {
        StringInfoSink info;
        const SkinContext context = skin(QString(), QString());
        const ResourceLookup lookup(context, info);
        lookup.LocateSkinFile(QStringLiteral("a.bmp"), false);
        lookup.LocateSkinFile(QStringLiteral("b.bmp"), false);
        const QString text = info.text();
        QCOMPARE(text.count(QStringLiteral("\r\n\r\n")), 2);
        QVERIFY(text.endsWith(native(QStringLiteral("common/b.bmp")) + QStringLiteral("\r\n\r\n")));
        QCOMPARE(text.count(QStringLiteral("Unable to locate ")), 4);
    }

    void everyLookupProbesTheDiskAgain()
    {
        StringInfoSink info;
        const SkinContext context = skin(QString(), QString());
        const ResourceLookup lookup(context, info);
        QVERIFY(lookup.GetImageFile(QStringLiteral("late.bmp")).path.isEmpty());
        QVERIFY(writeTestFile(root() + QStringLiteral("/skin/800_480/late.bmp"), "BM"));
        QCOMPARE(lookup.GetImageFile(QStringLiteral("late.bmp")).path, native(root() + QStringLiteral("/skin/800_480/ui/../late.bmp")));
    }

    void parentStepIsTakenAsTheHostTakesIt()
    {
        QVERIFY(writeTestFile(root() + QStringLiteral("/skin/800_480/pic.bmp"), "BM"));
        const QString throughAMissingFolder = root() + QStringLiteral("/skin/800_480/nope/../pic.bmp");
#ifdef Q_OS_WIN
        // Windows folds "nope\.." away before it looks at the disk.
        QVERIFY(SkinFileNames::FileExists(throughAMissingFolder));
#else
        // Here the step is a real folder's parent: the path names an existing
        // file only if "nope" exists.
        QVERIFY(!SkinFileNames::FileExists(throughAMissingFolder));
#endif
        QVERIFY(SkinFileNames::FileExists(root() + QStringLiteral("/skin/800_480/ui/../pic.bmp")));
    }

    void backgroundSearchAndReport()
    {
        StringInfoSink info;
        const QString d = root() + QStringLiteral("/skin");
        const SkinContext context = skin(d, QStringLiteral("800_480"));
        const ResourceLookup lookup(context, info);
        QCOMPARE(lookup.LocateBackground(), QString());
        QCOMPARE(info.text(),
                 missing(QStringLiteral("BACKGROUND default.bmp"), root() + QStringLiteral("/skin/800_480/background/default.bmp"))
                     + missing(QStringLiteral("BACKGROUND default.bmp"), d + QStringLiteral("/800_480/background/default.bmp"))
                     + kCrLf);
        info.clear();
        QVERIFY(writeTestFile(d + QStringLiteral("/800_480/background/default.bmp"), "BM"));
        QCOMPARE(lookup.LocateBackground(), native(root() + QStringLiteral("/skin/800_480/ui/../background/default.bmp")));
        QCOMPARE(info.text(), QString());
    }

    void backgroundWithoutFormatMakesOneProbe()
    {
        StringInfoSink info;
        const SkinContext context = skin(root() + QStringLiteral("/skin"), QString());
        QCOMPARE(ResourceLookup(context, info).LocateBackground(), QString());
        QCOMPARE(info.text(), missing(QStringLiteral("BACKGROUND default.bmp"),
                                      root() + QStringLiteral("/skin/800_480/background/default.bmp")) + kCrLf);
    }

    void conformanceCases_data()
    {
        QTest::addColumn<QJsonObject>("testCase");
        QFile file(QStringLiteral(KORVI_TEST_DATA "/lookup/cases.json"));
        QVERIFY(file.open(QIODevice::ReadOnly));
        const QJsonArray cases = QJsonDocument::fromJson(file.readAll()).array();
        QVERIFY(cases.size() >= 100);
        int number = 0;
        for (const QJsonValue &value : cases) {
            const QJsonObject c = value.toObject();
            QTest::newRow(qPrintable(QStringLiteral("%1 %2").arg(++number).arg(c.value(QStringLiteral("reference")).toString())))
                << c;
        }
    }
    void conformanceCases()
    {
        QFETCH(QJsonObject, testCase);
        QTemporaryDir dir;
        QVERIFY(dir.isValid());
        const QString top = dir.path();
        const QJsonObject files = testCase.value(QStringLiteral("files")).toObject();
        for (auto it = files.begin(); it != files.end(); ++it)
            QVERIFY(writeTestFile(top + QLatin1Char('/') + it.key(), it.value().toString().toUtf8()));

        SkinContext context;
        context.UiFilePath = top + QLatin1Char('/') + testCase.value(QStringLiteral("ui")).toString();
        const QString skinDir = testCase.value(QStringLiteral("skin_dir")).toString();
        context.SkinDirectory = skinDir.isEmpty() ? QString() : top + QLatin1Char('/') + skinDir;
        context.SkinFormat = testCase.value(QStringLiteral("format")).toString();

        StringInfoSink info;
        const ImageFile result = ResourceLookup(context, info).GetImageFile(testCase.value(QStringLiteral("reference")).toString());

        const QJsonObject expected = testCase.value(QStringLiteral("expected")).toObject();
        const auto withRoot = [&](const QString &key) {
            return native(expected.value(key).toString().replace(QStringLiteral("{ROOT}"), top));
        };
        QCOMPARE(result.path, withRoot(QStringLiteral("path")));
        QCOMPARE(int(result.spriteCount), expected.value(QStringLiteral("sprites")).toInt());
        QCOMPARE(int(result.stripes), expected.value(QStringLiteral("stripes")).toInt());
        QCOMPARE(result.grabCenter, expected.value(QStringLiteral("grab_center")).toBool());
        QCOMPARE(info.text(), withRoot(QStringLiteral("report")));
    }
};

QTEST_GUILESS_MAIN(TestLookup)
#include "tst_lookup.moc"
