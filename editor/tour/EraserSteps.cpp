// The eraser: on the lowest layer, where it leaves the background colour, on one above, where it leaves
// nothing, and its keys.

#include <QPushButton>
#include <QSpinBox>

#include "BrushTool.h"
#include "KXBrushSettings.h"
#include "KXDocumentInterface.h"
#include "NVBrushToolbar.h"
#include "NVEraserToolbar.h"
#include "TourGuide.h"
#include "TourPictures.h"
#include "TourTopics.h"

namespace
{

int LayerAlphaAt(const TourGuide& guide, const QPointF& point)
{
    const KXDocumentInterface* pixels = guide.GetPixels();
    return pixels->GetLayer(pixels->GetCurrentLayer()).image.pixelColor(PixelOf(point)).alpha();
}

NVEraserToolbar* ChooseEraser(TourGuide& guide)
{
    guide.ChooseTool("Eraser");
    auto* bar = guide.Get<NVEraserToolbar>();
    guide.Check(bar->isVisible(), "the eraser bar is not to be seen");
    return bar;
}

void EraseLowest(TourGuide& guide)
{
    const NVEraserToolbar* bar = ChooseEraser(guide);
    guide.TypeInto(Control<QSpinBox>(bar, "m_pSizeSpn"), 80);
    guide.TypeInto(Control<QSpinBox>(bar, "m_pOpacitySpn"), 100);
    guide.Check(bar->GetSize() == 80 && bar->GetBrushes()->GetSize() == 80,
                "the size is not that of bar and popup");
    guide.VisitPopup(Control<QPushButton>(bar, "m_pSelectBrushBtn"), bar->GetBrushes());
    guide.FocusCanvas();
    guide.GetRobot().Type(QStringLiteral("d"));
    const int steps = guide.UndoSteps();
    guide.Stroke({180, 300}, {620, 420});
    guide.Check(AreNear(guide.PixelAt({400, 360}), qRgb(255, 255, 255)),
                QStringLiteral("the eraser left %1").arg(ColorText(guide.PixelAt({400, 360}))));
    guide.Check(guide.UndoSteps() == steps + 1, "the stroke is not one undo step");
    guide.TakePictureOf(guide.Find<NVEraserToolbar>(), QStringLiteral("eraser-bar"));
}

void PaintOnNewLayer(TourGuide& guide)
{
    const KXDocumentInterface* pixels = guide.GetPixels();
    guide.GetRobot().Key(Qt::Key_N, Qt::ControlModifier | Qt::ShiftModifier);
    guide.Check(pixels->GetLayerCount() == 2 && pixels->GetCurrentLayer() == 1, "there is no new layer");
    guide.ChooseTool("Brush");
    guide.TypeInto(Control<QSpinBox>(guide.GetWindow()->GetBrushTool()->GetBrushBar(), "m_pSizeSpn"), 150);
    guide.ClickAt(DrawLighthouse().stripes.at(0) + QPointF(0, 30), Qt::AltModifier);
    guide.Stroke({650, 260}, {1110, 260});
    guide.Stroke({650, 440}, {1110, 440});
}

void EraseLayer(TourGuide& guide)
{
    const QRgb below = guide.PixelAt({880, 440});
    PaintOnNewLayer(guide);
    ChooseEraser(guide);
    guide.TakePicture();
    guide.Stroke({880, 170}, {880, 540});
    guide.Check(LayerAlphaAt(guide, {880, 440}) == 0,
                QStringLiteral("the layer has the opacity %1").arg(LayerAlphaAt(guide, {880, 440})));
    guide.Check(guide.PixelAt({880, 440}) == below, "what lies below does not show through");
    guide.Check(LayerAlphaAt(guide, {740, 440}) == 255, "the eraser reached beyond its stroke");
}

void PressKeys(TourGuide& guide)
{
    TourRobot& robot = guide.GetRobot();
    const NVEraserToolbar* bar = ChooseEraser(guide);
    const NVBrushToolbar* brushBar = guide.GetWindow()->GetBrushTool()->GetBrushBar();
    guide.FocusCanvas();
    robot.Type(QStringLiteral("5"));
    guide.Check(bar->GetOpacity() == 50, QStringLiteral("5 gave the opacity %1").arg(bar->GetOpacity()));
    guide.Check(brushBar->GetOpacity() == 100, "the digit reached the bar of another tool");
    robot.Key(Qt::Key_M, Qt::AltModifier | Qt::ShiftModifier);
    robot.Key(Qt::Key_Plus, Qt::ShiftModifier);
    guide.Check(brushBar->GetBlendMode() == 0, "a blend key reached the bar of another tool");
    guide.Check(bar->GetOpacity() == 50 && bar->GetSize() == 80, "a blend key changed the bar");
    guide.TakePicture();
    guide.Stroke({1000, 170}, {1000, 540});
    const int alpha = LayerAlphaAt(guide, {1000, 440});
    guide.Check(qAbs(alpha - 128) <= 3, QStringLiteral("at 50 % the layer has the opacity %1").arg(alpha));
    robot.Type(QStringLiteral("0"));
    guide.Check(bar->GetOpacity() == 100, QStringLiteral("0 gave the opacity %1").arg(bar->GetOpacity()));
}

} // namespace

void PlayEraser(TourGuide& guide)
{
    if (!guide.OpenDrawn(DrawLighthouse().image, QStringLiteral("lighthouse.png")))
        return;
    guide.Step("eraser", "The eraser on the lowest layer, and its settings", EraseLowest);
    guide.Step("eraser-layer", "On a new layer the eraser leaves nothing", EraseLayer);
    guide.Step("eraser-keys", "Digits set the opacity of the eraser; the blend keys do nothing", PressKeys);
    guide.LeaveDrawn();
}
