#include "ZoomTool.h"

#include <QApplication>

#include <cmath>

#include "ToolHintBar.h"

namespace
{

const double ClickFactor = 2.0;
// The way of the pointer, in pixels, that doubles the scale.
const double DoublingWay = 120.0;

} // namespace

ZoomTool::ZoomTool(QObject* parent) : Tool(parent) { }

QString ZoomTool::GetName() const
{
    return tr("Zoom");
}

QString ZoomTool::GetPictureName() const
{
    return QStringLiteral("tool-zoom");
}

QKeySequence ZoomTool::GetKey() const
{
    return Qt::Key_Z;
}

bool ZoomTool::Cancel()
{
    if (!m_isPressed)
        return false;
    m_isPressed = false;
    if (m_isDrag)
        GetView()->Scale(m_startScale / GetView()->GetScale(), m_start);
    return true;
}

void ZoomTool::Finish()
{
    m_isPressed = false;
}

void ZoomTool::UpdateBarTheme(QWidget* bar)
{
    static_cast<ToolHintBar*>(bar)->UpdateTheme();
}

QWidget* ZoomTool::CreateBar()
{
    return new ToolHintBar(
        GetPictureName(),
        tr("Click to zoom in, with Alt to zoom out; drag to the right or left to zoom freely."));
}

void ZoomTool::Equip(NVDocumentView* view)
{
    view->SetToolCursor(Qt::CrossCursor);
}

void ZoomTool::Pressed(const CanvasPoint& point)
{
    m_isPressed = true;
    m_isDrag = false;
    m_isOut = point.button == Qt::RightButton || point.modifiers.testFlag(Qt::AltModifier);
    m_start = GetView()->MapFromDocument(point.position);
    m_startScale = GetView()->GetScale();
}

void ZoomTool::Moved(const CanvasPoint& point)
{
    if (!m_isPressed)
        return;
    const double way = GetView()->MapFromDocument(point.position).x() - m_start.x();
    if (!m_isDrag && std::abs(way) < QApplication::startDragDistance())
        return;
    m_isDrag = true;
    GetView()->Scale(m_startScale * std::exp2(way / DoublingWay) / GetView()->GetScale(), m_start);
}

void ZoomTool::Released(const CanvasPoint& point)
{
    Q_UNUSED(point)
    if (m_isPressed && !m_isDrag)
        GetView()->Scale(m_isOut ? 1 / ClickFactor : ClickFactor, m_start);
    m_isPressed = false;
}
