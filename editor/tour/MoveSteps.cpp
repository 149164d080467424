// Moving a layer, a selected part and its selection; free transform by its handles, by Enter and by Escape.

#include <QCheckBox>
#include <QLineEdit>
#include <QPushButton>
#include <QUndoStack>

#include "Document.h"
#include "KXDocumentInterface.h"
#include "MoveTool.h"
#include "NVDocumentView.h"
#include "NVMoveToolbar.h"
#include "NVTransformToolbar.h"
#include "TourGuide.h"
#include "TourPictures.h"
#include "TourTopics.h"
#include "TransformTool.h"

namespace
{

// The tower, with some sky around it.
QRectF TowerOf(const LighthousePicture& picture)
{
    return QRectF(picture.lamp - QPointF(90, 60), picture.foot + QPointF(90, 0));
}

bool IsDone(TourGuide& guide, int steps)
{
    return guide.GetRobot().WaitFor([&guide, steps] { return guide.UndoSteps() == steps; });
}

void MoveLayer(TourGuide& guide, const LighthousePicture& picture)
{
    guide.ChooseTool("Move");
    auto* bar = guide.Find<NVMoveToolbar>();
    if (!guide.Check(bar && bar->isVisible(), "the bar of the move tool is not to be seen"))
        return;
    guide.Check(bar->IsShowFrameEnabled(), "the frame can't be shown, though there is something to move");
    guide.SetChecked(Control<QAbstractButton>(bar, "m_pShowFrame"), true);
    guide.FocusCanvas();
    guide.TakePictureOf(bar, QStringLiteral("move-bar"));
    guide.TakePicture();
    const QPointF from = guide.HitPoint({500, 300});
    const QPointF to = guide.HitPoint({380, 420});
    guide.Stroke(from, to);
    guide.Check(IsDone(guide, 1), "the drag is not one step");
    const auto* tool = guide.GetWindow()->FindTool<MoveTool>();
    const QPoint way = tool->GetBounds().topLeft();
    guide.Check(QLineF(QPointF(way), to - from).length() < 2, "the layer is not where it was dragged");
    guide.Check(guide.PixelAt(picture.sky + way) == picture.image.pixel(PixelOf(picture.sky)),
                "the pixels are not where they were dragged");
    guide.Check(qAlpha(guide.PixelAt({20, 20})) == 0, "something was left behind");
    guide.TakePicture();
    guide.Undo();
    guide.Check(guide.PixelAt(picture.sky) == picture.image.pixel(PixelOf(picture.sky)),
                "undo did not bring the layer back");
}

void MoveSelected(TourGuide& guide, const LighthousePicture& picture)
{
    const QRectF tower = TowerOf(picture);
    guide.ChooseTool("Rectangular Selection");
    guide.Stroke(guide.HitPoint(tower.topLeft()), guide.HitPoint(tower.bottomRight()));
    guide.Check(
        guide.GetRobot().WaitFor([&guide] { return !guide.GetPixels()->GetSelectionMask().isNull(); }),
        "nothing was selected");
    guide.ChooseTool("Move");
    guide.FocusCanvas();
    guide.TakePicture();
    const int steps = guide.UndoSteps();
    const QPointF from = guide.HitPoint(tower.center());
    guide.Stroke(from, guide.HitPoint(from + QPointF(420, 0)));
    guide.Check(IsDone(guide, steps + 1), "the drag is not one step");
    guide.Check(qAlpha(guide.PixelAt(tower.center())) == 0, "the tower was not cut out");
    for (int i = 0; i < 3; ++i)
        guide.GetRobot().Key(Qt::Key_Down, Qt::ShiftModifier);
    guide.GetRobot().Key(Qt::Key_Right);
    guide.Check(IsDone(guide, steps + 2), "the arrow keys are not one step");
    guide.Check(guide.SelectedAt(tower.center()) == 0 &&
                    guide.SelectedAt(tower.center() + QPointF(421, 30)) == 255,
                "the selection did not go along");
    guide.TakePicture();
    guide.Undo();
    guide.Undo();
    guide.Check(guide.PixelAt(tower.center()) == picture.image.pixel(PixelOf(tower.center())),
                "undo did not bring the tower back");
}

QString TextOf(TourGuide& guide, const char* name)
{
    return Control<QLineEdit>(guide.Get<NVTransformToolbar>(), name)->text();
}

void TransformTower(TourGuide& guide, const LighthousePicture& picture)
{
    guide.GetRobot().Key(Qt::Key_T, Qt::ControlModifier);
    auto* bar = guide.Find<NVTransformToolbar>();
    if (!guide.Check(bar && bar->isVisible(), "Ctrl+T did not bring the bar of free transform"))
        return;
    const auto* tool = guide.GetWindow()->FindTool<TransformTool>();
    guide.Check(!tool->GetTransform().GetBox().isEmpty(), "there is no box");
    guide.TakePicture();
    const int steps = guide.UndoSteps();
    const QPointF corner = tool->GetTransform().PlaceOf(FreeTransform::BottomRight);
    guide.Stroke(corner, corner + QPointF(-60, -180));
    guide.Check(TextOf(guide, "m_pHeight") != QLatin1String("100.0%"), "the numbers did not follow");
    guide.TakePicture();
    const QPointF side = tool->GetTransform().PlaceOf(FreeTransform::Right) + QPointF(150, 0);
    guide.GetRobot().Drag(guide.GetView(), {side, side + QPointF(0, 40), side + QPointF(-20, 110)},
                          Qt::ShiftModifier);
    guide.Check(qFuzzyCompare(tool->GetTransform().GetAngle(), 30.0),
                QStringLiteral("it was turned by %1").arg(TextOf(guide, "m_pAngle")));
    guide.TakePictureOf(bar, QStringLiteral("transform-bar"));
    guide.TakePicture();
    const QPointF top = tool->GetTransform().PlaceOf(FreeTransform::Top);
    guide.GetRobot().Drag(guide.GetView(), {top, top + QPointF(30, 20), top + QPointF(70, 40)},
                          Qt::ControlModifier);
    guide.Check(!TextOf(guide, "m_pHSkew").startsWith(QLatin1String("0.00")), "it was not skewed");
    guide.TakePicture();
    guide.Check(guide.UndoSteps() == steps, "it was drawn before it was applied");
    guide.GetRobot().Key(Qt::Key_Return);
    guide.Check(IsDone(guide, steps + 1), "Enter did not apply it");
    guide.Check(guide.NeedDocument()->GetUndoStack()->undoText() == QLatin1String("Free Transform"),
                "the step has another name");
    guide.TakePicture();
    guide.Undo();
    guide.Check(guide.PixelAt(picture.lamp) == picture.image.pixel(PixelOf(picture.lamp)),
                "undo did not bring the tower back");
}

void TurnAboutCorner(TourGuide& guide)
{
    auto* bar = guide.Get<NVTransformToolbar>();
    auto* point = Control<TransformationCenterPointControl>(bar, "m_pCenterTransform");
    const int steps = guide.UndoSteps();
    const auto* tool = guide.GetWindow()->FindTool<TransformTool>();
    guide.GetRobot().Click(point, QPoint(6, 34));
    guide.Check(bar->GetTransformationCenter() == TransformationCenterPointControl::BottomLeft,
                "a click did not choose the reference point");
    const QPointF corner = tool->GetTransform().PlaceOf(FreeTransform::BottomLeft);
    guide.Check(QLineF(tool->GetTransform().GetPosition(), corner).length() < 1,
                "the reference point is not in the corner");
    const QPointF side = corner + QPointF(320, 0);
    guide.Stroke({side, corner + QPointF(310, -60), corner + QPointF(280, -140)});
    guide.Check(tool->IsPending() && tool->GetTransform().GetAngle() < -20, "it was not turned");
    guide.TakePicture();
    guide.GetRobot().Click(Control<QPushButton>(bar, "m_pCancel"));
    guide.Check(!tool->IsPending() && guide.UndoSteps() == steps, "Cancel did not take it back");
    guide.GetRobot().Click(point);
    guide.FocusCanvas();
}

} // namespace

void PlayMove(TourGuide& guide)
{
    const LighthousePicture picture = DrawLighthouse();
    if (!guide.OpenDrawn(picture.image, QStringLiteral("lighthouse.png")))
        return;
    guide.Step("move", "The move tool: the layer with its frame, before and after a drag",
               [&picture](TourGuide& it) { MoveLayer(it, picture); });
    guide.Step("move-selection",
               "What is selected is moved, by a drag and by keys, and the selection with it",
               [&picture](TourGuide& it) { MoveSelected(it, picture); });
    guide.Step("transform", "Free transform: scaled, turned and skewed by its handles, then applied",
               [&picture](TourGuide& it) { TransformTower(it, picture); });
    guide.Step("transform-cancel", "Turned about a corner, and taken back", TurnAboutCorner);
    guide.LeaveDrawn();
}
