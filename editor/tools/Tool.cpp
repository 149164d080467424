#include "Tool.h"

#include <QWidget>

#include "Document.h"

Tool::Tool(QObject* parent) : QObject(parent) { }

Tool::~Tool()
{
    delete m_pBar;
}

QWidget* Tool::GetBar()
{
    if (!m_pBar)
        m_pBar = CreateBar();
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
    m_isActive = true;
    GetBar();
    CreateShortcuts();
    Attach();
}

void Tool::Deactivate()
{
    if (!m_isActive)
        return;
    Finish();
    Detach();
    ReleaseShortcuts();
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
    if (m_isActive)
        Attach();
}

bool Tool::Cancel()
{
    return false;
}

void Tool::Finish() { }

void Tool::UpdateTheme() { }

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
