// SPDX-License-Identifier: MIT
// File > Port Skin...: the dialog's choices and preview, the port made from
// the open skin, its report in the information box, and the result opened.

#include "EditorFixture.h"
#include "PortSkinDialog.h"
#include "ProblemListModel.h"
#include "ProblemsController.h"
#include "ProblemsPanel.h"

#include <QComboBox>
#include <QDirIterator>
#include <QLabel>
#include <QLineEdit>
#include <QStatusBar>

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

// The Problems panel's rows with this code: file and message.
QStringList problemRows(const EditorFixture &f, const QString &code)
{
    QStringList rows;
    const QAbstractItemModel *model = f.control<ProblemsPanel>("problemsPanel")->view()->model();
    for (int row = 0; row < model->rowCount(); ++row) {
        if (model->index(row, ProblemListModel::CodeColumn).data().toString() != code)
            continue;
        const QModelIndex message = model->index(row, ProblemListModel::MessageColumn);
        rows << QFileInfo(message.data(ProblemListModel::FileRole).toString()).canonicalFilePath()
                + QStringLiteral(": ") + message.data().toString();
    }
    return rows;
}

} // namespace

class TestPortSkin : public QObject
{
    Q_OBJECT

private slots:
    void theDialogOffersCommonScreensAndPreviewsTheTargetScreen()
    {
        QImage layer(800, 480, QImage::Format_RGB32);
        layer.fill(qRgb(0, 0, 150));
        PortSkinDialog dialog(QStringLiteral("800_480"), layer);
        QVERIFY(PortSkinDialog::commonFormats().contains(QStringLiteral("1024_600")));
        QCOMPARE(dialog.fromFormat(), QStringLiteral("800_480"));
        dialog.cmbTo->setCurrentText(QStringLiteral("1600_960"));
        QCOMPARE(dialog.preview().size(), QSize(1600, 960));
        QCOMPARE(dialog.preview().pixel(1599, 959), qRgb(0, 0, 150));
        // Fitted: one factor, the old screen centred on the new one.
        dialog.cmbTo->setCurrentText(QStringLiteral("1280_480"));
        dialog.cmbAspect->setCurrentIndex(1);
        const QImage fitted = dialog.preview();
        QCOMPARE(fitted.size(), QSize(1280, 480));
        QCOMPARE(fitted.pixel(0, 240), qRgb(0, 0, 0));
        QCOMPARE(fitted.pixel(640, 240), qRgb(0, 0, 150));
        QCOMPARE(dialog.options(QStringLiteral("/skin")).aspect, SkinPort::Options::Aspect::Fit);
        // A typed format that is none is named, and gives no preview.
        dialog.cmbTo->setCurrentText(QStringLiteral("1280x720"));
        QVERIFY(dialog.preview().isNull());
        QVERIFY(!dialog.lblProblem->text().isEmpty());
    }

    void portingTheOpenSkinReportsAndOpensTheResult()
    {
        QTemporaryDir dir;
        const QString skin = dir.filePath(QStringLiteral("skin"));
        copyTree(kDemo, skin);
        EditorFixture f;
        f.window->openSkinFile(skin + QStringLiteral("/800_480/ui/main_800_480.ui"));
        f.dialogs.answerForm([](QDialog &dialog) {
            auto &form = static_cast<PortSkinDialog &>(dialog);
            form.cmbTo->setCurrentText(QStringLiteral("1024_600"));
            form.accept();
        });
        f.dialogs.answerButton(Dialogs::Button::Yes); // open the ported skin
        f.window->PortSkinCommand();
        const QString ported = skin + QStringLiteral("/1024_600/ui/main_1024_600.ui");
        QVERIFY(QFileInfo::exists(ported));
        QVERIFY(f.txtInfo()->toPlainText().contains(QStringLiteral("800_480 -> 1024_600 (x 1.28, y 1.25)")));
        QVERIFY(f.txtInfo()->toPlainText().contains(QStringLiteral("btnPin uses icons.bmp#6 from common/")));
        QCOMPARE(QFileInfo(f.context.UiFilePath).canonicalFilePath(), QFileInfo(ported).canonicalFilePath());
        QCOMPARE(f.context.SkinFormat, QStringLiteral("1024_600"));
        // The notes are in the Problems panel, naming the ported file, and a
        // new check of the opened skin keeps them.
        const QString notePin = QFileInfo(ported).canonicalFilePath()
            + QStringLiteral(": btnPin uses icons.bmp#6 from common/");
        const auto hasPinNote = [&] {
            const QStringList rows = problemRows(f, QStringLiteral("shared-picture"));
            return std::any_of(rows.begin(), rows.end(), [&](const QString &row) { return row.startsWith(notePin); });
        };
        QVERIFY2(hasPinNote(), qPrintable(problemRows(f, QStringLiteral("shared-picture")).join(QLatin1Char('\n'))));
        f.control<ProblemsController>("ProblemsController")->checkNow();
        QVERIFY(hasPinNote());

        // Again: the target exists, and declining to replace it writes nothing.
        f.dialogs.answerForm([](QDialog &dialog) {
            auto &form = static_cast<PortSkinDialog &>(dialog);
            form.txtFrom->setText(QStringLiteral("1024_600"));
            form.cmbTo->setCurrentText(QStringLiteral("800_480"));
            form.accept();
        });
        const QByteArray before = readTestFile(skin + QStringLiteral("/800_480/ui/main_800_480.ui"));
        f.dialogs.answerButton(Dialogs::Button::No);
        f.window->PortSkinCommand();
        QCOMPARE(f.dialogs.asked().last().text, QStringLiteral("%1 exists already. Replace it?")
                                                    .arg(QDir::toNativeSeparators(QDir(skin).filePath(QStringLiteral("800_480")))));
        QCOMPARE(readTestFile(skin + QStringLiteral("/800_480/ui/main_800_480.ui")), before);
    }

    void aFailedPortSaysWhy()
    {
        QTemporaryDir dir;
        const QString skin = dir.filePath(QStringLiteral("skin"));
        copyTree(kDemo, skin);
        QVERIFY(writeTestFile(skin + QStringLiteral("/800_480/broken.bmp"), "BM"));
        EditorFixture f;
        f.window->openSkinFile(skin + QStringLiteral("/800_480/ui/main_800_480.ui"));
        f.dialogs.answerForm([](QDialog &dialog) { static_cast<PortSkinDialog &>(dialog).accept(); });
        f.window->PortSkinCommand();
        QVERIFY(f.dialogs.asked().last().text.contains(QStringLiteral("broken.bmp: cannot be read as a picture")));
        QVERIFY(!QFileInfo::exists(skin + QStringLiteral("/1024_600")));
    }
};

QTEST_MAIN(TestPortSkin)
#include "tst_portskin.moc"
