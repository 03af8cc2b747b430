// SPDX-License-Identifier: MIT
// Checking a large skin for problems, next to reading the same skin: a 20 MB
// generated skin (KORVI_BENCH_MB sets another size) written to a skin folder,
// with the pictures it names beside it, opened as the editor's Open does.
#include "BenchSkin.h"
#include "DocumentChecker.h"
#include "ProblemPlaces.h"
#include "SkinChecker.h"
#include "SkinContext.h"
#include "SkinOpenPlan.h"
#include "clsKorviInterface.h"

#include <benchmark/benchmark.h>

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QImage>
#include <QTemporaryDir>
#include <algorithm>
#include <memory>

namespace {

struct LintSkin
{
    QTemporaryDir root;
    QString file;
    qsizetype bytes = 0;

    // `clean`: the generated skin names a number where an object gives
    // "fonttype" and "sprind", which are problems; here they are numbers under
    // keys that take numbers, and the skin has fewer problems.
    explicit LintSkin(bool clean)
    {
        const qsizetype size = qEnvironmentVariableIntValue("KORVI_BENCH_MB") > 0
            ? qEnvironmentVariableIntValue("KORVI_BENCH_MB") * 1024 * 1024
            : 20 * 1024 * 1024;
        // The layer every layer uses is added, so that the problems are those
        // of the objects.
        QByteArray text = BenchSkin::generate(size) + "<LAYER ui_Status>\r\n";
        if (clean)
            text.replace(" fonttype=", " cellw=").replace(" cellw=fntMain", " fonttype=fntMain").replace(" sprind=", " cellh=");
        bytes = text.size();
        QDir(root.path()).mkpath(QStringLiteral("ui"));
        file = root.filePath(QStringLiteral("ui/skin.ui"));
        QFile out(file);
        out.open(QIODevice::WriteOnly);
        out.write(text);
        QImage picture(40, 20, QImage::Format_RGB32);
        picture.fill(Qt::darkBlue);
        for (int i = 0; i < 300; ++i)
            picture.save(root.filePath(QStringLiteral("button_%1.bmp").arg(i)));
        for (int i = 0; i < 40; ++i)
            picture.save(root.filePath(QStringLiteral("btn%1.bmp").arg(i)));
    }
};

LintSkin &skin(bool clean = false)
{
    static LintSkin generated(false);
    static LintSkin cleaned(true);
    return clean ? cleaned : generated;
}

void setCounters(benchmark::State &state)
{
    state.counters["MB"] = double(skin().bytes) / 1e6;
    state.counters["MB_per_s"] = benchmark::Counter(double(state.iterations()) * double(skin().bytes) / 1e6,
                                                    benchmark::Counter::kIsRate);
}

// Open: the file read from disk into a new document.
void BM_ReadSkin(benchmark::State &state)
{
    const SkinOpenPlan plan = SkinOpenPlan::forFile(skin().file);
    for (auto _ : state) {
        auto document = std::make_unique<clsKorviInterface>();
        benchmark::DoNotOptimize(plan.readInto(*document));
        state.PauseTiming();
        document.reset();
        state.ResumeTiming();
    }
    setCounters(state);
}
BENCHMARK(BM_ReadSkin)->Unit(benchmark::kMillisecond)->MinTime(2);

// The skin as Open reads it: argument 0 the generated skin, with a problem in
// most objects; 1 the same with few problems.
struct OpenedSkin
{
    const SkinOpenPlan plan;
    clsKorviInterface document;
    const QVector<SkinReadError> errors;
    const SkinContext context;

    explicit OpenedSkin(const benchmark::State &state)
        : plan(SkinOpenPlan::forFile(skin(state.range(0) == 1).file))
        , errors(plan.readInto(document))
        , context { plan.uiFilePath, QString(), plan.skinFormat }
    {
    }
};

// Every check, on the skin as opened.
void BM_CheckSkin(benchmark::State &state)
{
    const OpenedSkin opened(state);
    qsizetype problems = 0;
    for (auto _ : state) {
        const QVector<Problem> found = SkinChecker::check(opened.document, opened.context, opened.errors, false);
        problems = found.size();
    }
    setCounters(state);
    state.counters["problems"] = double(problems);
}
BENCHMARK(BM_CheckSkin)->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond)->MinTime(2);

// The same check in slices of about 30 ms, as the editor runs it between
// window events: the longest slice is how long the window waits at most (the
// gathering and the sorting of the problems are one slice each).
void BM_CheckSkinInSlices(benchmark::State &state)
{
    const OpenedSkin opened(state);
    qint64 longest = 0;
    qint64 slices = 0;
    for (auto _ : state) {
        SkinChecker checker(opened.document, opened.context, opened.errors, false);
        slices = 0;
        QElapsedTimer slice;
        do {
            slice.start();
            checker.runFor(30);
            longest = std::max(longest, slice.nsecsElapsed());
            ++slices;
        } while (!checker.done());
        benchmark::DoNotOptimize(checker.takeProblems());
    }
    setCounters(state);
    state.counters["longest_slice_ms"] = double(longest) / 1e6;
    state.counters["slices"] = double(slices);
}
BENCHMARK(BM_CheckSkinInSlices)->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond)->MinTime(2);

// The checks of the document and its files' bytes alone.
void BM_CheckDocument(benchmark::State &state)
{
    const SkinOpenPlan plan = SkinOpenPlan::forFile(skin().file);
    clsKorviInterface document;
    const QVector<SkinReadError> errors = plan.readInto(document);
    qsizetype problems = 0;
    for (auto _ : state) {
        ProblemPlaces places(document);
        problems = DocumentChecker(document, places).check(errors).size();
    }
    setCounters(state);
    state.counters["problems"] = double(problems);
}
BENCHMARK(BM_CheckDocument)->Unit(benchmark::kMillisecond)->MinTime(2);

} // namespace

BENCHMARK_MAIN();
