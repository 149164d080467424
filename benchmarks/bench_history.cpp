// What the rows of the history panel cost with their style sheets, beside the same rows without. Each pair of
// lines is to be read as a ratio: "sheets:1" to "sheets:0", and row 1,000 to row 100.

#include <QApplication>
#include <QDir>
#include <QImage>
#include <QtTest>

#include <benchmark/benchmark.h>

#include <malloc.h>

#include "KXResource.h"
#include "NVHistoryItem.h"
#include "NVHistoryPanel.h"

namespace
{

// Without folders there are no sheets, and a row never sets one.
void UseSheets(bool on)
{
    KXResource::UseTheme(KXResource::LightTheme);
    if (!on)
        QDir::setSearchPaths(QStringLiteral("theme"), {});
}

class ShownPanel
{
public:
    ShownPanel(benchmark::State& state, int rows)
    {
        m_panel.resize(250, 400);
        m_panel.show();
        if (!QTest::qWaitForWindowExposed(&m_panel))
            state.SkipWithError("the panel is not shown");
        Add(rows);
        QCoreApplication::processEvents();
    }

    NVHistoryPanel& Panel() { return m_panel; }

    void Add(int rows)
    {
        for (int i = 0; i < rows; ++i)
            m_panel.AddItem(QStringLiteral("Brush stroke"), m_picture);
    }

    void Empty()
    {
        m_panel.Clear();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QCoreApplication::processEvents();
    }

private:
    NVHistoryPanel m_panel{nullptr};
    QImage m_picture = QImage(24, 24, QImage::Format_ARGB32_Premultiplied);
};

void AddRowsAndShow(benchmark::State& state)
{
    UseSheets(state.range(1) != 0);
    ShownPanel host(state, 0);
    for (auto _ : state)
    {
        host.Add(int(state.range(0)));
        QCoreApplication::processEvents();
        state.PauseTiming();
        host.Empty();
        state.ResumeTiming();
    }
}
BENCHMARK(AddRowsAndShow)
    ->ArgNames({"rows", "sheets"})
    ->Args({1000, 0})
    ->Args({1000, 1})
    ->Args({10000, 0})
    ->Args({10000, 1})
    ->Unit(benchmark::kMillisecond);

// One row more becomes the present state, and is painted.
void GrowToRow(benchmark::State& state)
{
    UseSheets(true);
    const int last = int(state.range(0)) - 1;
    ShownPanel host(state, last);
    host.Panel().SetSelected(last - 1);
    QCoreApplication::processEvents();
    for (auto _ : state)
    {
        host.Add(1);
        host.Panel().SetSelected(last);
        QCoreApplication::processEvents();
        state.PauseTiming();
        host.Panel().Remove(last);
        host.Panel().SetSelected(last - 1);
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QCoreApplication::processEvents();
        state.ResumeTiming();
    }
}
BENCHMARK(GrowToRow)->ArgName("row")->Arg(100)->Arg(1000)->Arg(10000)->Unit(benchmark::kMicrosecond);

// One undo, then one redo, at the end of the list. Without sheets the two rows show the same by their
// palette.
void StepAndPaint(benchmark::State& state)
{
    UseSheets(state.range(1) != 0);
    const int rows = int(state.range(0));
    ShownPanel host(state, rows);
    host.Panel().SetSelected(rows - 1);
    QCoreApplication::processEvents();
    const QList<NVHistoryItem*> items = host.Panel().findChildren<NVHistoryItem*>();
    const QPalette plain = host.Panel().palette();
    QPalette chosen = plain;
    chosen.setBrush(QPalette::Button, plain.highlight());
    chosen.setBrush(QPalette::WindowText, plain.highlightedText());
    int step = 0;
    for (auto _ : state)
    {
        const int now = rows - 2 + step++ % 2;
        host.Panel().SetSelected(now);
        for (int row = rows - 2; row < rows && state.range(1) == 0; ++row)
            items[row]->setPalette(row == now ? chosen : plain);
        QCoreApplication::processEvents();
    }
}
BENCHMARK(StepAndPaint)
    ->ArgNames({"rows", "sheets"})
    ->Args({1000, 0})
    ->Args({1000, 1})
    ->Args({10000, 0})
    ->Args({10000, 1})
    ->Unit(benchmark::kMicrosecond);

// From the last row to the first, which changes all, and back.
void SelectAcrossAllRows(benchmark::State& state)
{
    UseSheets(true);
    const int rows = int(state.range(0));
    ShownPanel host(state, rows);
    int step = 0;
    for (auto _ : state)
    {
        host.Panel().SetSelected(step++ % 2 == 0 ? rows - 1 : 0);
        QCoreApplication::processEvents();
    }
}
BENCHMARK(SelectAcrossAllRows)->ArgName("rows")->Arg(1000)->Unit(benchmark::kMillisecond);

void ClearRows(benchmark::State& state)
{
    UseSheets(state.range(1) != 0);
    ShownPanel host(state, 0);
    for (auto _ : state)
    {
        state.PauseTiming();
        host.Add(int(state.range(0)));
        QCoreApplication::processEvents();
        state.ResumeTiming();
        host.Empty();
    }
}
BENCHMARK(ClearRows)
    ->ArgNames({"rows", "sheets"})
    ->Args({1000, 0})
    ->Args({1000, 1})
    ->Unit(benchmark::kMillisecond);

// What a row that is shown holds, as a counter.
void HeapOfARow(benchmark::State& state)
{
    UseSheets(state.range(1) != 0);
    const int rows = int(state.range(0));
    // Whatever is made once, is made by then.
    ShownPanel host(state, 10);
    size_t before = 0;
    size_t after = 0;
    for (auto _ : state)
    {
        before = mallinfo2().uordblks;
        host.Add(rows);
        QCoreApplication::processEvents();
        after = mallinfo2().uordblks;
    }
    state.counters["KiB a row"] = double(after - before) / 1024 / rows;
}
BENCHMARK(HeapOfARow)
    ->ArgNames({"rows", "sheets"})
    ->Args({1000, 0})
    ->Args({1000, 1})
    ->Iterations(1)
    ->Unit(benchmark::kMillisecond);

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
