// The docked panels.

#include <QListView>
#include <QPushButton>

#include "BrushTool.h"
#include "KXBrushSettings.h"
#include "NVBrushPanel.h"
#include "NVBrushToolbar.h"
#include "NVDocumentView.h"
#include "TourGuide.h"
#include "TourTopics.h"

namespace
{

// Another brush, by a click in the popup.
void PickBrush(TourGuide& guide, int row)
{
    KXBrushSettings* popup = guide.GetWindow()->GetBrushTool()->GetBrushBar()->GetBrushes();
    auto* presets = Control<QListView>(popup);
    if (!guide.Check(presets->model()->rowCount() > row, "there are no brushes"))
        return;
    const QModelIndex index = presets->model()->index(row, 0);
    presets->scrollTo(index);
    guide.GetRobot().Click(presets->viewport(), presets->visualRect(index).center());
    guide.Check(popup->GetCurrentPreset() == row, "the click did not choose the brush");
    guide.TakePicture();
}

void VisitBrushes(TourGuide& guide, int row)
{
    const NVBrushToolbar* bar = guide.GetWindow()->GetBrushTool()->GetBrushBar();
    guide.VisitPopup(Control<QPushButton>(bar, "m_pSelectBrushBtn"), bar->GetBrushes(),
                     [row](TourGuide& it) { PickBrush(it, row); });
}

void WatchBrush(TourGuide& guide)
{
    const QRect place = guide.GetView()->geometry();
    guide.OpenMenu(Qt::Key_V);
    guide.PressEntry(Qt::Key_R);
    auto* panel = guide.Find<NVBrushPanel>();
    if (!guide.Check(panel && panel->isVisible(), "the brush panel is not to be seen"))
        return;
    const QImage before = panel->grab().toImage();
    VisitBrushes(guide, 5);
    guide.Check(panel->grab().toImage() != before, "the panel does not follow the brush");
    guide.TakePictureOf(panel, QStringLiteral("brush-panel"));
    guide.TakePicture();
    VisitBrushes(guide, 0);
    guide.OpenMenu(Qt::Key_V);
    guide.PressEntry(Qt::Key_R);
    guide.Check(!panel->isVisible() && guide.GetView()->geometry() == place, "the panel did not close");
}

} // namespace

void PlayPanels(TourGuide& guide)
{
    guide.Step("brush-panel", "The brush panel shows the brush as it is", WatchBrush);
}
