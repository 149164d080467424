#pragma once

#include <QPolygonF>
#include <QRectF>
#include <QTransform>

// The arithmetic of free transform: a box in document pixels, and how it is scaled, skewed, turned and moved
// about its reference point. A box that is empty is never changed.
//
// The numbers are taken in this order: scale, then skew, then the turn, then the way to the position. All of
// them stay finite and within their ranges, and the box never shrinks to nothing, whatever is asked for.
class FreeTransform
{
public:
    // Eight handles, numbered by their cells in reading order, and what a pointer can take besides.
    enum Part
    {
        Nothing = 0,
        TopLeft,
        Top,
        TopRight,
        Left,
        Reference,
        Right,
        BottomLeft,
        Bottom,
        BottomRight,
        Inside,
        Outside
    };

    // How a drag differs from a plain one.
    struct Constraint
    {
        // Scaling keeps the proportion, moving keeps to directions of whole 45 degrees, turning to angles of
        // whole 15 degrees.
        bool regular = false;
        // Scaling and skewing are about the reference point, and not about what lies opposite.
        bool aboutReference = false;
        // Handles of edges skew, in place of scaling.
        bool skews = false;
    };

    // Of positions, and of the sides of the scaled box, in pixels.
    static const double MaxPosition;
    static const double MaxSkew;

    // Untransformed, about the middle.
    explicit FreeTransform(const QRectF& box = QRectF());

    // As it was before it was transformed.
    QRectF GetBox() const;
    // Of the reference point, in document pixels.
    QPointF GetPosition() const;
    // 1 as it was, below 0 mirrored.
    double GetScaleX() const;
    double GetScaleY() const;
    // Degrees, clockwise, above -180 and up to 180.
    double GetAngle() const;
    // Degrees, between -89.99 and 89.99.
    double GetSkewX() const;
    double GetSkewY() const;
    // The number of the cell, as TransformationCenterPointControl has them, in which the reference point
    // lies; 0 when it was dragged elsewhere.
    int GetCell() const;
    // From document pixels before to those after.
    QTransform GetMatrix() const;
    bool IsIdentity() const;
    // A point of the box now. For Nothing, Inside and Outside its middle.
    QPointF PlaceOf(Part part) const;
    // The corners, clockwise from the upper left.
    QPolygonF GetOutline() const;

    // What the box looks like stays the same.
    void SetReferenceCell(int cell);
    void SetReferencePlace(const QPointF& position);
    // A value that is not finite is ignored, others are cut to the range.
    void SetPosition(const QPointF& position);
    void SetScale(double x, double y);
    void SetAngle(double degrees);
    void SetSkew(double x, double y);

    // What becomes of it when that part is dragged from one place to the other. Inside moves it by whole
    // pixels, so that a picture that is only moved stays sharp; Outside turns it about the reference point.
    FreeTransform Dragged(Part part, const QPointF& from, const QPointF& to,
                          const Constraint& constraint) const;

private:
    QTransform GetLinear() const;
    QPointF PointOf(int cell) const;
    void KeepPlace(const QPointF& point, const QPointF& place);
    FreeTransform Moved(const QPointF& way, bool regular) const;
    FreeTransform Turned(const QPointF& from, const QPointF& to, bool regular) const;
    FreeTransform Scaled(Part part, const QPointF& from, const QPointF& to,
                         const Constraint& constraint) const;
    FreeTransform Skewed(Part part, const QPointF& from, const QPointF& to,
                         const Constraint& constraint) const;
    bool IsFlat() const;

    QRectF m_box;
    // In the box as it was.
    QPointF m_reference;
    int m_cell = Reference;
    QPointF m_position;
    double m_scaleX = 1;
    double m_scaleY = 1;
    double m_angle = 0;
    double m_skewX = 0;
    double m_skewY = 0;
};
