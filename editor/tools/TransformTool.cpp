#include "TransformTool.h"

#include <QLocale>
#include <QMouseEvent>
#include <QPushButton>
#include <QSettings>

#include <cmath>

#include "KXShortcut.h"
#include "NVTransformToolbar.h"
#include "Theme.h"
#include "TransformBox.h"

using CenterControl = TransformationCenterPointControl;

namespace
{

const QLatin1String ReferenceKey("transform/reference");

FreeTransform::Constraint ConstraintOf(Qt::KeyboardModifiers modifiers)
{
    FreeTransform::Constraint constraint;
    constraint.regular = modifiers.testFlag(Qt::ShiftModifier);
    constraint.aboutReference = modifiers.testFlag(Qt::AltModifier);
    constraint.skews = modifiers.testFlag(Qt::ControlModifier);
    return constraint;
}

// As people of the program's language write it, but for groups of digits, for which there is no room. Nothing
// is below 0 by rounding alone.
QString NumberText(double number, int decimals)
{
    QLocale locale;
    locale.setNumberOptions(QLocale::OmitGroupSeparator);
    const QString text = locale.toString(number, 'f', decimals);
    return text == locale.toString(-0.0, 'f', decimals) ? locale.toString(0.0, 'f', decimals) : text;
}

// Of a scale in percent.
int DecimalsOf(double scale)
{
    return std::abs(scale) < 10 ? 1 : 0;
}

} // namespace

TransformTool::TransformTool(QSettings* settings, QObject* parent)
    : ContentTool(parent), m_pSettings(settings)
{
}

TransformTool::~TransformTool()
{
    TransformTool::Cancel();
}

NVTransformToolbar* TransformTool::GetTransformBar()
{
    return static_cast<NVTransformToolbar*>(GetBar());
}

const FreeTransform& TransformTool::GetTransform() const
{
    return m_box;
}

QString TransformTool::GetName() const
{
    return tr("Free Transform");
}

QString TransformTool::GetPictureName() const
{
    return QStringLiteral("tool-transform");
}

QKeySequence TransformTool::GetKey() const
{
    return QKeySequence(Qt::CTRL + Qt::Key_T);
}

void TransformTool::StoreValues()
{
    m_pSettings->setValue(ReferenceKey, int(GetTransformBar()->GetTransformationCenter()));
}

QWidget* TransformTool::CreateBar()
{
    auto* bar = new NVTransformToolbar(nullptr);
    // In a narrow window the bar is scrolled, and the numbers are not cut.
    bar->setMinimumWidth(bar->sizeHint().width());
    const int reference = m_pSettings->value(ReferenceKey, int(CenterControl::Center)).toInt();
    bar->SetTransformationCenter(CenterControl::ControlState(reference));
    connect(bar, &NVTransformToolbar::Commit, this, &TransformTool::Commit);
    connect(bar, &NVTransformToolbar::Cancel, this, &TransformTool::OnCancel);
    connect(bar, &NVTransformToolbar::TransformationCenterChanged, this, &TransformTool::OnCenterChanged);
    return bar;
}

void TransformTool::UpdateBarTheme(QWidget* bar)
{
    bar->findChild<QPushButton*>(QStringLiteral("m_pCommit"))
        ->setIcon(Theme::Icon(QStringLiteral("commit_btn1")));
    bar->findChild<QPushButton*>(QStringLiteral("m_pCancel"))
        ->setIcon(Theme::Icon(QStringLiteral("cancel_btn1")));
}

void TransformTool::CreateShortcuts()
{
    m_pReturn = new KXShortcut(GetBar(), QKeySequence());
    m_pEnter = new KXShortcut(GetBar(), QKeySequence());
    connect(m_pReturn, &KXShortcut::Activated, this, &TransformTool::Commit);
    connect(m_pEnter, &KXShortcut::Activated, this, &TransformTool::Commit);
}

void TransformTool::ReleaseShortcuts()
{
    delete m_pReturn;
    delete m_pEnter;
    m_pReturn = nullptr;
    m_pEnter = nullptr;
}

void TransformTool::Equip(NVDocumentView* view)
{
    m_drag = FreeTransform::Nothing;
    m_hover = FreeTransform::Nothing;
    view->viewport()->installEventFilter(this);
    ContentTool::Equip(view);
}

void TransformTool::Pressed(const CanvasPoint& point)
{
    m_drag = FreeTransform::Nothing;
    if (point.button != Qt::LeftButton || !IsReady())
        return;
    m_drag = TransformBox::PartAt(m_box, GetView(), point.position);
    m_start = m_box;
    m_press = point.position;
    if (m_drag == FreeTransform::Nothing)
        Begin();
}

void TransformTool::Moved(const CanvasPoint& point)
{
    if (m_drag == FreeTransform::Nothing)
    {
        if (!IsRendering())
            UpdateHover(TransformBox::PartAt(m_box, GetView(), point.position), point.modifiers);
        return;
    }
    if (m_drag == FreeTransform::Reference)
        DragReference(point.position);
    else
    {
        if (!Begin())
            m_drag = FreeTransform::Nothing;
        if (m_drag == FreeTransform::Nothing)
            return;
        m_box = m_start.Dragged(m_drag, m_press, point.position, ConstraintOf(point.modifiers));
        SetContentTransform(m_box.GetMatrix());
    }
    ShowNumbers();
    UpdateCanvas();
}

void TransformTool::Released(const CanvasPoint& point)
{
    m_drag = FreeTransform::Nothing;
    if (!IsRendering())
        UpdateHover(TransformBox::PartAt(m_box, GetView(), point.position), point.modifiers);
}

void TransformTool::PointerLeft()
{
    if (m_drag == FreeTransform::Nothing && !IsRendering())
        UpdateHover(FreeTransform::Nothing, Qt::NoModifier);
}

// A double click inside the box commits. The canvas tells of it as of any press.
bool TransformTool::eventFilter(QObject* object, QEvent* event)
{
    if (event->type() != QEvent::MouseButtonDblClick || !IsActive() || !GetView() ||
        object != GetView()->viewport() || !IsPending())
        return ContentTool::eventFilter(object, event);
    const auto* mouse = static_cast<const QMouseEvent*>(event);
    const QPointF position = GetView()->MapToDocument(mouse->localPos());
    const FreeTransform::Part part = TransformBox::PartAt(m_box, GetView(), position);
    const bool isInside = part == FreeTransform::Inside || part == FreeTransform::Reference;
    if (mouse->button() != Qt::LeftButton || !isInside)
        return ContentTool::eventFilter(object, event);
    Commit();
    return true;
}

QString TransformTool::GetStepName() const
{
    return tr("Free Transform");
}

QString TransformTool::GetProgressText() const
{
    return tr("The pixels are being transformed: %1 %. Escape takes it back.");
}

bool TransformTool::KeepsContent() const
{
    return false;
}

void TransformTool::BoundsChanged()
{
    if (m_box.GetBox() != QRectF(GetBounds()) || !m_box.IsIdentity())
    {
        m_box = FreeTransform(GetBounds());
        m_box.SetReferenceCell(GetTransformBar()->GetTransformationCenter());
        // What is being dragged was of another box.
        m_drag = FreeTransform::Nothing;
    }
    ShowNumbers();
}

void TransformTool::DrawFrame(QPainter& painter)
{
    if (!IsRendering())
        TransformBox::Draw(painter, m_box, GetView(), m_hover);
}

void TransformTool::PendingChanged()
{
    SetEnterLive(IsPending());
    if (IsPending())
        Q_EMIT Message(tr("Enter applies it, Escape takes it back. Shift: regular, Ctrl: skew, Alt: about "
                          "the reference point."));
    else if (!IsRendering() && GetView())
        GetView()->SetToolCursor(Qt::ArrowCursor);
}

void TransformTool::OnCancel()
{
    Cancel();
}

void TransformTool::OnCenterChanged(int cell)
{
    m_box.SetReferenceCell(cell);
    ShowNumbers();
    UpdateCanvas();
}

// Near one of the nine points it lies on it, and the bar says so.
void TransformTool::DragReference(const QPointF& position)
{
    const FreeTransform dragged =
        m_start.Dragged(FreeTransform::Reference, m_press, position, FreeTransform::Constraint());
    const int cell = TransformBox::CellNear(m_start, GetView(), dragged.GetPosition());
    m_box = dragged;
    if (cell == 0)
        return;
    m_box.SetReferenceCell(cell);
    GetTransformBar()->SetTransformationCenter(CenterControl::ControlState(cell));
}

void TransformTool::ShowNumbers()
{
    NVTransformToolbar* bar = GetTransformBar();
    const bool isThere = !m_box.GetBox().isEmpty();
    const auto text = [isThere](const QString& form, double number, int decimals)
    { return isThere ? form.arg(NumberText(number, decimals)) : QString(); };
    bar->SetX(text(QStringLiteral("%1"), m_box.GetPosition().x(), 1));
    bar->SetY(text(QStringLiteral("%1"), m_box.GetPosition().y(), 1));
    bar->SetWidth(text(tr("%1%"), m_box.GetScaleX() * 100, DecimalsOf(m_box.GetScaleX())));
    bar->SetHeight(text(tr("%1%"), m_box.GetScaleY() * 100, DecimalsOf(m_box.GetScaleY())));
    bar->SetAngle(text(tr("%1\u00b0"), m_box.GetAngle(), 2));
    bar->SetHorizontalSkew(text(tr("%1\u00b0"), m_box.GetSkewX(), 2));
    bar->SetVerticalSkew(text(tr("%1\u00b0"), m_box.GetSkewY(), 2));
}

void TransformTool::UpdateHover(FreeTransform::Part part, Qt::KeyboardModifiers modifiers)
{
    GetView()->SetToolCursor(TransformBox::CursorOf(m_box, part, ConstraintOf(modifiers)));
    if (part == m_hover)
        return;
    m_hover = part;
    UpdateCanvas();
}

void TransformTool::SetEnterLive(bool live)
{
    if (!m_pReturn)
        return;
    m_pReturn->SetKey(live ? QKeySequence(Qt::Key_Return) : QKeySequence());
    m_pEnter->SetKey(live ? QKeySequence(Qt::Key_Enter) : QKeySequence());
}
