#include "StrokePath.h"

#include <algorithm>
#include <cmath>

namespace
{
const double PI = 3.14159265358979323846;
const double FARTHEST = 1e7;
const double SMALLEST_STEP = 0.5;
// Sizes, angles and hardnesses that the dynamics give are rounded a little, so that stamps can be used again:
// sizes to 1/256, which is half of that at each edge.
const double SIZE_LEVELS = 177.0;
const double HARDNESS_LEVELS = 32.0;
const double ANGLE_STEP = 2.0;

quint64 Scramble(quint64 value)
{
    value += Q_UINT64_C(0x9e3779b97f4a7c15);
    value = (value ^ (value >> 30)) * Q_UINT64_C(0xbf58476d1ce4e5b9);
    value = (value ^ (value >> 27)) * Q_UINT64_C(0x94d049bb133111eb);
    return value ^ (value >> 31);
}

double CleanPressure(double pressure)
{
    return std::isnan(pressure) ? 1.0 : std::clamp(pressure, 0.0, 1.0);
}

double Distance(const QPointF& a, const QPointF& b)
{
    return std::hypot(b.x() - a.x(), b.y() - a.y());
}

double Mix(double a, double b, double t)
{
    return a + (b - a) * t;
}

// Cuts the interval of t to where from + t * (to - from) lies in [low, high].
void CutInterval(double from, double to, double low, double high, double& enter, double& leave)
{
    const double way = to - from;
    if (std::abs(way) < 1e-9)
    {
        if (from < low || from > high)
            leave = enter - 1.0;
        return;
    }
    const double a = (low - from) / way;
    const double b = (high - from) / way;
    enter = std::max(enter, std::min(a, b));
    leave = std::min(leave, std::max(a, b));
}
} // namespace

double StrokeChance(quint64 seed, quint64 index, int which)
{
    const quint64 bits = Scramble(Scramble(Scramble(seed) ^ index) + quint64(which));
    return double(bits >> 11) * (1.0 / 9007199254740992.0);
}

StrokePath::StrokePath(const StrokeSettings& settings) : m_settings(settings)
{
    m_reach = m_settings.size + 2.0;
    if (m_settings.dynamics.scatter)
        m_reach += m_settings.size;
}

void StrokePath::SetBounds(const QRect& bounds)
{
    m_bounds = bounds;
}

void StrokePath::AddPoint(const StrokePoint& point)
{
    if (m_ended || !std::isfinite(point.pos.x()) || !std::isfinite(point.pos.y()))
        return;
    Node node;
    node.pos = QPointF(std::clamp(point.pos.x(), -FARTHEST, FARTHEST),
                       std::clamp(point.pos.y(), -FARTHEST, FARTHEST));
    node.pressure = CleanPressure(point.pressure);
    if (m_points > 0 && Distance(m_last.pos, node.pos) < 1e-6)
    {
        m_last.pressure = node.pressure;
        return;
    }
    if (m_points > 0)
    {
        const Node middle = {(m_last.pos + node.pos) / 2.0, (m_last.pressure + node.pressure) / 2.0};
        if (!m_settings.smooth)
            addSegment(m_last, node);
        else if (m_points == 1)
            addSegment(m_last, middle);
        else
            addCurve(m_middle, m_last, middle);
        m_middle = middle;
    }
    if (m_points == 0)
        m_first = node;
    m_last = node;
    ++m_points;
}

void StrokePath::End()
{
    if (!m_ended && m_settings.smooth && m_points > 1)
        addSegment(m_middle, m_last);
    m_ended = true;
}

bool StrokePath::HasNext() const
{
    if (!m_segments.empty())
        return true;
    // The first stamp needs a direction only if the tip turns with it.
    return m_points > 0 && !m_firstTaken && (m_ended || !m_settings.dynamics.angle);
}

bool StrokePath::Next(StampPlan& plan)
{
    if (!m_firstTaken && HasNext() && takeFirst(plan))
        return true;
    while (!m_segments.empty())
    {
        Segment& segment = m_segments.front();
        if (!m_clipped)
            clip(segment);
        m_clipped = true;
        skipTo(segment, segment.enter);
        if (segment.enter <= segment.leave && m_next <= segment.leave)
        {
            makePlan(segment, m_next, plan);
            m_next += stepAt(plan.pressure);
            return true;
        }
        leaveSegment();
    }
    return false;
}

void StrokePath::addSegment(const Node& from, const Node& to)
{
    Segment segment;
    segment.from = from;
    segment.to = to;
    segment.length = Distance(from.pos, to.pos);
    m_segments.push_back(segment);
}

void StrokePath::addCurve(const Node& from, const Node& control, const Node& to)
{
    const double length = Distance(from.pos, control.pos) + Distance(control.pos, to.pos);
    const int pieces = int(std::clamp(length / 6.0, 1.0, 64.0));
    Node last = from;
    for (int i = 1; i <= pieces; ++i)
    {
        const double t = double(i) / pieces;
        const double a = (1.0 - t) * (1.0 - t);
        const double b = 2.0 * t * (1.0 - t);
        const double c = t * t;
        const Node node = {from.pos * a + control.pos * b + to.pos * c,
                           std::clamp(from.pressure * a + control.pressure * b + to.pressure * c, 0.0, 1.0)};
        addSegment(last, node);
        last = node;
    }
}

// Where the path must come for a stamp to reach the layer.
QRectF StrokePath::nearArea() const
{
    return QRectF(m_bounds).adjusted(-m_reach, -m_reach, m_reach, m_reach);
}

void StrokePath::clip(Segment& segment) const
{
    const QRectF near = nearArea();
    double enter = 0.0;
    double leave = 1.0;
    CutInterval(segment.from.pos.x(), segment.to.pos.x(), near.left(), near.right(), enter, leave);
    CutInterval(segment.from.pos.y(), segment.to.pos.y(), near.top(), near.bottom(), enter, leave);
    const bool any = enter <= leave;
    segment.enter = any ? enter * segment.length : segment.length;
    segment.leave = any ? leave * segment.length : -1.0;
}

// The stamp at the first point, before there is a segment if need be. False when it lies far from the layer.
bool StrokePath::takeFirst(StampPlan& plan)
{
    m_firstTaken = true;
    m_next = stepAt(m_first.pressure);
    Segment segment;
    segment.from = segment.to = m_first;
    if (!m_segments.empty())
        segment.to.pos = m_segments.front().to.pos;
    if (!nearArea().contains(m_first.pos))
    {
        ++m_index;
        return false;
    }
    makePlan(segment, 0.0, plan);
    return true;
}

// Passes over the stamps before a place of the segment.
void StrokePath::skipTo(const Segment& segment, double along)
{
    if (m_next >= along)
        return;
    if (m_settings.dynamics.size)
    {
        m_next = along;
        ++m_index;
        return;
    }
    const double step = stepAt(segment.from.pressure);
    const double count = std::ceil((along - m_next) / step);
    m_next += count * step;
    m_index += quint64(count);
}

void StrokePath::leaveSegment()
{
    const Segment& segment = m_segments.front();
    skipTo(segment, segment.length);
    m_next -= segment.length;
    m_travelled += segment.length;
    m_segments.pop_front();
    m_clipped = false;
}

void StrokePath::makePlan(const Segment& segment, double along, StampPlan& plan)
{
    const double t = segment.length > 0.0 ? std::clamp(along / segment.length, 0.0, 1.0) : 0.0;
    const StrokeDynamics& dynamics = m_settings.dynamics;
    plan.index = m_index++;
    plan.pressure = Mix(segment.from.pressure, segment.to.pressure, t);
    plan.distance = m_travelled + along;
    plan.diameter = diameterAt(plan.pressure);
    plan.hardness = m_settings.tip.hardness;
    if (dynamics.hardness)
        plan.hardness = std::round(plan.hardness * plan.pressure * HARDNESS_LEVELS) / HARDNESS_LEVELS;
    plan.angle = m_settings.tip.angle;
    const QPointF way = segment.to.pos - segment.from.pos;
    if (dynamics.angle)
    {
        const double direction = std::atan2(-way.y(), way.x()) * 180.0 / PI;
        plan.angle = std::fmod(std::round((plan.angle + direction) / ANGLE_STEP) * ANGLE_STEP + 720.0, 360.0);
    }
    plan.center = scattered(segment.from.pos + way * t, plan.index);
}

double StrokePath::diameterAt(double pressure) const
{
    if (!m_settings.dynamics.size)
        return m_settings.size;
    const double diameter = std::max(1.0, m_settings.size * pressure);
    return std::min(m_settings.size, std::exp2(std::round(std::log2(diameter) * SIZE_LEVELS) / SIZE_LEVELS));
}

double StrokePath::stepAt(double pressure) const
{
    return std::max(SMALLEST_STEP, diameterAt(pressure) * m_settings.spacing / 100.0);
}

QPointF StrokePath::scattered(const QPointF& pos, quint64 index) const
{
    if (!m_settings.dynamics.scatter)
        return pos;
    const double angle = 2.0 * PI * StrokeChance(m_settings.seed, index, 0);
    const double radius = m_settings.size * std::sqrt(StrokeChance(m_settings.seed, index, 1));
    return pos + QPointF(std::cos(angle), std::sin(angle)) * radius;
}
