// The canvas: zoom, hand, undo and redo.

#include <QCheckBox>

#include <cmath>

#include "BrushTool.h"
#include "NVBrushToolbar.h"
#include "NVDocumentView.h"
#include "NVFillCanToolbar.h"
#include "OptionArea.h"
#include "TourGuide.h"
#include "TourTopics.h"

namespace
{

bool IsScale(const TourGuide& guide, double scale)
{
    return std::abs(guide.GetView()->GetScale() / scale - 1) < 0.01;
}

// There may be no larger or no smaller scale than the one that fits.
void ZoomByKeys(TourGuide& guide, double fit)
{
    TourRobot& robot = guide.GetRobot();
    if (fit < NVDocumentView::MaxScale / 2)
    {
        robot.Key(Qt::Key_Plus, Qt::ControlModifier);
        guide.Check(guide.GetView()->GetScale() > fit, "Ctrl++ did not zoom in");
        robot.Key(Qt::Key_Minus, Qt::ControlModifier);
        guide.Check(IsScale(guide, fit), "Ctrl+- did not zoom out");
    }
    robot.Key(Qt::Key_1, Qt::ControlModifier);
    guide.Check(IsScale(guide, 1), "Ctrl+1 did not give 100 %");
}

void MoveByHand(TourGuide& guide)
{
    NVDocumentView* view = guide.GetView();
    const QPointF before = view->MapToDocument(QPointF());
    const QPoint middle = view->viewport()->rect().center();
    guide.GetRobot().Drag(view, {view->MapToDocument(middle), view->MapToDocument(middle - QPoint(100, 60))});
    guide.GetRobot().Settle();
    const QPointF way = view->MapToDocument(QPointF()) - before;
    guide.Check(std::abs(way.x() - 100) < 2 && std::abs(way.y() - 60) < 2,
                QStringLiteral("the hand moved the picture by %1, %2").arg(way.x()).arg(way.y()));
}

void Zoom(TourGuide& guide)
{
    guide.FocusCanvas();
    const double fit = guide.GetView()->GetScale();
    ZoomByKeys(guide, fit);
    guide.ChooseTool("Hand");
    MoveByHand(guide);
    guide.TakePicture();
    guide.GetRobot().Type(QStringLiteral("b"));
    guide.GetRobot().Key(Qt::Key_0, Qt::ControlModifier);
    guide.Check(IsScale(guide, fit), "Ctrl+0 did not fit the picture");
    guide.Check(guide.GetWindow()->GetBrushTool()->GetBrushBar()->isVisible(),
                "B did not bring the brush back");
}

void UndoAndRedo(TourGuide& guide)
{
    const QPointF middle = guide.PointAt(0.5, 0.85);
    guide.UseContrast(middle);
    const QRgb before = guide.PixelAt(middle);
    guide.Stroke(guide.PointAt(0.2, 0.85), guide.PointAt(0.8, 0.85));
    const QRgb after = guide.PixelAt(middle);
    guide.Check(before != after, "the stroke changed nothing");
    guide.Undo();
    guide.Check(guide.PixelAt(middle) == before, "undo left the stroke");
    guide.TakePicture();
    guide.GetRobot().Key(Qt::Key_Z, Qt::ControlModifier | Qt::ShiftModifier);
    guide.Check(guide.PixelAt(middle) == after, "redo did not bring the stroke back");
}

// The widest bar in a small window: what does not fit is reached by the wheel.
void NarrowWindow(TourGuide& guide)
{
    MainWindow* window = guide.GetWindow();
    const QSize size = window->size();
    guide.ChooseTool("Fill");
    window->resize(qMin(800, size.width()), qMin(600, size.height()));
    guide.GetRobot().Settle();
    QWidget* area = guide.Get<OptionArea>()->viewport();
    const auto* bar = guide.Find<NVFillCanToolbar>();
    if (guide.Check(bar, "the fill bar is not to be seen"))
    {
        const auto* last = Control<QCheckBox>(bar, "m_pAllLayers");
        guide.TakePicture();
        guide.GetRobot().Wheel(area, QPoint(3, area->height() / 2), 20);
        guide.Check(last->visibleRegion().boundingRect() == last->rect(),
                    "the end of the bar is out of reach");
    }
    guide.TakePicture();
    guide.GetRobot().Wheel(area, QPoint(3, area->height() / 2), -20);
    window->resize(size);
    guide.GetRobot().Settle();
    guide.ChooseTool("Brush");
}

} // namespace

void PlayCanvas(TourGuide& guide)
{
    guide.Step("zoom", "Zoomed in by keys, and moved with the hand tool", Zoom);
    guide.Step("undo-redo", "The last stroke undone and done again", UndoAndRedo);
    guide.Step("narrow-window", "A bar that is wider than the window, scrolled by the wheel", NarrowWindow);
}
