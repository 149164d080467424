// How long a click with the magic wand takes on a picture of 24 megapixels, from the pixels to the mask:
// plain, and with what makes it hard. "flood" is the same area by OpenCV's fill, "count" a plain comparison
// of each pixel, as what nothing can undercut.

#include <algorithm>
#include <cstdlib>
#include <string>
#include <utility>

#include <QImage>

#include <benchmark/benchmark.h>

#include "FloodFill.h"
#include "WandSelection.h"

namespace
{
const int WIDTH = 6000;
const int HEIGHT = 4000;
const QRgb GROUND = qRgb(200, 210, 220);
const QRgb WALL = qRgb(20, 30, 40);

using Drawing = QRgb (*)(int x, int y);

quint32 Scatter(int x, int y)
{
    quint32 value = quint32(x) * 0x9e3779b1u + quint32(y) * 0x85ebca77u;
    value = (value ^ (value >> 15)) * 0x2c1b3c6du;
    value = (value ^ (value >> 12)) * 0x297a2d39u;
    return value ^ (value >> 15);
}

QRgb Plain(int, int)
{
    return GROUND;
}

QRgb SparseNoise(int x, int y)
{
    return Scatter(x, y) % 10 == 0 && y > 0 ? WALL : GROUND;
}

QRgb DenseNoise(int x, int y)
{
    return Scatter(x, y) % 5 < 2 && y > 0 ? WALL : GROUND;
}

// Columns of one pixel that hang together at the top.
QRgb Comb(int x, int y)
{
    return x % 2 == 1 && y > 0 ? WALL : GROUND;
}

// A lane of one pixel, wound as a square spiral.
QRgb Spiral(int x, int y)
{
    const int depth = std::min(std::min(x, y), std::min(WIDTH - 1 - x, HEIGHT - 1 - y));
    const bool gap = y == x + 1 && x < HEIGHT / 2 && depth == x;
    return (depth % 2 == 1) != gap ? WALL : GROUND;
}

QRgb Photo(int x, int y)
{
    const int grain = int(Scatter(x, y) % 17);
    return qRgb(((x >> 4) & 127) + grain, ((y >> 4) & 127) + grain, (((x + y) >> 5) & 127) + grain);
}

QImage Draw(Drawing drawing)
{
    QImage picture(WIDTH, HEIGHT, QImage::Format_ARGB32_Premultiplied);
    for (int y = 0; y < HEIGHT; ++y)
    {
        QRgb* row = reinterpret_cast<QRgb*>(picture.scanLine(y));
        for (int x = 0; x < WIDTH; ++x)
            row[x] = drawing(x, y);
    }
    return picture;
}

// The number of pixels that are like the first one, on one thread.
qint64 CountAlike(const QImage& picture, int tolerance)
{
    const QRgb seed = picture.pixel(0, 0);
    const auto isNear = [tolerance](int one, int other) { return std::abs(one - other) <= tolerance; };
    qint64 count = 0;
    for (int y = 0; y < HEIGHT; ++y)
    {
        const QRgb* row = reinterpret_cast<const QRgb*>(picture.constScanLine(y));
        for (int x = 0; x < WIDTH; ++x)
            count += isNear(qRed(row[x]), qRed(seed)) && isNear(qGreen(row[x]), qGreen(seed)) &&
                    isNear(qBlue(row[x]), qBlue(seed)) && isNear(qAlpha(row[x]), qAlpha(seed))
                ? 1
                : 0;
    }
    return count;
}

void RunWand(benchmark::State& state, Drawing drawing, const WandSettings& settings)
{
    const QImage picture = Draw(drawing);
    const WorkProgress progress = [](int) { return true; };
    for (auto _ : state)
        benchmark::DoNotOptimize(WandSelection(picture, QPoint(0, 0), settings, progress));
}

void RunFlood(benchmark::State& state, Drawing drawing, const WandSettings& settings)
{
    const QImage picture = Draw(drawing);
    FillSettings fill;
    fill.tolerance = settings.tolerance;
    fill.contiguous = settings.contiguous;
    for (auto _ : state)
        benchmark::DoNotOptimize(FloodMask(picture, QPoint(0, 0), fill));
}

void RunCount(benchmark::State& state, Drawing drawing, const WandSettings& settings)
{
    const QImage picture = Draw(drawing);
    for (auto _ : state)
        benchmark::DoNotOptimize(CountAlike(picture, settings.tolerance));
}

void Register(const char* name, Drawing drawing, const WandSettings& settings)
{
    const std::string text(name);
    for (const auto& way : {std::make_pair("wand: ", RunWand), std::make_pair("flood: ", RunFlood),
                            std::make_pair("count: ", RunCount)})
        benchmark::RegisterBenchmark((way.first + text).c_str(), way.second, drawing, settings)
            ->Unit(benchmark::kMillisecond)
            ->UseRealTime();
}
} // namespace

int main(int argc, char** argv)
{
    const WandSettings exact = {0, true};
    Register("plain", Plain, exact);
    Register("plain, not contiguous", Plain, {0, false});
    Register("noise, a tenth walls", SparseNoise, exact);
    Register("noise, two fifths walls", DenseNoise, exact);
    Register("comb", Comb, exact);
    Register("spiral", Spiral, exact);
    Register("photo, tolerance 32", Photo, {32, true});
    Register("photo, tolerance 255", Photo, {255, true});
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
