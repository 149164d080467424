// Moving and transforming, straightening and selecting on a picture of 24 megapixels: the operations, and for
// how long what a person does with a tool keeps the window from anything else. "longest" is the longest such
// time from the act to its end, in milliseconds.

#include <QApplication>
#include <QElapsedTimer>
#include <QMenu>
#include <QMouseEvent>
#include <QSettings>
#include <QTemporaryDir>
#include <QUndoStack>
#include <QtTest>

#include <benchmark/benchmark.h>

#include <algorithm>
#include <functional>

#include "AffineResample.h"
#include "Document.h"
#include "KXDocumentInterface.h"
#include "LayerPreview.h"
#include "LiftedContent.h"
#include "MoveTool.h"
#include "NVDocumentView.h"
#include "NVRulerToolbar.h"
#include "NVSelectionToolbar.h"
#include "PictureLevels.h"
#include "RulerLine.h"
#include "RulerTool.h"
#include "SelectMenu.h"
#include "SelectionMask.h"
#include "SelectionOutline.h"
#include "SelectionTool.h"
#include "TransformTool.h"

namespace
{

const QSize Size(6000, 4000);
const QSize Canvas(1280, 860);

QImage Picture()
{
    QImage image(Size, QImage::Format_ARGB32_Premultiplied);
    for (int y = 0; y < Size.height(); ++y)
    {
        QRgb* row = reinterpret_cast<QRgb*>(image.scanLine(y));
        for (int x = 0; x < Size.width(); ++x)
            row[x] = qRgb((x * 7) & 255, (y * 5) & 255, (x + y) & 255);
    }
    return image;
}

// All of it is to be searched.
QImage Speck()
{
    QImage image(Size, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    image.setPixelColor(3000, 2000, Qt::red);
    return image;
}

QImage Ellipse()
{
    return EllipseMask(Size, QRectF(100, 100, 5800, 3800));
}

QTransform Turn(double degrees, double scale)
{
    QTransform turn;
    turn.translate(3000, 2000);
    turn.rotate(degrees);
    turn.scale(scale, scale);
    turn.translate(-3000, -2000);
    return turn;
}

double MillisecondsOf(const std::function<void()>& work)
{
    QElapsedTimer clock;
    clock.start();
    work();
    return double(clock.nsecsElapsed()) / 1e6;
}

// The operations

enum Case
{
    Opaque,
    OneSpeck,
    Selected
};

void Bounds(benchmark::State& state)
{
    const QImage layer = state.range(0) == OneSpeck ? Speck() : Picture();
    const QImage selection = state.range(0) == Selected ? Ellipse() : QImage();
    for (auto _ : state)
        benchmark::DoNotOptimize(ContentBounds(layer, selection));
}
BENCHMARK(Bounds)->Arg(Opaque)->Arg(OneSpeck)->Arg(Selected)->Unit(benchmark::kMillisecond)->UseRealTime();

void Lift(benchmark::State& state)
{
    const QImage layer = Picture();
    const QImage selection = state.range(0) == Selected ? Ellipse() : QImage();
    const QRect bounds = ContentBounds(layer, selection);
    for (auto _ : state)
        benchmark::DoNotOptimize(LiftContent(layer, selection, bounds));
}
BENCHMARK(Lift)->Arg(Opaque)->Arg(Selected)->Unit(benchmark::kMillisecond)->UseRealTime();

// By degrees and percent.
void Resample(benchmark::State& state)
{
    const PlacedImage picture = {Picture(), QPoint()};
    const QTransform transform = Turn(double(state.range(0)), double(state.range(1)) / 100);
    for (auto _ : state)
        benchmark::DoNotOptimize(ResampleAffine(picture, transform, QRect(QPoint(), Size), WorkProgress()));
}
BENCHMARK(Resample)
    ->Args({0, 50})
    ->Args({0, 150})
    ->Args({7, 100})
    ->Args({90, 100})
    ->Unit(benchmark::kMillisecond)
    ->UseRealTime();

// What the canvas shows: so many layers, at so many percent. The first picture makes the smaller levels.
struct Preview
{
    Preview(int count, int percent)
    {
        QVector<PreviewLayer> layers;
        for (int i = 0; i < count; ++i)
            layers.append({picture, 0, i == 0 ? 1.0 : 0.6});
        preview.SetLayers(layers, count - 1);
        levels.SetPicture({picture, QPoint()});
        place.scale = percent / 100.0;
        place.origin = QPointF(Canvas.width(), Canvas.height()) / 2 - QPointF(3000, 2000) * place.scale;
        place.area = QRect(QPoint(), Canvas);
    }
    QImage Draw(double degrees)
    {
        const auto change = [&](QImage& piece, const QTransform& toLayer)
        {
            piece.fill(Qt::transparent);
            levels.Draw(piece, Turn(degrees, 1) * toLayer.inverted());
        };
        QPoint corner;
        return preview.Render(place, change, &corner);
    }

    const QImage picture = Picture();
    LayerPreview preview;
    PictureLevels levels;
    PreviewPlace place;
};

void PreviewFirst(benchmark::State& state)
{
    for (auto _ : state)
    {
        Preview preview(int(state.range(0)), int(state.range(1)));
        state.SetIterationTime(MillisecondsOf([&] { benchmark::DoNotOptimize(preview.Draw(1)); }) / 1e3);
    }
}
BENCHMARK(PreviewFirst)
    ->ArgsProduct({{1, 3}, {20, 100}})
    ->Iterations(5)
    ->Unit(benchmark::kMillisecond)
    ->UseManualTime();

void PreviewNext(benchmark::State& state)
{
    Preview preview(int(state.range(0)), int(state.range(1)));
    double degrees = 1;
    benchmark::DoNotOptimize(preview.Draw(degrees));
    for (auto _ : state)
        benchmark::DoNotOptimize(preview.Draw(++degrees));
}
BENCHMARK(PreviewNext)->ArgsProduct({{1, 3}, {20, 100, 800}})->Unit(benchmark::kMillisecond)->UseRealTime();

// The tools

// A canvas with a tool at work on it. Coordinates are document pixels.
class Desk
{
public:
    // At so many percent; all of the picture with 0.
    Desk(Tool* tool, int percent) : m_pTool(tool)
    {
        m_view.resize(Canvas);
        m_view.show();
        m_view.FitInView();
        if (!QTest::qWaitForWindowExposed(&m_view))
            qFatal("the canvas is not shown");
        if (percent > 0)
            m_view.Scale(percent / 100.0 / m_view.GetScale(), QPointF(Canvas.width(), Canvas.height()) / 2);
        tool->SetCanvas(&m_view, &m_document);
        tool->Activate();
        m_view.viewport()->repaint();
        QCoreApplication::processEvents();
    }
    ~Desk()
    {
        m_pTool->Cancel();
        m_pTool->SetCanvas(nullptr, nullptr);
        m_pTool->Deactivate();
    }
    Q_DISABLE_COPY(Desk)

    NVDocumentView* GetView() { return &m_view; }
    Document* GetDocument() { return &m_document; }
    KXDocumentInterface* GetPixels() { return m_document.GetPixels(); }

    void Select(const QImage& mask)
    {
        GetPixels()->SetSelectionMask(mask);
        (void)QTest::qWaitFor([this] { return !m_pOutline->IsComputing(); });
        QCoreApplication::processEvents();
    }
    void Mouse(QEvent::Type type, const QPointF& place)
    {
        const QPoint at = m_view.MapFromDocument(place).toPoint();
        const bool moves = type == QEvent::MouseMove;
        QMouseEvent event(type, at, m_view.viewport()->mapToGlobal(at), moves ? Qt::NoButton : Qt::LeftButton,
                          type == QEvent::MouseButtonRelease ? Qt::NoButton : Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(m_view.viewport(), &event);
    }
    // What a pointer that is moved costs: the event, and the canvas that is drawn after it.
    double Step(const QPointF& place)
    {
        return MillisecondsOf(
            [&]
            {
                Mouse(QEvent::MouseMove, place);
                m_view.viewport()->repaint();
            });
    }
    // The longest time for which no other event got its turn.
    static double Longest(const std::function<void()>& act, const std::function<bool()>& isDone)
    {
        double longest = MillisecondsOf(act);
        const auto turn = [] { QCoreApplication::processEvents(QEventLoop::AllEvents, 1); };
        while (!isDone())
            longest = std::max(longest, MillisecondsOf(turn));
        // What it left behind is drawn.
        return std::max(longest, MillisecondsOf(turn));
    }

private:
    Document m_document{Picture(), QString(), QStringLiteral("Picture")};
    NVDocumentView m_view{m_document.GetModel()};
    SelectionOutline* m_pOutline = new SelectionOutline(m_document.GetPixels(), &m_view);
    Tool* m_pTool;
};

struct Scratch
{
    QTemporaryDir folder;
    QSettings settings{folder.filePath(QStringLiteral("s.ini")), QSettings::IniFormat};
};

// The press and the first move take the pixels off the layer.
template <class T>
void DragBegins(benchmark::State& state)
{
    Scratch scratch;
    T tool(&scratch.settings, nullptr);
    Desk desk(&tool, int(state.range(1)));
    if (state.range(0) == Selected)
        desk.Select(Ellipse());
    for (auto _ : state)
    {
        const double press = MillisecondsOf([&] { desk.Mouse(QEvent::MouseButtonPress, {2800, 1900}); });
        const double first = desk.Step({2840, 1930});
        state.SetIterationTime((press + first) / 1e3);
        tool.Cancel();
        desk.Mouse(QEvent::MouseButtonRelease, {2840, 1930});
        QCoreApplication::processEvents();
    }
}
BENCHMARK_TEMPLATE(DragBegins, MoveTool)
    ->ArgsProduct({{Opaque, Selected}, {0, 100}})
    ->Iterations(5)
    ->Unit(benchmark::kMillisecond)
    ->UseManualTime();
BENCHMARK_TEMPLATE(DragBegins, TransformTool)
    ->ArgsProduct({{Opaque, Selected}, {0, 100}})
    ->Iterations(5)
    ->Unit(benchmark::kMillisecond)
    ->UseManualTime();

template <class T>
void DragStep(benchmark::State& state)
{
    Scratch scratch;
    T tool(&scratch.settings, nullptr);
    Desk desk(&tool, int(state.range(1)));
    if (state.range(0) == Selected)
        desk.Select(Ellipse());
    desk.Mouse(QEvent::MouseButtonPress, {2800, 1900});
    desk.Step({2840, 1930});
    int way = 0;
    for (auto _ : state)
        state.SetIterationTime(desk.Step({2840.0 + ++way % 100, 1930}) / 1e3);
    tool.Cancel();
}
BENCHMARK_TEMPLATE(DragStep, MoveTool)
    ->ArgsProduct({{Opaque, Selected}, {0, 100}})
    ->Unit(benchmark::kMillisecond)
    ->UseManualTime();
BENCHMARK_TEMPLATE(DragStep, TransformTool)
    ->ArgsProduct({{Opaque, Selected}, {0, 100}})
    ->Unit(benchmark::kMillisecond)
    ->UseManualTime();

// From the press of Enter to the new picture, turned by a quarter of a right angle.
void CommitTransform(benchmark::State& state)
{
    Scratch scratch;
    TransformTool tool(&scratch.settings, nullptr);
    Desk desk(&tool, 0);
    if (state.range(0) == Selected)
        desk.Select(Ellipse());
    desk.GetView()->Scale(0.7, QPointF(Canvas.width(), Canvas.height()) / 2);
    double longest = 0;
    for (auto _ : state)
    {
        desk.Mouse(QEvent::MouseButtonPress, {6700, 2000});
        desk.Step({6500, 3000});
        desk.Step({6300, 3500});
        desk.Mouse(QEvent::MouseButtonRelease, {6300, 3500});
        const double all = MillisecondsOf(
            [&] {
                longest = std::max(
                    longest, Desk::Longest([&] { tool.Commit(); }, [&] { return !tool.IsRendering(); }));
            });
        state.SetIterationTime(all / 1e3);
        desk.GetDocument()->GetUndoStack()->undo();
        QCoreApplication::processEvents();
    }
    state.counters["longest"] = longest;
}
BENCHMARK(CommitTransform)
    ->Arg(Opaque)
    ->Arg(Selected)
    ->Iterations(3)
    ->Unit(benchmark::kMillisecond)
    ->UseManualTime();

void Straighten(benchmark::State& state)
{
    RulerTool tool(nullptr);
    Desk desk(&tool, 0);
    double longest = 0;
    for (auto _ : state)
    {
        RulerLine::Of(desk.GetDocument())->Set(QLineF(500, 500, 5500, 900));
        const double all = MillisecondsOf(
            [&]
            {
                longest = std::max(longest,
                                   Desk::Longest([&] { Q_EMIT tool.GetRulerBar()->Straighten(); },
                                                 [&] { return !tool.IsStraightening(); }));
            });
        state.SetIterationTime(all / 1e3);
        desk.GetDocument()->GetUndoStack()->undo();
        QCoreApplication::processEvents();
    }
    state.counters["longest"] = longest;
}
BENCHMARK(Straighten)->Iterations(3)->Unit(benchmark::kMillisecond)->UseManualTime();

// The end of a drag over most of the picture: feather, and how it joins a selection that is there.
template <SelectionShape::Kind Kind>
void Select(benchmark::State& state)
{
    Scratch scratch;
    SelectionTool tool(Kind, &scratch.settings, nullptr);
    Desk desk(&tool, 0);
    tool.GetSelectionBar()->SetFeather(int(state.range(0)));
    for (auto _ : state)
    {
        desk.Select(state.range(1) == ReplaceSelection ? QImage() : Ellipse());
        tool.GetSelectionBar()->SetState(int(state.range(1)));
        desk.Mouse(QEvent::MouseButtonPress, {100, 100});
        desk.Step({3000, 2000});
        desk.Step({5900, 3900});
        const auto release = [&]
        {
            desk.Mouse(QEvent::MouseButtonRelease, {5900, 3900});
            desk.GetView()->viewport()->repaint();
        };
        state.SetIterationTime(MillisecondsOf(release) / 1e3);
    }
}
BENCHMARK_TEMPLATE(Select, SelectionShape::Rectangle)
    ->ArgsProduct({{0, 5, 250}, {ReplaceSelection, UniteSelections}})
    ->Iterations(5)
    ->Unit(benchmark::kMillisecond)
    ->UseManualTime();
BENCHMARK_TEMPLATE(Select, SelectionShape::Ellipse)
    ->ArgsProduct({{0, 5, 250}, {ReplaceSelection, UniteSelections}})
    ->Iterations(5)
    ->Unit(benchmark::kMillisecond)
    ->UseManualTime();

// An arrow key that moves the outline.
void Nudge(benchmark::State& state)
{
    Scratch scratch;
    SelectionTool tool(SelectionShape::Rectangle, &scratch.settings, nullptr);
    Desk desk(&tool, 0);
    for (auto _ : state)
    {
        desk.Select(Ellipse());
        const auto press = [&]
        {
            QTest::keyClick(desk.GetView(), Qt::Key_Right);
            desk.GetView()->viewport()->repaint();
        };
        state.SetIterationTime(MillisecondsOf(press) / 1e3);
    }
}
BENCHMARK(Nudge)->Iterations(5)->Unit(benchmark::kMillisecond)->UseManualTime();

// The commands of the menu, by their names there.
void Command(benchmark::State& state, const char* name)
{
    Scratch scratch;
    MoveTool tool(&scratch.settings, nullptr);
    Desk desk(&tool, 0);
    QMenu menu;
    SelectMenu select(&menu, nullptr, nullptr);
    select.SetDocument(desk.GetDocument(), desk.GetView());
    QList<QAction*> actions = menu.actions();
    actions.append(select.GetClearAction());
    for (auto _ : state)
    {
        desk.Select(Ellipse());
        const auto trigger = [&]
        {
            for (QAction* action : qAsConst(actions))
            {
                if (action->text().remove(QLatin1Char('&')) == QLatin1String(name))
                    action->trigger();
            }
            desk.GetView()->viewport()->repaint();
        };
        state.SetIterationTime(MillisecondsOf(trigger) / 1e3);
        desk.GetDocument()->GetUndoStack()->undo();
        QCoreApplication::processEvents();
    }
}
BENCHMARK_CAPTURE(Command, All, "All")->Iterations(5)->Unit(benchmark::kMillisecond)->UseManualTime();
BENCHMARK_CAPTURE(Command, None, "None")->Iterations(5)->Unit(benchmark::kMillisecond)->UseManualTime();
BENCHMARK_CAPTURE(Command, Invert, "Invert")->Iterations(5)->Unit(benchmark::kMillisecond)->UseManualTime();
BENCHMARK_CAPTURE(Command, Clear, "Clear Selection")
    ->Iterations(5)
    ->Unit(benchmark::kMillisecond)
    ->UseManualTime();

} // namespace

int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
