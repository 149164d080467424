// The magic wand: tolerance, what hangs together and what does not, and how selections join by key and by
// button.

#include <QCheckBox>
#include <QSpinBox>
#include <QToolButton>

#include "KXDocumentInterface.h"
#include "NVMagicWandToolbar.h"
#include "TourGuide.h"
#include "TourPictures.h"
#include "TourTopics.h"

namespace
{

NVMagicWandToolbar* Bar(const TourGuide& guide)
{
    return guide.Get<NVMagicWandToolbar>();
}

bool IsSelected(const TourGuide& guide, const QPointF& point)
{
    return guide.SelectedAt(point) == 255;
}

int CountSelected(const TourGuide& guide)
{
    const QImage mask = guide.GetPixels()->GetSelectionMask();
    int count = 0;
    for (int y = 0; y < mask.height(); ++y)
    {
        for (int x = 0; x < mask.width(); ++x)
            count += mask.constScanLine(y)[x] == 255 ? 1 : 0;
    }
    return count;
}

// A click that is to be one undo step, and the number of pixels that are selected then.
int Select(TourGuide& guide, const QPointF& point, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
{
    const int steps = guide.UndoSteps();
    guide.ClickAt(point, modifiers);
    guide.Check(guide.GetRobot().WaitFor([&guide, steps] { return guide.UndoSteps() == steps + 1; }),
                "the selection is not one undo step");
    return CountSelected(guide);
}

// Which of the panels are selected in their middle, as "0110000".
void CheckPanels(TourGuide& guide, const BalloonPicture& picture, const QString& expected)
{
    QString selected;
    for (const QPointF& panel : picture.panels)
        selected += IsSelected(guide, panel) ? QLatin1Char('1') : QLatin1Char('0');
    guide.Check(selected == expected, QStringLiteral("the panels selected are %1").arg(selected));
}

QString Panels(const BalloonPicture& picture, const QVector<int>& selected)
{
    QString text(picture.panels.size(), QLatin1Char('0'));
    for (int panel : selected)
        text[panel] = QLatin1Char('1');
    return text;
}

void SelectPanel(TourGuide& guide, const BalloonPicture& picture)
{
    guide.ChooseTool("Magic Wand");
    NVMagicWandToolbar* bar = Bar(guide);
    if (!guide.Check(bar->isVisible(), "the wand bar is not to be seen"))
        return;
    guide.SetChecked(Control<QCheckBox>(bar, "m_pContiguous"), true);
    guide.TypeInto(Control<QSpinBox>(bar, "m_pTolerance"), 0);
    guide.TakePictureOf(bar, QStringLiteral("wand-bar"));
    guide.TakePicture();
    const int few = Select(guide, picture.panels.at(2));
    guide.Undo();
    guide.Check(CountSelected(guide) == 0, "undo left something selected");
    guide.TypeInto(Control<QSpinBox>(bar, "m_pTolerance"), 40);
    const int many = Select(guide, picture.panels.at(2));
    guide.Note(QStringLiteral("%1 pixels at tolerance 0, %2 at 40").arg(few).arg(many));
    guide.Check(few < many / 10, "tolerance 0 selected what is not the same");
    CheckPanels(guide, picture, Panels(picture, {2}));
}

void JoinByKeys(TourGuide& guide, const BalloonPicture& picture)
{
    NVMagicWandToolbar* bar = Bar(guide);
    const int one = CountSelected(guide);
    guide.TakePicture();
    const int two = Select(guide, picture.panels.at(4), Qt::ShiftModifier);
    guide.Check(two > one, "Shift added nothing");
    guide.Check(bar->GetClearState() == 1, "Shift changed the chosen mode");
    CheckPanels(guide, picture, Panels(picture, {2, 4}));
    guide.TakePicture();
    Select(guide, picture.panels.at(2), Qt::AltModifier);
    CheckPanels(guide, picture, Panels(picture, {4}));
    guide.TakePicture();
    Select(guide, picture.panels.at(2), Qt::ShiftModifier | Qt::AltModifier);
    guide.Check(CountSelected(guide) == 0, "two panels have something in common");
    guide.Undo();
    CheckPanels(guide, picture, Panels(picture, {4}));
}

void JoinByButtons(TourGuide& guide, const BalloonPicture& picture)
{
    NVMagicWandToolbar* bar = Bar(guide);
    guide.SetChecked(Control<QToolButton>(bar, "m_pUnite"), true);
    guide.Check(bar->GetState() == 2, "the button did not choose the mode");
    guide.TakePicture();
    Select(guide, picture.panels.at(2));
    CheckPanels(guide, picture, Panels(picture, {2, 4}));
    guide.SetChecked(Control<QToolButton>(bar, "m_pReplace"), true);
}

void SelectAllAlike(TourGuide& guide, const BalloonPicture& picture)
{
    guide.SetChecked(Control<QCheckBox>(Bar(guide), "m_pContiguous"), false);
    guide.TakePicture();
    Select(guide, picture.panels.at(3));
    QVector<int> alike;
    for (int panel = 1; panel < picture.panels.size(); panel += 2)
        alike += panel;
    CheckPanels(guide, picture, Panels(picture, alike));
    guide.SetChecked(Control<QCheckBox>(Bar(guide), "m_pContiguous"), true);
}

void SelectOnLayer(TourGuide& guide, const BalloonPicture& picture)
{
    auto* allLayers = Control<QCheckBox>(Bar(guide), "m_pAllLayers");
    const KXDocumentInterface* pixels = guide.GetPixels();
    guide.FocusCanvas();
    guide.GetRobot().Key(Qt::Key_N, Qt::ControlModifier | Qt::ShiftModifier);
    guide.Check(pixels->GetLayerCount() == 2 && pixels->GetCurrentLayer() == 1, "there is no new layer");
    guide.SetChecked(allLayers, true);
    Select(guide, picture.panels.at(2));
    CheckPanels(guide, picture, Panels(picture, {2}));
    guide.TakePicture();
    guide.SetChecked(allLayers, false);
    const int count = Select(guide, picture.panels.at(2));
    const QSize size = pixels->GetSize();
    guide.Check(count == size.width() * size.height(), "the empty layer is not selected as a whole");
    guide.SetChecked(allLayers, true);
}

} // namespace

void PlayWand(TourGuide& guide)
{
    const BalloonPicture picture = DrawBalloon();
    if (!guide.OpenDrawn(picture.image, QStringLiteral("balloon.png")))
        return;
    guide.Step("wand", "The magic wand: a noisy panel selected by its tolerance",
               [&](TourGuide& it) { SelectPanel(it, picture); });
    if (guide.Find<NVMagicWandToolbar>())
    {
        guide.Step("wand-keys", "Shift unites, Alt subtracts, both intersect",
                   [&](TourGuide& it) { JoinByKeys(it, picture); });
        guide.Step("wand-buttons", "The same by the buttons of the bar",
                   [&](TourGuide& it) { JoinByButtons(it, picture); });
        guide.Step("wand-all", "Not contiguous, it selects all that is alike",
                   [&](TourGuide& it) { SelectAllAlike(it, picture); });
        guide.Step("wand-layer",
                   "A panel is found through an empty layer above; that layer alone is all alike",
                   [&](TourGuide& it) { SelectOnLayer(it, picture); });
    }
    guide.LeaveDrawn();
}
