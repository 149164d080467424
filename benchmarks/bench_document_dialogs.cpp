// How long the small document dialogs take from their constructor to their first picture, and the canvas size
// to settle after one keystroke.

#include <QApplication>
#include <QComboBox>
#include <QDoubleSpinBox>
#include <QElapsedTimer>
#include <QGroupBox>
#include <QtTest>

#include <benchmark/benchmark.h>

#include <algorithm>
#include <memory>
#include <vector>

#include "NVAutoCrop.h"
#include "NVCanvasSize.h"
#include "NVIncompleteDocumentInfo.h"

namespace
{

std::unique_ptr<KXDialog> CanvasSize()
{
    return std::make_unique<NVCanvasSize>(300, QSize(4000, 3000), nullptr);
}

std::unique_ptr<KXDialog> AutoCrop()
{
    return std::make_unique<NVAutoCrop>(nullptr);
}

std::unique_ptr<KXDialog> IncompleteDocumentInfo()
{
    return std::make_unique<NVIncompleteDocumentInfo>(nullptr);
}

// Sees the first picture.
class PaintWatch : public QObject
{
public:
    bool IsPainted() const { return m_painted; }

    bool eventFilter(QObject*, QEvent* event) override
    {
        m_painted |= event->type() == QEvent::Paint;
        return false;
    }

private:
    bool m_painted = false;
};

void OpenDialog(benchmark::State& state, std::unique_ptr<KXDialog> (*create)())
{
    for (auto _ : state)
    {
        const std::unique_ptr<KXDialog> dialog = create();
        PaintWatch watch;
        dialog->installEventFilter(&watch);
        dialog->show();
        while (!watch.IsPainted())
            QCoreApplication::processEvents();
    }
}
BENCHMARK_CAPTURE(OpenDialog, CanvasSize, CanvasSize)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(OpenDialog, AutoCrop, AutoCrop)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(OpenDialog, IncompleteDocumentInfo, IncompleteDocumentInfo)->Unit(benchmark::kMillisecond);

// Whether every field shows what follows from that width, at 300 dots per inch and four to three.
bool HasFollowed(const NVCanvasSize& dialog, bool isLength, int typed)
{
    const int width = int(isLength ? typed * 300.0 / 25.4 : typed);
    const int height = width * 3 / 4;
    const int bytes = width * height * 4;
    const QString memory = bytes < 1024 ? QStringLiteral("%1 b").arg(bytes)
                                        : QStringLiteral("%1 Kb").arg(bytes / 1024.0, 0, 'f', 2);
    const auto* box = dialog.findChild<QDoubleSpinBox*>(QStringLiteral("m_pNewHeight"));
    const double shown = qMax(box->minimum(), isLength ? height * 25.4 / 300.0 : height);
    const auto* group = dialog.findChild<QGroupBox*>(QStringLiteral("m_pNewSizeGroup"));
    return dialog.GetNewSize() == QSize(width, height) && qAbs(box->value() - shown) < 0.006 &&
        group->title().endsWith(memory);
}

// The argument is the index of the unit: pixels or millimetres.
void TypeWidth(benchmark::State& state)
{
    NVCanvasSize dialog(300, QSize(4000, 3000), nullptr);
    dialog.findChild<QComboBox*>(QStringLiteral("m_pWidthUnits"))->setCurrentIndex(int(state.range(0)));
    dialog.show();
    if (!QTest::qWaitForWindowActive(&dialog))
        state.SkipWithError("the dialog does not become active");
    auto* box = dialog.findChild<QDoubleSpinBox*>(QStringLiteral("m_pNewWidth"));
    box->setFocus();
    int typed = 1;
    std::vector<qint64> times;
    QElapsedTimer timer;
    for (auto _ : state)
    {
        typed = 3 - typed;
        box->selectAll();
        timer.start();
        QTest::keyClick(box, typed == 1 ? Qt::Key_1 : Qt::Key_2);
        times.push_back(timer.nsecsElapsed());
        if (!HasFollowed(dialog, state.range(0) != 0, typed))
            state.SkipWithError("a field does not follow");
    }
    std::sort(times.begin(), times.end());
    state.counters["median_us"] = double(times.at(times.size() / 2)) / 1000.0;
    state.counters["worst_us"] = double(times.back()) / 1000.0;
}
BENCHMARK(TypeWidth)->Arg(0)->Arg(2)->Unit(benchmark::kMicrosecond);

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
