// How long the small document dialogs take from their constructor to their first picture, and the canvas size
// to settle after one keystroke.

#include <QApplication>
#include <QComboBox>
#include <QDoubleSpinBox>
#include <QtTest>

#include <benchmark/benchmark.h>

#include <memory>

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
    int step = 0;
    for (auto _ : state)
    {
        box->selectAll();
        QTest::keyClick(box, ++step % 2 ? Qt::Key_1 : Qt::Key_2);
    }
    if (box->value() > 2.0)
        state.SkipWithError("nothing is typed");
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
