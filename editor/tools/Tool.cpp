#include "Tool.h"

#include <QLabel>
#include <QPixmap>

#include "Document.h"
#include "KXDocumentInterface.h"
#include "KXShortcut.h"
#include "NVStringHelper.h"

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
    m_pEscape = new KXShortcut(bar, QKeySequence());
    connect(m_pEscape, &KXShortcut::Activated, this, &Tool::OnEscapeKey);
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
    delete m_pEscape;
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

bool Tool::Cancel()
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

void Tool::SetEscapeLive(bool live)
{
    if (m_pEscape)
        m_pEscape->SetKey(live ? QKeySequence(Qt::Key_Escape) : QKeySequence());
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
