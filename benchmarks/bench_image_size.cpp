// How long the dialog for the image size takes to open, and to follow one key in a box.

#include <QApplication>
#include <QComboBox>
#include <QDoubleSpinBox>
#include <QElapsedTimer>
#include <QtTest>

#include <benchmark/benchmark.h>

#include <algorithm>
#include <vector>

#include "NVImageSize.h"

namespace
{

// The times of single rounds, since one late round says more than the mean.
class Rounds
{
public:
    void Start() { m_timer.start(); }
    void Stop() { m_times.push_back(double(m_timer.nsecsElapsed()) / 1e6); }
    void Report(benchmark::State& state)
    {
        std::sort(m_times.begin(), m_times.end());
        state.counters["median_ms"] = m_times.at(m_times.size() / 2);
        state.counters["worst_ms"] = m_times.back();
    }

private:
    QElapsedTimer m_timer;
    std::vector<double> m_times;
};

class FirstPaint : public QObject
{
public:
    bool eventFilter(QObject* object, QEvent* event) override
    {
        Seen = Seen || event->type() == QEvent::Paint;
        return QObject::eventFilter(object, event);
    }
    bool Seen = false;
};

// From the constructor to the first paint.
void OpenDialog(benchmark::State& state)
{
    Rounds rounds;
    for (auto _ : state)
    {
        rounds.Start();
        FirstPaint paint;
        NVImageSize dialog(300.0, QSize(4000, 3000), nullptr);
        dialog.installEventFilter(&paint);
        dialog.show();
        while (!paint.Seen)
            QCoreApplication::processEvents();
        rounds.Stop();
    }
    rounds.Report(state);
}
BENCHMARK(OpenDialog)->Unit(benchmark::kMillisecond);

void Type(QWidget* box, int key, const QString& text)
{
    QKeyEvent press(QEvent::KeyPress, key, Qt::NoModifier, text);
    QCoreApplication::sendEvent(box, &press);
    QKeyEvent release(QEvent::KeyRelease, key, Qt::NoModifier, text);
    QCoreApplication::sendEvent(box, &release);
}

// A digit is typed and taken back by turns; each counts as one key. The first argument is the unit, the
// second says whether the time runs until all is painted or until all fields have their values.
void Key(benchmark::State& state)
{
    NVImageSize dialog(300.0, QSize(4000, 3000), nullptr);
    auto* width = dialog.findChild<QDoubleSpinBox*>(QStringLiteral("m_pNewWidth"));
    dialog.findChild<QComboBox*>(QStringLiteral("m_pWidthUnits"))->setCurrentIndex(int(state.range(0)));
    width->setValue(123.0);
    dialog.show();
    if (!QTest::qWaitForWindowActive(&dialog))
        state.SkipWithError("the dialog does not become active");
    width->setFocus();
    Type(width, Qt::Key_Home, QString());
    const bool painted = state.range(1) != 0;
    const QSize before = dialog.GetNewSize();
    bool typed = false;
    Rounds rounds;
    for (auto _ : state)
    {
        rounds.Start();
        if (typed)
            Type(width, Qt::Key_Backspace, QStringLiteral("\b"));
        else
            Type(width, Qt::Key_3, QStringLiteral("3"));
        if (painted)
            QCoreApplication::processEvents();
        rounds.Stop();
        typed = !typed;
        if ((dialog.GetNewSize() == before) == typed)
            state.SkipWithError("the size does not follow");
        if (!painted)
        {
            state.PauseTiming();
            QCoreApplication::processEvents();
            state.ResumeTiming();
        }
    }
    rounds.Report(state);
}
BENCHMARK(Key)
    ->ArgNames({"unit", "painted"})
    ->ArgsProduct({{0, 1, 2}, {0, 1}})
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
