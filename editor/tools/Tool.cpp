#include "Tool.h"

#include <QKeyEvent>
#include <QLabel>
#include <QPixmap>

#include <iterator>

#include "Document.h"
#include "KXDocumentInterface.h"
#include "KXShortcut.h"
#include "NVStringHelper.h"

namespace
{

const int FarNudge = 10;

const int HeldWithEscape[] = {0, Qt::SHIFT, Qt::ALT, Qt::SHIFT + Qt::ALT, Qt::CTRL, Qt::CTRL + Qt::SHIFT};

} // namespace

Tool::Tool(QObject* parent) : QObject(parent) { }

Tool::~Tool()
{
    if (m_isActive)
        Detach();
    for (const QPointer<QWidget>& bar : qAsConst(m_bars))
        delete bar;
}

QWidget* Tool::GetBar()
{
    if (!m_pBar)
    {
        m_pBar = CreateBar();
        AddBar(m_pBar);
    }
    return m_pBar;
}

bool Tool::IsActive() const
{
    return m_isActive;
}

NVDocumentView* Tool::GetView() const
{
    return m_pView;
}

Document* Tool::GetDocument() const
{
    return m_pDocument;
}

void Tool::Activate()
{
    if (m_isActive)
        return;
    // Made before the tool counts as the current one, which acts on its bar.
    QWidget* bar = GetBar();
    m_isActive = true;
    for (int i = 0; i < int(std::size(HeldWithEscape)); ++i)
    {
        auto* escape = new KXShortcut(bar, QKeySequence());
        connect(escape, &KXShortcut::Activated, this, &Tool::OnEscapeKey);
        m_escapes += escape;
    }
    CreateShortcuts();
    Attach();
}

void Tool::Deactivate()
{
    if (!m_isActive)
        return;
    Finish();
    Detach();
    StoreValues();
    ReleaseShortcuts();
    SetEscapeLive(false);
    for (const QPointer<KXShortcut>& escape : qAsConst(m_escapes))
        delete escape;
    m_escapes.clear();
    m_isActive = false;
}

void Tool::SetCanvas(NVDocumentView* view, Document* document)
{
    if (view == m_pView && document == m_pDocument)
        return;
    Finish();
    if (m_isActive)
        Detach();
    m_pView = view;
    m_pDocument = document;
    CanvasChanged();
    if (m_isActive)
        Attach();
}

bool Tool::CanCancel() const
{
    return m_canCancel;
}

bool Tool::Cancel()
{
    return false;
}

bool Tool::Undo()
{
    return Cancel();
}

bool Tool::CanRedo() const
{
    return m_canRedo;
}

bool Tool::Redo()
{
    return false;
}

void Tool::Finish() { }

void Tool::StoreValues() { }

void Tool::UpdateTheme()
{
    for (const QPointer<QWidget>& bar : qAsConst(m_bars))
    {
        if (bar)
            UpdateBarTheme(bar);
    }
}

void Tool::UpdateBarTheme(QWidget* bar)
{
    Q_UNUSED(bar)
}

void Tool::CanvasChanged() { }

void Tool::CreateShortcuts() { }

void Tool::ReleaseShortcuts() { }

void Tool::Pressed(const CanvasPoint& point)
{
    Q_UNUSED(point)
}

void Tool::Moved(const CanvasPoint& point)
{
    Q_UNUSED(point)
}

void Tool::Released(const CanvasPoint& point)
{
    Q_UNUSED(point)
}

void Tool::PointerLeft() { }

bool Tool::CanChangeLayer()
{
    const KXDocumentInterface* pixels = m_pDocument->GetPixels();
    const KXDocumentInterface::Layer& layer = pixels->GetLayer(pixels->GetCurrentLayer());
    if (layer.visible)
        return true;
    Q_EMIT Message(tr("The layer \"%1\" is hidden: show it to work on it.").arg(layer.name));
    return false;
}

void Tool::AddBar(QWidget* bar)
{
    m_bars += bar;
}

void Tool::ChangeBar(QWidget* bar)
{
    if (bar == m_pBar)
        return;
    m_pBar = bar;
    Q_EMIT BarChanged(bar);
}

void Tool::SetBarPicture(QWidget* bar, const QString& label, const QString& picture)
{
    const QString name = QStringLiteral("theme:%1.png").arg(picture);
    if (auto* shown = bar->findChild<QLabel*>(label))
        shown->setPixmap(QPixmap(NVStringHelper::DPIAdjustImageName(name)));
}

QPoint Tool::WayOfArrow(const QKeyEvent& key)
{
    const Qt::KeyboardModifiers modifiers = key.modifiers() & ~Qt::KeypadModifier;
    if (modifiers != Qt::NoModifier && modifiers != Qt::ShiftModifier)
        return QPoint();
    const int step = modifiers == Qt::ShiftModifier ? FarNudge : 1;
    switch (key.key())
    {
    case Qt::Key_Left:
        return QPoint(-step, 0);
    case Qt::Key_Right:
        return QPoint(step, 0);
    case Qt::Key_Up:
        return QPoint(0, -step);
    case Qt::Key_Down:
        return QPoint(0, step);
    default:
        return QPoint();
    }
}

void Tool::SetEscapeLive(bool live)
{
    if (live == m_canCancel || m_escapes.isEmpty())
        return;
    m_canCancel = live;
    for (int i = 0; i < m_escapes.size(); ++i)
    {
        if (m_escapes.at(i))
            m_escapes.at(i)->SetKey(live ? QKeySequence(Qt::Key_Escape + HeldWithEscape[i]) : QKeySequence());
    }
    Q_EMIT CanCancelChanged(live);
}

void Tool::SetRedoLive(bool live)
{
    if (live == m_canRedo)
        return;
    m_canRedo = live;
    Q_EMIT CanRedoChanged(live);
}

void Tool::OnPressed(const CanvasPoint& point)
{
    if (m_pDocument)
        Pressed(point);
}

void Tool::OnMoved(const CanvasPoint& point)
{
    if (m_pDocument)
        Moved(point);
}

void Tool::OnReleased(const CanvasPoint& point)
{
    if (m_pDocument)
        Released(point);
}

void Tool::OnCancelled()
{
    Finish();
}

void Tool::OnPointerLeft()
{
    PointerLeft();
}

void Tool::OnEscapeKey()
{
    Cancel();
}

void Tool::Attach()
{
    if (!m_pView)
        return;
    connect(m_pView, &NVDocumentView::Pressed, this, &Tool::OnPressed);
    connect(m_pView, &NVDocumentView::Moved, this, &Tool::OnMoved);
    connect(m_pView, &NVDocumentView::Released, this, &Tool::OnReleased);
    connect(m_pView, &NVDocumentView::Cancelled, this, &Tool::OnCancelled);
    connect(m_pView, &NVDocumentView::PointerLeft, this, &Tool::OnPointerLeft);
    Equip(m_pView);
}

void Tool::Detach()
{
    if (!m_pView)
        return;
    disconnect(m_pView, nullptr, this, nullptr);
    m_pView->SetOverlay(NVDocumentView::Overlay());
    m_pView->SetToolCursor(Qt::ArrowCursor);
}
