// The paint brush: its bar, its popups, its strokes and its keys. All of it holds on any picture, however
// small, plain or transparent.

#include <QComboBox>
#include <QElapsedTimer>
#include <QListView>
#include <QPushButton>
#include <QSpinBox>

#include <algorithm>
#include <cmath>

#include "BrushTool.h"
#include "KXBrushSettings.h"
#include "NVApplication.h"
#include "NVBrushToolbar.h"
#include "NVDocumentView.h"
#include "PatternSelectWidget.h"
#include "TourGuide.h"
#include "TourTopics.h"

namespace
{

// How wide a stroke is on the screen, so that it is seen whatever the picture's size.
const int StrokeWidth = 27;

NVBrushToolbar* Bar(TourGuide& guide)
{
    return guide.GetWindow()->GetBrushTool()->GetBrushBar();
}

void ChooseFillMode(TourGuide& guide, int mode)
{
    guide.ChooseEntry(Control<QComboBox>(Bar(guide), "m_pFillModeCombo"), mode);
}

int UsualSize(const TourGuide& guide)
{
    return qBound(5, guide.PixelsFor(StrokeWidth), 2500);
}

// Alt and a click; a pixel that is fully transparent has no colour to pick.
void PickColor(TourGuide& guide, const QPointF& point)
{
    const QRgb before = NVApplication::GetForeground().rgb();
    guide.ClickAt(point, Qt::AltModifier);
    const QRgb hit = guide.PixelAt(guide.HitPoint(point));
    const QRgb expected = qAlpha(hit) ? hit | 0xff000000 : before;
    guide.Check(NVApplication::GetForeground().rgb() == expected,
                QStringLiteral("Alt and a click picked %1 instead of %2")
                    .arg(NVApplication::GetForeground().name(), ColorText(expected)));
}

void WorkBar(TourGuide& guide)
{
    const int size = UsualSize(guide);
    guide.TypeInto(Control<QSpinBox>(Bar(guide), "m_pSizeSpn"), size);
    guide.TypeInto(Control<QSpinBox>(Bar(guide), "m_pSpacingSpn"), 15);
    guide.TypeInto(Control<QSpinBox>(Bar(guide), "m_pOpacitySpn"), 80);
    const NVBrushToolbar* bar = Bar(guide);
    guide.Check(bar->GetSize() == size, QStringLiteral("the size is %1").arg(bar->GetSize()));
    guide.Check(bar->GetSpacing() == 15, QStringLiteral("the spacing is %1").arg(bar->GetSpacing()));
    guide.Check(bar->GetOpacity() == 80, QStringLiteral("the opacity is %1").arg(bar->GetOpacity()));
    guide.Check(bar->GetBrushes()->GetSize() == size, "the settings popup has another size");
    guide.Check(guide.GetView()->hasFocus(), "Enter did not give the keyboard to the canvas");
    guide.TakePictureOf(Bar(guide), QStringLiteral("brush-bar"));
}

void PaintNormal(TourGuide& guide)
{
    guide.TypeInto(Control<QSpinBox>(Bar(guide), "m_pOpacitySpn"), 100);
    guide.GetRobot().Type(QStringLiteral("dx"));
    guide.Check(NVApplication::GetForeground() == QColor(Qt::white), "D and X did not give white");
    const int steps = guide.UndoSteps();
    const QPointF middle = guide.PointAt(0.24, 0.17);
    guide.Stroke(guide.PointAt(0.08, 0.12), guide.PointAt(0.40, 0.22));
    guide.Check(AreNear(guide.PixelAt(middle), qRgb(255, 255, 255)),
                QStringLiteral("the middle of the stroke is %1").arg(ColorText(guide.PixelAt(middle))));
    guide.Check(guide.UndoSteps() == steps + 1, "the stroke is not one undo step");
    guide.Check(guide.GetWindow()->isWindowModified(), "the title does not tell of the change");
}

void OpenSettings(TourGuide& guide)
{
    guide.VisitPopup(Control<QPushButton>(Bar(guide), "m_pSelectBrushBtn"), Bar(guide)->GetBrushes());
}

void PickPatterns(TourGuide& guide)
{
    PatternSelectWidget* popup = Bar(guide)->GetPatterns();
    auto* tiles = Control<QListView>(popup);
    if (!guide.Check(popup->Count() >= 9, "there are no tiles"))
        return;
    const auto tile = [tiles](int row) { return tiles->visualRect(tiles->model()->index(row, 0)).center(); };
    guide.GetRobot().Click(tiles->viewport(), tile(2));
    guide.Check(NVApplication::GetTexturePatternIndex() == 2, "the click did not select the tile");
    guide.Check(popup->isVisible(), "the click closed the popup");
    guide.TakePicture();
    guide.GetRobot().DoubleClick(tiles->viewport(), tile(8));
    guide.Check(guide.GetRobot().WaitFor([popup] { return !popup->isVisible(); }),
                "the double click did not close the popup");
    guide.Check(NVApplication::GetTexturePatternIndex() == 8, "the double click did not select the tile");
}

void OpenPatterns(TourGuide& guide)
{
    guide.VisitPopup(Control<QPushButton>(Bar(guide), "m_pSelectPatternBtn"), Bar(guide)->GetPatterns(),
                     PickPatterns);
}

void PaintFillModes(TourGuide& guide)
{
    for (int mode = 0; mode < 6; ++mode)
    {
        const double y = 0.30 + 0.08 * mode;
        const QPointF corner = guide.PointAt(0.02, 0.02);
        guide.UseContrast(guide.PointAt(0.5, y));
        // A colour of the picture, unless the stroke would not be seen then.
        if (mode > 0 && !AreNear(guide.PixelAt(corner), guide.PixelAt(guide.PointAt(0.5, y)), 40))
            PickColor(guide, corner);
        const QImage before = guide.GetComposition().copy();
        ChooseFillMode(guide, mode);
        guide.Check(Bar(guide)->GetStyle() == mode, QStringLiteral("mode %1 was not chosen").arg(mode));
        guide.Stroke(guide.PointAt(0.1, y), guide.PointAt(0.9, y), 60);
        guide.Check(guide.GetComposition() != before,
                    QStringLiteral("the stroke in mode %1 changed nothing").arg(mode));
    }
    ChooseFillMode(guide, 0);
    guide.TakePicture();
    guide.GetRobot().Key(Qt::Key_1, Qt::ControlModifier);
    guide.TakePicture();
    guide.GetRobot().Key(Qt::Key_0, Qt::ControlModifier);
}

void PaintMultiply(TourGuide& guide)
{
    PickColor(guide, guide.PointAt(0.05, 0.5));
    guide.FocusCanvas();
    guide.GetRobot().Key(Qt::Key_M, Qt::AltModifier | Qt::ShiftModifier);
    guide.Check(Bar(guide)->GetBlendMode() == 1,
                QStringLiteral("the blend mode is %1").arg(Bar(guide)->GetBlendMode()));
    const QPointF point = guide.PointAt(0.8, 0.2);
    const QRgb before = guide.PixelAt(point);
    guide.Stroke(guide.PointAt(0.6, 0.2), guide.PointAt(0.95, 0.2));
    const QRgb after = guide.PixelAt(point);
    const QRgb color = NVApplication::GetForeground().rgb();
    // What shines through a pixel has a say where it is transparent.
    const QRgb expected = qAlpha(before) == 255 ? Multiplied(before, color) : after;
    guide.Check(qAlpha(after) == 255 && AreNear(after, expected),
                QStringLiteral("%1 instead of %2").arg(ColorText(after), ColorText(expected)));
    guide.TakePicture();
    guide.GetRobot().Key(Qt::Key_N, Qt::AltModifier | Qt::ShiftModifier);
    guide.Check(Bar(guide)->GetBlendMode() == 0, "Alt+Shift+N did not go back to Normal");
}

void PressDigits(TourGuide& guide)
{
    const NVBrushToolbar* bar = Bar(guide);
    TourRobot& robot = guide.GetRobot();
    guide.FocusCanvas();
    robot.Type(QStringLiteral("5"));
    guide.Check(bar->GetOpacity() == 50, QStringLiteral("5 gave the opacity %1").arg(bar->GetOpacity()));
    QSpinBox* box = Control<QSpinBox>(Bar(guide), "m_pSizeSpn");
    robot.Click(box, QPoint(20, box->height() / 2));
    robot.Key(Qt::Key_A, Qt::ControlModifier);
    robot.Type(QStringLiteral("64"));
    guide.Check(box->cleanText() == QLatin1String("64"), QStringLiteral("the box shows %1").arg(box->text()));
    guide.Check(bar->GetOpacity() == 50, "a digit in the box changed the opacity");
    guide.TakePicture();
    robot.Key(Qt::Key_Return);
    guide.Check(bar->GetSize() == 64, QStringLiteral("the size is %1").arg(bar->GetSize()));
    robot.Type(QStringLiteral("0"));
    guide.Check(bar->GetOpacity() == 100, QStringLiteral("0 gave the opacity %1").arg(bar->GetOpacity()));
}

// The time from each frame of the stroke to the next, in milliseconds.
QVector<double> TimedStroke(TourGuide& guide)
{
    QVector<double> frames;
    QElapsedTimer clock;
    const auto connection = QObject::connect(guide.GetWindow()->GetBrushTool(), &BrushTool::FrameDone,
                                             [&frames, &clock](const QRect&, double)
                                             {
                                                 if (clock.isValid())
                                                     frames += double(clock.nsecsElapsed()) / 1e6;
                                                 clock.start();
                                             });
    guide.Stroke(guide.PointAt(0.3, 0.4), guide.PointAt(0.7, 0.6), 60);
    QObject::disconnect(connection);
    std::sort(frames.begin(), frames.end());
    return frames;
}

void PaintLargest(TourGuide& guide)
{
    guide.TypeInto(Control<QSpinBox>(Bar(guide), "m_pSizeSpn"), 2500);
    guide.TypeInto(Control<QSpinBox>(Bar(guide), "m_pOpacitySpn"), 40);
    const QPointF middle = guide.PointAt(0.5, 0.5);
    guide.UseContrast(middle);
    const QRgb before = guide.PixelAt(middle);
    QElapsedTimer whole;
    whole.start();
    const QVector<double> frames = TimedStroke(guide);
    if (guide.Check(!frames.isEmpty(), "there were no frames"))
        guide.Note(
            QStringLiteral("%1 frames in %2 ms; from frame to frame %3 ms in the middle, %4 ms at most")
                .arg(frames.size() + 1)
                .arg(whole.elapsed())
                .arg(frames.at(frames.size() / 2), 0, 'f', 1)
                .arg(frames.constLast(), 0, 'f', 1));
    guide.Check(guide.PixelAt(middle) != before, "the stroke changed nothing");
    guide.TakePicture();
    guide.Undo();
    guide.Check(guide.PixelAt(middle) == before, "undo did not bring the picture back");
    guide.TypeInto(Control<QSpinBox>(Bar(guide), "m_pSizeSpn"), UsualSize(guide));
    guide.TypeInto(Control<QSpinBox>(Bar(guide), "m_pOpacitySpn"), 100);
}

} // namespace

void PlayBrush(TourGuide& guide)
{
    guide.Step("brush-bar", "Size, spacing and opacity typed into the boxes", WorkBar);
    guide.Step("stroke-normal", "A stroke in Normal", PaintNormal);
    guide.Step("brush-settings", "The brush settings popup", OpenSettings);
    guide.Step("patterns", "A pattern picked by click, and one by double click", OpenPatterns);
    guide.Step("fill-modes", "A stroke in each of the six fill modes", PaintFillModes);
    guide.Step("stroke-multiply", "A stroke in Multiply, chosen by Alt+Shift+M", PaintMultiply);
    guide.Step("digits", "Digits set the opacity, or go into the focused box", PressDigits);
    guide.Step("largest-brush", "A stroke with the brush of 2500 pixels", PaintLargest);
}
