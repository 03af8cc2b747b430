// SPDX-License-Identifier: MIT
// Reading a large skin: MB/s of the reader next to the speed of merely counting
// the file's lines with memchr, and the document's memory as a multiple of the
// file's size (heap_with_file_bytes_x_file counts the file's bytes, which the
// document keeps, as a file read from disk does).
#include "BenchSkin.h"
#include "UiFileReader.h"
#include "UiFileWriter.h"
#include "clsKorviInterface.h"

#include <benchmark/benchmark.h>

#if defined(__GLIBC__)
#include <malloc.h>
#endif

#include <algorithm>
#include <cstring>
#include <memory>

namespace {

const QByteArray &skin()
{
    return BenchSkin::largeSkin();
}

void setBytesCounters(benchmark::State &state, const QByteArray &text)
{
    state.SetBytesProcessed(int64_t(state.iterations()) * text.size());
    state.counters["MB"] = double(text.size()) / 1e6;
    // bytes_per_second counts in units of 2^20 bytes; this counts in 10^6.
    state.counters["MB_per_s"] = benchmark::Counter(double(state.iterations()) * double(text.size()) / 1e6,
                                                    benchmark::Counter::kIsRate);
}

// The floor: find every line end of the file, and nothing else.
void BM_CountLinesWithMemchr(benchmark::State &state)
{
    const QByteArray &text = skin();
    for (auto _ : state) {
        size_t lines = 0;
        const char *p = text.constData();
        const char *end = p + text.size();
        while (const void *lf = memchr(p, '\n', size_t(end - p))) {
            ++lines;
            p = static_cast<const char *>(lf) + 1;
        }
        benchmark::DoNotOptimize(lines);
    }
    setBytesCounters(state, text);
}
BENCHMARK(BM_CountLinesWithMemchr)->Unit(benchmark::kMillisecond);

// Bytes the heap has handed out and not taken back, where the C library tells;
// -1 elsewhere.
qint64 heapInUse()
{
#if defined(__GLIBC__) && (__GLIBC__ > 2 || __GLIBC_MINOR__ >= 33)
    return qint64(mallinfo2().uordblks);
#else
    return -1;
#endif
}

void readSkin(benchmark::State &state)
{
    const QByteArray &text = skin();
    double memoryRatio = 0;
    double heapRatio = 0;
    qint64 keptBytes = 0;
    for (auto _ : state) {
        state.PauseTiming();
        const qint64 heapBefore = heapInUse();
        state.ResumeTiming();
        auto doc = std::make_unique<clsKorviInterface>();
        UiFileReader(*doc, false).readBytes(text, QStringLiteral("bench.ui"));
        // Freeing the document is not part of reading it.
        state.PauseTiming();
        memoryRatio = double(doc->memoryUsed()) / double(text.size());
        // The heap's own count adds what the document does not see: the
        // allocator's headers and rounding.
        heapRatio = heapBefore < 0 ? 0 : double(heapInUse() - heapBefore) / double(text.size());
        // The document keeps the file's bytes, which it shares here with the
        // text it was given: a file read from disk adds them to the heap.
        keptBytes = 0;
        for (int f = 1; f <= doc->Sources().count(); ++f)
            keptBytes += doc->Sources().file(f)->bytes().size();
        doc.reset();
        state.ResumeTiming();
    }
    setBytesCounters(state, text);
    state.counters["memory_x_file"] = memoryRatio;
    if (heapRatio > 0) {
        state.counters["heap_x_file"] = heapRatio;
        state.counters["heap_with_file_bytes_x_file"] = heapRatio + double(keptBytes) / double(text.size());
    }
}

// The first read in the process: the document's memory comes fresh from the
// system, and touching it for the first time costs a page fault per page,
// which on a virtual machine can take as long as the reading itself.
void BM_ReadSkinFirstTime(benchmark::State &state)
{
    readSkin(state);
}
BENCHMARK(BM_ReadSkinFirstTime)->Unit(benchmark::kMillisecond)->Iterations(1);

// Reading again and again, as an editor that has been open a while does: the
// memory of the document read before is used again.
void BM_ReadSkin(benchmark::State &state)
{
    readSkin(state);
}
BENCHMARK(BM_ReadSkin)->Unit(benchmark::kMillisecond)->MinTime(3);

void BM_WriteSkin(benchmark::State &state)
{
    const QByteArray &text = skin();
    clsKorviInterface doc;
    UiFileReader(doc, false).readBytes(text, QStringLiteral("bench.ui"));
    for (auto _ : state)
        benchmark::DoNotOptimize(UiFileWriter(doc).fileText());
    setBytesCounters(state, text);
}
BENCHMARK(BM_WriteSkin)->Unit(benchmark::kMillisecond);

} // namespace

BENCHMARK_MAIN();
