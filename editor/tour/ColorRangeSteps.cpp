// The colour range: three colours picked from the canvas, one taken out and put back, and the selection.

#include <QDialogButtonBox>
#include <QLabel>
#include <QPushButton>
#include <QSpinBox>

#include "ColorRangeDock.h"
#include "NVSelectColorRange.h"
#include "TourGuide.h"
#include "TourPictures.h"
#include "TourTopics.h"

namespace
{

ColorRangeDock* Dock(const TourGuide& guide)
{
    return guide.Get<ColorRangeDock>();
}

NVSelectColorRange* Panel(const TourGuide& guide)
{
    return guide.Get<NVSelectColorRange>();
}

// Clicks the canvas, and expects so many colours in the strip.
void Pick(TourGuide& guide, const QPointF& point, int colors,
          Qt::KeyboardModifiers modifiers = Qt::NoModifier)
{
    guide.ClickAt(point, modifiers);
    const int count = Panel(guide)->GetSourceColors().size();
    guide.Check(count == colors, QStringLiteral("there are %1 colours in the strip").arg(count));
}

// Enter would be for OK.
void TypeTolerance(TourGuide& guide, int tolerance)
{
    auto* box = Control<QSpinBox>(Panel(guide), "m_pTolerance");
    guide.GetRobot().Click(box, QPoint(14, box->height() / 2));
    guide.GetRobot().Key(Qt::Key_A, Qt::ControlModifier);
    guide.GetRobot().Type(QString::number(tolerance));
    guide.GetRobot().Key(Qt::Key_Tab);
    guide.Check(Panel(guide)->GetTolerance() == tolerance, "the tolerance was not taken");
}

void PickColors(TourGuide& guide, const BalloonPicture& picture)
{
    guide.OpenMenu(Qt::Key_S);
    guide.PressEntry(Qt::Key_C);
    guide.GetRobot().Settle();
    if (!guide.Check(Dock(guide)->IsOpen(), "the colour range did not open"))
        return;
    const int steps = guide.UndoSteps();
    Pick(guide, picture.panels.at(0), 1);
    Pick(guide, picture.panels.at(1), 2);
    guide.TakePicture();
    Pick(guide, picture.hill, 3, Qt::ShiftModifier);
    Pick(guide, picture.hill, 2, Qt::AltModifier);
    Pick(guide, picture.hill, 3);
    TypeTolerance(guide, 60);
    guide.Check(guide.GetRobot().WaitFor([&guide] { return !Dock(guide)->IsComputing(); }),
                "the preview does not come");
    guide.Check(guide.UndoSteps() == steps, "picking is a step");
    guide.TakePictureOf(Panel(guide), QStringLiteral("color-range"));
}

void ApplyColors(TourGuide& guide, const BalloonPicture& picture)
{
    const int steps = guide.UndoSteps();
    guide.GetRobot().Click(
        Control<QDialogButtonBox>(Panel(guide), "m_pButtonBox")->button(QDialogButtonBox::Ok));
    guide.Check(guide.GetRobot().WaitFor([&guide, steps] { return guide.UndoSteps() == steps + 1; }),
                "the selection is not one undo step");
    guide.Check(!Dock(guide)->IsOpen(), "the panel did not close");
    for (const QPointF& panel : picture.panels)
        guide.Check(guide.SelectedAt(panel) > 0, "a panel of the balloon is not selected");
    guide.Check(guide.SelectedAt(picture.hill) > 0, "the hill is not selected");
    guide.Check(guide.SelectedAt(picture.sky) == 0, "the sky is selected");
    guide.TakePicture();
    guide.GetRobot().Key(Qt::Key_Z, Qt::ControlModifier);
    guide.Check(guide.SelectedAt(picture.hill) == 0, "undoing did not take the selection back");
    guide.GetRobot().Key(Qt::Key_Z, Qt::ControlModifier | Qt::ShiftModifier);
    guide.Check(guide.SelectedAt(picture.hill) > 0, "redoing did not bring the selection back");
}

} // namespace

void PlayColorRange(TourGuide& guide)
{
    const BalloonPicture picture = DrawBalloon();
    if (!guide.OpenDrawn(picture.image, QStringLiteral("ballooning.png")))
        return;
    guide.Step("color-range", "Three colours picked from the canvas, with a preview of what they select",
               [&picture](TourGuide& it) { PickColors(it, picture); });
    const auto* dock = guide.Find<ColorRangeDock>();
    if (dock && dock->IsOpen())
        guide.Step("color-range-selection", "The selection of the three colours, undone and redone",
                   [&picture](TourGuide& it) { ApplyColors(it, picture); });
    guide.LeaveDrawn();
}
