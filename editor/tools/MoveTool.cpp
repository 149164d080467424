#include "MoveTool.h"

#include <QKeyEvent>
#include <QPainter>
#include <QSettings>

#include <cmath>

#include "FreeTransform.h"
#include "NVMoveToolbar.h"

namespace
{

const QLatin1String ShowFrameKey("move/showFrame");

// Keys that come within it belong together.
const int NudgePauseMs = 400;

// In whole pixels.
QPoint WayOf(const QPointF& from, const QPointF& to, bool regular)
{
    FreeTransform::Constraint constraint;
    constraint.regular = regular;
    const FreeTransform start(QRectF(0, 0, 2, 2));
    const FreeTransform end = start.Dragged(FreeTransform::Inside, from, to, constraint);
    return (end.GetPosition() - start.GetPosition()).toPoint();
}

void DrawDashes(QPainter& painter, const QRect& rect)
{
    const QRect line = rect.adjusted(0, 0, -1, -1);
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(Qt::black, 1));
    painter.drawRect(line);
    QPen dashes(Qt::white, 1, Qt::CustomDashLine, Qt::FlatCap);
    dashes.setDashPattern({5, 5});
    painter.setPen(dashes);
    painter.drawRect(line);
}

} // namespace

MoveTool::MoveTool(QSettings* settings, QObject* parent) : ContentTool(parent), m_pSettings(settings)
{
    m_nudges.setSingleShot(true);
    m_nudges.setInterval(NudgePauseMs);
    connect(&m_nudges, &QTimer::timeout, this, &MoveTool::OnNudgesEnded);
}

MoveTool::~MoveTool()
{
    MoveTool::Cancel();
}

NVMoveToolbar* MoveTool::GetMoveBar()
{
    return static_cast<NVMoveToolbar*>(GetBar());
}

QString MoveTool::GetName() const
{
    return tr("Move");
}

QString MoveTool::GetPictureName() const
{
    return QStringLiteral("tool-move");
}

QKeySequence MoveTool::GetKey() const
{
    return Qt::Key_V;
}

void MoveTool::StoreValues()
{
    m_pSettings->setValue(ShowFrameKey, GetMoveBar()->IsShowFrame());
}

bool MoveTool::Cancel()
{
    m_isPressed = false;
    m_nudges.stop();
    return ContentTool::Cancel();
}

void MoveTool::Finish()
{
    m_isPressed = false;
    m_nudges.stop();
    ContentTool::Finish();
}

QWidget* MoveTool::CreateBar()
{
    auto* bar = new NVMoveToolbar(nullptr);
    bar->ShowFrame(m_pSettings->value(ShowFrameKey, false).toBool());
    connect(bar, &NVMoveToolbar::ShowFrameChanged, this, &MoveTool::OnShowFrameChanged);
    return bar;
}

void MoveTool::UpdateBarTheme(QWidget* bar)
{
    SetBarPicture(bar, QStringLiteral("m_pPicture"), QStringLiteral("move_tool"));
}

void MoveTool::Equip(NVDocumentView* view)
{
    view->SetToolCursor(Qt::SizeAllCursor);
    // The arrow keys are the canvas's own: lists and sliders elsewhere keep theirs.
    view->installEventFilter(this);
    ContentTool::Equip(view);
}

void MoveTool::Pressed(const CanvasPoint& point)
{
    if (point.button != Qt::LeftButton)
        return;
    // What keys have moved is a step of its own.
    OnNudgesEnded();
    if (!IsReady())
        return;
    m_isPressed = true;
    m_press = point.position;
}

void MoveTool::Moved(const CanvasPoint& point)
{
    if (!m_isPressed)
        return;
    const QPoint way = WayOf(m_press, point.position, point.modifiers.testFlag(Qt::ShiftModifier));
    if (!IsPending())
    {
        if (way.isNull())
            return;
        m_isPressed = Begin();
        if (!m_isPressed)
            return;
        m_start = GetContentTransform();
    }
    SetContentTransform(m_start * QTransform::fromTranslate(way.x(), way.y()));
}

void MoveTool::Released(const CanvasPoint& point)
{
    Q_UNUSED(point)
    const bool wasPressed = m_isPressed;
    m_isPressed = false;
    if (wasPressed)
        Commit();
}

bool MoveTool::eventFilter(QObject* object, QEvent* event)
{
    if (event->type() != QEvent::KeyPress || !IsActive() || object != GetView())
        return ContentTool::eventFilter(object, event);
    const QPoint way = WayOfArrow(*static_cast<const QKeyEvent*>(event));
    if (way.isNull())
        return ContentTool::eventFilter(object, event);
    Nudge(way);
    return true;
}

QString MoveTool::GetStepName() const
{
    return tr("Move");
}

QString MoveTool::GetProgressText() const
{
    return tr("The pixels are being moved: %1 %. Escape takes it back.");
}

bool MoveTool::KeepsContent() const
{
    return true;
}

void MoveTool::BoundsChanged()
{
    GetMoveBar()->EnableShowFrame(!GetBounds().isEmpty());
}

void MoveTool::DrawFrame(QPainter& painter)
{
    if (GetBounds().isEmpty() || !GetMoveBar()->IsShowFrame())
        return;
    QRectF bounds = GetBounds();
    if (IsPending() || IsRendering())
    {
        const QTransform way = GetPlacedTransform().inverted() * GetContentTransform();
        bounds.translate(way.dx(), way.dy());
    }
    const QPoint first = GetView()->MapFromDocument(bounds.topLeft()).toPoint();
    const QPoint end = GetView()->MapFromDocument(bounds.bottomRight()).toPoint();
    DrawDashes(painter, QRect(first, end - QPoint(1, 1)));
}

void MoveTool::PendingChanged()
{
    if (GetView() && !IsRendering())
        GetView()->SetToolCursor(Qt::SizeAllCursor);
}

void MoveTool::OnShowFrameChanged()
{
    UpdateCanvas();
}

void MoveTool::OnNudgesEnded()
{
    m_nudges.stop();
    if (!m_isPressed)
        Commit();
}

void MoveTool::Nudge(const QPoint& way)
{
    if (m_isPressed || !GetDocument() || !Begin())
        return;
    SetContentTransform(GetContentTransform() * QTransform::fromTranslate(way.x(), way.y()));
    m_nudges.start();
}
