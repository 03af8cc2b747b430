// SPDX-License-Identifier: MIT
// Opening a whole skin folder of 100 000 elements with the Dir command's flow:
// the time from the command to the tree shown in the main window (documents
// read, the tree built, the window painted once). The floor, measured in the
// same run, is reading the same files into a document and nothing else;
// "x_floor" is how many floors the whole command costs. Target: under 500 ms.

#include "EditorEnvironment.h"
#include "ScriptedDialogs.h"
#include "SettingsFile.h"
#include "SkinContext.h"
#include "SkinFolderListing.h"
#include "UiFileReader.h"
#include "WebLink.h"
#include "clsKorviInterface.h"
#include "frmEditor.h"

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTreeView>
#include <benchmark/benchmark.h>
#include <chrono>

namespace {

constexpr int kFiles = 10;
constexpr int kLayersPerFile = 100;
constexpr int kObjectsPerLayer = 99; // with its layer: 100 elements a layer

// <root>/800_480/ui/skin_<n>.ui: 100 000 elements in all.
QString generateSkin(const QString &root)
{
    const QString ui = root + "/800_480/ui";
    QDir().mkpath(ui);
    for (int file = 0; file < kFiles; ++file) {
        QByteArray text;
        for (int layer = 0; layer < kLayersPerFile; ++layer) {
            text += "<LAYER ui_L" + QByteArray::number(file * kLayersPerFile + layer) + " z=1>\r\n";
            for (int object = 0; object < kObjectsPerLayer; ++object) {
                const QByteArray n = QByteArray::number(object);
                text += "\t<TEXT txt" + n + " x=" + QByteArray::number(object * 8 % 800) + " y="
                    + QByteArray::number(object * 5 % 480) + " w=80 h=20 text=Item" + n
                    + " fontsize=12 color=#FFFFFF>\r\n";
            }
            text += "</LAYER>\r\n";
        }
        QFile f(ui + QStringLiteral("/skin_%1.ui").arg(file));
        f.open(QIODevice::WriteOnly);
        f.write(text);
    }
    return ui;
}

double readFloorMilliseconds(const QString &ui)
{
    const auto start = std::chrono::steady_clock::now();
    clsKorviInterface document;
    for (const QString &file : SkinFolderListing::uiFilesIn(ui))
        ReadUiFile(document, file, false);
    benchmark::DoNotOptimize(document.Layers().Count());
    return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start).count();
}

void BM_OpenFolderOf100000Elements(benchmark::State &state)
{
    QTemporaryDir root;
    const QString ui = generateSkin(root.path());
    QTemporaryDir settingsFolder;
    double total = 0;
    int elements = 0;
    for (auto _ : state) {
        clsKorviInterface document;
        SkinContext context;
        ScriptedDialogs dialogs;
        const SettingsFile settings(settingsFolder.path(), settingsFolder.path());
        WebLink web(dialogs);
        frmEditor window({ document, context, dialogs, settings, web });
        window.show();
        QApplication::processEvents();
        dialogs.answerPath(ui);

        const auto start = std::chrono::steady_clock::now();
        window.button(QStringLiteral("Dir"))->trigger();
        window.findChild<QTreeView *>(QStringLiteral("tvwObjects"))->repaint();
        QApplication::processEvents();
        total += std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start).count();

        elements = document.Layers().Count();
        for (const clsElement *layer : document.Layers())
            elements += layer->subElementCount();
    }
    const double ms = total / double(state.iterations());
    const double floor = readFloorMilliseconds(ui);
    state.counters["ms_to_tree_shown"] = ms;
    state.counters["read_floor_ms"] = floor;
    state.counters["x_floor"] = ms / floor;
    state.counters["elements"] = elements;
    state.counters["target_ms"] = 500;
}
BENCHMARK(BM_OpenFolderOf100000Elements)->Unit(benchmark::kMillisecond)->Iterations(3);

} // namespace

int main(int argc, char **argv)
{
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
