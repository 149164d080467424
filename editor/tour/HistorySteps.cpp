// The history panel: a click goes to a step, forth and back, and the oldest steps go when there is no room.

#include <QLabel>
#include <QLayout>
#include <QScrollArea>
#include <QStatusBar>

#include "HistoryDock.h"
#include "NVDocumentView.h"
#include "NVHistoryItem.h"
#include "NVHistoryPanel.h"
#include "NVSpinBox.h"
#include "TourGuide.h"
#include "TourPictures.h"
#include "TourTopics.h"

namespace
{

NVHistoryPanel* Panel(const TourGuide& guide)
{
    return guide.Get<NVHistoryPanel>();
}

NVHistoryItem* RowOf(const TourGuide& guide, int row)
{
    const QWidget* column = Control<QScrollArea>(Panel(guide))->widget();
    QLayoutItem* item = column->layout()->itemAt(row);
    return Needed(item ? qobject_cast<NVHistoryItem*>(item->widget()) : nullptr,
                  QStringLiteral("there is no row %1").arg(row));
}

void TogglePanel(TourGuide& guide)
{
    guide.OpenMenu(Qt::Key_V);
    guide.PressEntry(Qt::Key_Y);
    guide.GetRobot().Settle();
}

void ClickRow(TourGuide& guide, int row)
{
    NVHistoryItem* item = RowOf(guide, row);
    guide.GetRobot().Click(item, QPoint(40, item->height() / 2));
    guide.Check(Panel(guide)->GetSelectedIndex() == row, "the click did not go to the step");
}

void PickStep(TourGuide& guide)
{
    TogglePanel(guide);
    if (!guide.Check(Panel(guide)->isVisible(), "the history is not to be seen"))
        return;
    guide.FocusCanvas();
    QVector<QImage> looks = {guide.GetComposition().copy()};
    for (const double y : {0.25, 0.5, 0.75})
    {
        guide.UseContrast(guide.PointAt(0.3, y));
        guide.Stroke(guide.PointAt(0.15, y), guide.PointAt(0.6, y));
        looks += guide.GetComposition().copy();
    }
    guide.Check(Panel(guide)->Count() == 4, QStringLiteral("there are %1 rows").arg(Panel(guide)->Count()));
    guide.TakePicture();
    for (const int row : {1, 0, 3, 2})
    {
        ClickRow(guide, row);
        guide.Check(guide.GetComposition() == looks.at(row), "the picture is not that of the step");
    }
    guide.Check(!RowOf(guide, 3)->IsEnabled() && RowOf(guide, 1)->IsEnabled(), "the rows look alike");
    guide.TakePictureOf(guide.Find<HistoryDock>(), QStringLiteral("history-panel"));
}

void RunOutOfRoom(TourGuide& guide)
{
    auto* limit = Control<NVSpinBox>(guide.Get<HistoryDock>());
    const int before = limit->value();
    guide.TypeInto(limit, 16);
    guide.FocusCanvas();
    // Each holds the whole layer.
    for (int i = 0; i < 6; ++i)
        guide.GetRobot().Key(Qt::Key_Delete, Qt::ControlModifier);
    const auto* text = Control<QLabel>(RowOf(guide, 0), "m_pText");
    guide.Check(text->text().contains(QLatin1String("dropped")),
                QStringLiteral("the first row says ") + text->text());
    const QString message = guide.GetWindow()->statusBar()->currentMessage();
    guide.Check(message.contains(QLatin1String("dropped")), QStringLiteral("the status bar says ") + message);
    guide.TakePicture();
    ClickRow(guide, 0);
    guide.Check(guide.UndoSteps() == 0, "there are steps to undo");
    guide.TypeInto(limit, before);
    TogglePanel(guide);
    guide.Check(!Panel(guide)->isVisible(), "the history did not close");
}

} // namespace

void PlayHistory(TourGuide& guide)
{
    if (!guide.OpenDrawn(DrawLighthouse().image, QStringLiteral("coast.png")))
        return;
    guide.Step("history", "A click in the history goes to a step; what comes after it is grey", PickStep);
    const auto* panel = guide.Find<NVHistoryPanel>();
    if (panel && panel->isVisible())
        guide.Step("history-full", "A full history drops its oldest steps and says so", RunOutOfRoom);
    guide.LeaveDrawn();
}
