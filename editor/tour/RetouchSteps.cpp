// The blur brush and the dodge brush.

#include <QComboBox>
#include <QPushButton>
#include <QSpinBox>

#include "KXBrushSettings.h"
#include "NVBlurToolbar.h"
#include "NVDodgeToolbar.h"
#include "TourGuide.h"
#include "TourPictures.h"
#include "TourTopics.h"

namespace
{

// The largest step from one pixel to the next one below, across an edge near the point.
int Sharpness(const QImage& image, const QPointF& edge)
{
    int sharpest = 0;
    const QPoint point = PixelOf(edge);
    for (int y = point.y() - 8; y < point.y() + 8; ++y)
    {
        const int one = qGreen(image.pixel(point.x(), y));
        sharpest = qMax(sharpest, qAbs(one - qGreen(image.pixel(point.x(), y + 1))));
    }
    return sharpest;
}

// The mean grey about the point, so that grain has no say.
double Brightness(const QImage& image, const QPointF& point)
{
    double sum = 0;
    const QRect area(PixelOf(point) - QPoint(10, 10), QSize(21, 21));
    for (int y = area.top(); y <= area.bottom(); ++y)
    {
        for (int x = area.left(); x <= area.right(); ++x)
            sum += qGray(image.pixel(x, y));
    }
    return sum / (area.width() * area.height());
}

void Blur(TourGuide& guide, const LighthousePicture& picture)
{
    guide.ChooseTool("Blur");
    const auto* bar = guide.Find<NVBlurToolbar>();
    if (!guide.Check(bar && bar->isVisible(), "the blur bar is not to be seen"))
        return;
    guide.TypeInto(Control<QSpinBox>(bar, "m_pSizeSpin"), 110);
    guide.Check(bar->GetSize() == 110, QStringLiteral("the size is %1").arg(bar->GetSize()));
    guide.TakePictureOf(guide.Find<NVBlurToolbar>(), QStringLiteral("blur-bar"));
    guide.VisitPopup(Control<QPushButton>(bar, "m_pSelectBrushBtn"), bar->GetBrushes());
    guide.GetRobot().Key(Qt::Key_1, Qt::ControlModifier);
    guide.TakePicture();
    const QImage before = guide.GetComposition().copy();
    const QPointF upper = picture.stripes.at(0);
    const QPointF lower = picture.stripes.at(3);
    for (int pass = 0; pass < 2; ++pass)
        guide.Stroke(upper, lower);
    for (int i = 0; i < 4; ++i)
    {
        const int was = Sharpness(before, picture.stripes.at(i));
        const int is = Sharpness(guide.GetComposition(), picture.stripes.at(i));
        guide.Check(3 * is < was, QStringLiteral("the edge of a step of %1 has one of %2").arg(was).arg(is));
    }
    const QPointF last = picture.stripes.constLast();
    guide.Check(Sharpness(guide.GetComposition(), last) == Sharpness(before, last),
                "an edge that no stroke touched was blurred");
}

// What a stroke in the range makes of the bright sky and of the dark rock.
struct Gains
{
    double sky;
    double rock;
};

Gains Dodge(TourGuide& guide, const LighthousePicture& picture, int range)
{
    guide.ChooseEntry(Control<QComboBox>(guide.Find<NVDodgeToolbar>(), "m_pRange"), range);
    const QImage before = guide.GetComposition().copy();
    guide.Stroke(picture.sky - QPointF(110, 0), picture.sky + QPointF(110, 0));
    guide.Stroke(picture.rock - QPointF(110, 0), picture.rock + QPointF(110, 0));
    const auto gain = [&](const QPointF& point)
    { return Brightness(guide.GetComposition(), point) - Brightness(before, point); };
    return {gain(picture.sky), gain(picture.rock)};
}

void DodgeRanges(TourGuide& guide, const LighthousePicture& picture)
{
    guide.ChooseTool("Dodge");
    const auto* bar = guide.Find<NVDodgeToolbar>();
    if (!guide.Check(bar && bar->isVisible(), "the dodge bar is not to be seen"))
        return;
    guide.Check(bar->GetRange() == 2 && bar->GetExposure() == 50, "the bar starts with other values");
    guide.TypeInto(Control<QSpinBox>(bar, "m_pSizeSpin"), 120);
    guide.TypeInto(Control<QSpinBox>(bar, "m_pExposure"), 80);
    guide.Check(bar->GetSize() == 120 && bar->GetExposure() == 80, "the typed values did not arrive");
    guide.TakePictureOf(guide.Find<NVDodgeToolbar>(), QStringLiteral("dodge-bar"));
    guide.VisitPopup(Control<QPushButton>(bar, "m_pSelectBrushBtn"), bar->GetBrushes());
    guide.TakePicture();
    const Gains highlights = Dodge(guide, picture, 2);
    guide.TakePicture();
    guide.Undo();
    guide.Undo();
    const Gains shadows = Dodge(guide, picture, 0);
    guide.Note(QStringLiteral("highlights: sky %1, rock %2; shadows: sky %3, rock %4 brighter")
                   .arg(highlights.sky, 0, 'f', 1)
                   .arg(highlights.rock, 0, 'f', 1)
                   .arg(shadows.sky, 0, 'f', 1)
                   .arg(shadows.rock, 0, 'f', 1));
    guide.Check(highlights.sky > 5 && highlights.sky > shadows.sky, "Highlights did not spare the shadows");
    guide.Check(shadows.rock > 5 && shadows.rock > highlights.rock, "Shadows did not spare the highlights");
}

} // namespace

void PlayBlurAndDodge(TourGuide& guide)
{
    const LighthousePicture picture = DrawLighthouse();
    if (!guide.OpenDrawn(picture.image, QStringLiteral("lighthouse.png")))
        return;
    guide.Step("blur", "The blur brush on the tower, at 100 %", [&](TourGuide& it) { Blur(it, picture); });
    guide.GetRobot().Key(Qt::Key_0, Qt::ControlModifier);
    guide.Step("dodge", "The dodge brush on sky and rock, in the highlights and in the shadows",
               [&](TourGuide& it) { DodgeRanges(it, picture); });
    guide.LeaveDrawn();
}
