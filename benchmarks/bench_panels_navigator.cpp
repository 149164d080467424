// What the navigator panel's widgets cost on large documents: the histogram beside reading the pixels once,
// and the overview beside nothing, since it must not grow with the document.

#include <QApplication>
#include <QImage>
#include <QtTest>

#include <benchmark/benchmark.h>

#include <cmath>

#include "HistogramWidget.h"
#include "KXDocumentInterface.h"
#include "NavigatorWidget.h"

namespace
{

// A picture of that many million pixels, four by three, with all levels and some of it half transparent.
QImage Picture(int megapixels)
{
    const int width = int(std::sqrt(megapixels * 1e6 * 4 / 3));
    QImage image(width, width * 3 / 4, QImage::Format_ARGB32_Premultiplied);
    for (int y = 0; y < image.height(); ++y)
    {
        auto* row = reinterpret_cast<QRgb*>(image.scanLine(y));
        for (int x = 0; x < width; ++x)
            row[x] = qPremultiply(qRgba(x / 3, (x * y) >> 7, y / 5, y % 8 == 0 ? 128 : 255));
    }
    return image;
}

void ReadOnce(benchmark::State& state)
{
    const QImage image = Picture(int(state.range(0)));
    const auto* pixels = reinterpret_cast<const QRgb*>(image.constBits());
    const qint64 count = image.sizeInBytes() / qint64(sizeof(QRgb));
    for (auto _ : state)
    {
        QRgb sum = 0;
        for (qint64 i = 0; i < count; ++i)
            sum += pixels[i];
        benchmark::DoNotOptimize(sum);
    }
}
BENCHMARK(ReadOnce)->Arg(12)->Arg(50)->Arg(100)->Unit(benchmark::kMillisecond)->UseRealTime();

// From the request until the figures are told.
void Histogram(benchmark::State& state)
{
    KXDocumentInterface document(Picture(int(state.range(0))));
    document.GetComposition();
    HistogramWidget widget;
    widget.SetChannel(HistogramWidget::ColorChannel(int(state.range(1))));
    widget.resize(400, 200);
    widget.show();
    if (!QTest::qWaitForWindowExposed(&widget))
        state.SkipWithError("the widget is not shown");
    widget.SetDocument(&document);
    int told = 0;
    QObject::connect(&widget, &HistogramWidget::CountChanged, [&told] { ++told; });
    for (auto _ : state)
    {
        told = 0;
        widget.RebuildHistogramm();
        while (told == 0)
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }
}
BENCHMARK(Histogram)
    ->ArgNames({"megapixels", "channel"})
    ->ArgsProduct({{12, 50, 100}, {0, 7}})
    ->Unit(benchmark::kMillisecond)
    ->UseRealTime();

void Overview(benchmark::State& state)
{
    KXDocumentInterface document(Picture(int(state.range(0))));
    document.GetComposition();
    NavigatorWidget widget;
    widget.resize(400, 300);
    widget.SetDocument(&document, nullptr);
    QImage target(widget.size(), QImage::Format_ARGB32_Premultiplied);
    for (auto _ : state)
    {
        widget.RebuildView();
        widget.render(&target);
    }
}
BENCHMARK(Overview)->Arg(12)->Arg(50)->Arg(100)->Unit(benchmark::kMillisecond);

} // namespace

int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
