// Reading a large skin: MB/s of the reader next to the speed of merely counting
// the file's lines with memchr, and the document's memory as a multiple of the
// file's size (heap_with_file_bytes_x_file counts the file's bytes, which the
// document keeps, as a file read from disk does).
#include "UiFileReader.h"
#include "UiFileWriter.h"
#include "clsKorviInterface.h"

#include <benchmark/benchmark.h>

#if defined(__GLIBC__)
#include <malloc.h>
#endif

#include <QRandomGenerator>
#include <algorithm>
#include <cstring>
#include <numeric>
#include <memory>

namespace {

const char *const kTypes[] = { "TEXT", "BUTTON", "CHECKBOX", "SPRITE", "LIST", "SLIDER", "INPUTTEXT", "PUSHBUTTON" };
const char *const kKeys[] = { "x", "y", "z", "w", "h", "bmp", "font", "fontsize", "align", "valign",
                              "padding", "template", "fonttype", "text", "visible", "color", "sprind" };

QByteArray attribute(QRandomGenerator &rng, int k)
{
    const QByteArray key = kKeys[k];
    if (key == "visible")
        return " VISIBLE";
    if (key == "text")
        return " text=\"Label " + QByteArray::number(rng.bounded(1000)) + "\"";
    if (key == "bmp")
        return " bmp=icons/button_" + QByteArray::number(rng.bounded(300)) + ".bmp#" + QByteArray::number(rng.bounded(4) + 1);
    if (key == "template")
        return " template=tmpButton" + QByteArray::number(rng.bounded(40));
    if (key == "align")
        return " align=CENTER+" + QByteArray::number(rng.bounded(10));
    if (key == "color")
        return " color=#" + QByteArray::number(rng.bounded(0x1000000), 16).rightJustified(6, '0');
    return " " + key + "=" + QByteArray::number(rng.bounded(800));
}

// A realistic skin: templates, font types, layers of objects with 5 to 15
// attributes, scripts, about `targetBytes` long.
QByteArray generateSkin(qsizetype targetBytes)
{
    QRandomGenerator rng(42);
    QByteArray text;
    text.reserve(targetBytes + 4096);
    text += "<header>\r\n\t<VAR  version=2 skin=\"Bench\">\r\n</header>\r\n\r\n";
    for (int t = 0; t < 40; ++t)
        text += "<TEMPLATE tmpButton" + QByteArray::number(t) + " bmp=btn" + QByteArray::number(t)
            + ".bmp fontsize=14 fonttype=fntMain align=CENTER valign=CENTER>\r\n";
    text += "<FONTTYPE fntMain font=Tahoma fontsize=16 color=#FFFFFF bold>\r\n\r\n";
    int layer = 0;
    while (text.size() < targetBytes) {
        text += "<LAYER ui_Screen" + QByteArray::number(layer++) + " x=0 y=0 w=800 h=480>\r\n";
        const int objects = 20 + rng.bounded(40);
        for (int o = 0; o < objects; ++o) {
            text += "\t<" + QByteArray(kTypes[rng.bounded(8)]) + " obj" + QByteArray::number(o);
            // Distinct keys, as skins mostly have; one object in twenty repeats one.
            const int attributes = 5 + rng.bounded(11);
            int order[std::size(kKeys)];
            std::iota(std::begin(order), std::end(order), 0);
            std::shuffle(std::begin(order), std::end(order), rng);
            for (int a = 0; a < attributes; ++a)
                text += attribute(rng, order[a]);
            if (rng.bounded(20) == 0)
                text += attribute(rng, order[0]);
            text += ">\r\n";
        }
        if (layer % 5 == 0) {
            text += "\t<SCRIPT onShow" + QByteArray::number(layer) + ">\r\n";
            for (int l = 0; l < 8; ++l)
                text += "\t\tif x > " + QByteArray::number(l) + " then call show(\"ui_Main\", 1)\r\n";
            text += "\t</SCRIPT>\r\n";
        }
        text += "\t<USELAYER ui_Status/>\r\n</LAYER>\r\n\r\n";
    }
    return text;
}

const QByteArray &skin()
{
    // KORVI_BENCH_MB sets another size, e.g. for a quick look under a profiler.
    static const QByteArray text = generateSkin(qEnvironmentVariableIntValue("KORVI_BENCH_MB") > 0
                                                    ? qEnvironmentVariableIntValue("KORVI_BENCH_MB") * 1024 * 1024
                                                    : 50 * 1024 * 1024);
    return text;
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
