// How long a fill of a picture of 24 megapixels takes from the click to the saved tiles: plain, and with what
// makes it hard.

#include <algorithm>
#include <functional>
#include <vector>

#include <QImage>

#include <benchmark/benchmark.h>

#include "FloodFill.h"

namespace
{
const int WIDTH = 6000;
const int HEIGHT = 4000;
const QRgb GROUND = qRgb(200, 210, 220);
const QRgb WALL = qRgb(20, 30, 40);

using Drawing = std::function<QRgb(int x, int y)>;

quint32 Scatter(int x, int y)
{
    quint32 value = quint32(x) * 0x9e3779b1u + quint32(y) * 0x85ebca77u;
    value = (value ^ (value >> 15)) * 0x2c1b3c6du;
    value = (value ^ (value >> 12)) * 0x297a2d39u;
    return value ^ (value >> 15);
}

QRgb Photo(int x, int y)
{
    const int grain = int(Scatter(x, y) % 17);
    return qRgb(((x >> 4) & 127) + grain, ((y >> 4) & 127) + grain, (((x + y) >> 5) & 127) + grain);
}

// One wall wound as a square spiral, with a lane of one pixel between its turns.
QRgb Spiral(int x, int y)
{
    const int depth = std::min(std::min(x, y), std::min(WIDTH - 1 - x, HEIGHT - 1 - y));
    const bool gap = y == x + 1 && x < HEIGHT / 2 && depth == x;
    return (depth % 2 == 1) != gap ? WALL : GROUND;
}

const std::vector<Drawing>& Drawings()
{
    static const std::vector<Drawing> drawings = {
        [](int, int) { return GROUND; },
        [](int x, int y) { return (x + y) % 2 == 0 ? GROUND : WALL; },
        [](int x, int y) { return Scatter(x, y) % 10 == 0 && y > 0 ? WALL : GROUND; },
        [](int x, int y) { return Scatter(x, y) % 5 < 2 && y > 0 ? WALL : GROUND; },
        Spiral,
        [](int x, int y) { return x % 2 == 1 && y > 0 ? WALL : GROUND; },
        Photo,
        [](int, int) { return qRgba(50, 60, 70, 100); },
    };
    return drawings;
}

enum Picture
{
    Plain,
    Checkerboard,
    SparseNoise,
    DenseNoise,
    Wound,
    Comb,
    PhotoLike,
    Translucent
};

QImage Draw(int index)
{
    QImage picture(WIDTH, HEIGHT, QImage::Format_ARGB32_Premultiplied);
    const Drawing& drawing = Drawings()[size_t(index)];
    for (int y = 0; y < HEIGHT; ++y)
    {
        QRgb* row = reinterpret_cast<QRgb*>(picture.scanLine(y));
        for (int x = 0; x < WIDTH; ++x)
            row[x] = drawing(x, y);
    }
    return picture;
}

void Run(benchmark::State& state, int picture, const FillSettings& settings)
{
    QImage layer = Draw(picture);
    int tiles = 0;
    for (auto _ : state)
    {
        QVector<SavedTile> saved = FloodFill(layer, QPoint(0, 0), settings);
        tiles = saved.size();
        state.PauseTiming();
        ExchangeTiles(layer, saved);
        saved.clear();
        state.ResumeTiming();
    }
    state.counters["tiles"] = tiles;
}

FillSettings Settings(const std::function<void(FillSettings&)>& change)
{
    FillSettings settings;
    settings.color = QColor(200, 60, 20);
    change(settings);
    return settings;
}

QImage Pattern()
{
    QImage pattern(37, 41, QImage::Format_ARGB32_Premultiplied);
    for (int y = 0; y < pattern.height(); ++y)
    {
        for (int x = 0; x < pattern.width(); ++x)
            pattern.setPixel(x, y, qRgba(x * 3, y * 3, 90, 150));
    }
    return pattern;
}

QImage SoftSelection()
{
    QImage selection(WIDTH, HEIGHT, QImage::Format_Grayscale8);
    for (int y = 0; y < HEIGHT; ++y)
    {
        for (int x = 0; x < WIDTH; ++x)
            selection.scanLine(y)[x] = uchar(1 + (x + y) % 255);
    }
    return selection;
}

void Register(const char* name, int picture, const std::function<void(FillSettings&)>& change)
{
    benchmark::RegisterBenchmark(name, Run, picture, Settings(change))
        ->Unit(benchmark::kMillisecond)
        ->MeasureProcessCPUTime()
        ->UseRealTime();
}
} // namespace

int main(int argc, char** argv)
{
    const auto asIs = [](FillSettings&) {};
    Register("plain", Plain, asIs);
    Register("plain, antialiasing", Plain, [](FillSettings& s) { s.antialiasing = true; });
    Register("plain, not contiguous", Plain, [](FillSettings& s) { s.contiguous = false; });
    Register("plain, pattern", Plain, [](FillSettings& s) { s.pattern = Pattern(); });
    Register("plain, half opaque soft light", Plain,
             [](FillSettings& s)
             {
                 s.blendMode = 8;
                 s.opacity = 50.0;
             });
    Register("plain, soft selection", Plain, [](FillSettings& s) { s.selection = SoftSelection(); });
    Register("plain, transparency ignored", Plain, [](FillSettings& s) { s.ignoreTransparency = true; });
    Register("translucent, transparency ignored", Translucent,
             [](FillSettings& s) { s.ignoreTransparency = true; });
    Register("checkerboard, one pixel", Checkerboard, asIs);
    Register("checkerboard, not contiguous", Checkerboard, [](FillSettings& s) { s.contiguous = false; });
    Register("checkerboard, tolerance 255", Checkerboard, [](FillSettings& s) { s.tolerance = 255; });
    Register("noise, a tenth walls", SparseNoise, asIs);
    Register("noise, a tenth walls, antialiasing", SparseNoise,
             [](FillSettings& s) { s.antialiasing = true; });
    Register("noise, two fifths walls", DenseNoise, asIs);
    Register("spiral", Wound, asIs);
    Register("comb", Comb, asIs);
    Register("photo, tolerance 32", PhotoLike, asIs);
    Register("photo, tolerance 255", PhotoLike, [](FillSettings& s) { s.tolerance = 255; });
    Register("photo, all at once", PhotoLike,
             [](FillSettings& s)
             {
                 s.tolerance = 255;
                 s.antialiasing = true;
                 s.pattern = Pattern();
                 s.selection = SoftSelection();
                 s.blendMode = 3;
             });
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
