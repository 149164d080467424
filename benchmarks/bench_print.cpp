// How long the print dialog takes to draw its preview anew, against the bare drawing of the same picture in
// the same place; how long a job to a PDF file takes, against the picture saved as a JPEG of the same
// quality; and how long the window stands still while a job runs.

#include <QApplication>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QElapsedTimer>
#include <QGraphicsItem>
#include <QGraphicsView>
#include <QPrintPreviewWidget>
#include <QPushButton>
#include <QRadioButton>
#include <QTemporaryDir>
#include <QTimer>
#include <QtConcurrent>
#include <QtTest>

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cmath>
#include <functional>
#include <vector>

#include "NVPrintPreviewDialog.h"

namespace
{

// As the toolkit writes the pictures of a PDF file.
const int JpegQuality = 94;

// Soft shapes with some grain, like a photograph, of so many megapixels, 4:3. The last one is kept.
QImage Photo(int megapixels)
{
    static QImage image;
    static int size = 0;
    if (size == megapixels)
        return image;
    size = megapixels;
    const int height = int(std::sqrt(megapixels * 1e6 * 3 / 4));
    image = QImage(height * 4 / 3, height, QImage::Format_RGB32);
    quint32 noise = 1;
    for (int y = 0; y < image.height(); ++y)
    {
        auto* line = reinterpret_cast<QRgb*>(image.scanLine(y));
        for (int x = 0; x < image.width(); ++x)
        {
            noise = noise * 1664525 + 1013904223;
            const int grain = int(noise >> 28);
            line[x] = qRgb((x * 255 / image.width() + grain) & 255, (y * 240 / image.height()) + grain,
                           ((x + y) / 16 % 200) + grain);
        }
    }
    return image;
}

// The dialog with A4 at 300 dots an inch and the picture fitted to the page, shown.
class Preview
{
public:
    Preview(int megapixels, bool turned) : m_dialog(nullptr)
    {
        auto* pages = m_dialog.findChild<QComboBox*>(QStringLiteral("m_pPageSize"));
        pages->addItem(QStringLiteral("A4"), int(QPageSize::A4));
        m_dialog.findChild<QComboBox*>(QStringLiteral("m_pDPI"))->addItem(QStringLiteral("300"), 300);
        m_dialog.findChild<QRadioButton*>(QStringLiteral("m_pFitToPage"))->click();
        m_dialog.findChild<QComboBox*>(QStringLiteral("m_pRotate"))->setCurrentIndex(turned ? 2 : 0);
        m_dialog.SetSource(Photo(megapixels));
        // A page of about 1000 by 1400 pixels.
        m_dialog.resize(1500, 1530);
        m_dialog.show();
        m_shown = QTest::qWaitForWindowExposed(&m_dialog);
        m_view = m_dialog.findChild<QPrintPreviewWidget*>()->findChild<QGraphicsView*>();
    }
    bool IsShown() const { return m_shown; }
    NVPrintPreviewDialog& Dialog() { return m_dialog; }
    void Repaint() { m_view->viewport()->repaint(); }
    // From the picture to the pixels of the view.
    QTransform ToView() const
    {
        const QGraphicsItem* page = m_view->scene()->items().first();
        return m_dialog.CalcAffineTransformation() * page->deviceTransform(m_view->viewportTransform());
    }
    QRectF ClipInView() const
    {
        const QGraphicsItem* page = m_view->scene()->items().first();
        return page->deviceTransform(m_view->viewportTransform()).mapRect(m_dialog.GetPageClipRect());
    }
    QSize ViewSize() const { return m_view->viewport()->size(); }

private:
    NVPrintPreviewDialog m_dialog;
    QGraphicsView* m_view;
    bool m_shown;
};

// The bare drawing of the picture in the place where the preview has it.
class BareDrawing
{
public:
    BareDrawing(const Preview& preview, const QImage& image)
        : m_image(image),
          m_transform(preview.ToView()),
          m_clip(preview.ClipInView()),
          m_target(preview.ViewSize(), QImage::Format_ARGB32_Premultiplied)
    {
    }
    void Draw()
    {
        m_target.fill(Qt::white);
        QPainter painter(&m_target);
        painter.setClipRect(m_clip);
        painter.setTransform(m_transform);
        painter.setRenderHint(QPainter::SmoothPixmapTransform);
        painter.drawImage(0, 0, m_image);
    }

private:
    const QImage m_image;
    const QTransform m_transform;
    const QRectF m_clip;
    QImage m_target;
};

double Median(std::vector<double>& times)
{
    std::nth_element(times.begin(), times.begin() + times.size() / 2, times.end());
    return times[times.size() / 2];
}

double MillisecondsOf(const std::function<void()>& act)
{
    QElapsedTimer timer;
    timer.start();
    act();
    return timer.nsecsElapsed() / 1e6;
}

struct Measured
{
    const char* name;
    std::function<void()> act;
};

// Two acts take turns, so that both find the machine and the processor's caches alike; the time is that of
// the first. The counters are medians in milliseconds, and the first by the second.
void Compare(benchmark::State& state, const Measured& measured, const Measured& yardstick)
{
    std::vector<double> times;
    std::vector<double> yards;
    for (auto _ : state)
    {
        times.push_back(MillisecondsOf(measured.act));
        state.SetIterationTime(times.back() / 1e3);
        yards.push_back(MillisecondsOf(yardstick.act));
    }
    if (times.empty())
        return;
    state.counters[measured.name] = Median(times);
    state.counters[yardstick.name] = Median(yards);
    state.counters["ratio"] = Median(times) / Median(yards);
}

// Arguments: megapixels, and whether the picture is turned by a quarter.
void UpdatePreview(benchmark::State& state)
{
    Preview preview(int(state.range(0)), state.range(1));
    if (!preview.IsShown())
        state.SkipWithError("the dialog does not open");
    preview.Repaint();
    BareDrawing drawing(preview, Photo(int(state.range(0))));
    const auto update = [&preview]
    {
        Q_EMIT preview.Dialog().UpdatePreview();
        preview.Repaint();
    };
    Compare(state, {"update", update}, {"bare", [&drawing] { drawing.Draw(); }});
}

// The window is uncovered, or the dialog disabled, and nothing has changed.
void RepaintPreview(benchmark::State& state)
{
    Preview preview(int(state.range(0)), state.range(1));
    if (!preview.IsShown())
        state.SkipWithError("the dialog does not open");
    preview.Repaint();
    for (auto _ : state)
        preview.Repaint();
}

void pictures(benchmark::internal::Benchmark* bench)
{
    bench->ArgNames({"MP", "turned"})->Unit(benchmark::kMillisecond);
    for (const int megapixels : {12, 50, 100})
        bench->Args({megapixels, 0})->Args({megapixels, 1});
}
BENCHMARK(UpdatePreview)->Apply(pictures)->UseManualTime();
BENCHMARK(RepaintPreview)->Apply(pictures)->UseRealTime();

PrintJob A4Job(int megapixels, int copies)
{
    PrintJob job;
    job.image = Photo(megapixels);
    job.pageSize = QPageSize(QPageSize::A4);
    job.resolution = 300;
    job.clipRect = QRectF(0, 0, 2479, 3508);
    const double scale = 2479.0 / job.image.width();
    job.transform = QTransform::fromScale(scale, scale);
    job.copies = copies;
    return job;
}

void printToFile(const PrintJob& job, const QString& path)
{
    QPrinter printer(QPrinter::ScreenResolution);
    printer.setOutputFormat(QPrinter::PdfFormat);
    printer.setOutputFileName(path);
    PrintPages(printer, job);
}

// One copy, against the picture saved as a JPEG.
void PdfJob(benchmark::State& state)
{
    const QTemporaryDir folder;
    const PrintJob job = A4Job(int(state.range(0)), 1);
    const QString pdf = folder.filePath(QStringLiteral("job.pdf"));
    const QString jpeg = folder.filePath(QStringLiteral("job.jpg"));
    const auto save = [&] { benchmark::DoNotOptimize(job.image.save(jpeg, "JPEG", JpegQuality)); };
    Compare(state, {"pdf", [&] { printToFile(job, pdf); }}, {"jpeg", save});
}
BENCHMARK(PdfJob)->ArgName("MP")->Arg(12)->Arg(50)->Arg(100)->Unit(benchmark::kMillisecond)->UseManualTime();

// Arguments: megapixels, copies. Against one copy.
void PdfCopies(benchmark::State& state)
{
    const QTemporaryDir folder;
    const PrintJob job = A4Job(int(state.range(0)), int(state.range(1)));
    const PrintJob single = A4Job(int(state.range(0)), 1);
    const QString path = folder.filePath(QStringLiteral("job.pdf"));
    Compare(state, {"copies", [&] { printToFile(job, path); }}, {"one", [&] { printToFile(single, path); }});
}
BENCHMARK(PdfCopies)
    ->ArgNames({"MP", "copies"})
    ->ArgsProduct({{12, 50, 100}, {3, 20}})
    ->Unit(benchmark::kMillisecond)
    ->UseManualTime();

// The longest time between two turns of the event loop since it was made, in milliseconds.
class Standstill
{
public:
    Standstill()
    {
        QObject::connect(&m_ticks, &QTimer::timeout, [this] { Look(); });
        m_ticks.start(1);
        m_since.start();
    }
    double Longest() const { return m_longest; }

private:
    void Look()
    {
        m_longest = qMax(m_longest, m_since.nsecsElapsed() / 1e6);
        m_since.start();
    }

    QTimer m_ticks;
    QElapsedTimer m_since;
    double m_longest = 0;
};

// From the moment when the dialog is disabled until the job has ended.
void StandstillWhilePrinting(benchmark::State& state)
{
    const QTemporaryDir folder;
    double longest = 0;
    for (auto _ : state)
    {
        Preview preview(int(state.range(0)), true);
        preview.Repaint();
        QCoreApplication::processEvents();
        const PrintJob job = A4Job(int(state.range(0)), 1);
        const Standstill standstill;
        const QFuture<void> done =
            QtConcurrent::run(printToFile, job, folder.filePath(QStringLiteral("job.pdf")));
        preview.Dialog().setEnabled(false);
        while (!done.isFinished())
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
        longest = qMax(longest, standstill.Longest());
    }
    state.counters["gap"] = longest;
}
BENCHMARK(StandstillWhilePrinting)
    ->ArgName("MP")
    ->Arg(12)
    ->Arg(100)
    ->Unit(benchmark::kMillisecond)
    ->UseRealTime();

// From the click on "Print" until the dialog has closed itself: with a print server alone,
//   tests/printing/with-print-server.sh build/release/bin/bench_print
//   --benchmark_filter=StandstillOfTheDialog
void StandstillOfTheDialog(benchmark::State& state)
{
    double longest = 0;
    for (auto _ : state)
    {
        Preview preview(int(state.range(0)), true);
        preview.Repaint();
        QCoreApplication::processEvents();
        auto* box = preview.Dialog().findChild<QDialogButtonBox*>();
        const Standstill standstill;
        box->button(QDialogButtonBox::Ok)->click();
        while (preview.Dialog().isVisible())
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
        longest = qMax(longest, standstill.Longest());
    }
    state.counters["gap"] = longest;
}

void CalcAffineTransformation(benchmark::State& state)
{
    Preview preview(1, true);
    for (auto _ : state)
        benchmark::DoNotOptimize(preview.Dialog().CalcAffineTransformation());
}
BENCHMARK(CalcAffineTransformation)->Unit(benchmark::kMicrosecond);

} // namespace

int main(int argc, char** argv)
{
    // No printer of this machine is to be asked.
    const bool hasPrinters = qEnvironmentVariableIsSet("NORVANE_PRINT_FOLDER");
    if (!hasPrinters)
        qputenv("CUPS_SERVER", "/nonexistent/cups.sock");
    QApplication app(argc, argv);
    if (hasPrinters)
        benchmark::RegisterBenchmark("StandstillOfTheDialog", StandstillOfTheDialog)
            ->ArgName("MP")
            ->Arg(12)
            ->Arg(100)
            ->Unit(benchmark::kMillisecond)
            ->UseRealTime();
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
