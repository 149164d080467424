// The size of the picture, its canvas, its empty borders, and what becomes of its layers in a file.

#include <QCheckBox>
#include <QComboBox>
#include <QDoubleSpinBox>
#include <QFile>
#include <QGraphicsScene>
#include <QLabel>
#include <QLineEdit>
#include <QRadioButton>
#include <QSpinBox>
#include <QWindow>

#include <functional>

#include "CropFrameItem.h"
#include "Document.h"
#include "KXAnchorSelection.h"
#include "KXDocumentInterface.h"
#include "NVAutoCrop.h"
#include "NVCanvasSize.h"
#include "NVDocumentView.h"
#include "NVImageSize.h"
#include "NVIncompleteDocumentInfo.h"
#include "TourGuide.h"
#include "TourPictures.h"
#include "TourTopics.h"

namespace
{

const QLatin1String BalloonFile("balloon over the hills.png");
// From the whole picture to single pixels.
const int ZoomKeys = 6;

QSize SizeOf(const TourGuide& guide)
{
    return guide.GetPixels()->GetSize();
}

QString Text(const QSize& size)
{
    return QStringLiteral("%1 by %2").arg(size.width()).arg(size.height());
}

void CheckSize(TourGuide& guide, const QSize& size)
{
    guide.Check(SizeOf(guide) == size, QStringLiteral("the picture is %1").arg(Text(SizeOf(guide))));
}

// Opens the dialog by the keys of its menu entry and lets the act work in it.
template <class Dialog, class Act>
void VisitDialog(TourGuide& guide, int key, const Act& act)
{
    guide.GetRobot().WhenModal([act](QWidget* window)
                               { act(Needed(qobject_cast<Dialog*>(window), "another dialog came")); });
    guide.OpenMenu(Qt::Key_I);
    guide.PressEntry(key);
}

void Shrink(TourGuide& guide)
{
    VisitDialog<NVImageSize>(guide, Qt::Key_I,
                             [&guide](NVImageSize* dialog)
                             {
                                 guide.TakePicture();
                                 guide.TakePictureOf(dialog, QStringLiteral("image-size"));
                                 guide.TypeOver(Control<QDoubleSpinBox>(dialog, "m_pNewWidth"), "300");
                                 guide.TakePicture();
                                 guide.GetRobot().Key(Qt::Key_Return);
                             });
    CheckSize(guide, QSize(300, 200));
    guide.TakePicture();
    guide.Undo();
    CheckSize(guide, QSize(1200, 800));
}

void EnlargeNearest(TourGuide& guide)
{
    VisitDialog<NVImageSize>(guide, Qt::Key_I,
                             [&guide](NVImageSize* dialog)
                             {
                                 guide.ChooseEntry(Control<QComboBox>(dialog, "m_pWidthUnits"), 1);
                                 guide.TypeOver(Control<QDoubleSpinBox>(dialog, "m_pNewWidth"), "150");
                                 guide.ChooseEntry(Control<QComboBox>(dialog, "m_pResampleMethod"), 0);
                                 guide.TakePicture();
                                 guide.GetRobot().Click(Control<QDoubleSpinBox>(dialog, "m_pNewHeight"),
                                                        QPoint(20, 10));
                                 guide.GetRobot().Key(Qt::Key_Return);
                             });
    CheckSize(guide, QSize(1800, 1200));
    guide.FocusCanvas();
    for (int i = 0; i < ZoomKeys; ++i)
        guide.GetRobot().Key(Qt::Key_Plus, Qt::ControlModifier);
    guide.Check(guide.GetView()->GetScale() > 4.0, "no single pixel is seen");
    guide.TakePicture();
    guide.Undo();
    guide.GetRobot().Key(Qt::Key_0, Qt::ControlModifier);
}

void GrowCanvas(TourGuide& guide)
{
    const QImage before = guide.GetComposition().copy();
    VisitDialog<NVCanvasSize>(
        guide, Qt::Key_C,
        [&guide](NVCanvasSize* dialog)
        {
            guide.TakePicture();
            guide.SetChecked(Control<QCheckBox>(dialog, "m_pConstrainProportions"), false);
            guide.TypeOver(Control<QDoubleSpinBox>(dialog, "m_pNewWidth"), "1500");
            guide.TypeOver(Control<QDoubleSpinBox>(dialog, "m_pNewHeight"), "1000");
            auto* anchors = Control<KXAnchorSelection>(dialog, "m_pAnchorWidget");
            guide.GetRobot().Click(anchors->childAt(anchors->width() / 2, anchors->height() * 5 / 6));
            guide.Check(dialog->GetAnchor() == KXAnchorSelection::Bottom, "a click chose another anchor");
            guide.TakePicture();
            guide.TakePictureOf(dialog, QStringLiteral("canvas-size"));
            guide.GetRobot().Key(Qt::Key_Return);
        });
    CheckSize(guide, QSize(1500, 1000));
    guide.Check(guide.GetComposition().copy(150, 200, 1200, 800) == before,
                "the picture is not at its anchor");
    guide.Check(qAlpha(guide.PixelAt({700, 100})) == 0, "what is new is not transparent");
}

QRect ShownFrame(const TourGuide& guide)
{
    const QList<QGraphicsItem*> items = guide.GetView()->scene()->items();
    for (const QGraphicsItem* item : items)
    {
        if (const auto* frame = dynamic_cast<const CropFrameItem*>(item))
            return frame->GetFrame();
    }
    return QRect();
}

// What the canvas was given goes again.
void CropCanvas(TourGuide& guide)
{
    const QRect expected(150, 200, 1200, 800);
    VisitDialog<NVAutoCrop>(
        guide, Qt::Key_A,
        [&guide, expected](NVAutoCrop* dialog)
        {
            guide.Check(guide.GetRobot().WaitFor([&] { return ShownFrame(guide) == expected; }),
                        "the frame is not about the picture");
            guide.TakePicture();
            guide.SetChecked(Control<QCheckBox>(dialog, "m_pLeft"), false);
            guide.Check(guide.GetRobot().WaitFor([&guide] { return ShownFrame(guide).left() == 0; }),
                        "the frame does not follow the dialog");
            guide.TakePicture();
            guide.TakePictureOf(dialog, QStringLiteral("auto-crop"));
            guide.SetChecked(Control<QCheckBox>(dialog, "m_pLeft"), true);
            guide.SetChecked(Control<QRadioButton>(dialog, "m_pTransparent"), true);
            guide.Check(guide.GetRobot().WaitFor([&] { return ShownFrame(guide) == expected; }),
                        "the frame does not follow the dialog");
            guide.GetRobot().Key(Qt::Key_Return);
        });
    CheckSize(guide, expected.size());
    guide.Check(ShownFrame(guide).isNull(), "the frame stays");
}

void CropNothing(TourGuide& guide)
{
    QImage plain(400, 300, QImage::Format_RGB32);
    plain.fill(QColor(60, 110, 160));
    if (!guide.OpenDrawn(plain, QStringLiteral("plain.png")))
        return;
    VisitDialog<NVAutoCrop>(guide, Qt::Key_A,
                            [&guide](NVAutoCrop* dialog)
                            {
                                guide.SetChecked(Control<QRadioButton>(dialog, "m_pAuto"), true);
                                guide.GetRobot().WhenModal(
                                    [&guide](QWidget* box)
                                    {
                                        QString text;
                                        const QList<QLabel*> labels = box->findChildren<QLabel*>();
                                        for (const QLabel* label : labels)
                                            text += label->text();
                                        guide.Check(text.contains(QLatin1String("is background")),
                                                    QStringLiteral("the message is: %1").arg(text));
                                        guide.TakePicture();
                                        guide.GetRobot().Key(Qt::Key_Return);
                                    });
                                guide.GetRobot().Key(Qt::Key_Return);
                            });
    CheckSize(guide, plain.size());
    guide.Check(guide.UndoSteps() == 0, "there is a step");
    guide.CloseDiscarding();
}

// Lets the act answer the prompt that comes when the picture is saved.
void SavePrompted(TourGuide& guide, const std::function<void(QWidget*)>& act)
{
    guide.GetRobot().WhenModal(
        [&guide, act](QWidget* window)
        {
            guide.Check(qobject_cast<NVIncompleteDocumentInfo*>(window), "another dialog came");
            guide.TakePicture();
            guide.TakePictureOf(window, QStringLiteral("layer-prompt"));
            act(window);
        });
    guide.GetRobot().Key(Qt::Key_S, Qt::ControlModifier);
    guide.Check(!guide.GetRobot().IsWaitingForModal(), "the prompt did not come");
}

// Tab goes to the button that has this text, and the space bar presses it.
void PressByKeys(TourGuide& guide, const QWidget* window, const char* text)
{
    QAbstractButton* wanted = nullptr;
    const QList<QAbstractButton*> buttons = window->findChildren<QAbstractButton*>();
    for (QAbstractButton* button : buttons)
    {
        if (button->text().remove(QLatin1Char('&')) == QLatin1String(text))
            wanted = button;
    }
    for (int i = 0; wanted && !wanted->hasFocus() && i < buttons.size(); ++i)
        guide.GetRobot().Key(Qt::Key_Tab);
    if (guide.Check(wanted && wanted->hasFocus(),
                    QStringLiteral("no key leads to %1").arg(QLatin1String(text))))
        guide.GetRobot().Key(Qt::Key_Space, Qt::NoModifier, QStringLiteral(" "));
    else
        guide.GetRobot().Key(Qt::Key_Escape);
}

void Answer(TourGuide& guide, const char* text)
{
    SavePrompted(guide, [&guide, text](QWidget* window) { PressByKeys(guide, window, text); });
}

bool IsModified(const TourGuide& guide)
{
    return guide.NeedDocument()->IsModified();
}

void RefuseToSave(TourGuide& guide)
{
    SavePrompted(guide, [&guide](QWidget*) { guide.GetRobot().Key(Qt::Key_Escape); });
    guide.Check(IsModified(guide), "Escape saved the picture");
    // What the window manager sends for its button.
    SavePrompted(guide, [](QWidget* window) { window->windowHandle()->close(); });
    guide.Check(IsModified(guide), "the close button saved the picture");
    Answer(guide, "Don't save");
    guide.Check(IsModified(guide), "the picture was saved all the same");
}

void SaveLayers(TourGuide& guide)
{
    // Nothing of the person's may be written over.
    if (!guide.Check(guide.NeedDocument()->GetPath() == guide.FileFor(BalloonFile),
                     "another picture is open"))
        return;
    guide.GetRobot().Key(Qt::Key_N, Qt::ControlModifier | Qt::ShiftModifier);
    guide.ChooseTool("Brush");
    guide.Stroke({200, 600}, {1000, 600});
    RefuseToSave(guide);
    Answer(guide, "Save");
    guide.Check(!IsModified(guide), "the picture was not saved");
    guide.Check(guide.GetPixels()->GetLayerCount() == 2, "the layers are gone");
}

void SaveLayersAs(TourGuide& guide)
{
    const QString path = guide.FileFor(QStringLiteral("balloon in one layer.png"));
    guide.Stroke({200, 650}, {1000, 650});
    SavePrompted(guide,
                 [&guide, path](QWidget* window)
                 {
                     PressByKeys(guide, window, "Save as");
                     guide.GetRobot().WhenModal(
                         [&guide, path](QWidget* dialog)
                         {
                             Control<QLineEdit>(dialog, "fileNameEdit")->setText(path);
                             guide.TakePicture();
                             guide.GetRobot().Key(Qt::Key_Return);
                         });
                 });
    guide.Check(QFile::exists(path) && guide.NeedDocument()->GetPath() == path, "no other file was written");
    guide.Check(!IsModified(guide), "the picture was not saved");
}

void SaveLayersSilently(TourGuide& guide)
{
    guide.Stroke({200, 700}, {1000, 700});
    SavePrompted(guide,
                 [&guide](QWidget* window)
                 {
                     PressByKeys(guide, window, "Don't ask again");
                     guide.TakePicture();
                     PressByKeys(guide, window, "Save");
                 });
    guide.Stroke({200, 750}, {1000, 750});
    guide.GetRobot().Key(Qt::Key_S, Qt::ControlModifier);
    guide.Check(!IsModified(guide), "the picture is not saved without a question");
    guide.TakePicture();
    guide.OpenMenu(Qt::Key_F);
    guide.TakePicture();
    guide.PressEntry(Qt::Key_K);
    guide.Stroke({200, 700}, {1000, 750});
    SavePrompted(guide, [&guide](QWidget*) { guide.GetRobot().Key(Qt::Key_Escape); });
    guide.Check(IsModified(guide), "the question did not come back");
}

} // namespace

void PlayImage(TourGuide& guide)
{
    if (!guide.OpenDrawn(DrawBalloon().image, BalloonFile))
        return;
    guide.Step("image-size", "Image size: the picture shrinks to a quarter, and comes back", Shrink);
    guide.Step("image-nearest", "Image size in percent, with pixels that stay sharp", EnlargeNearest);
    guide.Step("canvas-size", "Canvas size: more room around the picture, by its anchor", GrowCanvas);
    guide.Step("auto-crop", "Auto-crop shows its frame on the canvas before it cuts", CropCanvas);
    guide.Step("layers-prompt", "A file holds one layer: each answer before saving", SaveLayers);
    guide.Step("layers-save-as", "The layers stay, and another file holds them as one", SaveLayersAs);
    guide.Step("layers-silently", "The answer is remembered, until the menu asks again", SaveLayersSilently);
    guide.LeaveDrawn();
    guide.Step("auto-crop-nothing", "A picture that is all background stays as it is", CropNothing);
}
