// How long the popup takes to load its gradients, and the editor to follow one step of a drag.

#include <QApplication>
#include <QGraphicsScene>
#include <QGraphicsView>
#include <QMouseEvent>
#include <QtTest>

#include <benchmark/benchmark.h>

#include "ControlNode.h"
#include "NVGradientEditor.h"
#include "NVGradientPopup.h"

namespace
{

using Gradient = QList<NVGradientStop>;

Gradient Made(int stops)
{
    Gradient gradient;
    for (int i = 0; i < stops; ++i)
        gradient << NVGradientStop(i / double(stops - 1),
                                   QColor::fromHsv(i * 359 / stops, 200, 220, 255 - i % 256), false, false,
                                   false);
    return gradient;
}

QList<Gradient> List(int count)
{
    QList<Gradient> list;
    for (int i = 0; i < count; ++i)
        list << Made(2 + i % 6);
    return list;
}

// The argument is the number of gradients.
void LoadPopup(benchmark::State& state)
{
    const QList<Gradient> list = List(int(state.range(0)));
    NVGradientPopup popup(nullptr);
    for (auto _ : state)
        popup.Load(list);
}
BENCHMARK(LoadPopup)->Arg(1000)->Arg(10000)->Unit(benchmark::kMillisecond);

// The same with the popup on the screen, painted.
void LoadShownPopup(benchmark::State& state)
{
    const QList<Gradient> list = List(int(state.range(0)));
    NVGradientPopup popup(nullptr);
    popup.Popup(QPoint(10, 10));
    if (!QTest::qWaitForWindowActive(&popup))
        state.SkipWithError("the popup does not become active");
    for (auto _ : state)
    {
        popup.Load(list);
        QCoreApplication::processEvents();
    }
}
BENCHMARK(LoadShownPopup)->Arg(1000)->Arg(10000)->Unit(benchmark::kMillisecond);

void LoadEditor(benchmark::State& state)
{
    const QList<Gradient> list = List(int(state.range(0)));
    NVGradientEditor editor(nullptr);
    for (auto _ : state)
        editor.Load(list);
}
BENCHMARK(LoadEditor)->Arg(1000)->Arg(10000)->Unit(benchmark::kMillisecond);

void Send(QWidget* target, QEvent::Type type, const QPointF& place)
{
    QMouseEvent event(type, place, target->mapToGlobal(place.toPoint()),
                      type == QEvent::MouseMove ? Qt::NoButton : Qt::LeftButton, Qt::LeftButton,
                      Qt::NoModifier);
    QCoreApplication::sendEvent(target, &event);
}

// From the move of the pointer to the painted strip and row; the argument is the number of stops.
void DragStep(benchmark::State& state)
{
    NVGradientEditor editor(nullptr);
    editor.Load({Made(int(state.range(0)))});
    editor.resize(1200, 400);
    editor.show();
    if (!QTest::qWaitForWindowActive(&editor))
        state.SkipWithError("the editor does not become active");
    auto* view = editor.findChild<QGraphicsView*>(QStringLiteral("m_pGraphicsView"));
    const double width = view->sceneRect().width();
    // The last stop has room as soon as it is the only one near its end.
    const QPointF start(width - 1, 15);
    Send(view->viewport(), QEvent::MouseButtonPress, start);
    int step = 0;
    const Gradient before = editor.GetGradient(0);
    for (auto _ : state)
    {
        Send(view->viewport(), QEvent::MouseMove, start - QPointF(2 + step++ % 2, 0));
        QCoreApplication::processEvents();
    }
    if (editor.GetGradient(0) == before)
        state.SkipWithError("the stop does not move");
}
BENCHMARK(DragStep)->Arg(5)->Arg(200)->Unit(benchmark::kMillisecond);

} // namespace

int main(int argc, char** argv)
{
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    QApplication::setStyle(QStringLiteral("fusion"));
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
