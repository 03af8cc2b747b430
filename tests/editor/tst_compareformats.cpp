// SPDX-License-Identifier: MIT
// View > Compare Formats: the shown layer in another format beside the
// window, following its layer and selected object.

#include "CompareFormats.h"
#include "EditorFixture.h"
#include "ShownNode.h"
#include "LayerRenderer.h"
#include "SkinPort.h"

#include <QAction>
#include <QDirIterator>
#include <QScrollArea>
#include <QScrollBar>

namespace {

const QString kDemo = QStringLiteral(KORVI_SOURCE_DIR "/samples/demo-skin");

void copyTree(const QString &from, const QString &to)
{
    QDirIterator files(from, QDir::Files | QDir::Hidden, QDirIterator::Subdirectories);
    while (files.hasNext()) {
        const QString path = files.next();
        writeTestFile(to + QLatin1Char('/') + QDir(from).relativeFilePath(path), readTestFile(path));
    }
}

// The demo skin copied to `skin`, with its 800_480 folders ported to 1600_960.
bool demoSkinInTwoFormats(const QString &skin)
{
    copyTree(kDemo, skin);
    SkinPort::Options options;
    options.skinDir = skin;
    options.from = QStringLiteral("800_480");
    options.to = QStringLiteral("1600_960");
    return SkinPort(options).run().ok;
}

} // namespace

class TestCompareFormats : public QObject
{
    Q_OBJECT

private slots:
    void theSecondCanvasFollowsTheLayerAndTheObject()
    {
        QTemporaryDir dir;
        const QString skin = dir.filePath(QStringLiteral("skin"));
        QVERIFY(demoSkinInTwoFormats(skin));

        EditorFixture f;
        f.window->openSkinFile(skin + QStringLiteral("/800_480/ui/main_800_480.ui"));
        f.dialogs.answerChoice(QStringLiteral("1600_960"));
        f.window->CompareFormatsCommand();
        QCOMPARE(f.dialogs.asked().last().kind, QStringLiteral("choice"));
        auto *compare = f.window->findChild<CompareFormats *>(QStringLiteral("CompareFormats"));
        QVERIFY(compare);
        QCOMPARE(QFileInfo(compare->file()).fileName(), QStringLiteral("main_1600_960.ui"));

        f.window->selectNode(f.node("Lui_Main|EbtnMap"));
        QCOMPARE(compare->layerKey(), QByteArray("ui_Main"));
        QCOMPARE(compare->picture().size(), QSize(1600, 960));
        const DrawnBox box = compare->selectedBox();
        const DrawnBox shown = f.window->renderer().boxOf(f.window->shownNode().currentObject());
        QCOMPARE(box.left, 2 * shown.left);
        QCOMPARE(box.top, 2 * shown.top);
        QCOMPARE(box.width, 2 * shown.width);

        f.window->selectNode(f.node("Lui_Settings|ElstSettings"));
        QCOMPARE(compare->layerKey(), QByteArray("ui_Settings"));
        QCOMPARE(compare->selectedBox().top, 2 * f.window->renderer().boxOf(f.window->shownNode().currentObject()).top);
    }

    void theSecondCanvasFollowsTheScrolledPlace()
    {
        QTemporaryDir dir;
        const QString skin = dir.filePath(QStringLiteral("skin"));
        QVERIFY(demoSkinInTwoFormats(skin));

        EditorFixture f;
        f.window->show();
        QVERIFY(QTest::qWaitForWindowExposed(f.window.get()));
        f.window->openSkinFile(skin + QStringLiteral("/800_480/ui/main_800_480.ui"));
        f.window->selectNode(f.node("Lui_Main"));
        f.dialogs.answerChoice(QStringLiteral("1600_960"));
        f.window->CompareFormatsCommand();
        auto *compare = f.window->findChild<CompareFormats *>(QStringLiteral("CompareFormats"));
        QVERIFY(compare);
        // Both canvases smaller than their layers, so that both scroll: the
        // shown one zoomed in twice.
        for (int i = 0; i < 2; ++i)
            f.window->findChild<QAction *>(QStringLiteral("ZoomIn"))->trigger();
        compare->resize(500, 400);
        auto *shownArea = f.window->findChild<QScrollArea *>(QStringLiteral("canvasArea"));
        auto *otherArea = compare->findChild<QScrollArea *>();
        QVERIFY(shownArea && otherArea);
        QScrollBar *shownX = shownArea->horizontalScrollBar();
        QScrollBar *shownY = shownArea->verticalScrollBar();
        QScrollBar *otherX = otherArea->horizontalScrollBar();
        QScrollBar *otherY = otherArea->verticalScrollBar();
        QTRY_VERIFY(shownX->maximum() > 0 && shownY->maximum() > 0);
        QTRY_VERIFY(otherX->maximum() > 0 && otherY->maximum() > 0);

        shownX->setValue(shownX->maximum());
        QCOMPARE(otherX->value(), otherX->maximum());
        shownY->setValue(shownY->maximum() / 2);
        const double half = double(shownY->value()) / shownY->maximum();
        QCOMPARE(otherY->value(), int(half * otherY->maximum() + 0.5));
        shownX->setValue(0);
        QCOMPARE(otherX->value(), 0);
    }

    void withoutAnotherFormatNothingOpens()
    {
        QTemporaryDir dir;
        const QString skin = dir.filePath(QStringLiteral("skin"));
        copyTree(kDemo, skin);
        EditorFixture f;
        f.window->openSkinFile(skin + QStringLiteral("/800_480/ui/main_800_480.ui"));
        f.window->CompareFormatsCommand();
        QCOMPARE(f.dialogs.asked().last().text, QStringLiteral("The skin has no other format to compare with."));
        QVERIFY(!f.window->findChild<CompareFormats *>(QStringLiteral("CompareFormats")));
    }
};

QTEST_MAIN(TestCompareFormats)
#include "tst_compareformats.moc"
