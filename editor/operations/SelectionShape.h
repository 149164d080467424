#pragma once

#include <QImage>
#include <QPainterPath>
#include <QPointF>
#include <QRect>
#include <QSize>

// A selection that is drawn by a drag, in pixels of the document.
struct SelectionShape
{
    enum Kind
    {
        Rectangle,
        Ellipse
    };

    Kind kind = Rectangle;
    // It may reach beyond the document.
    QRect rect;
    // Of the rectangle's corners.
    int radius = 0;
    int feather = 0;
};

// The rect between two points, on whole pixels: both are moved to the nearest corner of a pixel. A square's
// side is the longer way; with the first point as its centre the rect reaches as far to the other side.
QRect DraggedRect(const QPointF& from, const QPointF& to, bool isSquare, bool isFromCentre);
// The way, or its longer one of the two axes alone.
QPoint DraggedWay(const QPointF& from, const QPointF& to, bool isAlongAxis);

// The edge, without feather.
QPainterPath PathOf(const SelectionShape& shape);
// As SelectionMask.h has it.
QImage MaskOf(const SelectionShape& shape, const QSize& size);
