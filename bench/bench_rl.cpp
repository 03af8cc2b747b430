// SPDX-License-Identifier: MIT
// Decoding RL skin pictures: megapixels per second for a screen-sized picture
// and a large one, next to a floor measured in the same run (copying the decoded
// picture's bytes with memcpy). "x_floor" is how many times slower than that
// floor the decoder is.
#include "RlDecoder.h"
#include "RlEncoder.h"

#include <benchmark/benchmark.h>

#include <QImage>
#include <QRandomGenerator>
#include <chrono>
#include <cstring>
#include <vector>

namespace {

// Like a skin picture: transparent surroundings (skips), flat panels (runs),
// gradients and a little noise (single pixels of many colours).
QImage realisticPicture(int width, int height)
{
    QRandomGenerator rng(7);
    QImage image(width, height, QImage::Format_RGB32);
    image.fill(0xFFFF00FFu);
    for (int y = 0; y < height; ++y) {
        QRgb *row = reinterpret_cast<QRgb *>(image.scanLine(y));
        for (int x = 0; x < width; ++x) {
            const int band = (x / 64 + y / 48) % 4;
            if (band == 0)
                continue; // transparent
            if (band == 1)
                row[x] = qRgb(40, 60, 120); // flat panel
            else if (band == 2)
                row[x] = qRgb((x * 255) / width, (y * 255) / height, 128); // gradient
            else
                row[x] = rng.bounded(4) == 0 ? qRgb(rng.bounded(256), 200, 40) : qRgb(200, 200, 200);
        }
    }
    return image;
}

const QByteArray &encoded(int width, int height)
{
    static std::vector<std::pair<QSize, QByteArray>> files;
    for (const auto &file : files) {
        if (file.first == QSize(width, height))
            return file.second;
    }
    files.emplace_back(QSize(width, height), RlEncoder::encode(realisticPicture(width, height)).bytes);
    return files.back().second;
}

// Megapixels per second of copying the picture's bytes with memcpy.
double memcpyFloor(const QImage &picture)
{
    std::vector<uchar> target(size_t(picture.sizeInBytes()));
    const int rounds = 20;
    const auto start = std::chrono::steady_clock::now();
    for (int i = 0; i < rounds; ++i) {
        std::memcpy(target.data(), picture.constBits(), target.size());
        benchmark::DoNotOptimize(target.data());
        benchmark::ClobberMemory();
    }
    const double seconds = std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
    return double(picture.width()) * picture.height() * rounds / seconds / 1e6;
}

void BM_DecodeRl(benchmark::State &state)
{
    const int width = int(state.range(0));
    const int height = int(state.range(1));
    const QByteArray &bytes = encoded(width, height);
    QImage image;
    const auto start = std::chrono::steady_clock::now();
    for (auto _ : state) {
        RlDecoder::decode(bytes, image);
        benchmark::DoNotOptimize(image.constBits());
    }
    const double seconds = std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
    const double pixels = double(width) * height;
    const double rate = pixels * double(state.iterations()) / seconds / 1e6;
    const double floor = memcpyFloor(image);
    state.counters["Mpx_per_s"] = rate;
    state.counters["floor_Mpx_per_s"] = floor;
    state.counters["x_floor"] = floor / rate;
    state.counters["file_KB"] = double(bytes.size()) / 1024.0;
}
BENCHMARK(BM_DecodeRl)->Args({ 800, 480 })->Args({ 4000, 3000 })->Unit(benchmark::kMillisecond);

} // namespace

BENCHMARK_MAIN();
