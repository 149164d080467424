// The crop tool: a frame by hand, turned, to a fixed size, with its outside hidden, and to a new document.

#include <QComboBox>
#include <QDoubleSpinBox>
#include <QPushButton>
#include <QRadioButton>
#include <QSpinBox>
#include <QTabBar>
#include <QToolButton>

#include "CropTool.h"
#include "Document.h"
#include "KXDocumentInterface.h"
#include "KXMdiArea.h"
#include "NVCropToolbarMain.h"
#include "NVCropToolbarStart.h"
#include "NVDocumentView.h"
#include "OptionArea.h"
#include "TourGuide.h"
#include "TourPictures.h"
#include "TourTopics.h"

namespace
{

const QLatin1String PictureName("coast.png");
const QLatin1String ShieldColor("#1c3a5e");
// From one end of the bar to the other.
const int ClicksAtMost = 50;

CropTool* Tool(const TourGuide& guide)
{
    return guide.GetWindow()->FindTool<CropTool>();
}

NVCropToolbarStart* StartBar(const TourGuide& guide)
{
    return Tool(guide)->GetStartBar();
}

NVCropToolbarMain* MainBar(const TourGuide& guide)
{
    return Tool(guide)->GetMainBar();
}

QSize SizeOf(const TourGuide& guide)
{
    return guide.GetPixels()->GetSize();
}

void CheckSize(TourGuide& guide, const QSize& size)
{
    const QSize is = SizeOf(guide);
    guide.Check(is == size, QStringLiteral("the picture is %1 by %2").arg(is.width()).arg(is.height()));
}

// The bar is wider than a small window: by the button at the end of the strip.
template <class Widget>
Widget* Reached(TourGuide& guide, const char* name)
{
    auto* control = Control<Widget>(MainBar(guide), name);
    const auto* area = guide.Get<OptionArea>();
    if (!area->isAncestorOf(control))
        throw StepEnded(QStringLiteral("the bar of the frame did not come"));
    const QList<QToolButton*> ends = area->findChildren<QToolButton*>(QString(), Qt::FindDirectChildrenOnly);
    const auto isInSight = [&]
    {
        const QRect place(control->mapTo(area, QPoint()), control->size());
        bool isCovered = !area->rect().contains(place);
        for (const QToolButton* end : ends)
            isCovered = isCovered || (end->isVisible() && end->geometry().intersects(place));
        return !isCovered;
    };
    for (QToolButton* end : ends)
    {
        for (int i = 0; i < ClicksAtMost && !isInSight() && end->isVisible(); ++i)
            guide.GetRobot().Click(end);
    }
    guide.Check(isInSight(), "the control cannot be scrolled into sight");
    return control;
}

void Drag(TourGuide& guide, const QVector<QPointF>& points)
{
    guide.GetRobot().Drag(guide.GetView(), points);
    guide.GetRobot().Settle();
}

// From corner to corner, given as shares of the picture.
void DrawFrame(TourGuide& guide, const QPointF& from, const QPointF& to)
{
    const QPointF first = guide.PointAt(from.x(), from.y());
    const QPointF last = guide.PointAt(to.x(), to.y());
    Drag(guide, {first, (first + last) / 2, last});
    guide.Check(Tool(guide)->HasFrame(), "there is no frame");
    guide.Check(MainBar(guide)->isVisible() && !StartBar(guide)->isVisible(),
                "the bar is not that of the frame");
}

void ShowStartBar(TourGuide& guide)
{
    guide.ChooseTool("Crop");
    if (!guide.Check(StartBar(guide)->isVisible(), "the crop bar is not to be seen"))
        return;
    guide.TakePictureOf(StartBar(guide), QStringLiteral("crop-start-bar"));
    guide.GetRobot().Click(Control<QPushButton>(StartBar(guide), "m_pFromImage"));
    guide.Check(StartBar(guide)->GetWidth() == SizeOf(guide).width(), "the size of the image did not come");
    guide.TakePicture();
    guide.GetRobot().Click(Control<QPushButton>(StartBar(guide), "m_pClear"));
    guide.Check(StartBar(guide)->IsClear(), "the size was not cleared");
}

void CropByHand(TourGuide& guide)
{
    DrawFrame(guide, {0.3, 0.2}, {0.6, 0.7});
    guide.TakePicture();
    guide.ChooseEntry(Reached<QComboBox>(guide, "m_pGuideOverlay"), CropLook::Thirds);
    guide.TypeInto(Reached<QSpinBox>(guide, "m_pOpacity"), 75);
    guide.TakePictureOf(MainBar(guide), QStringLiteral("crop-bar"));
    const QPointF corner = Tool(guide)->GetFrame().PointAt({1, 1});
    Drag(guide, {corner, corner + QPointF(60, 40), corner + QPointF(120, 80)});
    guide.TakePicture();
    const QRect frame = Tool(guide)->GetFrame().GetOutline().boundingRect().toRect();
    const QImage expected = guide.GetComposition().copy(frame);
    guide.FocusCanvas();
    guide.GetRobot().Key(Qt::Key_Return);
    CheckSize(guide, frame.size());
    guide.Check(guide.GetComposition() == expected, "the crop changed pixels");
}

void CropTurned(TourGuide& guide)
{
    guide.Undo();
    DrawFrame(guide, {0.3, 0.25}, {0.7, 0.75});
    const QPointF right = guide.PointAt(0.9, 0.5);
    Drag(guide, {right, right + QPointF(0, 60), right + QPointF(0, 120)});
    const CropFrame frame = Tool(guide)->GetFrame();
    guide.Check(frame.angle > 5 && MainBar(guide)->GetAngle() == frame.angle,
                QStringLiteral("the angle is %1").arg(frame.angle));
    guide.TakePicture();
    guide.TypeInto(Reached<QDoubleSpinBox>(guide, "m_pAngle"), -8);
    guide.Check(Tool(guide)->GetFrame().angle == -8, "the typed angle did not arrive");
    guide.TakePicture();
    const QPointF inside = frame.middle + QPointF(40, 30);
    guide.GetRobot().DoubleClick(guide.GetView()->viewport(),
                                 guide.GetView()->MapFromDocument(inside).toPoint());
    CheckSize(guide, frame.size);
}

void CropToSize(TourGuide& guide)
{
    guide.Undo();
    guide.TypeInto(Control<QSpinBox>(StartBar(guide), "m_pWidth"), 400);
    guide.TypeInto(Control<QSpinBox>(StartBar(guide), "m_pHeight"), 300);
    DrawFrame(guide, {0.2, 0.1}, {0.8, 0.9});
    const QSize size = Tool(guide)->GetFrame().size;
    guide.Check(qAbs(size.width() * 3 - size.height() * 4) <= 4, "the frame has another proportion");
    guide.TakePicture();
    guide.GetRobot().Key(Qt::Key_Return);
    CheckSize(guide, QSize(400, 300));
    guide.TakePicture();
    guide.Undo();
    guide.GetRobot().Click(Control<QPushButton>(StartBar(guide), "m_pClear"));
}

void HideArea(TourGuide& guide)
{
    const QSize size = SizeOf(guide);
    DrawFrame(guide, {0.3, 0.2}, {0.7, 0.8});
    guide.SetChecked(Reached<QRadioButton>(guide, "m_pHideArea"), true);
    guide.TakePicture();
    guide.GetRobot().Click(Reached<QPushButton>(guide, "m_pCommit"));
    CheckSize(guide, size);
    guide.Check(qAlpha(guide.PixelAt(guide.PointAt(0.1, 0.1))) == 0, "the area outside is not hidden");
    const KXDocumentInterface* pixels = guide.GetPixels();
    guide.Check(pixels->GetLayerCount() == 2 && !pixels->GetLayer(0).visible,
                "the layer of before is not below");
    guide.TakePicture();
    guide.Undo();
}

// To the picture of this topic, by its tab.
void ComeBack(TourGuide& guide)
{
    auto* tabs = Control<QTabBar>(guide.Get<KXMdiArea>());
    for (int i = 0; i < tabs->count(); ++i)
    {
        if (tabs->tabText(i).startsWith(PictureName))
            guide.GetRobot().Click(tabs, tabs->tabRect(i).center());
    }
}

void CropToNewDocument(TourGuide& guide)
{
    const Document* source = guide.GetDocument();
    DrawFrame(guide, {0.3, 0.2}, {0.7, 0.8});
    guide.SetChecked(Reached<QRadioButton>(guide, "m_pDeleteArea"), true);
    const QSize size = Tool(guide)->GetFrame().size;
    guide.GetRobot().Click(Reached<QPushButton>(guide, "m_pToNewDocument"));
    if (!guide.Check(guide.GetDocument() != source, "there is no new document"))
        return;
    CheckSize(guide, size);
    guide.TakePicture();
    guide.CloseDiscarding();
    ComeBack(guide);
    guide.Check(guide.GetDocument() == source, "the picture is not in front again");
}

QColor ShownAt(const TourGuide& guide, const QPointF& point)
{
    const QImage shown = guide.GetView()->viewport()->grab().toImage();
    return shown.pixelColor((guide.GetView()->MapFromDocument(point) * shown.devicePixelRatio()).toPoint());
}

void DressFrame(TourGuide& guide)
{
    DrawFrame(guide, {0.3, 0.2}, {0.7, 0.8});
    guide.ChooseEntry(Reached<QComboBox>(guide, "m_pGuideOverlay"), CropLook::Grid);
    guide.TypeInto(Reached<QSpinBox>(guide, "m_pOpacity"), 100);
    guide.GetRobot().WhenModal(
        [&guide](QWidget*)
        {
            guide.GetRobot().Key(Qt::Key_A, Qt::ControlModifier);
            guide.GetRobot().Type(ShieldColor);
            guide.TakePicture();
            guide.GetRobot().Key(Qt::Key_Return);
        });
    guide.GetRobot().Click(Reached<QPushButton>(guide, "m_pShieldColor"));
    guide.Check(MainBar(guide)->GetGuideOverlayType() == CropLook::Grid, "there is no grid");
    const QColor shown = ShownAt(guide, guide.PointAt(0.1, 0.1));
    guide.Check(shown == QColor(ShieldColor), QStringLiteral("the shield is %1").arg(shown.name()));
}

void CancelCrop(TourGuide& guide)
{
    const QImage before = guide.GetComposition().copy();
    const int steps = guide.UndoSteps();
    guide.TakePicture();
    guide.GetRobot().Click(Reached<QPushButton>(guide, "m_pCancel"));
    guide.Check(!Tool(guide)->HasFrame() && StartBar(guide)->isVisible(), "the frame is still there");
    guide.Check(guide.GetComposition() == before && guide.UndoSteps() == steps, "the picture was cropped");
    guide.Check(ShownAt(guide, guide.PointAt(0.1, 0.1)) != QColor(ShieldColor), "the shield is still there");
}

} // namespace

void PlayCrop(TourGuide& guide)
{
    if (!guide.OpenDrawn(DrawLighthouse().image, PictureName))
        return;
    guide.Step("crop-start",
               "The crop tool: the size that a crop is to have, taken from the image and cleared",
               ShowStartBar);
    guide.Step("crop-frame", "A frame with thirds under a darker shield, a corner pulled, cropped by Enter",
               CropByHand);
    guide.Step("crop-turned", "A frame turned by hand and by its angle, cropped by a double click",
               CropTurned);
    guide.Step("crop-size", "A fixed size: the frame keeps its proportion, the crop is scaled to it",
               CropToSize);
    guide.Step("crop-hide", "The area outside hidden; the layer as it was is kept below, hidden", HideArea);
    guide.Step("crop-new-document", "Cropped to a new document", CropToNewDocument);
    guide.Step("crop-look", "A frame with a grid, under a shield of a chosen colour", DressFrame);
    guide.Step("crop-cancel", "A frame that is cancelled leaves the picture as it is", CancelCrop);
    guide.LeaveDrawn();
}
