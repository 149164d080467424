// How long one live step of a bent text takes: a line that is 2,000 pixels wide, laid out, bent and drawn,
// alone, and in the dialog of the text tool, over a picture of 12 megapixels.

#include <QApplication>
#include <QDialogButtonBox>
#include <QDoubleSpinBox>
#include <QPushButton>
#include <QSettings>
#include <QTemporaryDir>
#include <QTimer>
#include <QtTest>

#include <benchmark/benchmark.h>

#include "Document.h"
#include "NVDocumentView.h"
#include "NVTextToolbar.h"
#include "TextPicture.h"
#include "TextTool.h"

namespace
{

const int Width = 2000;
const QSize DocumentSize(4000, 3000);
const QSize CanvasSize(1280, 860);

// As many words as fill the width at this size.
TextDescription Line(int size)
{
    TextDescription description;
    description.family = QStringLiteral("DejaVu Sans");
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

// From within the dialog's own loop.
void BendInDialog(benchmark::State& state, const NVDocumentView& view)
{
    auto* dialog = QApplication::activeModalWidget();
    auto* bend = dialog->findChild<QDoubleSpinBox*>(QStringLiteral("m_pBend"));
    dialog->findChild<QDoubleSpinBox*>(QStringLiteral("m_pHDistortion"))->setValue(-30);
    dialog->findChild<QDoubleSpinBox*>(QStringLiteral("m_pVDistortion"))->setValue(10);
    int step = 0;
    for (auto _ : state)
    {
        bend->setValue(20 + ++step % 80);
        view.viewport()->repaint();
    }
    dialog->findChild<QDialogButtonBox*>()->button(QDialogButtonBox::Ok)->click();
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

// All that happens between a change in the dialog and the picture on a canvas that shows the whole document:
// the bar tells of it, the text is bent and drawn into its layer, and the canvas is painted.
void ShowBent(benchmark::State& state)
{
    QImage picture(DocumentSize, QImage::Format_ARGB32_Premultiplied);
    picture.fill(Qt::white);
    QTemporaryDir folder;
    QSettings settings(folder.filePath(QStringLiteral("s.ini")), QSettings::IniFormat);
    Document document(picture, QString(), QStringLiteral("Picture"));
    NVDocumentView view(document.GetModel());
    view.resize(CanvasSize);
    TextTool tool(&settings, nullptr);
    view.show();
    view.FitInView();
    if (!QTest::qWaitForWindowActive(&view))
        state.SkipWithError("the canvas is not shown");
    tool.SetCanvas(&view, &document);
    tool.Activate();
    const TextDescription line = Line(int(state.range(0)));
    tool.GetTextBar()->SetFontFamily(line.family);
    tool.GetTextBar()->SetFontSize(line.size);
    const QPoint place = view.MapFromDocument(line.anchor).toPoint();
    QTest::mouseClick(view.viewport(), Qt::LeftButton, Qt::NoModifier, place);
    QTest::keyClicks(&view, line.text);
    QTimer::singleShot(0, &tool, [&state, &view] { BendInDialog(state, view); });
    tool.GetBar()->findChild<QPushButton*>(QStringLiteral("m_pWarp"))->click();
    if (!tool.IsEditing() || IsStraight(tool.GetText().warp))
        state.SkipWithError("the text is not bent");
    tool.Cancel();
}
BENCHMARK(ShowBent)->Arg(40)->Arg(100)->Arg(300)->Unit(benchmark::kMillisecond);

} // namespace

int main(int argc, char** argv)
{
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
