// How long one live step of a bent text takes: a line that is 2,000 pixels wide, laid out, bent and drawn,
// and put into a layer of 12 megapixels that is composed anew.

#include <QGuiApplication>
#include <QPainter>

#include <benchmark/benchmark.h>

#include "KXDocumentInterface.h"
#include "TextPicture.h"

namespace
{

const int Width = 2000;
const QSize DocumentSize(4000, 3000);

// As many words as fill the width at this size.
TextDescription Line(int size)
{
    TextDescription description;
    description.size = size;
    description.anchor = QPoint(1000, 1000);
    const QRect bounds(QPoint(), DocumentSize);
    while (DrawText(description, bounds).image.width() < Width)
        description.text += QStringLiteral("flag ");
    return description;
}

void Bend(TextDescription& description, int step)
{
    description.warp.bend = 20 + step % 80;
    description.warp.horizontalDistortion = -30;
    description.warp.verticalDistortion = 10;
}

void DrawBent(benchmark::State& state)
{
    TextDescription description = Line(int(state.range(0)));
    int step = 0;
    for (auto _ : state)
    {
        Bend(description, ++step);
        benchmark::DoNotOptimize(DrawText(description, QRect(QPoint(), DocumentSize)).image.width());
    }
}
BENCHMARK(DrawBent)->Arg(40)->Arg(100)->Arg(300)->Unit(benchmark::kMillisecond);

void ShowBent(benchmark::State& state)
{
    QImage picture(DocumentSize, QImage::Format_ARGB32_Premultiplied);
    picture.fill(Qt::white);
    KXDocumentInterface document(picture);
    KXDocumentInterface::Layer layer;
    picture.fill(Qt::transparent);
    layer.image = picture;
    document.InsertLayer(1, layer);
    TextDescription description = Line(int(state.range(0)));
    QRect area;
    int step = 0;
    for (auto _ : state)
    {
        Bend(description, ++step);
        const TextPicture drawn = DrawText(description, document.GetRect());
        {
            QPainter painter(&document.EditLayer(1));
            painter.setCompositionMode(QPainter::CompositionMode_Source);
            painter.fillRect(area, Qt::transparent);
            painter.drawImage(drawn.corner, drawn.image);
        }
        document.NotifyChanged(area | drawn.GetRect());
        area = drawn.GetRect();
        benchmark::DoNotOptimize(document.GetComposition().width());
    }
}
BENCHMARK(ShowBent)->Arg(40)->Arg(100)->Arg(300)->Unit(benchmark::kMillisecond);

} // namespace

int main(int argc, char** argv)
{
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QGuiApplication app(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
