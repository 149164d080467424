#include "SelectionTool.h"

#include <QApplication>
#include <QKeyEvent>
#include <QPainter>
#include <QScrollBar>
#include <QSettings>

#include <algorithm>
#include <cmath>

#include "Document.h"
#include "KXDocumentInterface.h"
#include "MemoryRoom.h"
#include "NVSelectionToolbar.h"
#include "SelectCommand.h"
#include "SelectionBar.h"
#include "SelectionMask.h"
#include "SelectionOutline.h"

namespace
{

const QString StateName = QStringLiteral("state");
const QString RadiusName = QStringLiteral("radius");
const QString FeatherName = QStringLiteral("feather");
const QString AutoscrollName = QStringLiteral("autoscroll");

const int ScrollMs = 30;
// The part of the pointer's way out of the view that is scrolled each time.
const double ScrollShare = 0.2;
// Nudges in a row are one step.
const int NudgeNumber = 1;
const int NoMerge = -1;

// How far it is outside, from the nearer side; 0 within.
int Beyond(double value, int length)
{
    const double way = value < 0 ? value : std::max(0.0, value - length);
    return int(way < 0 ? std::floor(way * ScrollShare) : std::ceil(way * ScrollShare));
}

} // namespace

SelectionTool::SelectionTool(SelectionShape::Kind kind, QSettings* settings, QObject* parent)
    : Tool(parent), m_kind(kind), m_pSettings(settings)
{
    m_shape.kind = kind;
    m_scroll.setInterval(ScrollMs);
    connect(&m_scroll, &QTimer::timeout, this, &SelectionTool::OnScroll);
    connect(&m_keys, &HeldKeys::Changed, this, &SelectionTool::OnHeldKeys);
}

SelectionTool::~SelectionTool() = default;

SelectionShape::Kind SelectionTool::GetKind() const
{
    return m_kind;
}

NVSelectionToolbar* SelectionTool::GetSelectionBar()
{
    return static_cast<NVSelectionToolbar*>(GetBar());
}

bool SelectionTool::IsDragging() const
{
    return m_act == Drawing || m_act == Moving;
}

QString SelectionTool::GetName() const
{
    return m_kind == SelectionShape::Ellipse ? tr("Elliptic Selection") : tr("Rectangular Selection");
}

QString SelectionTool::GetPictureName() const
{
    return m_kind == SelectionShape::Ellipse ? QStringLiteral("tool-select-ellipse")
                                             : QStringLiteral("tool-select-rectangle");
}

QKeySequence SelectionTool::GetKey() const
{
    return m_kind == SelectionShape::Ellipse ? QKeySequence(Qt::SHIFT + Qt::Key_M) : QKeySequence(Qt::Key_M);
}

bool SelectionTool::Cancel()
{
    if (m_act == NoAct)
        return false;
    const bool hasToldSize = m_act == Drawing;
    EndDrag(false);
    if (hasToldSize)
        Q_EMIT Message(QString());
    return true;
}

void SelectionTool::Finish()
{
    if (m_act != NoAct)
        EndDrag(IsDragging() && GetDocument());
}

void SelectionTool::StoreValues()
{
    const NVSelectionToolbar* bar = GetSelectionBar();
    m_pSettings->setValue(KeyFor(StateName), bar->GetClearState());
    m_pSettings->setValue(KeyFor(RadiusName), bar->GetRadius());
    m_pSettings->setValue(KeyFor(FeatherName), bar->GetFeather());
    m_pSettings->setValue(KeyFor(AutoscrollName), bar->IsAutoscroll());
}

QWidget* SelectionTool::CreateBar()
{
    auto* bar = new NVSelectionToolbar(nullptr);
    // An ellipse has no corners.
    for (const char* name : {"m_pRadius", "m_pFeatherLabel_2"})
        bar->findChild<QWidget*>(QLatin1String(name))->setVisible(m_kind == SelectionShape::Rectangle);
    UpdateBarTheme(bar);
    const int state = m_pSettings->value(KeyFor(StateName), int(ReplaceSelection)).toInt();
    bar->SetState(state > 0 ? state : int(ReplaceSelection));
    bar->SetRadius(m_pSettings->value(KeyFor(RadiusName), 0).toInt());
    bar->SetFeather(m_pSettings->value(KeyFor(FeatherName), 0).toInt());
    bar->SetAutoscroll(m_pSettings->value(KeyFor(AutoscrollName), true).toBool());
    return bar;
}

void SelectionTool::UpdateBarTheme(QWidget* bar)
{
    SetBarPicture(bar, QStringLiteral("m_pPicture"),
                  m_kind == SelectionShape::Ellipse ? QStringLiteral("ellipse_sel")
                                                    : QStringLiteral("rect_sel"));
    UpdateSelectionButtons(bar);
}

// The arrow keys are the canvas's own: boxes and lists elsewhere keep theirs. Without a selection they
// scroll.
bool SelectionTool::eventFilter(QObject* object, QEvent* event)
{
    const bool isKey = event->type() == QEvent::KeyPress && IsActive() && object == GetView() &&
        GetDocument() && !GetDocument()->GetPixels()->GetSelectionMask().isNull();
    const QPoint way = isKey ? WayOfArrow(*static_cast<const QKeyEvent*>(event)) : QPoint();
    if (way.isNull())
        return Tool::eventFilter(object, event);
    Nudge(way);
    return true;
}

void SelectionTool::CreateShortcuts()
{
    m_keys.SetOn(true);
}

void SelectionTool::ReleaseShortcuts()
{
    m_keys.SetOn(false);
}

void SelectionTool::Equip(NVDocumentView* view)
{
    view->SetToolCursor(Qt::CrossCursor);
    view->installEventFilter(this);
    view->SetOverlay([this](QPainter& painter) { DrawShape(painter); });
}

void SelectionTool::Pressed(const CanvasPoint& point)
{
    if (point.button != Qt::LeftButton)
        return;
    m_keys.Take(point.modifiers);
    m_isMove = MovesAt(point.position);
    m_state = GetSelectionBar()->GetState();
    m_usedKeys = m_keys.Get();
    m_start = point.position;
    m_last = GetView()->MapFromDocument(point.position);
    m_act = Waiting;
    SetEscapeLive(true);
}

void SelectionTool::Moved(const CanvasPoint& point)
{
    if (m_act == NoAct)
    {
        m_keys.Take(point.modifiers);
        GetView()->SetToolCursor(MovesAt(point.position) ? Qt::SizeAllCursor : Qt::CrossCursor);
        return;
    }
    DragTo(GetView()->MapFromDocument(point.position));
}

void SelectionTool::Released(const CanvasPoint& point)
{
    if (m_act == NoAct)
        return;
    DragTo(GetView()->MapFromDocument(point.position));
    EndDrag(true);
}

void SelectionTool::OnHeldKeys(Qt::KeyboardModifiers modifiers)
{
    if (m_act == NoAct)
    {
        ShowHeldKeys(GetSelectionBar(), modifiers);
        return;
    }
    m_usedKeys &= modifiers;
    UpdateDrag();
}

void SelectionTool::OnScroll()
{
    NVDocumentView* view = GetView();
    if (!view || !IsDragging())
    {
        m_scroll.stop();
        return;
    }
    const QPoint way(Beyond(m_last.x(), view->viewport()->width()),
                     Beyond(m_last.y(), view->viewport()->height()));
    if (way.isNull())
        return;
    view->horizontalScrollBar()->setValue(view->horizontalScrollBar()->value() + way.x());
    view->verticalScrollBar()->setValue(view->verticalScrollBar()->value() + way.y());
    UpdateDrag();
}

QString SelectionTool::KeyFor(const QString& value) const
{
    const QString shape =
        m_kind == SelectionShape::Ellipse ? QStringLiteral("ellipse") : QStringLiteral("rectangle");
    return QStringLiteral("selection/%1/%2").arg(shape, value);
}

bool SelectionTool::IsInSelection(const QPointF& point) const
{
    const QImage mask = GetDocument()->GetPixels()->GetSelectionMask();
    const QPoint pixel(int(std::floor(point.x())), int(std::floor(point.y())));
    return mask.rect().contains(pixel) && mask.constScanLine(pixel.y())[pixel.x()] >= 128;
}

bool SelectionTool::MovesAt(const QPointF& point)
{
    const int state = GetSelectionBar()->GetState();
    return (state == ReplaceSelection || state == 0) && IsInSelection(point);
}

void SelectionTool::DragTo(const QPointF& viewportPoint)
{
    m_last = viewportPoint;
    if (m_act == Waiting)
    {
        const QPointF way = viewportPoint - GetView()->MapFromDocument(m_start);
        if (way.manhattanLength() < QApplication::startDragDistance())
            return;
        m_act = m_isMove ? Moving : Drawing;
        // What is to be replaced would only be in the way of the eye.
        SelectionOutline* outline = SelectionOutline::Of(GetView());
        if (outline && m_act == Drawing && (m_state == ReplaceSelection || m_state == 0))
            outline->ShowMask(QImage());
        if (GetSelectionBar()->IsAutoscroll())
            m_scroll.start();
    }
    UpdateDrag();
}

void SelectionTool::UpdateDrag()
{
    if (!IsDragging())
        return;
    if (m_act == Drawing)
    {
        UpdateShape();
        return;
    }
    const Qt::KeyboardModifiers keys = m_keys.Get() & ~m_usedKeys;
    m_way = DraggedWay(m_start, GetView()->MapToDocument(m_last), keys.testFlag(Qt::ShiftModifier));
    if (SelectionOutline* outline = SelectionOutline::Of(GetView()))
        outline->SetOffset(m_way);
}

void SelectionTool::UpdateShape()
{
    const Qt::KeyboardModifiers keys = m_keys.Get() & ~m_usedKeys;
    const QRect before = ShapeOnView();
    m_shape.rect = DraggedRect(m_start, GetView()->MapToDocument(m_last), keys.testFlag(Qt::ShiftModifier),
                               keys.testFlag(Qt::AltModifier));
    m_shape.radius = m_kind == SelectionShape::Rectangle ? GetSelectionBar()->GetRadius() : 0;
    m_shape.feather = GetSelectionBar()->GetFeather();
    GetView()->UpdateOverlay(before | ShapeOnView());
    Q_EMIT Message(tr("%1 x %2 px").arg(m_shape.rect.width()).arg(m_shape.rect.height()));
}

void SelectionTool::EndDrag(bool isKept)
{
    const Act act = m_act;
    m_act = NoAct;
    m_scroll.stop();
    SetEscapeLive(false);
    if (NVDocumentView* view = GetView())
        view->UpdateOverlay(ShapeOnView());
    if (isKept && act == Drawing)
        Select();
    else if (isKept && act == Moving)
        MoveSelection(m_way, NoMerge);
    else if (isKept && (m_state == ReplaceSelection || m_state == 0))
        PushSelection(GetDocument(), tr("Deselect"), QImage());
    // The line is that of the selection again, whether that changed or not.
    SelectionOutline* outline = SelectionOutline::Of(GetView());
    if (outline && (act == Drawing || act == Moving))
        outline->ShowSelection();
    m_shape.rect = QRect();
    m_way = QPoint();
    ShowHeldKeys(GetSelectionBar(), m_keys.Get());
}

void SelectionTool::Select()
{
    if (!HasRoom())
        return;
    const KXDocumentInterface* pixels = GetDocument()->GetPixels();
    const QImage mask = CombineMasks(pixels->GetSelectionMask(), MaskOf(m_shape, pixels->GetSize()), m_state);
    PushSelection(GetDocument(), GetName(), mask);
    if (!mask.isNull() && !HasOutline(mask))
        Q_EMIT Message(tr("No pixel is selected by half or more: the outline cannot be seen."));
}

void SelectionTool::MoveSelection(const QPoint& way, int mergeNumber)
{
    if (HasRoom())
        PushSelection(GetDocument(), tr("Move Selection"),
                      MoveMask(GetDocument()->GetPixels()->GetSelectionMask(), way), mergeNumber);
}

bool SelectionTool::HasRoom()
{
    return HasRoomForSelection(GetDocument()->GetPixels()->GetSize(), this);
}

void SelectionTool::DrawShape(QPainter& painter) const
{
    const NVDocumentView* view = GetView();
    if (m_act != Drawing || !view)
        return;
    const QPointF origin = view->MapFromDocument(QPointF(0, 0));
    const double scale = view->GetScale();
    const QPainterPath path = QTransform(scale, 0, 0, scale, origin.x(), origin.y()).map(PathOf(m_shape));
    const bool isRound = m_kind == SelectionShape::Ellipse || m_shape.radius > 0;
    painter.setRenderHint(QPainter::Antialiasing, isRound);
    // Black and white dashes in turn are seen on any colour.
    painter.strokePath(path, QPen(Qt::black, 1));
    QPen dashes(Qt::white, 1);
    dashes.setDashPattern({4, 4});
    painter.strokePath(path, dashes);
}

QRect SelectionTool::ShapeOnView() const
{
    const NVDocumentView* view = GetView();
    const QRectF rect(m_shape.rect);
    const int margin = 2;
    return QRectF(view->MapFromDocument(rect.topLeft()), view->MapFromDocument(rect.bottomRight()))
        .toAlignedRect()
        .adjusted(-margin, -margin, margin, margin);
}

void SelectionTool::Nudge(const QPoint& way)
{
    if (m_act != NoAct || !GetDocument())
        return;
    MoveSelection(way, NudgeNumber);
}
