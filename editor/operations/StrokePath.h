#pragma once

#include <deque>

#include <QPointF>
#include <QRect>

#include "BrushStroke.h"

// Where one stamp of a stroke goes, and what the dynamics make of it.
struct StampPlan
{
    QPointF center;
    double diameter = 1.0;
    double hardness = 1.0;
    // Degrees, counter-clockwise.
    double angle = 0.0;
    double pressure = 1.0;
    // Pixels from the start of the stroke along its path.
    double distance = 0.0;
    // Counts the stamps, those that are left out included: what chance is drawn from.
    quint64 index = 0;
};

// Lays the stamps of a stroke along its points at the exact spacing, which is carried over from segment to
// segment. Parts of the path that no stamp can reach the layer from are passed over without going through
// their stamps. With the size dynamic, whose spacing changes all the time, the stamps then start anew where
// the path comes near the layer.
class StrokePath
{
public:
    explicit StrokePath(const StrokeSettings& settings);

    // The layer. To be set before the first stamp is taken.
    void SetBounds(const QRect& bounds);
    // Not finite is ignored. Positions are cut to 10^7 pixels from the origin.
    void AddPoint(const StrokePoint& point);
    // Adds what the path held back in wait for another point.
    void End();

    bool HasNext() const;
    // False when there is no stamp left for now.
    bool Next(StampPlan& plan);

private:
    struct Node
    {
        QPointF pos;
        double pressure = 1.0;
    };
    struct Segment
    {
        Node from;
        Node to;
        double length = 0.0;
        // What of the length is near enough to the layer; from above to when nothing is.
        double enter = 0.0;
        double leave = 0.0;
    };

    void addSegment(const Node& from, const Node& to);
    void addCurve(const Node& from, const Node& control, const Node& to);
    QRectF nearArea() const;
    void clip(Segment& segment) const;
    bool takeFirst(StampPlan& plan);
    void skipTo(const Segment& segment, double along);
    void leaveSegment();
    void makePlan(const Segment& segment, double along, StampPlan& plan);
    double diameterAt(double pressure) const;
    double stepAt(double pressure) const;
    QPointF scattered(const QPointF& pos, quint64 index) const;

    StrokeSettings m_settings;
    QRect m_bounds;
    double m_reach = 0.0;

    int m_points = 0;
    Node m_first;
    Node m_last;
    Node m_middle;
    std::deque<Segment> m_segments;
    bool m_firstTaken = false;
    bool m_clipped = false;
    bool m_ended = false;

    // Along the front segment, of the next stamp.
    double m_next = 0.0;
    // Of the segments that are behind.
    double m_travelled = 0.0;
    quint64 m_index = 0;
};

// An even distribution over 0 up to 1, the same for the same numbers.
double StrokeChance(quint64 seed, quint64 index, int which);
