// SPDX-License-Identifier: MIT
// Porting a generated skin of 2,000 pictures (about 100 MB of decoded pixels:
// BMP, RL and JPEG, some of them sprite strips) from 800_480 to 1024_600, next
// to a floor measured in the same run: reading, decoding, encoding again in
// the same kind and writing every picture at its own size, on as many threads.
// "x_floor" is how many times slower than that floor the port is.
#include "ImageLoader.h"
#include "RlEncoder.h"
#include "SkinPort.h"

#include <benchmark/benchmark.h>

#include <QBuffer>
#include <QCoreApplication>
#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QImageWriter>
#include <QTemporaryDir>
#include <QThread>
#include <QThreadPool>

#include <atomic>
#include <chrono>

namespace {

constexpr int kPictures = 2000;

QImage picture(int n, int width, int height)
{
    QImage image(width, height, QImage::Format_RGB32);
    for (int y = 0; y < height; ++y) {
        QRgb *row = reinterpret_cast<QRgb *>(image.scanLine(y));
        for (int x = 0; x < width; ++x) {
            const int dx = x - width / 2;
            const int dy = y - height / 2;
            const bool inside = dx * dx * 4 < width * width * 0.9 && dy * dy * 4 < height * height * 0.9;
            row[x] = inside ? qRgb((x * 3 + n) % 256, (y * 5) % 256, (x + y + n * 7) % 256) : qRgb(255, 0, 255);
        }
    }
    return image;
}

void write(const QString &path, const QByteArray &bytes)
{
    QFile file(path);
    file.open(QIODevice::WriteOnly);
    file.write(bytes);
}

QByteArray encoded(const QImage &image, const char *format, int quality = -1)
{
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    QImageWriter writer(&buffer, format);
    if (quality >= 0)
        writer.setQuality(quality);
    writer.write(image);
    return bytes;
}

// A skin folder 800_480 with the pictures and one .ui file naming them.
struct GeneratedSkin
{
    QTemporaryDir dir;
    qint64 decodedBytes = 0;

    GeneratedSkin()
    {
        const QString folder = dir.filePath(QStringLiteral("800_480"));
        QDir().mkpath(folder + QStringLiteral("/ui"));
        QByteArray ui = "<LAYER ui_Main>\r\n";
        for (int n = 0; n < kPictures; ++n) {
            // 50 KB of pixels each: 125 x 100, sprite strips of 4 frames.
            const bool strip = n % 5 == 0;
            const QImage image = picture(n, 125, 100);
            QString name;
            switch (n % 3) {
            case 0:
                name = QStringLiteral("p%1.bmp").arg(n);
                write(folder + QLatin1Char('/') + name, RlEncoder::encode(image).bytes);
                break;
            case 1:
                name = QStringLiteral("p%1.bmp").arg(n);
                write(folder + QLatin1Char('/') + name, encoded(image, "BMP"));
                break;
            default:
                name = QStringLiteral("p%1.jpg").arg(n);
                write(folder + QLatin1Char('/') + name, encoded(image, "JPEG", 92));
                break;
            }
            decodedBytes += image.sizeInBytes();
            ui += QStringLiteral("\t<BUTTON b%1 x=%2 y=%3 w=125 h=%4 bmp=%5%6>\r\n")
                      .arg(n).arg(n % 600).arg(n % 400).arg(strip ? 25 : 100).arg(name, strip ? QStringLiteral("#4") : QString())
                      .toLatin1();
        }
        ui += "</LAYER>\r\n";
        write(folder + QStringLiteral("/ui/main_800_480.ui"), ui);
    }
};

GeneratedSkin &skin()
{
    static GeneratedSkin generated;
    return generated;
}

double msSince(std::chrono::steady_clock::time_point start)
{
    return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start).count();
}

// Every picture read, decoded, encoded in its kind at its size and written.
double floorMs(const QString &folder, const QString &out)
{
    QStringList files;
    QDirIterator it(folder, { QStringLiteral("*.bmp"), QStringLiteral("*.jpg") }, QDir::Files);
    while (it.hasNext())
        files << it.next();
    QDir().mkpath(out);
    const auto start = std::chrono::steady_clock::now();
    QThreadPool pool;
    pool.setMaxThreadCount(qMax(1, QThread::idealThreadCount()));
    for (const QString &path : files) {
        pool.start([path, out] {
            QFile file(path);
            file.open(QIODevice::ReadOnly);
            const QByteArray bytes = file.readAll();
            QImage image;
            ImageLoader::LoadImageBytes(path, bytes, image);
            const QString kind = ImageLoader::Kind(path, bytes);
            const QByteArray again = kind == QLatin1String("RL")     ? RlEncoder::encode(image).bytes
                                   : kind == QLatin1String("JPEG") ? encoded(image, "JPEG", 92)
                                                                    : encoded(image, "BMP");
            write(out + QLatin1Char('/') + QFileInfo(path).fileName(), again);
        });
    }
    pool.waitForDone();
    return msSince(start);
}

void BM_PortSkin(benchmark::State &state)
{
    GeneratedSkin &generated = skin();
    double port = 0;
    double floor = 0;
    int rounds = 0;
    for (auto _ : state) {
        floor += floorMs(generated.dir.filePath(QStringLiteral("800_480")), generated.dir.filePath(QStringLiteral("floor")));
        SkinPort::Options options;
        options.skinDir = generated.dir.path();
        options.from = QStringLiteral("800_480");
        options.to = QStringLiteral("1024_600");
        options.force = true;
        const auto start = std::chrono::steady_clock::now();
        const SkinPort::Result result = SkinPort(options).run();
        port += msSince(start);
        if (!result.ok)
            state.SkipWithError(result.error.toLocal8Bit().constData());
        ++rounds;
    }
    state.counters["pictures"] = kPictures;
    state.counters["decoded_MB"] = double(generated.decodedBytes) / 1e6;
    state.counters["port_ms"] = port / rounds;
    state.counters["floor_ms"] = floor / rounds;
    state.counters["x_floor"] = port / floor;
    state.counters["threads"] = QThread::idealThreadCount();
}

} // namespace

BENCHMARK(BM_PortSkin)->Unit(benchmark::kMillisecond)->Iterations(2);

int main(int argc, char **argv)
{
    // The JPEG reader and writer are plugins, found through the application.
    QCoreApplication app(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
