// SPDX-License-Identifier: MIT
// Both programs of the Windows build on the demo skin, as a user starts them:
// the editor with a real window (the platform's own window system, not
// offscreen), and korvi drawing every layer, compared with the pictures the
// Linux build draws.
#include "../ProgramRun.h"
#include "TestFiles.h"

#include <QDir>
#include <QImage>
#include <QSet>
#include <QTemporaryDir>
#include <QtTest>

namespace {

QString linuxPicture(const QString &kind, const QString &name)
{
    return QStringLiteral(KORVI_LINUX_PICTURES "/%1/%2").arg(kind, name);
}

QImage argb(const QString &path)
{
    return QImage(path).convertToFormat(QImage::Format_ARGB32);
}

int differingPixels(const QImage &a, const QImage &b)
{
    int count = 0;
    for (int y = 0; y < a.height(); ++y) {
        const auto *ra = reinterpret_cast<const QRgb *>(a.constScanLine(y));
        const auto *rb = reinterpret_cast<const QRgb *>(b.constScanLine(y));
        for (int x = 0; x < a.width(); ++x)
            count += ra[x] != rb[x];
    }
    return count;
}

int distinctColours(const QImage &image)
{
    QSet<QRgb> colours;
    for (int y = 0; y < image.height(); y += 2) {
        const auto *row = reinterpret_cast<const QRgb *>(image.constScanLine(y));
        for (int x = 0; x < image.width(); x += 2)
            colours.insert(row[x]);
    }
    return int(colours.size());
}

QProcessEnvironment withPlatform(const QString &platform)
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("QT_QPA_PLATFORM"), platform);
    return environment;
}

// korvi as a user starts it, choosing its own platform plugin.
ProgramRun korviRendersTheDemoSkin(const QString &out)
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.remove(QStringLiteral("QT_QPA_PLATFORM"));
    const QString skin = QStringLiteral(KORVI_SOURCE_DIR "/samples/demo-skin");
    return runProgram(QStringLiteral(KORVI_EXECUTABLE),
                      { QStringLiteral("render"), demoSkinMainFile(), QStringLiteral("--skin-dir"), skin,
                        QStringLiteral("--all-layers"), QStringLiteral("-o"), out },
                      environment);
}

} // namespace

class TestSmoke : public QObject
{
    Q_OBJECT

private slots:
    void korviDrawsTheLayersWithoutTextAsTheLinuxBuildDoes()
    {
        QTemporaryDir out;
        const ProgramRun run = korviRendersTheDemoSkin(out.path());
        QVERIFY2(run.exitCode == 0, run.err.constData());

        const QStringList linux = QDir(QStringLiteral(KORVI_LINUX_PICTURES "/with-fonts"))
                                      .entryList({ QStringLiteral("*.png") }, QDir::Files, QDir::Name);
        QVERIFY2(!linux.isEmpty(), "no pictures of the Linux build");
        QStringList withoutText;
        for (const QString &name : linux) {
            const QImage windows = argb(QDir(out.path()).filePath(name));
            const QImage expected = argb(linuxPicture(QStringLiteral("with-fonts"), name));
            QVERIFY2(!windows.isNull(), qPrintable(name + QStringLiteral(" was not drawn")));
            QCOMPARE(windows.size(), expected.size());
            const bool hasText = argb(linuxPicture(QStringLiteral("without-fonts"), name)) != expected;
            if (hasText) {
                // Windows draws glyphs with its own rasteriser: the texts are
                // where Linux puts them, not the same pixels.
                continue;
            }
            withoutText << name;
            QVERIFY2(windows == expected,
                     qPrintable(QStringLiteral("%1: %2 pixels differ").arg(name).arg(differingPixels(windows, expected))));
        }
        QVERIFY2(!withoutText.isEmpty(), "the demo skin has no layer without text");
    }

    void korviDrawsTheTextsOfTheSkin()
    {
        // A text drawn with a font Windows cannot use shows as empty boxes or
        // nothing: then the layer looks as it does where Linux has no fonts.
        QTemporaryDir out;
        const ProgramRun run = korviRendersTheDemoSkin(out.path());
        QVERIFY2(run.exitCode == 0, run.err.constData());
        int layersWithText = 0;
        const QStringList linux = QDir(QStringLiteral(KORVI_LINUX_PICTURES "/with-fonts"))
                                      .entryList({ QStringLiteral("*.png") }, QDir::Files, QDir::Name);
        for (const QString &name : linux) {
            const QImage expected = argb(linuxPicture(QStringLiteral("with-fonts"), name));
            const QImage withoutFonts = argb(linuxPicture(QStringLiteral("without-fonts"), name));
            if (withoutFonts == expected)
                continue;
            ++layersWithText;
            const QImage windows = argb(QDir(out.path()).filePath(name));
            // Closer to the Linux picture with fonts than to the one without.
            const int fromLinux = differingPixels(windows, expected);
            const int fromNoFonts = differingPixels(windows, withoutFonts);
            QVERIFY2(fromLinux < fromNoFonts,
                     qPrintable(QStringLiteral("%1: %2 pixels differ from the Linux picture, %3 from the one "
                                               "without fonts")
                                    .arg(name)
                                    .arg(fromLinux)
                                    .arg(fromNoFonts)));
        }
        QVERIFY(layersWithText > 0);
    }

    void theEditorShowsTheSkinInARealWindow()
    {
        QTemporaryDir out;
        const QString picture = out.filePath(QStringLiteral("editor.png"));
        const QString skin = QStringLiteral(KORVI_SOURCE_DIR "/samples/demo-skin");
        const ProgramRun run = runProgram(QStringLiteral(KORVI_EDITOR_EXECUTABLE),
                                          { QStringLiteral("--skin-dir"), skin, QStringLiteral("--screenshot"), picture,
                                            demoSkinMainFile() },
                                          withPlatform(QStringLiteral("windows")));
        QVERIFY2(run.exitCode == 0, run.err.constData());
        const QImage image = argb(picture);
        QVERIFY(!image.isNull());
        QVERIFY(image.width() >= 400 && image.height() >= 300);
        // A window with a tree, a grid and a drawn skin has many colours; an
        // empty or unpainted one has a handful.
        QVERIFY2(distinctColours(image) > 64, qPrintable(QString::number(distinctColours(image))));
    }
};

QTEST_GUILESS_MAIN(TestSmoke)
#include "tst_smoke.moc"
