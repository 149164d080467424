// The rectangular and the elliptic selection: modes, radius and feather, the moving outline, what a selection
// means to other tools, and the menu.

#include <QSpinBox>

#include "KXDocumentInterface.h"
#include "NVDocumentView.h"
#include "NVSelectionToolbar.h"
#include "RefineDialog.h"
#include "SelectionMask.h"
#include "SelectionOutline.h"
#include "SelectionShape.h"
#include "TourGuide.h"
#include "TourPictures.h"
#include "TourTopics.h"

namespace
{

// Of the tool that is chosen; both tools have one.
NVSelectionToolbar* Bar(const TourGuide& guide)
{
    return Needed(qobject_cast<NVSelectionToolbar*>(guide.GetWindow()->GetTool()->GetBar()),
                  "another tool is chosen");
}

QImage Mask(const TourGuide& guide)
{
    return guide.GetPixels()->GetSelectionMask();
}

// A drag that is to be one undo step.
void Select(TourGuide& guide, const QPointF& from, const QPointF& to,
            Qt::KeyboardModifiers modifiers = Qt::NoModifier)
{
    const int steps = guide.UndoSteps();
    guide.GetRobot().Drag(guide.GetView(), {from, (from + to) / 2, to}, modifiers);
    guide.Check(guide.GetRobot().WaitFor([&guide, steps] { return guide.UndoSteps() == steps + 1; }),
                "the selection is not one undo step");
}

// What a drag from point to point is to select.
QRect Dragged(const TourGuide& guide, const QPointF& from, const QPointF& to)
{
    return DraggedRect(guide.HitPoint(from), guide.HitPoint(to), false, false);
}

void SelectRectangle(TourGuide& guide, const LighthousePicture& picture)
{
    guide.ChooseTool("Rectangular Selection");
    if (!guide.Check(Bar(guide)->isVisible(), "the selection bar is not to be seen"))
        return;
    guide.TakePictureOf(Bar(guide), QStringLiteral("selection-bar"));
    guide.TakePicture();
    const QPointF from = picture.lamp - QPointF(120, 100);
    const QPointF to = picture.lamp + QPointF(130, 160);
    Select(guide, from, to);
    const QSize size = Mask(guide).size();
    guide.Check(Mask(guide) == RectangleMask(size, Dragged(guide, from, to)),
                "the selection is not what was dragged");
    const auto* outline = SelectionOutline::Of(guide.GetView());
    if (!guide.Check(outline && outline->IsShown() && outline->IsMoving(), "there is no moving outline"))
        return;
    const int phase = outline->GetPhase();
    guide.Check(guide.GetRobot().WaitFor([&] { return outline->GetPhase() != phase; }),
                "the outline does not move");
}

void PaintWithin(TourGuide& guide, const LighthousePicture& picture)
{
    guide.ChooseTool("Brush");
    guide.UseContrast(picture.sky);
    guide.TakePicture();
    const QImage before = guide.GetComposition().copy();
    const QPointF left = picture.lamp - QPointF(300, -50);
    guide.Stroke(left, picture.lamp + QPointF(300, 50));
    guide.Check(guide.PixelAt(picture.lamp + QPointF(100, 50)) !=
                    before.pixel(PixelOf(picture.lamp + QPointF(100, 50))),
                "nothing was painted within the selection");
    guide.Check(guide.PixelAt(picture.lamp + QPointF(200, 50)) ==
                    before.pixel(PixelOf(picture.lamp + QPointF(200, 50))),
                "something was painted outside the selection");
    guide.TakePicture();
    guide.Undo();
}

void JoinByKeys(TourGuide& guide, const LighthousePicture& picture)
{
    guide.ChooseTool("Elliptic Selection");
    guide.TakePicture();
    const QPointF foot = picture.foot;
    Select(guide, foot - QPointF(200, 120), foot + QPointF(200, 40), Qt::ShiftModifier);
    guide.Check(guide.SelectedAt(foot - QPointF(0, 40)) == 255 && guide.SelectedAt(picture.lamp) == 255,
                "Shift did not unite the two");
    guide.Check(guide.SelectedAt(foot - QPointF(195, 115)) == 0, "the ellipse has corners");
    guide.TakePicture();
    Select(guide, picture.lamp - QPointF(60, 60), picture.lamp + QPointF(60, 60), Qt::AltModifier);
    guide.Check(guide.SelectedAt(picture.lamp) == 0, "Alt did not take the disc out");
    guide.Check(Bar(guide)->GetClearState() == 1, "the keys changed the chosen mode");
}

void SoftCorners(TourGuide& guide, const LighthousePicture& picture)
{
    guide.ChooseTool("Rectangular Selection");
    guide.TypeInto(Control<QSpinBox>(Bar(guide), "m_pRadius"), 60);
    guide.TypeInto(Control<QSpinBox>(Bar(guide), "m_pFeather"), 20);
    guide.FocusCanvas();
    const QPointF from = picture.sky - QPointF(150, 100);
    const QPointF to = picture.sky + QPointF(150, 100);
    Select(guide, from, to);
    guide.Check(Mask(guide) == RectangleMask(Mask(guide).size(), Dragged(guide, from, to), 60, 20),
                "radius and feather are not those of the bar");
    guide.TakePicture();
    guide.ChooseTool("Fill");
    guide.ClickAt(picture.sky);
    guide.Check(guide.GetRobot().WaitFor([&] { return !guide.GetPixels()->IsBeingEdited(); }),
                "the fill does not end");
    guide.TakePicture();
    guide.Undo();
    guide.ChooseTool("Rectangular Selection");
    guide.TypeInto(Control<QSpinBox>(Bar(guide), "m_pRadius"), 0);
    guide.TypeInto(Control<QSpinBox>(Bar(guide), "m_pFeather"), 0);
}

void MoveOutline(TourGuide& guide, const LighthousePicture& picture)
{
    guide.FocusCanvas();
    // Else the drag would move the one that is there.
    guide.GetRobot().Key(Qt::Key_D, Qt::ControlModifier);
    Select(guide, picture.sky - QPointF(80, 60), picture.sky + QPointF(80, 60));
    guide.TakePicture();
    const QRect before = MaskBounds(Mask(guide));
    const QImage picturesBefore = guide.GetComposition().copy();
    const QPointF to = picture.sky + QPointF(70, 50);
    Select(guide, picture.sky, to);
    const QPoint way = DraggedWay(guide.HitPoint(picture.sky), guide.HitPoint(to), false);
    guide.Check(MaskBounds(Mask(guide)) == before.translated(way), "the drag did not move the outline");
    guide.GetRobot().Key(Qt::Key_Right, Qt::ShiftModifier);
    guide.GetRobot().Key(Qt::Key_Down);
    guide.Check(MaskBounds(Mask(guide)) == before.translated(way + QPoint(10, 1)),
                "the arrow keys did not move the outline");
    guide.Check(guide.GetComposition() == picturesBefore, "moving the outline changed the picture");
}

void RefineIt(TourGuide& guide)
{
    const QImage before = Mask(guide);
    const auto refine = [&guide](QWidget* dialog)
    {
        guide.TypeOver(Control<QSpinBox>(dialog, "m_pGrow"), "40");
        const auto* refining = qobject_cast<RefineDialog*>(dialog);
        guide.Check(refining && guide.GetRobot().WaitFor([refining] { return !refining->IsWorking(); }),
                    "the line does not follow the numbers");
        guide.TakePicture();
        guide.GetRobot().Key(Qt::Key_Return);
    };
    guide.GetRobot().WhenModal(refine);
    guide.GetRobot().Key(Qt::Key_R, Qt::ControlModifier | Qt::AltModifier);
    guide.Check(guide.GetRobot().WaitFor([&] { return Mask(guide) != before; }), "nothing was refined");
    guide.Check(Mask(guide) == GrowMask(before, 40), "the selection did not grow by 40 pixels");
}

void UseMenu(TourGuide& guide, const LighthousePicture& picture)
{
    guide.FocusCanvas();
    const QRect selected = MaskBounds(Mask(guide));
    guide.OpenMenu(Qt::Key_S);
    guide.TakePicture();
    guide.PressEntry(Qt::Key_I);
    guide.Check(guide.SelectedAt(selected.center()) == 0 && guide.SelectedAt(picture.foot) == 255,
                "the selection was not inverted");
    guide.TakePicture();
    guide.GetRobot().Key(Qt::Key_Delete);
    guide.Check(qAlpha(guide.PixelAt(picture.foot)) == 0, "Delete left what is selected");
    guide.Check(qAlpha(guide.PixelAt(selected.center())) == 255, "Delete took what is not selected");
    guide.TakePicture();
    guide.Undo();
    guide.GetRobot().Key(Qt::Key_A, Qt::ControlModifier);
    guide.Check(Mask(guide) == FullMask(Mask(guide).size()), "Ctrl+A did not select all");
    guide.GetRobot().Key(Qt::Key_D, Qt::ControlModifier);
    guide.Check(Mask(guide).isNull(), "Ctrl+D left something selected");
}

} // namespace

void PlaySelection(TourGuide& guide)
{
    const LighthousePicture picture = DrawLighthouse();
    if (!guide.OpenDrawn(picture.image, QStringLiteral("lighthouse-selection.png")))
        return;
    guide.Step("select", "The rectangular selection: a drag, and the moving outline",
               [&](TourGuide& it) { SelectRectangle(it, picture); });
    if (guide.Find<NVSelectionToolbar>())
    {
        guide.Step("select-paint", "A stroke of the brush stays within the selection",
                   [&](TourGuide& it) { PaintWithin(it, picture); });
        guide.Step("select-keys", "The elliptic selection: Shift unites, Alt takes away",
                   [&](TourGuide& it) { JoinByKeys(it, picture); });
        guide.Step("select-soft", "Corner radius and feather, and what the fill makes of them",
                   [&](TourGuide& it) { SoftCorners(it, picture); });
        guide.Step("select-move", "A drag from within and the arrow keys move the outline",
                   [&](TourGuide& it) { MoveOutline(it, picture); });
        guide.Step("select-refine", "Refine Selection: grown by 40 pixels", RefineIt);
        guide.Step("select-menu", "The menu inverts it, Delete clears what is selected, Ctrl+D deselects",
                   [&](TourGuide& it) { UseMenu(it, picture); });
    }
    guide.LeaveDrawn();
}
