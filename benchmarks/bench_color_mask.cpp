// The selection of a colour range in a picture of 24 megapixels: its preview and the whole mask, for few and
// for many colours. And the small picture that a step of the history gets.

#include <benchmark/benchmark.h>

#include "ColorRange.h"
#include "SmallPicture.h"

namespace
{

quint32 Scatter(int x, int y)
{
    quint32 value = quint32(x) * 0x9e3779b1u + quint32(y) * 0x85ebca77u;
    value = (value ^ (value >> 15)) * 0x2c1b3c6du;
    value = (value ^ (value >> 12)) * 0x297a2d39u;
    return value ^ (value >> 15);
}

// As grainy as a photo; translucent in its lower half on wish.
QImage Picture(bool opaque, const QSize& size = QSize(6000, 4000))
{
    QImage picture(size, QImage::Format_ARGB32_Premultiplied);
    for (int y = 0; y < size.height(); ++y)
    {
        auto* row = reinterpret_cast<QRgb*>(picture.scanLine(y));
        const int alpha = opaque || y < size.height() / 2 ? 255 : 180;
        for (int x = 0; x < size.width(); ++x)
        {
            const int grain = int(Scatter(x, y) % 17);
            row[x] = qPremultiply(qRgba(((x >> 5) & 127) + grain, ((y >> 5) & 127) + grain,
                                        (((x + y) >> 6) & 127) + grain, alpha));
        }
    }
    return picture;
}

ColorRangeSettings Settings(int colors, int tolerance)
{
    ColorRangeSettings settings;
    settings.tolerance = tolerance;
    for (int i = 0; i < colors; ++i)
    {
        const quint32 value = Scatter(i, 7);
        settings.colors += qRgb(value & 127, (value >> 8) & 127, (value >> 16) & 127);
    }
    return settings;
}

QImage Selection()
{
    QImage mask(6000, 4000, QImage::Format_Grayscale8);
    for (int y = 0; y < mask.height(); ++y)
        memset(mask.scanLine(y), (y >> 3) & 255, size_t(mask.width()));
    return mask;
}

void Preview(benchmark::State& state)
{
    const QImage picture = Picture(true);
    const QImage selection = Selection();
    const ColorRangeSettings settings = Settings(int(state.range(0)), int(state.range(1)));
    for (auto _ : state)
        benchmark::DoNotOptimize(
            ColorRangePreview(picture, selection, settings, UniteSelections, QSize(1000, 800)));
}

void Mask(benchmark::State& state)
{
    const QImage picture = Picture(state.range(2) == 0);
    const ColorRangeSettings settings = Settings(int(state.range(0)), int(state.range(1)));
    for (auto _ : state)
        benchmark::DoNotOptimize(ColorRangeMask(picture, settings));
}

void ReadMemory(benchmark::State& state)
{
    const QImage picture = Picture(true);
    for (auto _ : state)
    {
        quint64 sum = 0;
        const auto* words = reinterpret_cast<const quint64*>(picture.constBits());
        for (qint64 i = 0; i < picture.sizeInBytes() / 8; ++i)
            sum += words[i];
        benchmark::DoNotOptimize(sum);
    }
}

void StepPicture(benchmark::State& state)
{
    const QImage picture = Picture(true, QSize(int(state.range(0)), int(state.range(0)) * 2 / 3));
    for (auto _ : state)
        benchmark::DoNotOptimize(SmallPicture(picture, 48));
}

} // namespace

BENCHMARK(ReadMemory)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(Preview)
    ->ArgNames({"colors", "tolerance"})
    ->Args({1, 32})
    ->Args({3, 32})
    ->Args({256, 32})
    ->Args({256, 255})
    ->Unit(benchmark::kMillisecond)
    ->UseRealTime();
BENCHMARK(Mask)
    ->ArgNames({"colors", "tolerance", "translucent"})
    ->Args({1, 32, 0})
    ->Args({3, 32, 0})
    ->Args({256, 32, 0})
    ->Args({256, 255, 0})
    ->Args({256, 32, 1})
    ->Unit(benchmark::kMillisecond)
    ->UseRealTime();
BENCHMARK(StepPicture)->Arg(600)->Arg(6000)->Arg(12000)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK_MAIN();
