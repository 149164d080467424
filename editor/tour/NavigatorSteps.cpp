// The navigator panel: zoom by its steps, the frame dragged, the loupe and the histogram.

#include <QComboBox>
#include <QDoubleSpinBox>
#include <QLabel>
#include <QTabBar>
#include <QTabWidget>
#include <QToolButton>

#include "CameraView.h"
#include "HistogramWidget.h"
#include "NVDocumentView.h"
#include "NVNavigatorPanel.h"
#include "NavigatorWidget.h"
#include "TourGuide.h"
#include "TourPictures.h"
#include "TourTopics.h"

namespace
{

NVNavigatorPanel* Panel(const TourGuide& guide)
{
    return guide.Get<NVNavigatorPanel>();
}

void TogglePanel(TourGuide& guide)
{
    guide.OpenMenu(Qt::Key_V);
    guide.PressEntry(Qt::Key_N);
    guide.GetRobot().Settle();
}

void ChooseTab(TourGuide& guide, int index)
{
    auto* tabs = Control<QTabWidget>(Panel(guide), "m_pTabWidget");
    guide.GetRobot().Click(tabs->tabBar(), tabs->tabBar()->tabRect(index).center());
    guide.Check(tabs->currentIndex() == index, "a click did not choose the tab");
}

// Clicks the button, and expects the view at that scale.
void ZoomBy(TourGuide& guide, const char* button, double scale)
{
    guide.GetRobot().Click(Control<QToolButton>(Panel(guide), button));
    guide.Check(qFuzzyCompare(guide.GetView()->GetScale(), scale),
                QStringLiteral("the scale is %1").arg(guide.GetView()->GetScale()));
}

void ZoomByLadder(TourGuide& guide)
{
    TogglePanel(guide);
    if (!guide.Check(Panel(guide)->isVisible(), "the navigator is not to be seen"))
        return;
    ChooseTab(guide, 0);
    guide.TypeInto(Control<QDoubleSpinBox>(Panel(guide), "m_pZoomSpn"), 60);
    guide.TakePicture();
    ZoomBy(guide, "m_pZoomIn", 1.0);
    ZoomBy(guide, "m_pZoomIn", 2.0);
    guide.TakePicture();
    ZoomBy(guide, "m_pZoomOut", 1.0);
    ZoomBy(guide, "m_pZoomIn", 2.0);
}

QPointF MiddleOf(const NVDocumentView* view)
{
    return view->MapToDocument(QRectF(view->viewport()->rect()).center());
}

void DragFrame(TourGuide& guide)
{
    auto* overview = Control<NavigatorWidget>(Panel(guide), "m_pNavigator");
    const QPointF before = MiddleOf(guide.GetView());
    const QPoint middle = overview->rect().center();
    // Up to the left, where the lighthouse does not stand, and a little back.
    guide.GetRobot().DragOn(overview, {middle, middle - QPoint(20, 12), middle - QPoint(40, 24)});
    const QPointF moved = MiddleOf(guide.GetView()) - before;
    guide.Check(moved.x() < -40 && moved.y() < -20,
                QStringLiteral("the canvas moved by %1, %2").arg(moved.x()).arg(moved.y()));
    guide.Check(qFuzzyCompare(guide.GetView()->GetScale(), 2.0), "dragging changed the scale");
    guide.TakePictureOf(Panel(guide), QStringLiteral("navigator-panel"));
}

void LookThroughLoupe(TourGuide& guide)
{
    ChooseTab(guide, 1);
    auto* loupe = Control<CameraView>(Panel(guide), "m_pZoom");
    const QPointF point = MiddleOf(guide.GetView());
    guide.GetRobot().Move(guide.GetView()->viewport(), guide.GetView()->MapFromDocument(point).toPoint());
    guide.Check((QPointF(loupe->GetLookPoint()) - point).manhattanLength() < 3,
                "the loupe does not follow the pointer");
    guide.ChooseEntry(Control<QComboBox>(Panel(guide), "m_pGridType"), CameraView::GridLighten);
    guide.GetRobot().Wheel(loupe, loupe->rect().center(), -7);
    guide.Check(loupe->GetScaleFactor() > 4, QStringLiteral("the factor is %1").arg(loupe->GetScaleFactor()));
}

void ReadHistogram(TourGuide& guide)
{
    ChooseTab(guide, 2);
    const auto* pixels = Control<QLabel>(Panel(guide), "m_pPixels");
    const int all = guide.GetComposition().width() * guide.GetComposition().height();
    guide.Check(guide.GetRobot().WaitFor([pixels, all] { return pixels->text() == QString::number(all); }),
                QStringLiteral("%1 pixels were counted").arg(pixels->text()));
    guide.TakePicture();
    guide.ChooseEntry(Control<QComboBox>(Panel(guide), "m_pChannel"), 4);
    auto* histogram = Control<HistogramWidget>(Panel(guide), "m_pHistogram");
    const int middle = histogram->height() / 2;
    guide.GetRobot().DragOn(
        histogram, {QPoint(histogram->width() / 2, middle), QPoint(histogram->width() * 3 / 4, middle)});
    guide.Check(pixels->text().toInt() < all, "no range was selected");
    guide.TakePicture();
    TogglePanel(guide);
    guide.Check(!Panel(guide)->isVisible(), "the navigator did not close");
}

} // namespace

void PlayNavigator(TourGuide& guide)
{
    if (!guide.OpenDrawn(DrawLighthouse().image, QStringLiteral("lighthouse.png")))
        return;
    guide.Step("navigator-zoom", "The navigator: its steps zoom the canvas", ZoomByLadder);
    const auto* panel = guide.Find<NVNavigatorPanel>();
    if (panel && panel->isVisible())
    {
        guide.Step("navigator-frame", "The frame in the overview is dragged", DragFrame);
        guide.Step("navigator-loupe", "The loupe follows the pointer", LookThroughLoupe);
        guide.Step("navigator-histogram", "The histogram, and the pixels of a range of it", ReadHistogram);
    }
    guide.LeaveDrawn();
}
