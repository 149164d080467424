#include "FreeTransform.h"

#include <QtMath>

#include <algorithm>
#include <cmath>

const double FreeTransform::MaxPosition = 100000;
const double FreeTransform::MaxSkew = 89.99;

namespace
{

// The least side of the scaled box, in pixels.
const double LeastSide = 0.5;
// Skewed both ways, a box may become a line; this much of its area is left at least.
const double LeastArea = 1e-3;
const double TurnStep = 15;
const double MoveStep = 45;
// A handle that is nearer than this to what it is scaled about, in pixels, has no say.
const double Near = 1e-6;

bool IsFinite(const QPointF& point)
{
    return std::isfinite(point.x()) && std::isfinite(point.y());
}

double BoundScale(double scale, double side)
{
    const double least = std::min(1.0, LeastSide / side);
    const double most = std::max(1.0, FreeTransform::MaxPosition / side);
    const double size = std::clamp(std::abs(scale), least, most);
    return std::signbit(scale) ? -size : size;
}

double InHalfTurn(double degrees)
{
    const double angle = std::remainder(degrees, 360);
    return angle <= -180 ? 180 : angle;
}

double Snapped(double degrees, double step)
{
    return std::round(degrees / step) * step;
}

double AngleOf(const QPointF& way)
{
    return qRadiansToDegrees(std::atan2(way.y(), way.x()));
}

double TanOf(double degrees)
{
    return std::tan(qDegreesToRadians(degrees));
}

// By how much what lies at `from` of the axis is scaled to lie at `to`, about `about`.
double FactorOf(double from, double to, double about)
{
    return std::abs(from - about) < Near ? 1 : (to - about) / (from - about);
}

// The same for both axes: how far the pointer has gone along the way from the point to the handle. A unit of
// x is as long as the weight says.
double CommonFactor(const QPointF& from, const QPointF& to, const QPointF& about, const QSizeF& weight)
{
    const QPointF before((from.x() - about.x()) * weight.width(), (from.y() - about.y()) * weight.height());
    const QPointF after((to.x() - about.x()) * weight.width(), (to.y() - about.y()) * weight.height());
    const double length = QPointF::dotProduct(before, before);
    return length < Near * Near ? 1 : QPointF::dotProduct(before, after) / length;
}

// The skew when the end of an arm across it goes so far along.
double SkewedBy(double degrees, double way, double arm)
{
    return std::abs(arm) < Near ? degrees : qRadiansToDegrees(std::atan(TanOf(degrees) + way / arm));
}

bool IsCorner(FreeTransform::Part part)
{
    return part == FreeTransform::TopLeft || part == FreeTransform::TopRight ||
        part == FreeTransform::BottomLeft || part == FreeTransform::BottomRight;
}

bool IsSide(FreeTransform::Part part)
{
    return part == FreeTransform::Left || part == FreeTransform::Right;
}

bool IsHandle(FreeTransform::Part part)
{
    return part >= FreeTransform::TopLeft && part <= FreeTransform::BottomRight &&
        part != FreeTransform::Reference;
}

} // namespace

FreeTransform::FreeTransform(const QRectF& box)
    : m_box(box.isValid() ? box : QRectF()), m_reference(m_box.center()), m_position(m_reference)
{
}

QRectF FreeTransform::GetBox() const
{
    return m_box;
}

QPointF FreeTransform::GetPosition() const
{
    return m_position;
}

double FreeTransform::GetScaleX() const
{
    return m_scaleX;
}

double FreeTransform::GetScaleY() const
{
    return m_scaleY;
}

double FreeTransform::GetAngle() const
{
    return m_angle;
}

double FreeTransform::GetSkewX() const
{
    return m_skewX;
}

double FreeTransform::GetSkewY() const
{
    return m_skewY;
}

int FreeTransform::GetCell() const
{
    return m_cell;
}

QTransform FreeTransform::GetMatrix() const
{
    return QTransform::fromTranslate(-m_reference.x(), -m_reference.y()) * GetLinear() *
        QTransform::fromTranslate(m_position.x(), m_position.y());
}

bool FreeTransform::IsIdentity() const
{
    return m_position == m_reference && m_scaleX == 1 && m_scaleY == 1 && m_angle == 0 && m_skewX == 0 &&
        m_skewY == 0;
}

QPointF FreeTransform::PlaceOf(Part part) const
{
    if (part == Reference)
        return m_position;
    return GetMatrix().map(PointOf(IsHandle(part) ? part : Reference));
}

QPolygonF FreeTransform::GetOutline() const
{
    QPolygonF outline;
    for (const Part corner : {TopLeft, TopRight, BottomRight, BottomLeft})
        outline.append(PlaceOf(corner));
    return outline;
}

void FreeTransform::SetReferenceCell(int cell)
{
    if (cell < TopLeft || cell > BottomRight || m_box.isEmpty())
        return;
    m_position = GetMatrix().map(PointOf(cell));
    m_reference = PointOf(cell);
    m_cell = cell;
}

void FreeTransform::SetReferencePlace(const QPointF& position)
{
    bool isInvertible = false;
    const QTransform back = GetMatrix().inverted(&isInvertible);
    if (!IsFinite(position) || m_box.isEmpty() || !isInvertible)
        return;
    const QPointF bound(std::clamp(position.x(), -MaxPosition, MaxPosition),
                        std::clamp(position.y(), -MaxPosition, MaxPosition));
    m_reference = back.map(bound);
    m_position = bound;
    m_cell = Nothing;
}

void FreeTransform::SetPosition(const QPointF& position)
{
    if (!IsFinite(position) || m_box.isEmpty())
        return;
    m_position = QPointF(std::clamp(position.x(), -MaxPosition, MaxPosition),
                         std::clamp(position.y(), -MaxPosition, MaxPosition));
}

void FreeTransform::SetScale(double x, double y)
{
    if (!std::isfinite(x) || !std::isfinite(y) || m_box.isEmpty())
        return;
    m_scaleX = BoundScale(x, m_box.width());
    m_scaleY = BoundScale(y, m_box.height());
}

void FreeTransform::SetAngle(double degrees)
{
    if (std::isfinite(degrees) && !m_box.isEmpty())
        m_angle = InHalfTurn(degrees);
}

void FreeTransform::SetSkew(double x, double y)
{
    if (!std::isfinite(x) || !std::isfinite(y) || m_box.isEmpty())
        return;
    FreeTransform next(*this);
    next.m_skewX = std::clamp(x, -MaxSkew, MaxSkew);
    next.m_skewY = std::clamp(y, -MaxSkew, MaxSkew);
    if (!next.IsFlat())
        *this = next;
}

FreeTransform FreeTransform::Dragged(Part part, const QPointF& from, const QPointF& to,
                                     const Constraint& constraint) const
{
    if (m_box.isEmpty() || !IsFinite(from) || !IsFinite(to))
        return *this;
    FreeTransform next(*this);
    switch (part)
    {
    case Nothing:
        break;
    case Inside:
        next = Moved(to - from, constraint.regular);
        break;
    case Outside:
        next = Turned(from, to, constraint.regular);
        break;
    case Reference:
        next.SetReferencePlace(m_position + to - from);
        break;
    default:
        next = constraint.skews && !IsCorner(part) ? Skewed(part, from, to, constraint)
                                                   : Scaled(part, from, to, constraint);
    }
    return next;
}

QTransform FreeTransform::GetLinear() const
{
    const QTransform scale = QTransform::fromScale(m_scaleX, m_scaleY);
    const QTransform skew(1, TanOf(m_skewY), TanOf(m_skewX), 1, 0, 0);
    QTransform turn;
    turn.rotate(m_angle);
    return scale * skew * turn;
}

// Of the box as it was.
QPointF FreeTransform::PointOf(int cell) const
{
    return m_box.topLeft() +
        QPointF((cell - 1) % 3 * m_box.width() / 2, int((cell - 1) / 3) * m_box.height() / 2);
}

// A point of the box as it was lies there again, after the linear part has changed.
void FreeTransform::KeepPlace(const QPointF& point, const QPointF& place)
{
    SetPosition(m_position + place - GetMatrix().map(point));
}

FreeTransform FreeTransform::Moved(const QPointF& way, bool regular) const
{
    QPointF kept = way;
    if (regular && !way.isNull())
    {
        const double angle = qDegreesToRadians(Snapped(AngleOf(way), MoveStep));
        const QPointF direction(std::cos(angle), std::sin(angle));
        kept = QPointF::dotProduct(way, direction) * direction;
    }
    FreeTransform next(*this);
    next.SetPosition(m_position + QPointF(std::round(kept.x()), std::round(kept.y())));
    return next;
}

FreeTransform FreeTransform::Turned(const QPointF& from, const QPointF& to, bool regular) const
{
    const QPointF before = from - m_position;
    const QPointF after = to - m_position;
    if (before.isNull() || after.isNull())
        return *this;
    const double angle = m_angle + AngleOf(after) - AngleOf(before);
    FreeTransform next(*this);
    next.SetAngle(regular ? Snapped(angle, TurnStep) : angle);
    return next;
}

FreeTransform FreeTransform::Scaled(Part part, const QPointF& from, const QPointF& to,
                                    const Constraint& constraint) const
{
    bool isInvertible = false;
    const QTransform back = GetMatrix().inverted(&isInvertible);
    if (!isInvertible)
        return *this;
    const QPointF handle = PointOf(part);
    const QPointF about = constraint.aboutReference ? m_reference : PointOf(10 - part);
    const QPointF target = handle + back.map(to) - back.map(from);
    double x = IsCorner(part) || IsSide(part) ? FactorOf(handle.x(), target.x(), about.x()) : 1;
    double y = IsSide(part) ? 1 : FactorOf(handle.y(), target.y(), about.y());
    if (constraint.regular)
    {
        const QSizeF weight(std::abs(m_scaleX), std::abs(m_scaleY));
        const double both = IsCorner(part) ? CommonFactor(handle, target, about, weight) : x * y;
        x = both;
        y = both;
    }
    FreeTransform next(*this);
    next.SetScale(m_scaleX * x, m_scaleY * y);
    next.KeepPlace(about, GetMatrix().map(about));
    return next;
}

// The edge slides along the axis that it lies on before the box is turned; what it is skewed about stays.
FreeTransform FreeTransform::Skewed(Part part, const QPointF& from, const QPointF& to,
                                    const Constraint& constraint) const
{
    QTransform turnBack;
    turnBack.rotate(-m_angle);
    const QPointF way = turnBack.map(to - from);
    const QPointF about = constraint.aboutReference ? m_reference : PointOf(10 - part);
    const QPointF arm = PointOf(part) - about;
    FreeTransform next(*this);
    if (IsSide(part))
        next.SetSkew(m_skewX, SkewedBy(m_skewY, way.y(), arm.x() * m_scaleX));
    else
        next.SetSkew(SkewedBy(m_skewX, way.x(), arm.y() * m_scaleY), m_skewY);
    next.KeepPlace(about, GetMatrix().map(about));
    return next;
}

bool FreeTransform::IsFlat() const
{
    return std::abs(1 - TanOf(m_skewX) * TanOf(m_skewY)) < LeastArea;
}
