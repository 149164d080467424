// The fill can: tolerance, what is connected and what is not, soft edges, and a pattern in a blend mode.

#include <QCheckBox>
#include <QComboBox>
#include <QListView>
#include <QPushButton>
#include <QSpinBox>

#include "NVApplication.h"
#include "NVFillCanToolbar.h"
#include "PatternSelectWidget.h"
#include "TourGuide.h"
#include "TourPictures.h"
#include "TourTopics.h"

namespace
{

NVFillCanToolbar* Bar(const TourGuide& guide)
{
    return guide.Get<NVFillCanToolbar>();
}

void Switch(TourGuide& guide, const char* name, bool on)
{
    guide.SetChecked(Control<QCheckBox>(Bar(guide), name), on);
}

// A click, and the number of pixels that are not what they were.
int Fill(TourGuide& guide, const QPointF& point)
{
    const QImage before = guide.GetComposition().copy();
    const int steps = guide.UndoSteps();
    guide.ClickAt(point);
    guide.Check(guide.GetRobot().WaitFor([&guide, steps] { return guide.UndoSteps() == steps + 1; }),
                "the fill is not one undo step");
    int changed = 0;
    for (int y = 0; y < before.height(); ++y)
    {
        for (int x = 0; x < before.width(); ++x)
            changed += before.pixel(x, y) != guide.GetComposition().pixel(x, y);
    }
    return changed;
}

bool HasColor(const TourGuide& guide, const QPointF& point)
{
    return AreNear(guide.PixelAt(point), NVApplication::GetForeground().rgb());
}

// The green of the hill, picked with the brush.
void PickGreen(TourGuide& guide, const BalloonPicture& picture)
{
    guide.ChooseTool("Brush");
    guide.ClickAt(picture.hill, Qt::AltModifier);
    const QColor color = NVApplication::GetForeground();
    guide.Check(color.green() > color.red() && color.green() > color.blue(), "the green was not picked");
    guide.ChooseTool("Fill");
    guide.Check(Bar(guide)->isVisible(), "the fill bar is not to be seen");
}

void FillPanel(TourGuide& guide, const BalloonPicture& picture)
{
    PickGreen(guide, picture);
    Switch(guide, "m_pContiguous", true);
    Switch(guide, "m_pAntialiasing", false);
    guide.TypeInto(Control<QSpinBox>(Bar(guide), "m_pTolerance"), 0);
    guide.TakePictureOf(Bar(guide), QStringLiteral("fill-bar"));
    guide.TakePicture();
    const int few = Fill(guide, picture.panels.at(2));
    guide.Undo();
    guide.TypeInto(Control<QSpinBox>(Bar(guide), "m_pTolerance"), 40);
    const int hard = Fill(guide, picture.panels.at(2));
    guide.Undo();
    Switch(guide, "m_pAntialiasing", true);
    const int soft = Fill(guide, picture.panels.at(2));
    guide.Note(QStringLiteral("%1 pixels at tolerance 0, %2 at 40, %3 with soft edges")
                   .arg(few)
                   .arg(hard)
                   .arg(soft));
    guide.Check(few < hard / 10, "tolerance 0 filled what is not the same");
    guide.Check(soft > hard, "antialiasing did not reach the edges");
    for (int y : {-200, -100, 0, 100, 200})
        guide.Check(HasColor(guide, picture.panels.at(2) + QPointF(y > 100 || y < -100 ? 20 : 0, y)),
                    "the panel is not full");
    for (int other : {1, 3, 4})
        guide.Check(guide.PixelAt(picture.panels.at(other)) ==
                        picture.image.pixel(PixelOf(picture.panels.at(other))),
                    "another panel changed");
}

void FillAllAlike(TourGuide& guide, const BalloonPicture& picture)
{
    Switch(guide, "m_pContiguous", false);
    guide.TakePicture();
    Fill(guide, picture.panels.at(3));
    for (int panel : {1, 3, 5})
        guide.Check(HasColor(guide, picture.panels.at(panel)), "a panel of the same colour was left");
    guide.Check(!HasColor(guide, picture.panels.at(4)), "a panel of another colour was filled");
    guide.TakePicture();
    guide.Undo();
    Switch(guide, "m_pContiguous", true);
}

void PickPattern(TourGuide& guide)
{
    PatternSelectWidget* popup = Bar(guide)->GetPatterns();
    auto* tiles = Control<QListView>(popup);
    if (!guide.Check(popup->Count() >= 9, "there are no tiles"))
        return;
    const QPoint tile = tiles->visualRect(tiles->model()->index(7, 0)).center();
    guide.GetRobot().DoubleClick(tiles->viewport(), tile);
    guide.Check(popup->CurrentIndex() == 7, "the click did not select the tile");
    guide.Check(popup->isVisible(), "the double click closed the popup");
    guide.TakePicture();
}

void FillPattern(TourGuide& guide, const BalloonPicture& picture)
{
    NVFillCanToolbar* bar = Bar(guide);
    guide.ChooseEntry(Control<QComboBox>(bar, "m_pFillMode"), 1);
    guide.VisitPopup(Control<QPushButton>(bar, "m_pSelectPattern"), bar->GetPatterns(), PickPattern);
    guide.FocusCanvas();
    guide.GetRobot().Key(Qt::Key_M, Qt::AltModifier | Qt::ShiftModifier);
    guide.Check(bar->GetBlendMode() == 1, QStringLiteral("the blend mode is %1").arg(bar->GetBlendMode()));
    guide.TakePicture();
    QImage pattern;
    if (!guide.Check(bar->GetPatterns()->GetItemImage(7, pattern) && !pattern.isNull(),
                     "there is no pattern"))
        return;
    const QImage before = guide.GetComposition().copy();
    Fill(guide, picture.sky);
    for (const QPoint& way : {QPoint(0, 0), QPoint(3, 5), QPoint(17, 11), QPoint(40, -30)})
    {
        const QPoint pixel = PixelOf(picture.sky) + way;
        const QColor ink = pattern.pixelColor(pixel.x() % pattern.width(), pixel.y() % pattern.height());
        const QRgb expected = Multiplied(before.pixel(pixel), ink.rgb());
        guide.Check(
            ink.alpha() < 255 || AreNear(guide.PixelAt(pixel), expected),
            QStringLiteral("%1 instead of %2").arg(ColorText(guide.PixelAt(pixel)), ColorText(expected)));
    }
}

void PressKeys(TourGuide& guide)
{
    const NVFillCanToolbar* bar = Bar(guide);
    guide.FocusCanvas();
    guide.GetRobot().Type(QStringLiteral("4"));
    guide.Check(bar->GetOpacity() == 40, QStringLiteral("4 gave the opacity %1").arg(bar->GetOpacity()));
    guide.TakePicture();
    guide.GetRobot().Type(QStringLiteral("0"));
    guide.Check(bar->GetOpacity() == 100, QStringLiteral("0 gave the opacity %1").arg(bar->GetOpacity()));
    guide.GetRobot().Key(Qt::Key_N, Qt::AltModifier | Qt::ShiftModifier);
    guide.Check(bar->GetBlendMode() == 0, "Alt+Shift+N did not go back to Normal");
    guide.GetRobot().Key(Qt::Key_Minus, Qt::ShiftModifier);
    guide.Check(bar->GetBlendMode() == 12, "Shift+Minus did not wrap round");
    guide.GetRobot().Key(Qt::Key_Plus, Qt::ShiftModifier);
    guide.Check(bar->GetBlendMode() == 0, "Shift+Plus did not wrap round");
}

} // namespace

void PlayFillCan(TourGuide& guide)
{
    const BalloonPicture picture = DrawBalloon();
    if (!guide.OpenDrawn(picture.image, QStringLiteral("balloon.png")))
        return;
    guide.Step("fill", "The fill can: a noisy panel filled by its tolerance, with soft edges",
               [&](TourGuide& it) { FillPanel(it, picture); });
    if (guide.Find<NVFillCanToolbar>())
    {
        guide.Step("fill-all", "Not contiguous, it fills all that is alike",
                   [&](TourGuide& it) { FillAllAlike(it, picture); });
        guide.Step("fill-pattern", "A pattern multiplied with the sky, the mode chosen by Alt+Shift+M",
                   [&](TourGuide& it) { FillPattern(it, picture); });
        guide.Step("fill-keys", "Digits and blend keys on the fill bar", PressKeys);
    }
    guide.LeaveDrawn();
}
