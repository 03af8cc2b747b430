// SPDX-License-Identifier: MIT
#include "SkinOpenPlan.h"
#include "clsKorviInterface.h"

#include <QDir>
#include <QtTest>

// The files Open and All read for a skin, in order, and the values they set.
namespace {

const QString kDemo = QDir::cleanPath(QStringLiteral(KORVI_SOURCE_DIR "/samples/demo-skin"));

QStringList listed(const SkinOpenPlan &plan)
{
    QStringList files;
    for (const SkinOpenPlan::File &file : plan.files)
        files << QDir(kDemo).relativeFilePath(file.path) + (file.imported ? " (imported)" : "");
    return files;
}

} // namespace

class TestSkinOpenPlan : public QObject
{
    Q_OBJECT

private slots:
    void openReadsTheTemplatesAndTheSchemeFirstAsImported()
    {
        const SkinOpenPlan plan = SkinOpenPlan::forFile(kDemo + "/800_480/ui/main_800_480.ui");
        QCOMPARE(listed(plan), QStringList({ "800_480/ui/templates_buttons.ui (imported)",
                                             "800_480/ui/templates_lists.ui (imported)",
                                             "800_480/main_scheme.ui (imported)", "800_480/ui/main_800_480.ui" }));
        QCOMPARE(plan.skinFormat, QStringLiteral("800_480"));
        QCOMPARE(plan.uiFilePath, kDemo + "/800_480/ui/main_800_480.ui");
        QVERIFY(!plan.wholeFolder);
    }

    void allReadsTheFolderTheSchemeAndTheCommonFilesAsTheSkins()
    {
        const SkinOpenPlan plan = SkinOpenPlan::forFolder(kDemo + "/800_480/ui");
        QCOMPARE(listed(plan), QStringList({ "800_480/ui/main_800_480.ui", "800_480/ui/templates_buttons.ui",
                                             "800_480/ui/templates_lists.ui", "800_480/main_scheme.ui",
                                             "common/ui/dialogs.ui" }));
        QCOMPARE(plan.skinFormat, QStringLiteral("800_480"));
        // Pictures are looked up from the folder's last file.
        QCOMPARE(plan.uiFilePath, kDemo + "/800_480/ui/templates_lists.ui");
        QVERIFY(plan.wholeFolder);
    }

    void readingEveryFileGivesTheWholeSkin()
    {
        clsKorviInterface document;
        QVERIFY(SkinOpenPlan::forFolder(kDemo + "/800_480/ui").readInto(document).isEmpty());
        QVERIFY(document.Layers().Find("ui_Dialog"));
        QVERIFY(document.Layers().Find("ui_TopBar"));
        QVERIFY(!document.Templates().Find("tplSlider")->IsImported);
    }
};

QTEST_GUILESS_MAIN(TestSkinOpenPlan)
#include "tst_skinopenplan.moc"
