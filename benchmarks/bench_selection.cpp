// Selections of a picture of 24 megapixels: what is done to their masks, and what the moving outline costs
// beside a canvas that stands still.

#include <QApplication>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QRandomGenerator>
#include <QTimer>
#include <QtTest>

#include <benchmark/benchmark.h>

#include <sys/resource.h>

#include "Document.h"
#include "KXDocumentInterface.h"
#include "NVDocumentView.h"
#include "SelectCommand.h"
#include "SelectionMask.h"
#include "SelectionOutline.h"

namespace
{

const QSize Size(6000, 4000);
const int MovingMs = 5000;

enum Kind
{
    None,
    Rectangle,
    Ellipse,
    // One pixel of 32 is selected.
    Specks
};

QImage Noise()
{
    QImage mask(Size, QImage::Format_Grayscale8);
    QRandomGenerator random(1);
    for (int y = 0; y < Size.height(); ++y)
    {
        for (int x = 0; x < Size.width(); ++x)
            mask.scanLine(y)[x] = random.generate() % 32 == 0 ? 255 : 0;
    }
    return mask;
}

QImage MaskOf(int kind)
{
    switch (kind)
    {
    case Rectangle:
        return RectangleMask(Size, QRectF(500, 500, 5000, 3000));
    case Ellipse:
        return EllipseMask(Size, QRectF(100, 100, 5800, 3800));
    case Specks:
        return Noise();
    default:
        return QImage();
    }
}

void DrawEllipse(benchmark::State& state)
{
    for (auto _ : state)
        benchmark::DoNotOptimize(MaskOf(Ellipse));
}
BENCHMARK(DrawEllipse)->Unit(benchmark::kMillisecond)->UseRealTime();

void Combine(benchmark::State& state)
{
    const QImage before = MaskOf(Ellipse);
    const QImage with = MaskOf(Rectangle);
    for (auto _ : state)
        benchmark::DoNotOptimize(CombineMasks(before, with, int(state.range(0))));
}
BENCHMARK(Combine)
    ->Arg(UniteSelections)
    ->Arg(SubtractSelection)
    ->Arg(IntersectSelections)
    ->Unit(benchmark::kMillisecond)
    ->UseRealTime();

void Grow(benchmark::State& state)
{
    const QImage mask = MaskOf(Ellipse);
    for (auto _ : state)
        benchmark::DoNotOptimize(GrowMask(mask, int(state.range(0))));
}
BENCHMARK(Grow)->Arg(1)->Arg(20)->Arg(100)->Arg(250)->Unit(benchmark::kMillisecond)->UseRealTime();

void Feather(benchmark::State& state)
{
    const QImage mask = MaskOf(Ellipse);
    for (auto _ : state)
        benchmark::DoNotOptimize(FeatherMask(mask, double(state.range(0))));
}
BENCHMARK(Feather)->Arg(5)->Arg(250)->Unit(benchmark::kMillisecond)->UseRealTime();

// What an undo step does with the mask of before.
void Pack(benchmark::State& state)
{
    const QImage mask = MaskOf(int(state.range(0)));
    qint64 bytes = 0;
    for (auto _ : state)
        bytes = MaskStore(mask).GetBytes();
    state.counters["bytes"] = double(bytes);
}
BENCHMARK(Pack)->Arg(Rectangle)->Arg(Ellipse)->Arg(Specks)->Unit(benchmark::kMillisecond)->UseRealTime();

double ProcessSeconds()
{
    rusage usage = {};
    getrusage(RUSAGE_SELF, &usage);
    const auto seconds = [](const timeval& time) { return double(time.tv_sec) + double(time.tv_usec) / 1e6; };
    return seconds(usage.ru_utime) + seconds(usage.ru_stime);
}

// The share of one core that the whole process takes while the picture stands still on a canvas of 1280 by
// 860 pixels; the kind None is what it takes anyway. The scale is in percent, 0 for all of the picture.
void MovingOutline(benchmark::State& state)
{
    QImage picture(Size, QImage::Format_ARGB32_Premultiplied);
    picture.fill(Qt::darkCyan);
    Document document(picture, QString(), QStringLiteral("Picture"));
    NVDocumentView view(document.GetModel());
    const auto* outline = new SelectionOutline(document.GetPixels(), &view);
    view.resize(1280, 860);
    view.show();
    view.FitInView();
    if (!QTest::qWaitForWindowExposed(&view))
        state.SkipWithError("the canvas is not shown");
    if (state.range(1) > 0)
        view.Scale(double(state.range(1)) / 100 / view.GetScale(), QPointF(640, 430));
    document.GetPixels()->SetSelectionMask(MaskOf(int(state.range(0))));
    if (!QTest::qWaitFor([outline] { return !outline->IsComputing(); }))
        state.SkipWithError("there is no outline");
    for (auto _ : state)
    {
        QElapsedTimer clock;
        QEventLoop loop;
        QTimer::singleShot(MovingMs, &loop, &QEventLoop::quit);
        const double before = ProcessSeconds();
        clock.start();
        loop.exec();
        state.counters["percent"] = 100 * (ProcessSeconds() - before) / (double(clock.nsecsElapsed()) / 1e9);
    }
}
BENCHMARK(MovingOutline)
    ->ArgsProduct({{None, Rectangle, Ellipse, Specks}, {0, 100, 800}})
    ->Iterations(1)
    ->Unit(benchmark::kMillisecond)
    ->UseRealTime();

} // namespace

int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
