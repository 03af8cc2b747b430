// SPDX-License-Identifier: MIT
// Save Changes of one edited value in a generated 50 MB skin, next to the
// floor measured in the same run: writing the file's bytes with QSaveFile.
// "x_floor" is how many floors one save costs. The save finds the one element
// touched, reads its edited tag line back, compares the file on disk with the
// bytes read, makes the backup, writes the file's bytes with the edit made on
// the way, and then makes the edit on the kept bytes, every record moving
// with them.
#include "BenchSkin.h"
#include "SaveChanges.h"
#include "UiFileReader.h"
#include "clsKorviInterface.h"

#include <QElapsedTimer>
#include <QFile>
#include <QSaveFile>
#include <QTemporaryDir>
#include <benchmark/benchmark.h>

namespace {

struct SavedSkin
{
    QTemporaryDir dir;
    QString path = dir.filePath(QStringLiteral("bench.ui"));
    clsKorviInterface document;
    clsElement *edited = nullptr;

    SavedSkin()
    {
        QFile f(path);
        f.open(QIODevice::WriteOnly);
        f.write(BenchSkin::largeSkin());
        f.close();
        ReadUiFile(document, path, false);
        // An object in the middle of the file.
        clsElement *layer = document.Layers().at(document.Layers().Count() / 2);
        edited = layer->SubElements().at(0);
    }
};

SavedSkin &skin()
{
    static SavedSkin saved;
    return saved;
}

double floorMilliseconds(const QString &path, const QByteArray &bytes)
{
    QElapsedTimer timer;
    timer.start();
    QSaveFile file(path);
    file.open(QIODevice::WriteOnly);
    file.write(bytes);
    file.commit();
    return double(timer.nsecsElapsed()) / 1e6;
}

void BM_SaveChangesOfOneValue(benchmark::State &state)
{
    SavedSkin &s = skin();
    double saveMs = 0;
    double floorMs = 0;
    int round = 0;
    for (auto _ : state) {
        state.PauseTiming();
        s.edited->Properties().setValueAt(0, round++ % 2 ? "111" : "222");
        state.ResumeTiming();
        QElapsedTimer timer;
        timer.start();
        SaveChanges saver(s.document);
        const SaveChanges::Result result = saver.save({});
        saveMs += double(timer.nsecsElapsed()) / 1e6;
        if (result.outcome != SaveChanges::Result::Outcome::Saved)
            state.SkipWithError(qPrintable(result.error));
        state.PauseTiming();
        floorMs += floorMilliseconds(s.dir.filePath(QStringLiteral("floor.ui")), BenchSkin::largeSkin());
        state.ResumeTiming();
    }
    state.counters["MB"] = double(BenchSkin::largeSkin().size()) / 1e6;
    state.counters["save_ms"] = saveMs / double(state.iterations());
    state.counters["floor_ms"] = floorMs / double(state.iterations());
    state.counters["x_floor"] = saveMs / floorMs;
    // What the document holds after the saves, the kept bytes included.
    state.counters["memory_x_file"] = double(s.document.memoryUsed()) / double(BenchSkin::largeSkin().size());
}
BENCHMARK(BM_SaveChangesOfOneValue)->Unit(benchmark::kMillisecond)->Iterations(5);

// How long finding the changes alone takes (the status bar's count).
void BM_CountChanges(benchmark::State &state)
{
    SavedSkin &s = skin();
    for (auto _ : state)
        benchmark::DoNotOptimize(SaveChanges(s.document).pending());
}
BENCHMARK(BM_CountChanges)->Unit(benchmark::kMillisecond)->Iterations(3);

} // namespace

BENCHMARK_MAIN();
