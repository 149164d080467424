#include "GradientHandles.h"

#include <QLineF>
#include <QPainter>
#include <QtMath>

#include <cmath>

#include "NVDocumentView.h"

namespace
{

// In device-independent pixels.
const double Radius = 5.5;
const double HoverRadius = 7.5;
const double Reach = 10;
const double SnapDegrees = 15;

void DrawHandle(QPainter& painter, const QPointF& place, bool isFull, bool isHovered, const QPalette& palette)
{
    const double radius = isHovered ? HoverRadius : Radius;
    painter.setPen(QPen(QColor(0, 0, 0, 200), 3));
    painter.setBrush(Qt::NoBrush);
    painter.drawEllipse(place, radius, radius);
    painter.setPen(QPen(Qt::white, 1.5));
    painter.setBrush(isHovered ? palette.color(QPalette::Highlight)
                               : QColor(isFull ? Qt::white : QColor(255, 255, 255, 60)));
    painter.drawEllipse(place, radius, radius);
}

} // namespace

QPointF GradientHandles::GetStart() const
{
    return m_start;
}

QPointF GradientHandles::GetEnd() const
{
    return m_end;
}

GradientHandles::Handle GradientHandles::GetHover() const
{
    return m_hover;
}

void GradientHandles::SetLine(const QPointF& start, const QPointF& end)
{
    m_start = start;
    m_end = end;
}

void GradientHandles::Move(Handle handle, const QPointF& position, bool snap)
{
    const QPointF fixed = handle == Start ? m_end : m_start;
    QPointF moved = position;
    if (snap)
    {
        const QPointF way = position - fixed;
        const double step = qDegreesToRadians(SnapDegrees);
        const double angle = std::round(std::atan2(way.y(), way.x()) / step) * step;
        moved = fixed + std::hypot(way.x(), way.y()) * QPointF(std::cos(angle), std::sin(angle));
    }
    if (handle == Start)
        m_start = moved;
    else if (handle == End)
        m_end = moved;
}

bool GradientHandles::SetHover(Handle handle)
{
    const bool isOther = handle != m_hover;
    m_hover = handle;
    return isOther;
}

GradientHandles::Handle GradientHandles::HandleAt(const NVDocumentView* view, const QPointF& position) const
{
    const QPointF place = view->MapFromDocument(position);
    if (QLineF(place, view->MapFromDocument(m_end)).length() <= Reach)
        return End;
    return QLineF(place, view->MapFromDocument(m_start)).length() <= Reach ? Start : None;
}

QRect GradientHandles::Area(const NVDocumentView* view) const
{
    const double margin = HoverRadius + 3;
    return QRectF(view->MapFromDocument(m_start), view->MapFromDocument(m_end))
        .normalized()
        .adjusted(-margin, -margin, margin, margin)
        .toAlignedRect();
}

void GradientHandles::Draw(QPainter& painter, const NVDocumentView* view) const
{
    const QLineF line(view->MapFromDocument(m_start), view->MapFromDocument(m_end));
    painter.setRenderHint(QPainter::Antialiasing);
    if (line.length() > 2 * HoverRadius)
    {
        // From rim to rim: the handles let the picture through.
        const QPointF rim = (line.p2() - line.p1()) * HoverRadius / line.length();
        const QLineF visible(line.p1() + rim, line.p2() - rim);
        painter.setPen(QPen(QColor(0, 0, 0, 160), 3));
        painter.drawLine(visible);
        painter.setPen(QPen(Qt::white, 1));
        painter.drawLine(visible);
    }
    DrawHandle(painter, line.p1(), false, m_hover == Start, view->palette());
    DrawHandle(painter, line.p2(), true, m_hover == End, view->palette());
}
