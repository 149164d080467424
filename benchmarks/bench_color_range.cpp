// What the strip of the colour range costs, beside as many bare labels with the same pictures: AddColors is
// to be read as a ratio to BareLabels. Both are painted.

#include <QApplication>
#include <QElapsedTimer>
#include <QLabel>
#include <QPixmap>
#include <QPushButton>
#include <QtTest>

#include <benchmark/benchmark.h>

#include <algorithm>
#include <array>
#include <limits>
#include <numeric>

#include "NVSelectColorRange.h"

namespace
{

const int Colors = 256;

QColor ColorOf(int index)
{
    return QColor(index, 255 - index, 128);
}

void BareLabels(benchmark::State& state)
{
    QWidget window;
    window.resize(480, 485);
    window.show();
    if (!QTest::qWaitForWindowExposed(&window))
        state.SkipWithError("the window is not shown");
    for (auto _ : state)
    {
        for (int i = 0; i < Colors; ++i)
        {
            auto* label = new QLabel(&window);
            QPixmap picture(16, 16);
            picture.fill(ColorOf(i));
            label->setPixmap(picture);
            label->setMaximumSize(16, 16);
            label->move(i * 20, 0);
            label->show();
        }
        QCoreApplication::processEvents();
        state.PauseTiming();
        qDeleteAll(window.findChildren<QLabel*>());
        QCoreApplication::processEvents();
        state.ResumeTiming();
    }
}
BENCHMARK(BareLabels)->Unit(benchmark::kMillisecond);

void Fill(NVSelectColorRange& panel)
{
    for (int i = 0; i < Colors; ++i)
        panel.AddColor(ColorOf(i), ColorOf(i));
}

void AddColors(benchmark::State& state)
{
    NVSelectColorRange panel(nullptr);
    panel.show();
    if (!QTest::qWaitForWindowExposed(&panel))
        state.SkipWithError("the panel is not shown");
    auto* removeAll = panel.findChild<QPushButton*>(QStringLiteral("m_pRemoveAll"));
    for (auto _ : state)
    {
        Fill(panel);
        QCoreApplication::processEvents();
        state.PauseTiming();
        removeAll->click();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QCoreApplication::processEvents();
        state.ResumeTiming();
    }
}
BENCHMARK(AddColors)->Unit(benchmark::kMillisecond);

// The slowest of 256 as a ratio to their mean, each taken at its best of all fillings, so that a pause of the
// machine does not count.
void SlowestAdd(benchmark::State& state)
{
    NVSelectColorRange panel(nullptr);
    panel.show();
    if (!QTest::qWaitForWindowExposed(&panel))
        state.SkipWithError("the panel is not shown");
    auto* removeAll = panel.findChild<QPushButton*>(QStringLiteral("m_pRemoveAll"));
    std::array<qint64, Colors> least;
    least.fill(std::numeric_limits<qint64>::max());
    for (auto _ : state)
    {
        for (int i = 0; i < Colors; ++i)
        {
            QElapsedTimer timer;
            timer.start();
            panel.AddColor(ColorOf(i), ColorOf(i));
            least[size_t(i)] = qMin(least[size_t(i)], timer.nsecsElapsed());
        }
        removeAll->click();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QCoreApplication::processEvents();
    }
    const double mean = std::accumulate(least.begin(), least.end(), 0.0) / Colors;
    state.counters["slowest/mean"] = double(*std::max_element(least.begin(), least.end())) / mean;
}
BENCHMARK(SlowestAdd)->Iterations(5)->Unit(benchmark::kMillisecond);

// The first of 256, so that all others move up.
void RemoveFirst(benchmark::State& state)
{
    NVSelectColorRange panel(nullptr);
    panel.show();
    if (!QTest::qWaitForWindowExposed(&panel))
        state.SkipWithError("the panel is not shown");
    Fill(panel);
    auto* remove = panel.findChild<QPushButton*>(QStringLiteral("m_pRemove"));
    QRgb next = 0;
    for (auto _ : state)
    {
        state.PauseTiming();
        panel.AddColor(QColor(next++), Qt::black);
        panel.SelectColor(0);
        QCoreApplication::processEvents();
        state.ResumeTiming();
        remove->click();
        // Without a running event loop nobody else does it.
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QCoreApplication::processEvents();
    }
    if (panel.GetSourceColors().size() != Colors - 1)
        state.SkipWithError("the strip is not full");
}
BENCHMARK(RemoveFirst)->Unit(benchmark::kMicrosecond);

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
