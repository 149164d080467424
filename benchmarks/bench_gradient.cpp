// How long the gradient list takes to be painted, against what the style alone takes for such rows, and how
// long a pointer takes to find one of many handles.

#include <QApplication>
#include <QElapsedTimer>
#include <QGraphicsScene>
#include <QGraphicsView>
#include <QLinearGradient>
#include <QListView>
#include <QPainter>
#include <QStandardItemModel>
#include <QtTest>

#include <benchmark/benchmark.h>

#include "ControlNode.h"
#include "GradientStops.h"
#include "NVGradientItemDelegate.h"

namespace
{

const int RowCount = 1000;
const QSize RowSize(300, 30);

QList<NVGradientStop> gradient(int seed, int stopCount)
{
    QList<NVGradientStop> stops;
    for (int i = 0; i < stopCount; ++i)
    {
        const QColor color = QColor::fromHsv((seed * 37 + i * 61) % 360, 200, 220, i % 2 ? 255 : 120);
        stops.append(NVGradientStop(double(i) / (stopCount - 1), color, false, false, false));
    }
    return stops;
}

// What a delegate gets for the rows of a list.
struct Rows
{
    QListView view;
    QStandardItemModel model;
    QImage page{RowSize, QImage::Format_RGB32};
    QStyleOptionViewItem option;

    Rows()
    {
        model.insertColumns(0, 1);
        model.insertRows(0, RowCount);
        for (int row = 0; row < RowCount; ++row)
        {
            QLinearGradient brush(0, 0, 1, 0);
            brush.setStops(ToGradientStops(gradient(row, 5)));
            model.setData(model.index(row, 0), QBrush(brush), Qt::BackgroundRole);
        }
        view.setModel(&model);
        option.rect = QRect(QPoint(), RowSize);
        option.palette = view.palette();
        option.font = view.font();
        option.widget = &view;
        option.showDecorationSelected = true;
        option.state = QStyle::State_Enabled | QStyle::State_Active | QStyle::State_Selected;
    }
};

// What the style takes for the same rows, as it draws them.
double styleTime(const Rows& rows, const QStyleOptionViewItem& item, QPainter* painter)
{
    QElapsedTimer clock;
    clock.start();
    for (int row = 0; row < RowCount; ++row)
    {
        rows.view.style()->drawControl(QStyle::CE_ItemViewItem, &item, painter, &rows.view);
    }
    return double(clock.nsecsElapsed()) * 1e-9;
}

// Rows of gradients, the same rows with a short text as the style draws them, and without, in turns. The
// ratios are what the delegate takes of each of the two.
void PaintRows(benchmark::State& state)
{
    Rows rows;
    const NVGradientItemDelegate delegate(nullptr);
    QStyleOptionViewItem text(rows.option);
    text.features |= QStyleOptionViewItem::HasDisplay;
    text.text = QStringLiteral("Gradient 12");
    double own = 0.0;
    double ofText = 0.0;
    double ofEmpty = 0.0;
    for (auto _ : state)
    {
        QPainter painter(&rows.page);
        QElapsedTimer clock;
        clock.start();
        for (int row = 0; row < RowCount; ++row)
        {
            delegate.paint(&painter, rows.option, rows.model.index(row, 0));
        }
        const double took = double(clock.nsecsElapsed()) * 1e-9;
        state.SetIterationTime(took);
        own += took;
        ofText += styleTime(rows, text, &painter);
        ofEmpty += styleTime(rows, rows.option, &painter);
    }
    state.counters["ratio_to_text"] = own / ofText;
    state.counters["ratio_to_empty"] = own / ofEmpty;
}
BENCHMARK(PaintRows)->UseManualTime()->Unit(benchmark::kMillisecond);

// A strip with 200 handles, most of which overlap.
struct Strip
{
    QGraphicsScene scene{0, 0, 400, 28};
    QGraphicsView view{&scene};
    QList<ControlNode*> nodes;

    Strip()
    {
        for (int i = 0; i < 200; ++i)
        {
            auto* node = new ControlNode(nullptr);
            scene.addItem(node);
            node->setPos(2.0 * i, 14.0);
            node->setFlag(QGraphicsItem::ItemIsSelectable);
            nodes.append(node);
        }
        view.setFrameShape(QFrame::NoFrame);
        view.resize(400, 28);
        view.show();
        QCoreApplication::processEvents();
    }
};

void FindHandle(benchmark::State& state)
{
    Strip strip;
    int x = 0;
    for (auto _ : state)
    {
        benchmark::DoNotOptimize(strip.view.itemAt(x, 14));
        x = (x + 7) % 400;
    }
}
BENCHMARK(FindHandle)->Unit(benchmark::kMicrosecond);

void DragHandle(benchmark::State& state)
{
    Strip strip;
    const auto mouse = [&](QEvent::Type type, int x)
    {
        const QPoint place(x, 14);
        QMouseEvent event(type, place, strip.view.viewport()->mapToGlobal(place), Qt::LeftButton,
                          Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(strip.view.viewport(), &event);
    };
    mouse(QEvent::MouseButtonPress, 200);
    int x = 200;
    for (auto _ : state)
    {
        x = x == 300 ? 100 : x + 1;
        mouse(QEvent::MouseMove, x);
        strip.view.viewport()->repaint();
    }
    mouse(QEvent::MouseButtonRelease, x);
}
BENCHMARK(DragHandle)->Unit(benchmark::kMicrosecond);

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
