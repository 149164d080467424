// What measures and looks closely: colour picker, colour samples, ruler, zoom tool and loupe.

#include <QComboBox>
#include <QLabel>
#include <QListView>
#include <QPainter>
#include <QPushButton>
#include <QSlider>
#include <QSpinBox>
#include <QToolButton>
#include <QTransform>

#include <cmath>

#include "CameraView.h"
#include "ColorSamples.h"
#include "KXColorSampleDelegate.h"
#include "NVApplication.h"
#include "NVColorPickerToolbar.h"
#include "NVColorSamplePanel.h"
#include "NVColorSamplerToolbar.h"
#include "NVDocumentView.h"
#include "NVRulerToolbar.h"
#include "NVZoomPanel.h"
#include "NVZoomToolbar.h"
#include "RulerLine.h"
#include "StraightenFrame.h"
#include "TourGuide.h"
#include "TourPictures.h"
#include "TourTopics.h"

namespace
{

const double Slant = 6;
// Where sea and sky meet in the drawing, right of the rock.
const QLineF Horizon(470, 560, 1080, 560);

// As if the camera had been held askew.
QTransform SlantOf(const QSize& size)
{
    QTransform slant;
    slant.translate(size.width() / 2.0, size.height() / 2.0);
    slant.rotate(Slant);
    slant.scale(1.2, 1.2);
    return slant.translate(-size.width() / 2.0, -size.height() / 2.0);
}

QImage Slanted(const QImage& image)
{
    QImage result(image.size(), QImage::Format_RGB32);
    QPainter painter(&result);
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    painter.setTransform(SlantOf(image.size()));
    painter.drawImage(0, 0, image);
    return result;
}

QString TextOf(const QWidget* bar, const char* label)
{
    return Control<QLabel>(bar, label)->text();
}

void HoverAt(TourGuide& guide, const QPointF& point)
{
    guide.GetRobot().Move(guide.GetView()->viewport(), guide.GetView()->MapFromDocument(point).toPoint());
    guide.GetRobot().Settle();
}

bool IsShown(TourGuide& guide, const NVColorPickerToolbar* bar, const QPointF& point)
{
    const QColor color(guide.PixelAt(point));
    return TextOf(bar, "m_pR") == QString::number(color.red()) &&
        TextOf(bar, "m_pG") == QString::number(color.green()) &&
        TextOf(bar, "m_pB") == QString::number(color.blue());
}

void PickColors(TourGuide& guide, const LighthousePicture& picture)
{
    guide.ChooseTool("Colour Picker");
    auto* bar = guide.Find<NVColorPickerToolbar>();
    if (!guide.Check(bar && bar->isVisible(), "the colour picker bar is not to be seen"))
        return;
    HoverAt(guide, picture.sky);
    guide.Check(IsShown(guide, bar, guide.HitPoint(picture.sky)), "the bar shows another colour");
    guide.TakePictureOf(bar, QStringLiteral("picker-bar"));
    guide.TakePicture();
    guide.ClickAt(picture.sky);
    const QColor sky = NVApplication::GetForeground();
    guide.Check(sky.rgb() == guide.PixelAt(guide.HitPoint(picture.sky)), "a click did not pick the colour");
    guide.ChooseEntry(Control<QComboBox>(bar, "m_pSampleSize"), 3);
    guide.ClickAt(picture.rock, Qt::AltModifier);
    guide.Check(NVApplication::GetForeground() == sky && NVApplication::GetBackground() != Qt::white,
                "Alt and a click did not pick the background colour");
    guide.ChooseEntry(Control<QComboBox>(bar, "m_pSampleSize"), 0);
    guide.TakePicture();
    guide.GetRobot().Type(QStringLiteral("d"));
}

void DragSample(TourGuide& guide, const QPointF& from, const QPointF& to)
{
    guide.GetRobot().Drag(guide.GetView(), {from, (from + to) / 2, to});
    guide.GetRobot().Settle();
}

// A stroke over a sample is told by the panel.
void PaintOverSample(TourGuide& guide, const NVColorSamplePanel* panel, const QPointF& point)
{
    const QModelIndex row = Control<QListView>(panel)->model()->index(0, 0);
    const QString before = row.data(KXColorSampleDelegate::DetailRole).toString();
    guide.ChooseTool("Brush");
    guide.UseContrast(point);
    guide.Stroke(point - QPointF(40, 0), point + QPointF(40, 0));
    const auto isOther = [&] { return row.data(KXColorSampleDelegate::DetailRole).toString() != before; };
    guide.Check(guide.GetRobot().WaitFor(isOther), "the panel does not follow the picture");
    guide.TakePicture();
    guide.Undo();
    guide.GetRobot().Type(QStringLiteral("d"));
}

void SampleColors(TourGuide& guide, const LighthousePicture& picture)
{
    guide.ChooseTool("Colour Sampler");
    auto* bar = guide.Find<NVColorSamplerToolbar>();
    guide.OpenMenu(Qt::Key_V);
    guide.PressEntry(Qt::Key_S);
    auto* panel = guide.Find<NVColorSamplePanel>();
    if (!guide.Check(bar && bar->isVisible() && panel && panel->isVisible(),
                     "the bar or the panel of the samples is not to be seen"))
        return;
    guide.TakePicture();
    for (const QPointF& point : {picture.sky, picture.lamp, picture.rock, picture.foot})
        guide.ClickAt(point);
    const ColorSamples* samples = ColorSamples::Of(guide.NeedDocument());
    guide.Check(samples->Count() == 4, QStringLiteral("there are %1 samples").arg(samples->Count()));
    DragSample(guide, picture.foot, picture.foot - QPointF(0, 160));
    guide.ClickAt(picture.rock, Qt::AltModifier);
    guide.Check(samples->Count() == 3 && samples->GetCurrent() == 2, "Alt and a click deleted no sample");
    guide.TakePictureOf(bar, QStringLiteral("sampler-bar"));
    guide.TakePictureOf(panel, QStringLiteral("sample-panel"));
    guide.TakePicture();
    PaintOverSample(guide, panel, picture.sky);
    guide.ChooseTool("Colour Sampler");
    guide.GetRobot().Click(Control<QPushButton>(bar, "m_pClear"));
    guide.Check(samples->Count() == 0, "Clear left samples");
    guide.OpenMenu(Qt::Key_V);
    guide.PressEntry(Qt::Key_S);
    guide.Check(!panel->isVisible(), "the panel did not close");
}

void Straighten(TourGuide& guide, const QSize& size)
{
    guide.ChooseTool("Ruler");
    auto* bar = guide.Find<NVRulerToolbar>();
    if (!guide.Check(bar && bar->isVisible(), "the ruler bar is not to be seen"))
        return;
    const QLineF horizon = SlantOf(size).map(Horizon);
    guide.GetRobot().Drag(guide.GetView(), {horizon.p1(), horizon.center(), horizon.p2()});
    guide.GetRobot().Settle();
    const QLineF line = RulerLine::Of(guide.NeedDocument())->Get();
    guide.Check(std::abs(SlopeOf(line.p1(), line.p2()) - Slant) < 0.5, "the line has another slope");
    guide.Check(TextOf(bar, "m_pLength") == QString::number(line.length(), 'f', 1),
                "the bar tells another length");
    guide.TakePictureOf(bar, QStringLiteral("ruler-bar"));
    guide.TakePicture();
    guide.GetRobot().Click(Control<QPushButton>(bar, "m_pStraighten"));
    const QSize wanted = StraightenFrame(size, SlopeOf(line.p1(), line.p2())).size;
    guide.Check(guide.GetRobot().WaitFor([&] { return guide.GetComposition().size() == wanted; }),
                "the picture was not straightened");
    guide.TakePicture();
    guide.Undo();
    guide.Check(guide.GetComposition().size() == size, "undo did not bring the size back");
}

double ScaleOf(const TourGuide& guide)
{
    return guide.GetView()->GetScale();
}

void ZoomByTool(TourGuide& guide)
{
    guide.ChooseTool("Zoom");
    auto* bar = guide.Find<NVZoomToolbar>();
    if (!guide.Check(bar && bar->isVisible(), "the zoom bar is not to be seen"))
        return;
    guide.TakePictureOf(bar, QStringLiteral("zoom-bar"));
    guide.TakePicture();
    const double fit = ScaleOf(guide);
    guide.ClickAt(guide.PointAt(0.5, 0.5));
    guide.Check(std::abs(ScaleOf(guide) / fit - 2) < 0.01, "a click did not zoom in");
    guide.GetRobot().Click(Control<QToolButton>(bar, "m_pZoomOut"));
    guide.ClickAt(guide.PointAt(0.5, 0.5));
    guide.Check(std::abs(ScaleOf(guide) / fit - 1) < 0.01, "a click did not zoom out");
    guide.GetRobot().Click(Control<QToolButton>(bar, "m_pZoomIn"));
    guide.GetRobot().Drag(guide.GetView(),
                          {guide.PointAt(0.4, 0.2), guide.PointAt(0.5, 0.3), guide.PointAt(0.6, 0.4)});
    guide.GetRobot().Settle();
    guide.Check(ScaleOf(guide) > 2.5 * fit, "a box did not zoom in");
    guide.TakePicture();
    guide.GetRobot().Click(Control<QPushButton>(bar, "m_pActualPixels"));
    guide.Check(std::abs(ScaleOf(guide) - 1) < 0.001, "Actual Pixels did not give 100 %");
    guide.GetRobot().Click(Control<QPushButton>(bar, "m_pFitScreen"));
    guide.Check(std::abs(ScaleOf(guide) / fit - 1) < 0.01, "Fit screen did not fit the picture");
}

void LookClosely(TourGuide& guide, const LighthousePicture& picture)
{
    guide.OpenMenu(Qt::Key_V);
    guide.PressEntry(Qt::Key_L);
    auto* panel = guide.Find<NVZoomPanel>();
    if (!guide.Check(panel && panel->isVisible(), "the loupe is not to be seen"))
        return;
    guide.GetRobot().Settle();
    const auto* loupe = Control<CameraView>(panel);
    HoverAt(guide, picture.sky);
    guide.TakePicture();
    HoverAt(guide, picture.lamp);
    guide.Check(loupe->GetLookPoint() == PixelOf(guide.HitPoint(picture.lamp)),
                "the loupe does not follow the pointer");
    guide.ChooseEntry(Control<QComboBox>(panel, "m_pGridType"), 1);
    guide.TypeInto(Control<QSpinBox>(panel, "m_pZoomSpn"), 12);
    guide.Check(loupe->GetScaleFactor() == 12 && Control<QSlider>(panel, "m_pZoom")->value() == 12,
                "the scale that was typed did not arrive");
    guide.FocusCanvas();
    HoverAt(guide, picture.lamp);
    guide.TakePictureOf(panel, QStringLiteral("zoom-panel"));
    guide.TakePicture();
    guide.OpenMenu(Qt::Key_V);
    guide.PressEntry(Qt::Key_L);
    guide.Check(!panel->isVisible(), "the loupe did not close");
}

} // namespace

void PlayMeasure(TourGuide& guide)
{
    const LighthousePicture picture = DrawLighthouse();
    if (!guide.OpenDrawn(picture.image, QStringLiteral("lighthouse.png")))
        return;
    guide.Step("colour-picker", "Colours picked from the picture",
               [&](TourGuide& it) { PickColors(it, picture); });
    guide.Step("colour-samples", "Samples on the picture, and a panel that follows them",
               [&](TourGuide& it) { SampleColors(it, picture); });
    guide.Step("zoom-tool", "Zoomed by clicks, by a box and by buttons", ZoomByTool);
    guide.Step("loupe", "The loupe at the lamp of a lighthouse",
               [&](TourGuide& it) { LookClosely(it, picture); });
    guide.LeaveDrawn();

    const QImage slanted = Slanted(picture.image);
    if (!guide.OpenDrawn(slanted, QStringLiteral("slanted.png")))
        return;
    guide.Step("straighten", "A slanted horizon, made level by the ruler",
               [&](TourGuide& it) { Straighten(it, slanted.size()); });
    guide.LeaveDrawn();
}
