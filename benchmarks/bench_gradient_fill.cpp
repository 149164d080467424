// How long a gradient takes: on a layer of 24 megapixels with the tiles saved for undo, and for one picture
// of a canvas of 1280 by 800 while it is being dragged.

#include <functional>
#include <string>
#include <vector>

#include <QImage>

#include <benchmark/benchmark.h>

#include "GradientFill.h"
#include "LayerPreview.h"

namespace
{
const QSize LAYER_SIZE(6000, 4000);
const QSize SCREEN_SIZE(1280, 800);

QImage Drawn(const QSize& size, bool translucent)
{
    QImage image(size, QImage::Format_ARGB32_Premultiplied);
    for (int y = 0; y < size.height(); ++y)
    {
        QRgb* row = reinterpret_cast<QRgb*>(image.scanLine(y));
        for (int x = 0; x < size.width(); ++x)
        {
            const int alpha = translucent ? (x / 16 + y / 16) % 256 : 255;
            row[x] = qPremultiply(qRgba((x * 7) & 255, (y * 5) & 255, (x + y) & 255, alpha));
        }
    }
    return image;
}

GradientSettings Settings(const QSize& size)
{
    GradientSettings settings;
    settings.start = QPointF(size.width() * 0.2, size.height() * 0.3);
    settings.end = QPointF(size.width() * 0.8, size.height() * 0.7);
    settings.stops = {{0.0, QColor(250, 200, 30)},
                      {0.3, QColor(200, 20, 80, 200)},
                      {0.3, QColor(20, 20, 80)},
                      {0.8, QColor(20, 220, 180, 100)},
                      {1.0, QColor(250, 250, 250)}};
    return settings;
}

QImage SoftSelection(const QSize& size)
{
    QImage selection(size, QImage::Format_Grayscale8);
    for (int y = 0; y < size.height(); ++y)
    {
        for (int x = 0; x < size.width(); ++x)
            selection.scanLine(y)[x] = uchar(1 + (x + y) % 255);
    }
    return selection;
}

void RunDrawing(benchmark::State& state, const GradientSettings& settings)
{
    QImage layer = Drawn(LAYER_SIZE, false);
    for (auto _ : state)
    {
        QVector<SavedTile> saved = DrawGradient(layer, settings, nullptr);
        state.PauseTiming();
        ExchangeTiles(layer, saved);
        saved.clear();
        state.ResumeTiming();
    }
}

void RunPreview(benchmark::State& state, const GradientSettings& settings)
{
    QImage picture = Drawn(SCREEN_SIZE, false);
    const double scale = double(LAYER_SIZE.width()) / SCREEN_SIZE.width();
    for (auto _ : state)
        DrawGradientPreview(picture, QTransform::fromScale(scale, scale), settings);
}

// What a drag shows, from the layers to the pixels of the screen.
void RunCanvas(benchmark::State& state, int layers, int blendMode, double scale)
{
    QVector<PreviewLayer> stack;
    for (int i = 0; i < layers; ++i)
        stack.append({Drawn(LAYER_SIZE, i > 0), i > 0 ? blendMode : 0, 1.0});
    LayerPreview preview;
    preview.SetLayers(stack, layers / 2);
    const PreviewPlace place = {scale, QPointF(0, 0), 1.0, QRect(QPoint(), SCREEN_SIZE)};
    GradientSettings settings = Settings(LAYER_SIZE);
    const auto change = [&](QImage& picture, const QTransform& toLayer)
    { DrawGradientPreview(picture, toLayer, settings); };
    QPoint corner;
    preview.Render(place, change, &corner);
    for (auto _ : state)
    {
        settings.end += QPointF(1, 0);
        benchmark::DoNotOptimize(preview.Render(place, change, &corner));
    }
}

// The first picture of a drag, for which the layers are scaled down.
void RunFirstPicture(benchmark::State& state, int layers)
{
    const QVector<PreviewLayer> stack(layers, {Drawn(LAYER_SIZE, false), 0, 1.0});
    const PreviewPlace place = {0.2, QPointF(0, 0), 1.0, QRect(QPoint(), SCREEN_SIZE)};
    QPoint corner;
    for (auto _ : state)
    {
        LayerPreview preview;
        preview.SetLayers(stack, 0);
        benchmark::DoNotOptimize(preview.Render(
            place, [](QImage&, const QTransform&) {}, &corner));
    }
}

template <typename Function, typename... Arguments>
void Register(const char* name, Function function, Arguments... arguments)
{
    benchmark::RegisterBenchmark(name, function, arguments...)
        ->Unit(benchmark::kMillisecond)
        ->MeasureProcessCPUTime()
        ->UseRealTime();
}

using Settler = std::function<void(GradientSettings&)>;

void RegisterBoth(const std::string& name, const Settler& change)
{
    GradientSettings settings = Settings(LAYER_SIZE);
    change(settings);
    Register(("preview, " + name).c_str(), RunPreview, settings);
    if (name == "selection")
        settings.selection = SoftSelection(LAYER_SIZE);
    Register(("24 megapixels, " + name).c_str(), RunDrawing, settings);
}
} // namespace

int main(int argc, char** argv)
{
    for (int type = 0; type < 4; ++type)
        RegisterBoth(std::vector<std::string>{"linear", "circular", "diamond", "angle"}[size_t(type)],
                     [type](GradientSettings& settings) { settings.type = type; });
    RegisterBoth("angle, repeated and swinging",
                 [](GradientSettings& settings)
                 {
                     settings.type = GradientSettings::Angle;
                     settings.repeatCount = 20;
                     settings.pingPong = true;
                 });
    RegisterBoth("soft light", [](GradientSettings& settings) { settings.blendMode = 8; });
    RegisterBoth("selection", [](GradientSettings& settings) { settings.opacity = 50; });
    Register("canvas, one layer, all of it", RunCanvas, 1, 0, 0.2);
    Register("canvas, five layers, all of it", RunCanvas, 5, 0, 0.2);
    Register("canvas, five layers in soft light", RunCanvas, 5, 8, 0.2);
    Register("canvas, five layers, original size", RunCanvas, 5, 0, 1.0);
    Register("canvas, five layers, threefold", RunCanvas, 5, 0, 3.0);
    Register("first picture, one layer", RunFirstPicture, 1);
    Register("first picture, five layers", RunFirstPicture, 5);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
