#include "GradientTool.h"

#include <QDir>
#include <QFileInfo>
#include <QGuiApplication>
#include <QLineF>
#include <QSettings>
#include <QToolButton>

#include "BlendMode.h"
#include "Document.h"
#include "GradientStops.h"
#include "KXDocumentInterface.h"
#include "KXShortcut.h"
#include "NVGradientToolbar.h"
#include "Theme.h"

namespace
{

// For the work that is almost done at the next press.
const int PatienceMs = 250;
// A press that moves less, in device-independent pixels, is no drag.
const double DragDistance = 3;

const QLatin1String TypeKey("gradient/type");
const QLatin1String PingPongKey("gradient/pingPong");
const QLatin1String RepeatKey("gradient/repeatCount");
const QLatin1String BlendModeKey("gradient/blendMode");
const QLatin1String OutsideKey("gradient/outside");
const QLatin1String OpacityKey("gradient/opacity");
const QLatin1String ReverseKey("gradient/reverse");
const QLatin1String CurrentKey("gradient/current");

const int TypeCount = 4;

// What the settings hold, if it is an index into a list of so many.
int ToIndex(const QVariant& value, int count)
{
    const int index = value.toInt();
    return index >= 0 && index < count ? index : 0;
}

QString LibraryPath(const QSettings* settings)
{
    return QFileInfo(settings->fileName()).dir().filePath(QStringLiteral("gradients.svg"));
}

} // namespace

GradientTool::GradientTool(QSettings* settings, QObject* parent)
    : Tool(parent), m_pSettings(settings), m_library(LibraryPath(settings))
{
    connect(&m_work, &BackgroundWork::Done, this, &GradientTool::OnRendered);
    connect(&m_tick, &QTimer::timeout, this, &GradientTool::OnTick);
}

GradientTool::~GradientTool()
{
    GradientTool::Cancel();
}

NVGradientToolbar* GradientTool::GetGradientBar()
{
    return static_cast<NVGradientToolbar*>(GetBar());
}

const GradientLibrary& GradientTool::GetLibrary() const
{
    return m_library;
}

bool GradientTool::IsPending() const
{
    return m_state == Pending;
}

bool GradientTool::IsRendering() const
{
    return m_state == Rendering;
}

QPointF GradientTool::GetStart() const
{
    return m_handles.GetStart();
}

QPointF GradientTool::GetEnd() const
{
    return m_handles.GetEnd();
}

bool GradientTool::AddGradients(const QVector<NamedGradient>& gradients, QString* error)
{
    const int first = m_library.GetGradients().size();
    const bool isStored = m_library.Add(gradients, error);
    GetGradientBar()->Load(m_library.GetList());
    GetGradientBar()->SetCurrentGradientIndex(first);
    return isStored;
}

QString GradientTool::GetName() const
{
    return tr("Gradient");
}

QString GradientTool::GetPictureName() const
{
    return QStringLiteral("tool-gradient");
}

QKeySequence GradientTool::GetKey() const
{
    return Qt::Key_K;
}

void GradientTool::StoreValues()
{
    const NVGradientToolbar* bar = GetGradientBar();
    m_pSettings->setValue(TypeKey, bar->GetType());
    m_pSettings->setValue(PingPongKey, bar->GetStyle());
    m_pSettings->setValue(RepeatKey, bar->GetRepeatCount());
    m_pSettings->setValue(BlendModeKey, bar->GetBlendMode());
    m_pSettings->setValue(OutsideKey, bar->IsOutside());
    m_pSettings->setValue(OpacityKey, bar->GetOpacity());
    m_pSettings->setValue(ReverseKey, bar->IsReverse());
    m_pSettings->setValue(CurrentKey, bar->GetCurrentGradientIndex());
}

bool GradientTool::Cancel()
{
    m_isPressed = false;
    if (m_state == Idle)
        return false;
    if (m_state == Rendering)
    {
        m_pOutcome->progress.cancelled = true;
        m_work.Cancel();
    }
    EndGradient();
    Q_EMIT Message(tr("The gradient was cancelled."));
    Q_EMIT GradientEnded();
    return true;
}

void GradientTool::Finish()
{
    m_isPressed = false;
    Commit();
    if (m_state != Rendering)
        return;
    QGuiApplication::setOverrideCursor(Qt::WaitCursor);
    m_work.Wait();
    QGuiApplication::restoreOverrideCursor();
}

QWidget* GradientTool::CreateBar()
{
    auto* bar = new NVGradientToolbar(nullptr);
    RestoreValues(bar);
    ConnectBar(bar);
    // When whoever makes the bar is ready to show it.
    if (!m_library.GetProblem().isEmpty())
        QTimer::singleShot(0, this, [this] { Q_EMIT Message(m_library.GetProblem()); });
    return bar;
}

void GradientTool::UpdateBarTheme(QWidget* bar)
{
    SetBarPicture(bar, QStringLiteral("m_pPicture"), QStringLiteral("linear_gradient"));
    static const QString types[TypeCount] = {QStringLiteral("linear_gradient"),
                                             QStringLiteral("circ_gradient"), QStringLiteral("rect_gradient"),
                                             QStringLiteral("angle_gradient")};
    const int type = static_cast<NVGradientToolbar*>(bar)->GetType();
    SetBarPicture(bar, QStringLiteral("m_pTypeIcon"), types[qBound(0, type, TypeCount - 1)]);
    bar->findChild<QToolButton*>(QStringLiteral("m_pCommit"))
        ->setIcon(Theme::Icon(QStringLiteral("commit_btn1")));
    bar->findChild<QToolButton*>(QStringLiteral("m_pCancel"))
        ->setIcon(Theme::Icon(QStringLiteral("cancel_btn1")));
}

void GradientTool::CreateShortcuts()
{
    m_pReturn = new KXShortcut(GetBar(), QKeySequence());
    m_pEnter = new KXShortcut(GetBar(), QKeySequence());
    connect(m_pReturn, &KXShortcut::Activated, this, &GradientTool::Commit);
    connect(m_pEnter, &KXShortcut::Activated, this, &GradientTool::Commit);
}

void GradientTool::ReleaseShortcuts()
{
    delete m_pReturn;
    delete m_pEnter;
    m_pReturn = nullptr;
    m_pEnter = nullptr;
}

void GradientTool::Equip(NVDocumentView* view)
{
    view->SetToolCursor(Qt::CrossCursor);
}

void GradientTool::Pressed(const CanvasPoint& point)
{
    if (point.button != Qt::LeftButton)
        return;
    if (m_state == Rendering && !m_work.Wait(PatienceMs))
    {
        OnTick();
        return;
    }
    m_drag = m_state == Pending ? m_handles.HandleAt(GetView(), point.position) : GradientHandles::None;
    if (m_drag != GradientHandles::None || !CanChangeLayer())
        return;
    if (GetGradientBar()->GetCurrentGradientIndex() < 0)
    {
        Q_EMIT Message(tr("Choose a gradient first."));
        return;
    }
    m_isPressed = true;
    m_press = point.position;
}

void GradientTool::Moved(const CanvasPoint& point)
{
    if (m_isPressed)
    {
        const double way = QLineF(m_press, point.position).length() * GetView()->GetScale();
        if (way < DragDistance)
            return;
        m_isPressed = false;
        BeginPending(m_press);
        m_drag = GradientHandles::End;
    }
    if (m_state != Pending)
        return;
    if (m_drag == GradientHandles::None)
    {
        UpdateHover(m_handles.HandleAt(GetView(), point.position));
        return;
    }
    m_handles.SetHover(m_drag);
    m_handles.Move(m_drag, point.position, point.modifiers.testFlag(Qt::ShiftModifier));
    UpdatePreview();
}

void GradientTool::Released(const CanvasPoint& point)
{
    m_isPressed = false;
    m_drag = GradientHandles::None;
    if (m_state == Pending)
        UpdateHover(m_handles.HandleAt(GetView(), point.position));
}

void GradientTool::PointerLeft()
{
    if (m_state == Pending && m_drag == GradientHandles::None)
        UpdateHover(GradientHandles::None);
}

void GradientTool::OnCancel()
{
    Cancel();
}

void GradientTool::OnOptionChanged()
{
    UpdatePreview();
}

void GradientTool::OnSaveGradients()
{
    const NVGradientToolbar* bar = GetGradientBar();
    QList<QList<NVGradientStop>> list;
    for (int i = 0; i < bar->GetGradientCount(); ++i)
        list.append(bar->GetGradient(i));
    QString error;
    if (!m_library.Update(list, &error))
        Q_EMIT Message(error.simplified());
    UpdatePreview();
}

void GradientTool::RestoreValues(NVGradientToolbar* bar)
{
    bar->Load(m_library.GetList());
    bar->SetCurrentGradientIndex(ToIndex(m_pSettings->value(CurrentKey), bar->GetGradientCount()));
    bar->SetType(ToIndex(m_pSettings->value(TypeKey), TypeCount));
    bar->SetStyle(m_pSettings->value(PingPongKey, false).toBool());
    bar->SetRepeatCount(m_pSettings->value(RepeatKey, 1).toInt());
    bar->SetBlendMode(ToIndex(m_pSettings->value(BlendModeKey), BLEND_MODE_COUNT));
    bar->SetOutside(m_pSettings->value(OutsideKey, true).toBool());
    bar->SetOpacity(m_pSettings->value(OpacityKey, 100).toInt());
    bar->SetReverse(m_pSettings->value(ReverseKey, false).toBool());
}

void GradientTool::ConnectBar(NVGradientToolbar* bar)
{
    connect(bar, &NVGradientToolbar::GradientIndexChanged, this, &GradientTool::OnOptionChanged);
    connect(bar, &NVGradientToolbar::StyleChanged, this, &GradientTool::OnOptionChanged);
    connect(bar, &NVGradientToolbar::TypeChanged, this, &GradientTool::OnOptionChanged);
    connect(bar, &NVGradientToolbar::RepeatCountChanged, this, &GradientTool::OnOptionChanged);
    connect(bar, &NVGradientToolbar::BlendModeChanged, this, &GradientTool::OnOptionChanged);
    connect(bar, &NVGradientToolbar::OutsideChanged, this, &GradientTool::OnOptionChanged);
    connect(bar, &NVGradientToolbar::OpacityChanged, this, &GradientTool::OnOptionChanged);
    connect(bar, &NVGradientToolbar::ReverseChanged, this, &GradientTool::OnOptionChanged);
    connect(bar, &NVGradientToolbar::SaveGradients, this, &GradientTool::OnSaveGradients);
    connect(bar, &NVGradientToolbar::Commit, this, &GradientTool::Commit);
    connect(bar, &NVGradientToolbar::Cancel, this, &GradientTool::OnCancel);
}

GradientSettings GradientTool::CurrentSettings()
{
    const NVGradientToolbar* bar = GetGradientBar();
    GradientSettings settings;
    settings.type = bar->GetType();
    settings.start = m_handles.GetStart();
    settings.end = m_handles.GetEnd();
    if (bar->GetCurrentGradientIndex() >= 0)
        settings.stops = ToGradientStops(bar->GetCurrentGradient());
    settings.reverse = bar->IsReverse();
    settings.repeatCount = bar->GetRepeatCount();
    settings.pingPong = bar->GetStyle();
    settings.outside = bar->IsOutside();
    settings.opacity = bar->GetOpacity();
    settings.blendMode = bar->GetBlendMode();
    settings.selection = GetPixels()->GetSelectionMask();
    return settings;
}

KXDocumentInterface* GradientTool::GetPixels() const
{
    return GetDocument()->GetPixels();
}

void GradientTool::SetEnterLive(bool live)
{
    if (!m_pReturn)
        return;
    m_pReturn->SetKey(live ? QKeySequence(Qt::Key_Return) : QKeySequence());
    m_pEnter->SetKey(live ? QKeySequence(Qt::Key_Enter) : QKeySequence());
}
