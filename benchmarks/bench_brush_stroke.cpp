// How fast a stroke is on a picture of 24 megapixels: whole strokes by size, and what one move of the pointer
// takes with the largest brush, which decides whether the paint follows the hand.

#include <algorithm>
#include <chrono>
#include <memory>

#include <benchmark/benchmark.h>

#include "BrushStroke.h"

namespace
{
const int WIDTH = 6000;
const int HEIGHT = 4000;
const int NO_HURRY = 1000000;

QImage& Picture()
{
    static QImage picture;
    if (picture.isNull())
    {
        picture = QImage(WIDTH, HEIGHT, QImage::Format_ARGB32_Premultiplied);
        for (int y = 0; y < HEIGHT; ++y)
        {
            QRgb* row = reinterpret_cast<QRgb*>(picture.scanLine(y));
            for (int x = 0; x < WIDTH; ++x)
                row[x] = qRgb(x & 255, y & 255, (x + y) & 255);
        }
    }
    return picture;
}

StrokeSettings Settings(double size, double hardness, double spacing, int blendMode, int fillMode)
{
    StrokeSettings settings;
    settings.size = size;
    settings.tip.hardness = hardness;
    settings.spacing = spacing;
    settings.blendMode = blendMode;
    settings.fillMode = fillMode;
    settings.foreground = QColor(200, 60, 20);
    settings.seed = 1;
    return settings;
}

// A stroke right across the picture at a tenth of the size from stamp to stamp, from the first point to the
// release.
void WholeStroke(benchmark::State& state)
{
    const StrokeSettings settings =
        Settings(double(state.range(0)), double(state.range(1)) / 100.0, 10.0, int(state.range(2)), 0);
    QImage& picture = Picture();
    qint64 stamps = 0;
    for (auto _ : state)
    {
        BrushStroke stroke(settings);
        stroke.AddPoint({QPointF(200.0, 1000.0), 1.0});
        stroke.AddPoint({QPointF(5800.0, 3000.0), 1.0});
        benchmark::DoNotOptimize(stroke.Finish(picture));
        stamps += stroke.StampCount();
    }
    state.counters["stamps/s"] = benchmark::Counter(double(stamps), benchmark::Counter::kIsRate);
}

// The course of a pointer over the picture, in moves of 60 pixels; down a slope and back up.
QPointF CourseAt(int move)
{
    const int column = move % 90;
    const double x = 300.0 + 60.0 * column;
    return QPointF(x, 1500.0 + 10.0 * (column < 45 ? column : 90 - column));
}

// One move of 60 pixels with a brush of 2500 in the middle of a stroke.
void Move(benchmark::State& state)
{
    const StrokeSettings settings = Settings(2500.0, double(state.range(1)) / 100.0, double(state.range(0)),
                                             int(state.range(2)), int(state.range(3)));
    QImage& picture = Picture();
    std::unique_ptr<BrushStroke> stroke;
    int move = 0;
    double longest = 0.0;
    for (auto _ : state)
    {
        if (move % 90 == 0)
        {
            state.PauseTiming();
            stroke = std::make_unique<BrushStroke>(settings);
            stroke->AddPoint({CourseAt(move++), 1.0});
            stroke->Advance(picture, NO_HURRY);
            state.ResumeTiming();
        }
        const auto start = std::chrono::steady_clock::now();
        stroke->AddPoint({CourseAt(move++), 1.0});
        benchmark::DoNotOptimize(stroke->Advance(picture, NO_HURRY));
        const std::chrono::duration<double, std::milli> time = std::chrono::steady_clock::now() - start;
        longest = std::max(longest, time.count());
    }
    state.counters["longest_ms"] = longest;
}

// The press of the button with a brush of 2500: the tip is made, the tiles are saved, all pixels are new.
void FirstStamp(benchmark::State& state)
{
    const StrokeSettings settings =
        Settings(2500.0, double(state.range(0)) / 100.0, 10.0, int(state.range(1)), int(state.range(2)));
    QImage& picture = Picture();
    for (auto _ : state)
    {
        BrushStroke stroke(settings);
        stroke.AddPoint({QPointF(3000.0, 2000.0), 1.0});
        benchmark::DoNotOptimize(stroke.Advance(picture, NO_HURRY));
    }
}

// A fling of 3000 pixels with a soft brush of 2500, worked off in calls of 12 milliseconds: how long such a
// call takes.
void BudgetOf12(benchmark::State& state)
{
    const StrokeSettings settings =
        Settings(2500.0, 0.0, double(state.range(0)), int(state.range(1)), int(state.range(2)));
    QImage& picture = Picture();
    double longest = 0.0;
    qint64 calls = 0;
    for (auto _ : state)
    {
        state.PauseTiming();
        BrushStroke stroke(settings);
        stroke.AddPoint({QPointF(1500.0, 2000.0), 1.0});
        stroke.Advance(picture, NO_HURRY);
        stroke.AddPoint({QPointF(4500.0, 2000.0), 1.0});
        state.ResumeTiming();
        while (stroke.HasPending())
        {
            const auto start = std::chrono::steady_clock::now();
            benchmark::DoNotOptimize(stroke.Advance(picture, 12));
            const std::chrono::duration<double, std::milli> time = std::chrono::steady_clock::now() - start;
            longest = std::max(longest, time.count());
            ++calls;
        }
    }
    state.counters["longest_ms"] = longest;
    state.counters["calls"] = benchmark::Counter(double(calls), benchmark::Counter::kAvgIterations);
}

// A single stamp of 200 pixels with a blur, where four tiles meet, with all that belongs to it: source,
// stroke, point and release.
void BlurDab(benchmark::State& state)
{
    StrokeSettings settings = Settings(200.0, 0.0, 10.0, 0, 0);
    QImage& picture = Picture();
    double longest = 0.0;
    for (auto _ : state)
    {
        const auto start = std::chrono::steady_clock::now();
        settings.source = MakeBlurSource(double(state.range(0)) / 10.0);
        BrushStroke stroke(settings);
        stroke.AddPoint({QPointF(3072.0, 2048.0), 1.0});
        benchmark::DoNotOptimize(stroke.Finish(picture));
        const std::chrono::duration<double, std::milli> time = std::chrono::steady_clock::now() - start;
        longest = std::max(longest, time.count());
    }
    state.counters["longest_ms"] = longest;
}

enum Paint
{
    Eraser,
    Clone,
    Dodge,
    Blur
};

StrokeSettings SettingsFor(int paint, double hardness)
{
    StrokeSettings settings = Settings(2500.0, hardness, 10.0, 0, 0);
    settings.erase = paint == Eraser;
    if (paint == Clone)
        settings.source = MakeCloneSource(QPoint(-100, 50));
    else if (paint == Dodge)
        settings.source = MakeDodgeSource(ToneRange::Midtones, 50.0);
    else if (paint == Blur)
        settings.source = MakeBlurSource(5.0);
    return settings;
}

// The press of the button with a brush of 2500 that erases, or paints from a source.
void FirstSpecialStamp(benchmark::State& state)
{
    QImage& picture = Picture();
    for (auto _ : state)
    {
        BrushStroke stroke(SettingsFor(int(state.range(0)), double(state.range(1)) / 100.0));
        stroke.AddPoint({QPointF(3000.0, 2000.0), 1.0});
        benchmark::DoNotOptimize(stroke.Advance(picture, NO_HURRY));
    }
    picture = QImage();
}

// A course of 89 moves of 60 pixels, from the second point on.
void SpecialMove(benchmark::State& state)
{
    QImage& picture = Picture();
    BrushStroke stroke(SettingsFor(int(state.range(0)), double(state.range(1)) / 100.0));
    int move = 0;
    stroke.AddPoint({CourseAt(move++), 1.0});
    stroke.Advance(picture, NO_HURRY);
    double longest = 0.0;
    for (auto _ : state)
    {
        const auto start = std::chrono::steady_clock::now();
        stroke.AddPoint({CourseAt(move++), 1.0});
        benchmark::DoNotOptimize(stroke.Advance(picture, NO_HURRY));
        const std::chrono::duration<double, std::milli> time = std::chrono::steady_clock::now() - start;
        longest = std::max(longest, time.count());
    }
    state.counters["longest_ms"] = longest;
    picture = QImage();
}

const int NORMAL = 0;
const int MULTIPLY = 1;
const int SOFT_LIGHT = 8;
const int COLOR = StrokeSettings::Color;
const int RANDOM = StrokeSettings::RandomColor;
} // namespace

BENCHMARK(WholeStroke)
    ->ArgNames({"size", "hardness", "blend"})
    ->ArgsProduct({{1, 20, 200, 1000, 2500}, {100, 0}, {NORMAL, MULTIPLY}})
    ->Unit(benchmark::kMillisecond)
    ->MeasureProcessCPUTime()
    ->UseRealTime();
BENCHMARK(Move)
    ->ArgNames({"spacing", "hardness", "blend", "fill"})
    ->ArgsProduct({{10, 5, 1}, {100, 0}, {NORMAL, MULTIPLY, SOFT_LIGHT}, {COLOR}})
    ->ArgsProduct({{10, 5, 1}, {100, 0}, {NORMAL}, {RANDOM}})
    ->Iterations(89)
    ->Unit(benchmark::kMillisecond)
    ->MeasureProcessCPUTime()
    ->UseRealTime();
BENCHMARK(BudgetOf12)
    ->ArgNames({"spacing", "blend", "fill"})
    ->ArgsProduct({{5, 1}, {NORMAL, SOFT_LIGHT}, {COLOR, RANDOM}})
    ->Iterations(3)
    ->Unit(benchmark::kMillisecond)
    ->MeasureProcessCPUTime()
    ->UseRealTime();
BENCHMARK(FirstStamp)
    ->ArgNames({"hardness", "blend", "fill"})
    ->ArgsProduct({{100, 0}, {NORMAL, MULTIPLY}, {COLOR, RANDOM}})
    ->Unit(benchmark::kMillisecond)
    ->MeasureProcessCPUTime()
    ->UseRealTime();
BENCHMARK(BlurDab)
    ->ArgName("sigma*10")
    ->Arg(3)
    ->Arg(20)
    ->Arg(40)
    ->Arg(50)
    ->Arg(80)
    ->Arg(200)
    ->Arg(500)
    ->Unit(benchmark::kMillisecond)
    ->MeasureProcessCPUTime()
    ->UseRealTime();
BENCHMARK(FirstSpecialStamp)
    ->ArgNames({"paint", "hardness"})
    ->ArgsProduct({{Eraser, Clone, Dodge, Blur}, {100, 0}})
    ->Unit(benchmark::kMillisecond)
    ->MeasureProcessCPUTime()
    ->UseRealTime();
BENCHMARK(SpecialMove)
    ->ArgNames({"paint", "hardness"})
    ->ArgsProduct({{Eraser, Clone, Dodge, Blur}, {100, 0}})
    ->Iterations(89)
    ->Unit(benchmark::kMillisecond)
    ->MeasureProcessCPUTime()
    ->UseRealTime();

BENCHMARK_MAIN();
