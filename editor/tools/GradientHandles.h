#pragma once

#include <QPointF>
#include <QRect>

class NVDocumentView;
class QPainter;

// The line of a gradient on the canvas, from start to end, with a handle at each that can be dragged. Points
// are in document pixels.
class GradientHandles
{
public:
    enum Handle
    {
        None,
        Start,
        End
    };

    QPointF GetStart() const;
    QPointF GetEnd() const;
    Handle GetHover() const;
    void SetLine(const QPointF& start, const QPointF& end);
    // Moves one end; snapped, the line keeps to directions of whole fifteen degrees.
    void Move(Handle handle, const QPointF& position, bool snap);
    // The handle that shows that it can be dragged. False if it is the same as before.
    bool SetHover(Handle handle);

    // Which one a pointer at the position takes; the end before the start.
    Handle HandleAt(const NVDocumentView* view, const QPointF& position) const;
    // What Draw covers, in pixels of the viewport.
    QRect Area(const NVDocumentView* view) const;
    void Draw(QPainter& painter, const NVDocumentView* view) const;

private:
    QPointF m_start;
    QPointF m_end;
    Handle m_hover = None;
};
