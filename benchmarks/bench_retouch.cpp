// How long it takes to heal spots, by size, and to take the red out of an eye in a picture of 24 megapixels.

#include <algorithm>
#include <atomic>
#include <cmath>

#include <QImage>

#include <benchmark/benchmark.h>

#include "RedEye.h"
#include "SpotHealing.h"

namespace
{
// A slope of light with grain.
QImage Surface(int width, int height)
{
    QImage picture(width, height, QImage::Format_ARGB32_Premultiplied);
    quint32 chance = 1;
    for (int y = 0; y < height; ++y)
    {
        QRgb* row = reinterpret_cast<QRgb*>(picture.scanLine(y));
        for (int x = 0; x < width; ++x)
        {
            chance = chance * 1664525u + 1013904223u;
            const int grain = int(chance >> 28);
            row[x] = qRgb(80 + 100 * x / width + grain, 90 + 60 * y / height + grain, 120 + grain);
        }
    }
    return picture;
}

// The picture is as much larger than the spot as the spot asks for.
void Disc(benchmark::State& state)
{
    const int size = int(state.range(0));
    const int margin = HealingMargin(QSize(size, size));
    const QImage picture = Surface(size + 2 * margin, size + 2 * margin);
    QImage mask(picture.size(), QImage::Format_Grayscale8);
    mask.fill(0);
    const double center = picture.width() / 2.0;
    for (int y = 0; y < mask.height(); ++y)
    {
        for (int x = 0; x < mask.width(); ++x)
        {
            if (std::hypot(x + 0.5 - center, y + 0.5 - center) <= size / 2.0)
                mask.scanLine(y)[x] = 255;
        }
    }
    const std::atomic<bool> cancelled{false};
    for (auto _ : state)
        benchmark::DoNotOptimize(HealSpot(picture, mask, cancelled));
}

// Aslant across the picture, ten pixels wide.
void Scratch(benchmark::State& state)
{
    const int length = int(state.range(0));
    const QImage picture = Surface(length, length);
    QImage mask(picture.size(), QImage::Format_Grayscale8);
    mask.fill(0);
    for (int y = 0; y < length; ++y)
    {
        const int left = std::max(0, y - 5);
        std::fill_n(mask.scanLine(y) + left, std::min(10, length - left), uchar(255));
    }
    const std::atomic<bool> cancelled{false};
    for (auto _ : state)
        benchmark::DoNotOptimize(HealSpot(picture, mask, cancelled));
}

QImage& EyePicture(int radius)
{
    static QImage picture;
    picture = QImage(6000, 4000, QImage::Format_ARGB32_Premultiplied);
    picture.fill(qRgb(222, 172, 142));
    for (int y = 2000 - radius; y <= 2000 + radius; ++y)
    {
        for (int x = 3000 - radius; x <= 3000 + radius; ++x)
        {
            if (std::hypot(x - 3000, y - 2000) <= radius)
                reinterpret_cast<QRgb*>(picture.scanLine(y))[x] = qRgb(200, 40, 50);
        }
    }
    return picture;
}

// The last radius is more than is looked at: a wall.
void Pupil(benchmark::State& state)
{
    QImage& layer = EyePicture(int(state.range(0)));
    for (auto _ : state)
    {
        QVector<SavedTile> tiles = RemoveRedEye(layer, QPoint(3000, 2000), 1.0);
        state.counters["tiles"] = tiles.size();
        state.PauseTiming();
        ExchangeTiles(layer, tiles);
        state.ResumeTiming();
    }
}
} // namespace

BENCHMARK(Disc)
    ->ArgName("diameter")
    ->Arg(10)
    ->Arg(30)
    ->Arg(100)
    ->Arg(160)
    ->Arg(300)
    ->Arg(1000)
    ->Arg(2000)
    ->Unit(benchmark::kMillisecond)
    ->MeasureProcessCPUTime()
    ->UseRealTime();
BENCHMARK(Scratch)
    ->ArgName("length")
    ->Arg(500)
    ->Arg(3000)
    ->Unit(benchmark::kMillisecond)
    ->MeasureProcessCPUTime()
    ->UseRealTime();
BENCHMARK(Pupil)
    ->ArgName("radius")
    ->Arg(10)
    ->Arg(40)
    ->Arg(200)
    ->Arg(900)
    ->Unit(benchmark::kMillisecond)
    ->MeasureProcessCPUTime()
    ->UseRealTime();

BENCHMARK_MAIN();
