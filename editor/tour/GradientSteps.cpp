// Gradients: the list under the button, one made in the editor, and each type drawn on the canvas.

#include <QComboBox>
#include <QDialogButtonBox>
#include <QGraphicsView>
#include <QListView>
#include <QPushButton>
#include <QSpinBox>
#include <QToolButton>
#include <QUndoStack>

#include <cmath>

#include "ControlNode.h"
#include "Document.h"
#include "GradientStops.h"
#include "GradientTool.h"
#include "NVDocumentView.h"
#include "NVGradientEditor.h"
#include "NVGradientPopup.h"
#include "NVGradientToolbar.h"
#include "OptionArea.h"
#include "TourGuide.h"
#include "TourPictures.h"
#include "TourTopics.h"

namespace
{

NVGradientToolbar* Bar(const TourGuide& guide)
{
    return guide.Get<NVGradientToolbar>();
}

QToolButton* GradientButton(const TourGuide& guide)
{
    return Control<QToolButton>(Bar(guide), "m_pGradients");
}

QImage ButtonPicture(const TourGuide& guide)
{
    const QToolButton* button = GradientButton(guide);
    return button->icon().pixmap(button->iconSize()).toImage();
}

void ClickRow(TourGuide& guide, QListView* list, int row)
{
    if (!guide.Check(list && list->model()->rowCount() > row, "there is no such gradient"))
        return;
    const QModelIndex index = list->model()->index(row, 0);
    list->scrollTo(index);
    guide.GetRobot().Click(list->viewport(), list->visualRect(index).center());
    guide.Check(list->currentIndex().row() == row, "a click did not choose the gradient");
}

void ChooseGradient(TourGuide& guide, int row)
{
    auto* popup = guide.Find<NVGradientPopup>();
    guide.VisitPopup(GradientButton(guide), popup,
                     [popup, row](TourGuide& it)
                     {
                         ClickRow(it, Control<QListView>(popup, "m_pGradientList"), row);
                         it.TakePicture();
                     });
    guide.Check(Bar(guide)->GetCurrentGradientIndex() == row, "the bar has another gradient");
}

void ShowBar(TourGuide& guide)
{
    guide.ChooseTool("Gradient");
    if (!guide.Check(Bar(guide)->isVisible(), "the gradient bar is not to be seen"))
        return;
    guide.Check(Bar(guide)->GetGradientCount() == 24,
                QStringLiteral("there are %1 gradients").arg(Bar(guide)->GetGradientCount()));
    guide.TakePictureOf(Bar(guide), QStringLiteral("gradient-bar"));
    const QImage before = ButtonPicture(guide);
    ChooseGradient(guide, 3);
    guide.Check(ButtonPicture(guide) != before, "the button shows the gradient of before");
}

// Enter would be for the default button of the dialog.
void TypeAndTab(TourGuide& guide, QSpinBox* box, int value)
{
    guide.GetRobot().Click(box, QPoint(14, box->height() / 2));
    guide.GetRobot().Key(Qt::Key_A, Qt::ControlModifier);
    guide.GetRobot().Type(QString::number(value));
    guide.GetRobot().Key(Qt::Key_Tab);
    guide.Check(box->value() == value, QStringLiteral("the box has %1").arg(box->value()));
}

// A stop where the strip is double clicked, in a colour typed into its boxes.
void AddStop(TourGuide& guide, QWidget* editor, double place, const QColor& color)
{
    QWidget* viewport = Control<QGraphicsView>(editor, "m_pGraphicsView")->viewport();
    guide.GetRobot().DoubleClick(viewport, QPoint(int(place * viewport->width()), viewport->height() / 2));
    TypeAndTab(guide, Control<QSpinBox>(editor, "m_pRed"), color.red());
    TypeAndTab(guide, Control<QSpinBox>(editor, "m_pGreen"), color.green());
    TypeAndTab(guide, Control<QSpinBox>(editor, "m_pBlue"), color.blue());
    TypeAndTab(guide, Control<QSpinBox>(editor, "m_pOpacity"), qRound(color.alphaF() * 100));
}

int SelectedStops(QWidget* editor)
{
    int selected = 0;
    const QList<QGraphicsItem*> items = Control<QGraphicsView>(editor, "m_pGraphicsView")->scene()->items();
    for (const QGraphicsItem* item : items)
        selected += item->type() == ControlNode::Type && item->isSelected();
    return selected;
}

void WorkInEditor(TourGuide& guide, QWidget* modal)
{
    auto* editor = Needed(qobject_cast<NVGradientEditor*>(modal), "the editor did not open");
    AddStop(guide, editor, 0.25, QColor(220, 40, 90));
    AddStop(guide, editor, 0.5, QColor(255, 190, 40, 128));
    AddStop(guide, editor, 0.75, QColor(40, 170, 90));
    guide.Check(editor->GetGradient(editor->GetCurrentIndex()).size() == 5,
                "the gradient has not five stops");
    guide.Check(SelectedStops(editor) == 1, "not one stop is selected");
    guide.TakePicture();
    guide.TakePictureOf(editor, QStringLiteral("gradient-editor"));
    auto* buttons = Control<QDialogButtonBox>(editor, "m_pButtoBox");
    const QImage before = ButtonPicture(guide);
    guide.GetRobot().Click(buttons->button(QDialogButtonBox::Apply));
    guide.Check(ButtonPicture(guide) != before, "the button of the bar does not show what was applied");
    guide.TakePicture();
    guide.GetRobot().Click(buttons->button(QDialogButtonBox::Ok));
}

void MakeGradient(TourGuide& guide)
{
    auto* popup = guide.Find<NVGradientPopup>();
    guide.VisitPopup(GradientButton(guide), popup,
                     [popup](TourGuide& it)
                     {
                         it.GetRobot().WhenModal([&it](QWidget* modal) { WorkInEditor(it, modal); });
                         it.GetRobot().Click(Control<QPushButton>(popup, "m_pNew"));
                         it.Check(it.GetRobot().WaitFor([popup] { return popup->isVisible(); }),
                                  "the popup did not come back");
                         it.TakePicture();
                     });
    guide.Check(Bar(guide)->GetGradientCount() == 25, "the new gradient is not in the list");
    guide.Check(Bar(guide)->GetCurrentGradientIndex() == 24, "the new gradient is not the current one");
}

// How far along the gradient a point lies, 0 to 1.
double WayAt(int type, const QPointF& from, const QPointF& to, const QPointF& point)
{
    const QPointF way = to - from;
    const QPointF place = point - from;
    const double length = QPointF::dotProduct(way, way);
    const double along = QPointF::dotProduct(place, way) / length;
    const double across = (place.y() * way.x() - place.x() * way.y()) / length;
    switch (type)
    {
    case GradientSettings::Circular:
        return std::hypot(along, across);
    case GradientSettings::Diamond:
        return std::abs(along) + std::abs(across);
    case GradientSettings::Angle:
        return std::fmod(std::atan2(across, along) / (2 * M_PI) + 1, 1);
    default:
        return along;
    }
}

QRgb ColorAt(const QVector<QPair<double, QColor>>& stops, double way)
{
    int i = 0;
    while (i + 2 < stops.size() && way > stops.at(i + 1).first)
        ++i;
    const auto& from = stops.at(i);
    const auto& to = stops.at(i + 1);
    const double part = qBound(0.0, (way - from.first) / (to.first - from.first), 1.0);
    const auto mix = [part](int one, int other) { return qRound(one + (other - one) * part); };
    return qRgb(mix(from.second.red(), to.second.red()), mix(from.second.green(), to.second.green()),
                mix(from.second.blue(), to.second.blue()));
}

void CheckDrawn(TourGuide& guide, int type, const QPointF& from, const QPointF& to)
{
    const auto stops = ToGradientStops(Bar(guide)->GetCurrentGradient());
    for (const QPointF& point : {QPointF(300.5, 200.5), QPointF(700.5, 500.5), QPointF(520.5, 410.5)})
    {
        const QRgb expected = ColorAt(stops, WayAt(type, from, to, point));
        guide.Check(
            AreNear(guide.PixelAt(point), expected, 6),
            QStringLiteral("%1 instead of %2").arg(ColorText(guide.PixelAt(point)), ColorText(expected)));
    }
}

void DrawType(TourGuide& guide, int type)
{
    guide.ChooseEntry(Control<QComboBox>(Bar(guide), "m_pType"), type);
    guide.FocusCanvas();
    const QPointF from =
        guide.HitPoint(type == GradientSettings::Linear ? QPointF(150, 150) : QPointF(600, 400));
    const QPointF to =
        guide.HitPoint(type == GradientSettings::Linear ? QPointF(1050, 650) : QPointF(1000, 250));
    const int steps = guide.UndoSteps();
    guide.Stroke(from, to);
    guide.Check(guide.GetWindow()->FindTool<GradientTool>()->IsPending(), "the gradient does not wait");
    guide.Check(Control<QToolButton>(Bar(guide), "m_pCommit")->isVisible(), "there is no Commit on the bar");
    guide.Check(guide.UndoSteps() == steps, "the gradient was drawn at once");
    guide.TakePicture();
    guide.GetRobot().Key(Qt::Key_Return);
    guide.Check(guide.GetRobot().WaitFor([&guide, steps] { return guide.UndoSteps() == steps + 1; }),
                "Enter did not commit");
    guide.Check(guide.NeedDocument()->GetUndoStack()->undoText() == QLatin1String("Gradient"),
                "the step has another name");
    CheckDrawn(guide, type, from, to);
}

void DragHandle(TourGuide& guide)
{
    auto* repeat = Control<QSpinBox>(Bar(guide), "m_pRepeatCount");
    guide.TypeInto(repeat, 4);
    guide.SetChecked(Control<QAbstractButton>(Bar(guide), "m_pPingPong"), true);
    guide.SetChecked(Control<QAbstractButton>(Bar(guide), "m_pDrawOutside"), false);
    guide.ChooseEntry(Control<QComboBox>(Bar(guide), "m_pType"), GradientSettings::Circular);
    guide.FocusCanvas();
    const int steps = guide.UndoSteps();
    guide.Stroke({600, 400}, {900, 400});
    guide.TakePicture();
    guide.Stroke({900, 400}, {680, 120});
    const auto* tool = guide.GetWindow()->FindTool<GradientTool>();
    guide.Check(QLineF(tool->GetEnd(), {680, 120}).length() < 3, "the handle did not follow the pointer");
    guide.TakePicture();
    guide.GetRobot().Key(Qt::Key_Escape);
    guide.Check(!tool->IsPending() && guide.UndoSteps() == steps, "Escape did not take it back");
    guide.TypeInto(repeat, 1);
    guide.SetChecked(Control<QAbstractButton>(Bar(guide), "m_pPingPong"), false);
    guide.SetChecked(Control<QAbstractButton>(Bar(guide), "m_pDrawOutside"), true);
}

void DrawTransparent(TourGuide& guide)
{
    ChooseGradient(guide, 11);
    guide.ChooseEntry(Control<QComboBox>(Bar(guide), "m_pType"), GradientSettings::Linear);
    guide.FocusCanvas();
    guide.GetRobot().Key(Qt::Key_Delete, Qt::ControlModifier);
    guide.Check(qAlpha(guide.PixelAt({600, 400})) == 0, "the layer was not cleared");
    guide.Stroke({600, 100}, {600, 700});
    guide.TakePicture();
    // The bar may be wider than the window.
    auto* commit = Control<QToolButton>(Bar(guide), "m_pCommit");
    guide.Get<OptionArea>()->ensureWidgetVisible(commit);
    guide.GetRobot().Settle();
    guide.TakePicture();
    guide.GetRobot().Click(commit);
    const int alpha = qAlpha(guide.PixelAt({600, 400}));
    guide.Check(alpha > 150 && alpha < 200, QStringLiteral("the middle has the opacity %1").arg(alpha));
    guide.Check(qAlpha(guide.PixelAt({600, 110})) == 0, "the edge is not clear");
}

void TakeTypes(TourGuide& guide)
{
    struct Type
    {
        const char* name;
        const char* caption;
    };
    const Type types[] = {
        {"gradient-linear", "A linear gradient: dragged, shown with its handles, and committed"},
        {"gradient-circular", "A circular gradient"},
        {"gradient-diamond", "A diamond gradient"},
        {"gradient-angle", "An angle gradient"}};
    for (int type = 0; type < 4; ++type)
        guide.Step(types[type].name, types[type].caption, [type](TourGuide& it) { DrawType(it, type); });
}

} // namespace

void PlayGradients(TourGuide& guide)
{
    if (!guide.OpenDrawn(DrawLighthouse().image, QStringLiteral("sea.png")))
        return;
    guide.Step("gradient", "The gradient tool: its bar, and the list under its button", ShowBar);
    if (guide.Find<NVGradientToolbar>())
    {
        TakeTypes(guide);
        guide.Step("gradient-handles", "Repeated, swinging, nothing outside; a handle is dragged; Escape",
                   DragHandle);
        guide.Step("gradient-transparent", "A transparent gradient over the checkerboard", DrawTransparent);
        guide.Step("gradient-editor", "A gradient of five stops made in the editor is on the bar at once",
                   MakeGradient);
    }
    guide.LeaveDrawn();
}
