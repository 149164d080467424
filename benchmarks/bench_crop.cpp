// How long a crop of 24 megapixels takes: upright, turned, turned and scaled, and hidden outside.

#include <QImage>

#include <benchmark/benchmark.h>

#include "CropContents.h"

namespace
{
const QSize PICTURE(6000, 4000);

PictureContents Drawn()
{
    QImage image(PICTURE, QImage::Format_ARGB32_Premultiplied);
    for (int y = 0; y < PICTURE.height(); ++y)
    {
        QRgb* row = reinterpret_cast<QRgb*>(image.scanLine(y));
        for (int x = 0; x < PICTURE.width(); ++x)
            row[x] = qRgb((x * 7) & 255, (y * 5) & 255, (x + y) & 255);
    }
    return {{image}, QImage()};
}

// Most of the picture.
CropFrame Frame(double angle)
{
    return Turned(CropFrameOf(QRect(500, 350, 5000, 3300)), angle, QPointF(0.5, 0.5));
}

void Run(benchmark::State& state, double angle, const QSize& size)
{
    const PictureContents contents = Drawn();
    for (auto _ : state)
        benchmark::DoNotOptimize(CropContents(contents, Frame(angle), size));
}

void CropUpright(benchmark::State& state)
{
    Run(state, 0, Frame(0).size);
}

void CropTurned(benchmark::State& state)
{
    Run(state, 7, Frame(0).size);
}

void CropTurnedAndScaled(benchmark::State& state)
{
    Run(state, 7, QSize(2000, 1320));
}

void HideOutside(benchmark::State& state)
{
    const PictureContents contents = Drawn();
    for (auto _ : state)
        benchmark::DoNotOptimize(ContentsWithin(contents, Frame(7)));
}
} // namespace

BENCHMARK(CropUpright)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(CropTurned)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(CropTurnedAndScaled)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(HideOutside)->Unit(benchmark::kMillisecond)->UseRealTime();

BENCHMARK_MAIN();
