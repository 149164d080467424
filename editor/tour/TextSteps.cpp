// A text that is typed on the canvas, styled, bent, and opened again.

#include <QComboBox>
#include <QDoubleSpinBox>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QToolButton>
#include <QUndoStack>

#include "Document.h"
#include "KXDocumentInterface.h"
#include "NVTextToolbar.h"
#include "NVWarpTextDialog.h"
#include "OptionArea.h"
#include "TextTool.h"
#include "TourGuide.h"
#include "TourPictures.h"
#include "TourTopics.h"

namespace
{

const QPointF TextPlace(250, 330);
const QPoint DialogPlace(160, 560);

NVTextToolbar* Bar(const TourGuide& guide)
{
    return guide.Get<NVTextToolbar>();
}

const TextTool* Tool(const TourGuide& guide)
{
    return guide.GetWindow()->FindTool<TextTool>();
}

// The bar may be wider than the window.
void ClickOn(TourGuide& guide, QAbstractButton* button)
{
    if (!guide.Check(button && button->isVisible(), "the bar has no such button now"))
        return;
    guide.Get<OptionArea>()->ensureWidgetVisible(button);
    guide.GetRobot().Settle();
    guide.GetRobot().Click(button);
}

void TypeSize(TourGuide& guide, const QString& size)
{
    auto* list = Control<QComboBox>(Bar(guide), "m_pFontSize");
    if (!guide.Check(list && list->lineEdit(), "the bar has no box for the size"))
        return;
    guide.GetRobot().Click(list->lineEdit());
    guide.GetRobot().Key(Qt::Key_A, Qt::ControlModifier);
    guide.GetRobot().Type(size);
    guide.GetRobot().Key(Qt::Key_Return);
}

void TypeText(TourGuide& guide)
{
    guide.ChooseTool("Text");
    const NVTextToolbar* bar = Bar(guide);
    if (!guide.Check(bar->isVisible(), "the text bar is not to be seen"))
        return;
    guide.Check(!Control<QPushButton>(bar, "m_pCommit")->isVisible(), "Commit is there without a text");
    TypeSize(guide, QStringLiteral("90"));
    guide.ClickAt(TextPlace);
    guide.GetRobot().Type(QStringLiteral("Fair winds"));
    guide.GetRobot().Key(Qt::Key_Return);
    guide.GetRobot().Type(QStringLiteral("to the bay"));
    guide.Check(Tool(guide)->GetText().text == QLatin1String("Fair winds\nto the bay"),
                QStringLiteral("the text is \"%1\"").arg(Tool(guide)->GetText().text));
    guide.Check(Tool(guide)->GetText().size == 90, "the size is not the one that was typed");
    guide.Check(guide.UndoSteps() == 0, "the open text is a step already");
    guide.TakePictureOf(Bar(guide), QStringLiteral("text-bar"));
}

void StyleText(TourGuide& guide)
{
    ClickOn(guide, Control<QToolButton>(Bar(guide), "m_pBold"));
    guide.GetRobot().WhenModal(
        [&guide](QWidget*)
        {
            guide.GetRobot().Key(Qt::Key_A, Qt::ControlModifier);
            guide.GetRobot().Type(QStringLiteral("#ffd23c"));
            guide.TakePicture();
            guide.GetRobot().Key(Qt::Key_Return);
        });
    ClickOn(guide, Control<QPushButton>(Bar(guide), "m_pColor"));
    const TextDescription text = Tool(guide)->GetText();
    guide.Check(text.isBold, "the text is not bold");
    guide.Check(text.color == QColor(255, 210, 60), QStringLiteral("the color is %1").arg(text.color.name()));
}

// Bends the text in the dialog, and leaves it by this key.
void Bend(TourGuide& guide, const char* bend, int key)
{
    const QImage before = guide.GetComposition().copy();
    guide.GetRobot().WhenModal(
        [&guide, before, bend, key](QWidget* modal)
        {
            auto* dialog = Needed(qobject_cast<NVWarpTextDialog*>(modal), "another dialog came up");
            // Away from the text, as a person would drag it.
            dialog->move(guide.GetWindow()->mapToGlobal(DialogPlace));
            guide.TypeOver(Control<QDoubleSpinBox>(dialog, "m_pBend"), bend);
            guide.TypeOver(Control<QDoubleSpinBox>(dialog, "m_pHDistortion"), "25");
            guide.Check(guide.GetComposition() != before, "the canvas does not show the bent text");
            guide.TakePicture();
            guide.TakePictureOf(dialog, QStringLiteral("warp-text"));
            guide.GetRobot().Key(key);
        });
    ClickOn(guide, Control<QPushButton>(Bar(guide), "m_pWarp"));
    guide.Check(Tool(guide)->IsEditing(), "the text is closed");
    const bool isAccepted = key == Qt::Key_Return;
    guide.Check((guide.GetComposition() != before) == isAccepted, "the text is not as the dialog was left");
}

void CommitText(TourGuide& guide)
{
    const QImage typed = guide.GetComposition().copy();
    ClickOn(guide, Control<QPushButton>(Bar(guide), "m_pCommit"));
    guide.Check(!Tool(guide)->IsEditing(), "the text is still open");
    guide.Check(guide.UndoSteps() == 1, QStringLiteral("there are %1 steps").arg(guide.UndoSteps()));
    guide.Check(guide.GetComposition() == typed, "the text looks different now");
    guide.TakePicture();
    guide.Undo();
    guide.Check(guide.GetComposition() != typed, "the text cannot be undone");
    guide.NeedDocument()->GetUndoStack()->redo();
    guide.Check(guide.GetComposition() == typed, "the text cannot be redone");
}

void OpenAgain(TourGuide& guide)
{
    const QImage before = guide.GetComposition().copy();
    guide.ClickAt(TextPlace + QPointF(80, -20));
    guide.Check(Tool(guide)->GetText().text.startsWith(QLatin1String("Fair winds")), "it is not open again");
    guide.GetRobot().Key(Qt::Key_End, Qt::ControlModifier);
    guide.GetRobot().Type(QStringLiteral(", b!"));
    guide.TakePicture();
    guide.Check(guide.GetWindow()->GetTool() == Tool(guide), "a typed letter chose another tool");
    guide.GetRobot().Key(Qt::Key_Escape);
    guide.Check(guide.GetComposition() == before && guide.UndoSteps() == 1, "Escape did not take it back");
}

void Flatten(TourGuide& guide)
{
    const QImage before = guide.GetComposition().copy();
    const KXDocumentInterface* pixels = guide.GetPixels();
    guide.OpenMenu(Qt::Key_L);
    guide.TakePicture();
    guide.PressEntry(Qt::Key_F);
    guide.Check(pixels->GetLayerCount() == 1, QStringLiteral("%1 layers").arg(pixels->GetLayerCount()));
    guide.Check(guide.GetComposition() == before, "the picture looks different now");
    guide.ClickAt(TextPlace + QPointF(80, -20));
    guide.Check(Tool(guide)->GetText().text.isEmpty(), "it is still a text");
    guide.GetRobot().Key(Qt::Key_Escape);
    guide.TakePicture();
    guide.Undo();
    guide.Check(pixels->GetLayerCount() == 2, "the layers do not come back");
    guide.NeedDocument()->GetUndoStack()->redo();
}

} // namespace

void PlayText(TourGuide& guide)
{
    if (!guide.OpenDrawn(DrawLighthouse().image, QStringLiteral("bay.png")))
        return;
    guide.Step("text-typed", "The text tool: two lines typed on the canvas", TypeText);
    if (guide.Find<NVTextToolbar>())
    {
        guide.Step("text-styled", "Bold, and in a color from the dialog", StyleText);
        guide.Step("text-bent-cancelled", "Bent live in the dialog; Escape puts it back",
                   [](TourGuide& it) { Bend(it, "-100", Qt::Key_Escape); });
        guide.Step("text-bent", "Bent again, and accepted",
                   [](TourGuide& it) { Bend(it, "60", Qt::Key_Return); });
        guide.Step("text-committed", "Commit on the bar: one step, in a layer of its own", CommitText);
        guide.Step("text-opened-again", "A click opens the text again; Escape leaves it as it was",
                   OpenAgain);
        guide.Step("text-flattened", "Layer > Flatten Image makes one layer of all, and the text a picture",
                   Flatten);
    }
    guide.LeaveDrawn();
}
