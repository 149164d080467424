#include "TextWarp.h"

#include <QPolygonF>
#include <QTransform>

#include <cmath>

namespace
{

const double Pi = 3.14159265358979323846;
// Curves are taken apart as if they were so much larger.
const double CurveScale = 4.0;
// The longest piece of a straight line, in pixels.
const double PieceLength = 4.0;
// Where the text shrinks to less of its area, the way back is not looked for any further.
const double LeastSize = 1e-3;
const int UnwarpRounds = 40;
const double UnwarpPatience = 1e-4;

// -1 to 1.
double Share(double percent)
{
    return std::isfinite(percent) ? qBound(-1.0, percent / 100.0, 1.0) : 0.0;
}

// The amounts, and the frame that they refer to.
class Bender
{
public:
    Bender(const QRectF& frame, const TextWarp& warp)
        : m_center(frame.center()),
          m_half(frame.width() / 2, frame.height() / 2),
          m_isVertical(warp.isVertical),
          m_height(Share(warp.bend) * qMin(m_half.x(), m_half.y())),
          m_horizontal(Share(warp.horizontalDistortion)),
          m_vertical(Share(warp.verticalDistortion))
    {
    }

    QPointF Bend(const QPointF& point) const
    {
        const QPointF share = ShareOf(point);
        const QPointF way = point - m_center;
        return m_center + Wave(share) +
            QPointF(way.x() * (1 + m_vertical * share.y()), way.y() * (1 + m_horizontal * share.x()));
    }

    // By coming nearer round by round, along the slopes.
    QPointF Straighten(const QPointF& bent) const
    {
        QPointF point = Limited(bent);
        for (int round = 0; round < UnwarpRounds; ++round)
        {
            const QPointF off = bent - Bend(point);
            if (off.manhattanLength() < UnwarpPatience)
                break;
            const QTransform slope = SlopeAt(point);
            const double size = slope.determinant();
            if (std::abs(size) < LeastSize)
                break;
            const QPointF step((slope.m22() * off.x() - slope.m21() * off.y()) / size,
                               (slope.m11() * off.y() - slope.m12() * off.x()) / size);
            point = Limited(point + Shortened(step));
        }
        return point;
    }

private:
    // -1 to 1 within the frame.
    QPointF ShareOf(const QPointF& point) const
    {
        return {(point.x() - m_center.x()) / m_half.x(), (point.y() - m_center.y()) / m_half.y()};
    }
    QPointF Wave(const QPointF& share) const
    {
        return m_isVertical ? QPointF(m_height * std::sin(Pi * share.y()), 0)
                            : QPointF(0, m_height * std::sin(Pi * share.x()));
    }
    // How the place changes with the point: m11 and m12 by x, m21 and m22 by y.
    QTransform SlopeAt(const QPointF& point) const
    {
        const QPointF share = ShareOf(point);
        const QPointF way = point - m_center;
        const double byX = m_isVertical ? 0 : m_height * Pi / m_half.x() * std::cos(Pi * share.x());
        const double byY = m_isVertical ? m_height * Pi / m_half.y() * std::cos(Pi * share.y()) : 0;
        return QTransform(1 + m_vertical * share.y(), byX + way.y() * m_horizontal / m_half.x(),
                          byY + way.x() * m_vertical / m_half.y(), 1 + m_horizontal * share.x(), 0, 0);
    }
    QPointF Shortened(const QPointF& step) const
    {
        return {qBound(-m_half.x(), step.x(), m_half.x()), qBound(-m_half.y(), step.y(), m_half.y())};
    }
    // Not further from the frame than it is large.
    QPointF Limited(const QPointF& point) const
    {
        const QPointF reach = m_half * 3;
        return {qBound(m_center.x() - reach.x(), point.x(), m_center.x() + reach.x()),
                qBound(m_center.y() - reach.y(), point.y(), m_center.y() + reach.y())};
    }

    QPointF m_center;
    QPointF m_half;
    bool m_isVertical;
    double m_height;
    double m_horizontal;
    double m_vertical;
};

// The polygon with its long sides in pieces, bent.
QPolygonF BendPolygon(const QPolygonF& polygon, const Bender& bender)
{
    QPolygonF bent;
    for (int i = 0; i < polygon.size(); ++i)
    {
        const QPointF from = polygon.at(i);
        const QPointF way = polygon.at((i + 1) % polygon.size()) - from;
        const int pieces = qMax(1, int(std::ceil(std::hypot(way.x(), way.y()) / PieceLength)));
        for (int piece = 0; piece < pieces; ++piece)
            bent.append(bender.Bend(from + way * piece / pieces));
    }
    return bent;
}

} // namespace

bool operator==(const TextWarp& one, const TextWarp& other)
{
    return one.isFlag == other.isFlag && one.isVertical == other.isVertical && one.bend == other.bend &&
        one.horizontalDistortion == other.horizontalDistortion &&
        one.verticalDistortion == other.verticalDistortion;
}

bool IsStraight(const TextWarp& warp)
{
    return !warp.isFlag ||
        (Share(warp.bend) == 0 && Share(warp.horizontalDistortion) == 0 &&
         Share(warp.verticalDistortion) == 0);
}

QPointF WarpPoint(const QPointF& point, const QRectF& frame, const TextWarp& warp)
{
    return frame.isEmpty() || IsStraight(warp) ? point : Bender(frame, warp).Bend(point);
}

QPointF UnwarpPoint(const QPointF& point, const QRectF& frame, const TextWarp& warp)
{
    return frame.isEmpty() || IsStraight(warp) ? point : Bender(frame, warp).Straighten(point);
}

QPainterPath WarpPath(const QPainterPath& path, const QRectF& frame, const TextWarp& warp)
{
    if (frame.isEmpty() || IsStraight(warp))
        return path;
    const Bender bender(frame, warp);
    QPainterPath bent;
    bent.setFillRule(path.fillRule());
    const QTransform back = QTransform::fromScale(1 / CurveScale, 1 / CurveScale);
    const QList<QPolygonF> polygons = path.toSubpathPolygons(QTransform::fromScale(CurveScale, CurveScale));
    for (const QPolygonF& polygon : polygons)
    {
        bent.addPolygon(BendPolygon(back.map(polygon), bender));
        bent.closeSubpath();
    }
    return bent;
}
