#pragma once

#include <QPainterPath>
#include <QPointF>
#include <QRectF>

// How a text is bent. The amounts are percent from -100 to 100; others are cut to that, and what is no number
// counts as 0.
struct TextWarp
{
    // Without it the amounts count for nothing.
    bool isFlag = true;
    // The wave runs from top to bottom and shifts to the sides, instead of the other way round.
    bool isVertical = false;
    // The height of the wave: at 100 half of the shorter side of the frame, up in its first half.
    double bend = 0;
    // What lies further right grows in height, and shrinks further left; at 100 to nothing.
    double horizontalDistortion = 0;
    // What lies further down grows in width, and shrinks further up.
    double verticalDistortion = 0;
};

bool operator==(const TextWarp& one, const TextWarp& other);

// Whether it leaves everything in its place.
bool IsStraight(const TextWarp& warp);

// Where a point goes to. The frame is that of the straight text; points beyond it go along. An empty frame
// bends nothing.
QPointF WarpPoint(const QPointF& point, const QRectF& frame, const TextWarp& warp);
// Where a point came from, as well as it can be said: where the text shrinks to nothing, points meet.
QPointF UnwarpPoint(const QPointF& point, const QRectF& frame, const TextWarp& warp);
// The outline, bent; of straight pieces so short that nobody sees them.
QPainterPath WarpPath(const QPainterPath& path, const QRectF& frame, const TextWarp& warp);
