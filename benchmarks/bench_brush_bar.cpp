// How long the brush bar takes to be built, and a key to reach its value.

#include <QApplication>
#include <QElapsedTimer>
#include <QtTest>

#include <benchmark/benchmark.h>

#include "NVBrushToolbar.h"

namespace
{

// The time from a key press to the setter, without what the list then paints.
class TimedBar : public NVBrushToolbar
{
public:
    using NVBrushToolbar::NVBrushToolbar;

    void SetBlendModeValue(int index) override
    {
        reached = clock.nsecsElapsed();
        NVBrushToolbar::SetBlendModeValue(index);
    }

    QElapsedTimer clock;
    qint64 reached = 0;
};

void BuildBar(benchmark::State& state)
{
    for (auto _ : state)
    {
        QElapsedTimer clock;
        clock.start();
        auto* bar = new NVBrushToolbar(nullptr);
        state.SetIterationTime(double(clock.nsecsElapsed()) * 1e-9);
        delete bar;
    }
}
BENCHMARK(BuildBar)->UseManualTime()->Unit(benchmark::kMillisecond);

void BuildAndShowBar(benchmark::State& state)
{
    for (auto _ : state)
    {
        QElapsedTimer clock;
        clock.start();
        auto* bar = new NVBrushToolbar(nullptr);
        bar->show();
        QCoreApplication::processEvents();
        state.SetIterationTime(double(clock.nsecsElapsed()) * 1e-9);
        delete bar;
    }
}
BENCHMARK(BuildAndShowBar)->UseManualTime()->Unit(benchmark::kMillisecond);

void KeyToBlendMode(benchmark::State& state)
{
    TimedBar bar(nullptr);
    bar.show();
    if (!QTest::qWaitForWindowActive(&bar))
        state.SkipWithError("the window does not become active");
    bar.CreateShortcuts();
    for (auto _ : state)
    {
        bar.reached = -1;
        bar.clock.start();
        QTest::keyPress(&bar, Qt::Key_M, Qt::AltModifier | Qt::ShiftModifier);
        if (bar.reached < 0)
            state.SkipWithError("the key does not arrive");
        state.SetIterationTime(double(bar.reached) * 1e-9);
        QTest::keyRelease(&bar, Qt::Key_M, Qt::AltModifier | Qt::ShiftModifier);
    }
}
BENCHMARK(KeyToBlendMode)->UseManualTime()->Unit(benchmark::kMicrosecond);

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
