// Spot healing of a scratch and of dust, and the red out of two eyes.

#include <QDoubleSpinBox>
#include <QSpinBox>
#include <QToolButton>

#include <cmath>

#include "KXBrushSettings.h"
#include "NVRedEyeToolbar.h"
#include "NVSpotHealingToolbar.h"
#include "TourGuide.h"
#include "TourPictures.h"
#include "TourTopics.h"

namespace
{

// Points along the path, some pixels apart.
QVector<QPointF> Along(const QVector<QPointF>& path)
{
    const int parts = 12;
    QVector<QPointF> points;
    for (int i = 0; i + 1 < path.size(); ++i)
    {
        for (int part = 0; part < parts; ++part)
            points += path.at(i) + (path.at(i + 1) - path.at(i)) * part / parts;
    }
    points += path.constLast();
    return points;
}

// How far the picture is from the whole one along the points, in mean grey.
double Damage(const QImage& image, const QImage& whole, const QVector<QPointF>& points)
{
    double sum = 0;
    for (const QPointF& point : points)
    {
        const QPoint pixel = PixelOf(point);
        sum += std::abs(qGray(image.pixel(pixel)) - qGray(whole.pixel(pixel)));
    }
    return sum / points.size();
}

// The work goes on when the stroke is drawn.
void WaitForStep(TourGuide& guide, int steps)
{
    guide.Check(guide.GetRobot().WaitFor([&guide, steps] { return guide.UndoSteps() == steps; }),
                "nothing was healed");
}

void CheckHealed(TourGuide& guide, const ScratchedPicture& picture, const QVector<QPointF>& points)
{
    const double before = Damage(picture.image, picture.whole, points);
    const double after = Damage(guide.GetComposition(), picture.whole, points);
    guide.Note(QStringLiteral("off by %1 before, by %2 after").arg(before, 0, 'f', 1).arg(after, 0, 'f', 1));
    guide.Check(3 * after < before, "the place is not healed");
}

void HealScratch(TourGuide& guide, const ScratchedPicture& picture)
{
    guide.ChooseTool("Spot Healing");
    const auto* bar = guide.Find<NVSpotHealingToolbar>();
    if (!guide.Check(bar && bar->isVisible(), "the spot healing bar is not to be seen"))
        return;
    guide.TypeInto(Control<QSpinBox>(bar, "m_pSizeSpn"), 20);
    guide.Check(bar->GetSize() == 20, QStringLiteral("the size is %1").arg(bar->GetSize()));
    guide.VisitPopup(Control<QToolButton>(bar, "m_pSelectBrushBtn"), bar->GetBrushes());
    guide.TakePictureOf(guide.Find<NVSpotHealingToolbar>(), QStringLiteral("spot-healing-bar"));
    guide.TakePicture();
    const QVector<QPointF> points = Along(picture.scratch);
    guide.Stroke(points);
    WaitForStep(guide, 1);
    CheckHealed(guide, picture, points);
    guide.Check(guide.PixelAt({900, 600}) == picture.image.pixel(900, 600), "it changed what is far away");
}

void HealDust(TourGuide& guide, const ScratchedPicture& picture)
{
    guide.TakePicture();
    for (int i = 0; i < picture.dust.size(); ++i)
    {
        guide.ClickAt(picture.dust.at(i));
        WaitForStep(guide, 2 + i);
    }
    CheckHealed(guide, picture, picture.dust);
    guide.Undo();
    guide.Check(guide.PixelAt(picture.dust.constLast()) ==
                    picture.image.pixel(PixelOf(picture.dust.constLast())),
                "undo did not bring the speck back");
    guide.GetRobot().Key(Qt::Key_Z, Qt::ControlModifier | Qt::ShiftModifier);
}

int Redness(QRgb color)
{
    return qRed(color) - qMax(qGreen(color), qBlue(color));
}

void CheckPupil(TourGuide& guide, const PortraitPicture& picture, const QPointF& pupil)
{
    for (const QPointF& way : {QPointF(0, 0), QPointF(7, 0), QPointF(0, 8), QPointF(-4, 6)})
    {
        const QRgb before = picture.image.pixel(PixelOf(pupil + way));
        const QRgb after = guide.PixelAt(pupil + way);
        guide.Check(4 * Redness(after) < Redness(before),
                    QStringLiteral("%1 became %2").arg(ColorText(before), ColorText(after)));
    }
    const QRgb highlight = guide.PixelAt(pupil + picture.highlight);
    guide.Check(qGray(highlight) > 230, QStringLiteral("the highlight is %1").arg(ColorText(highlight)));
}

void ClickEyes(TourGuide& guide, const PortraitPicture& picture)
{
    guide.ChooseTool("Red Eye");
    const auto* bar = guide.Find<NVRedEyeToolbar>();
    if (!guide.Check(bar && bar->isVisible(), "the red eye bar is not to be seen"))
        return;
    auto* level = Control<QDoubleSpinBox>(bar, "m_pIntensity");
    guide.TypeInto(level, 0);
    guide.Check(bar->GetIntensity() >= 0.01, "the level goes down to 0");
    guide.TypeInto(level, 1);
    guide.Check(qFuzzyCompare(bar->GetIntensity(), 1.0), "the level that was typed did not arrive");
    guide.FocusCanvas();
    guide.TakePictureOf(guide.Find<NVRedEyeToolbar>(), QStringLiteral("red-eye-bar"));
    for (int i = 0; i < 3; ++i)
        guide.GetRobot().Key(Qt::Key_Plus, Qt::ControlModifier);
    guide.TakePicture();
    for (int i = 0; i < 2; ++i)
    {
        const QPointF pupil = picture.pupils.at(i);
        guide.ClickAt(pupil);
        guide.Check(guide.UndoSteps() == i + 1, "a click is not one undo step");
        CheckPupil(guide, picture, pupil);
    }
    guide.ClickAt(picture.cheek);
    guide.Check(guide.UndoSteps() == 2 &&
                    guide.PixelAt(picture.cheek) == picture.image.pixel(PixelOf(picture.cheek)),
                "a click on the cheek changed it");
}

} // namespace

void PlayHealing(TourGuide& guide)
{
    const ScratchedPicture print = DrawScratchedPrint();
    if (!guide.OpenDrawn(print.image, QStringLiteral("print.png")))
        return;
    guide.Step("spot-healing", "A scratch healed by a stroke along it",
               [&](TourGuide& it) { HealScratch(it, print); });
    guide.Step("spot-healing-dust", "Specks of dust healed by a click each",
               [&](TourGuide& it) { HealDust(it, print); });
    guide.LeaveDrawn();

    const PortraitPicture portrait = DrawPortrait();
    if (!guide.OpenDrawn(portrait.image, QStringLiteral("portrait.png")))
        return;
    guide.Step("red-eye", "Red eyes, mended by a click each",
               [&](TourGuide& it) { ClickEyes(it, portrait); });
    guide.LeaveDrawn();
}
