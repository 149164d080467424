#include "HandTool.h"

#include <QScrollBar>

#include "ToolHintBar.h"

namespace
{

void Scroll(NVDocumentView* view, const QPoint& offset)
{
    view->horizontalScrollBar()->setValue(view->horizontalScrollBar()->value() - offset.x());
    view->verticalScrollBar()->setValue(view->verticalScrollBar()->value() - offset.y());
}

} // namespace

HandTool::HandTool(QObject* parent) : Tool(parent) { }

QString HandTool::GetName() const
{
    return tr("Hand");
}

QString HandTool::GetPictureName() const
{
    return QStringLiteral("tool-hand");
}

QKeySequence HandTool::GetKey() const
{
    return Qt::Key_H;
}

bool HandTool::Cancel()
{
    if (!m_isDragging)
        return false;
    m_isDragging = false;
    Scroll(GetView(), m_start - m_last);
    GetView()->SetToolCursor(Qt::OpenHandCursor);
    return true;
}

void HandTool::Finish()
{
    if (m_isDragging && GetView())
        GetView()->SetToolCursor(Qt::OpenHandCursor);
    m_isDragging = false;
}

void HandTool::UpdateBarTheme(QWidget* bar)
{
    static_cast<ToolHintBar*>(bar)->UpdateTheme();
}

QWidget* HandTool::CreateBar()
{
    return new ToolHintBar(GetPictureName(), tr("Drag the picture to see another part of it."));
}

void HandTool::Equip(NVDocumentView* view)
{
    view->SetToolCursor(Qt::OpenHandCursor);
}

void HandTool::Pressed(const CanvasPoint& point)
{
    if (point.button != Qt::LeftButton)
        return;
    m_isDragging = true;
    m_start = GetView()->MapFromDocument(point.position).toPoint();
    m_last = m_start;
    GetView()->SetToolCursor(Qt::ClosedHandCursor);
}

void HandTool::Moved(const CanvasPoint& point)
{
    if (!m_isDragging)
        return;
    const QPoint now = GetView()->MapFromDocument(point.position).toPoint();
    Scroll(GetView(), now - m_last);
    m_last = now;
}

void HandTool::Released(const CanvasPoint& point)
{
    Q_UNUSED(point)
    Finish();
}
