// The clone stamp: a source, aligned strokes, and strokes that each begin at the source.

#include <QCheckBox>
#include <QPushButton>
#include <QSpinBox>

#include "KXBrushSettings.h"
#include "NVStampToolbar.h"
#include "TourGuide.h"
#include "TourPictures.h"
#include "TourTopics.h"

namespace
{

// From where a stroke begins to where it reads, when the source was clicked at the one and the stroke begun
// at the other.
QPoint OffsetOf(const TourGuide& guide, const QPointF& source, const QPointF& start)
{
    return PixelOf(guide.HitPoint(source)) - PixelOf(guide.HitPoint(start));
}

void CheckCloned(TourGuide& guide, const QImage& before, const QPoint& point, const QPoint& offset)
{
    const QRgb expected = before.pixel(point + offset);
    const QRgb found = guide.PixelAt(point);
    guide.Check(AreNear(found, expected),
                QStringLiteral("the stamp gave %1 instead of %2").arg(ColorText(found), ColorText(expected)));
}

void ChooseSource(TourGuide& guide, const LighthousePicture& picture)
{
    guide.ChooseTool("Clone Stamp");
    const auto* bar = guide.Find<NVStampToolbar>();
    if (!guide.Check(bar && bar->isVisible(), "the stamp bar is not to be seen"))
        return;
    guide.TypeInto(Control<QSpinBox>(bar, "m_pSizeSpn"), 190);
    guide.Check(bar->GetSize() == 190, QStringLiteral("the size is %1").arg(bar->GetSize()));
    guide.VisitPopup(Control<QPushButton>(bar, "m_pSelectBrushBtn"), bar->GetBrushes());
    guide.SetChecked(Control<QCheckBox>(bar, "m_pAlignedSample"), true);
    guide.FocusCanvas();
    guide.Stroke({1100, 700}, {1150, 700});
    guide.Check(guide.UndoSteps() == 0, "the stamp painted without a source");
    guide.ClickAt(picture.lamp, Qt::AltModifier);
    guide.Check(guide.UndoSteps() == 0, "Alt and a click painted");
    guide.TakePictureOf(guide.Find<NVStampToolbar>(), QStringLiteral("stamp-bar"));
}

void CloneAligned(TourGuide& guide, const LighthousePicture& picture)
{
    const QImage before = guide.GetComposition().copy();
    const QPointF start(870, 190);
    const QPoint offset = OffsetOf(guide, picture.lamp, start);
    guide.TakePicture();
    guide.Stroke(start, start + (picture.foot - picture.lamp));
    guide.Check(guide.UndoSteps() == 1, "the stroke is not one undo step");
    for (int y : {240, 330, 420, 510, 600})
        CheckCloned(guide, before, QPoint(870, y), offset);
    guide.TakePicture();
    // The dome, by a stroke of its own: it fits to the tower.
    guide.Stroke({840, 140}, {900, 140});
    CheckCloned(guide, before, QPoint(870, 140), offset);
}

void CloneUnaligned(TourGuide& guide, const LighthousePicture& picture)
{
    const auto* bar = guide.Find<NVStampToolbar>();
    if (!bar)
        return;
    guide.SetChecked(Control<QCheckBox>(bar, "m_pAlignedSample"), false);
    guide.Check(!bar->IsAligned(), "the switch did not reach the bar");
    guide.TypeInto(Control<QSpinBox>(bar, "m_pSizeSpn"), 90);
    const QImage before = guide.GetComposition().copy();
    guide.TakePicture();
    for (const QPointF& start : {QPointF(560, 500), QPointF(690, 450), QPointF(1080, 480)})
    {
        guide.Stroke(start, start + QPointF(0, 30));
        CheckCloned(guide, before, PixelOf(start), OffsetOf(guide, picture.lamp, start));
    }
    guide.SetChecked(Control<QCheckBox>(bar, "m_pAlignedSample"), true);
}

} // namespace

void PlayStamp(TourGuide& guide)
{
    const LighthousePicture picture = DrawLighthouse();
    if (!guide.OpenDrawn(picture.image, QStringLiteral("lighthouse.png")))
        return;
    guide.Step("stamp", "The clone stamp: settings, and a source by Alt and a click",
               [&](TourGuide& it) { ChooseSource(it, picture); });
    guide.Step("stamp-aligned", "A second tower by two aligned strokes",
               [&](TourGuide& it) { CloneAligned(it, picture); });
    guide.Step("stamp-unaligned", "Not aligned, each stroke begins at the source",
               [&](TourGuide& it) { CloneUnaligned(it, picture); });
    guide.LeaveDrawn();
}
