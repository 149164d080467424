// What the navigator panel's widgets cost on large documents. Histogram and PlainCount, which counts line by
// line on one thread, are to be read as ratios to ReadOnce; the overview beside nothing, since it must not
// grow with the document.

#include <QApplication>
#include <QImage>
#include <QtTest>

#include <benchmark/benchmark.h>

#include <algorithm>
#include <array>
#include <cmath>

#include "HistogramWidget.h"
#include "KXDocumentInterface.h"
#include "NavigatorWidget.h"

namespace
{

enum Kind
{
    Opaque,
    // One row of eight is half transparent.
    PartlyTranslucent,
    OneColor
};

// That many million pixels, four by three; with all levels if it is not of one colour.
QImage Picture(int megapixels, int kind)
{
    const int width = int(std::sqrt(megapixels * 1e6 * 4 / 3));
    QImage image(width, width * 3 / 4, QImage::Format_ARGB32_Premultiplied);
    for (int y = 0; y < image.height(); ++y)
    {
        auto* row = reinterpret_cast<QRgb*>(image.scanLine(y));
        const int alpha = kind == PartlyTranslucent && y % 8 == 0 ? 128 : 255;
        for (int x = 0; x < width; ++x)
        {
            row[x] = kind == OneColor ? qRgb(10, 200, 255)
                                      : qPremultiply(qRgba(x / 3, (x * y) >> 7, y / 5, alpha));
        }
    }
    return image;
}

void ReadOnce(benchmark::State& state)
{
    const QImage image = Picture(int(state.range(0)), Opaque);
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

void PlainCount(benchmark::State& state)
{
    const QImage image = Picture(int(state.range(0)), int(state.range(1)));
    for (auto _ : state)
    {
        std::array<std::array<int, 256>, 3> counts = {};
        for (int y = 0; y < image.height(); ++y)
        {
            const auto* row = reinterpret_cast<const QRgb*>(image.constScanLine(y));
            for (int x = 0; x < image.width(); ++x)
            {
                const QRgb color = qUnpremultiply(row[x]);
                ++counts[0][size_t(qRed(color))];
                ++counts[1][size_t(qGreen(color))];
                ++counts[2][size_t(qBlue(color))];
            }
        }
        benchmark::DoNotOptimize(counts);
    }
}
BENCHMARK(PlainCount)
    ->ArgNames({"megapixels", "kind"})
    ->ArgsProduct({{12, 50, 100}, {Opaque, OneColor}})
    ->Unit(benchmark::kMillisecond)
    ->UseRealTime();

// From the request until the figures are told.
void Histogram(benchmark::State& state)
{
    KXDocumentInterface document(Picture(int(state.range(0)), int(state.range(1))));
    document.GetComposition();
    HistogramWidget widget;
    widget.SetChannel(HistogramWidget::ColorChannel(int(state.range(2))));
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
    ->ArgNames({"megapixels", "kind", "channel"})
    ->ArgsProduct({{12, 50, 100}, {Opaque, PartlyTranslucent, OneColor}, {0, 7}})
    ->Unit(benchmark::kMillisecond)
    ->UseRealTime();

// Three layers, of which the middle one is changed a little, as by one dab of a brush.
void Overview(benchmark::State& state)
{
    KXDocumentInterface document(Picture(int(state.range(0)), Opaque));
    KXDocumentInterface::Layer layer;
    for (const int alpha : {60, 30})
    {
        layer.image = QImage(document.GetSize(), QImage::Format_ARGB32_Premultiplied);
        layer.image.fill(QColor(255, 255, 255, alpha));
        document.InsertLayer(document.GetLayerCount(), layer);
    }
    layer.image = QImage();
    document.GetComposition();
    NavigatorWidget widget;
    widget.resize(int(state.range(1)), int(state.range(2)));
    widget.SetDocument(&document, nullptr);
    QObject::connect(&document, &KXDocumentInterface::CompositionChanged, &widget,
                     &NavigatorWidget::RebuildView);
    QImage target(widget.size(), QImage::Format_ARGB32_Premultiplied);
    const QRect dab(document.GetRect().center(), QSize(40, 40));
    QRgb color = 0;
    for (auto _ : state)
    {
        QImage& image = document.EditLayer(1);
        for (int y = dab.top(); y <= dab.bottom(); ++y)
        {
            auto* row = reinterpret_cast<QRgb*>(image.scanLine(y));
            std::fill(row + dab.left(), row + dab.right() + 1, 0xff000000 | ++color);
        }
        document.NotifyChanged(dab);
        widget.render(&target);
    }
}
BENCHMARK(Overview)
    ->ArgNames({"megapixels", "width", "height"})
    ->ArgsProduct({{12, 50, 100}, {240}, {160}})
    ->ArgsProduct({{12, 50, 100}, {400}, {300}})
    ->Unit(benchmark::kMillisecond);

} // namespace

int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
