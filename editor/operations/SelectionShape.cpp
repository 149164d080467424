#include "SelectionShape.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>

#include "SelectionMask.h"

namespace
{

// Where no conversion overflows, and further than any drag goes.
const double Far = 1e6;

QPoint ToCorner(const QPointF& point)
{
    const auto rounded = [](double value) { return int(std::lround(qBound(-Far, value, Far))); };
    return QPoint(rounded(point.x()), rounded(point.y()));
}

int WithSign(int length, int sign)
{
    return sign < 0 ? -length : length;
}

} // namespace

QRect DraggedRect(const QPointF& from, const QPointF& to, bool isSquare, bool isFromCentre)
{
    const QPoint start = ToCorner(from);
    QPoint way = ToCorner(to) - start;
    if (isSquare)
    {
        const int side = std::max(std::abs(way.x()), std::abs(way.y()));
        way = QPoint(WithSign(side, way.x()), WithSign(side, way.y()));
    }
    const QPoint first = isFromCentre ? start - way : start;
    const QPoint last = start + way;
    const QPoint corner(std::min(first.x(), last.x()), std::min(first.y(), last.y()));
    return QRect(corner, QSize(std::abs(last.x() - first.x()), std::abs(last.y() - first.y())));
}

QPoint DraggedWay(const QPointF& from, const QPointF& to, bool isAlongAxis)
{
    const QPoint way = ToCorner(to - from);
    if (!isAlongAxis)
        return way;
    return std::abs(way.x()) >= std::abs(way.y()) ? QPoint(way.x(), 0) : QPoint(0, way.y());
}

QPainterPath PathOf(const SelectionShape& shape)
{
    QPainterPath path;
    const QRectF rect(shape.rect);
    const double radius = std::min({double(shape.radius), rect.width() / 2, rect.height() / 2});
    if (shape.kind == SelectionShape::Ellipse)
        path.addEllipse(rect);
    else if (radius > 0)
        path.addRoundedRect(rect, radius, radius);
    else
        path.addRect(rect);
    return path;
}

QImage MaskOf(const SelectionShape& shape, const QSize& size)
{
    if (shape.kind == SelectionShape::Ellipse)
        return EllipseMask(size, shape.rect, shape.feather);
    return RectangleMask(size, shape.rect, shape.radius, shape.feather);
}
