#pragma once

#include <QPointF>
#include <QPolygonF>
#include <QRect>
#include <QSize>
#include <QTransform>

// The frame of a crop: a rectangle on a document, turned about its middle. Places within it are shares of its
// sides: 0, 0 is its upper left corner, 1, 1 the lower right one, wherever they lie once it is turned.
//
// All functions give a frame on whole pixels, as far as its angle allows: sides of 1 to MAX_SIDE pixels and,
// while they are upright, edges between pixels, so that the crop changes no pixel.
struct CropFrame
{
    static const int MAX_SIDE;

    // Document pixels.
    QPointF middle;
    // Empty for no frame.
    QSize size;
    // Degrees, clockwise, -180 to 180.
    double angle = 0;

    bool IsNull() const { return size.isEmpty(); }
    // Sides along rows and columns of pixels.
    bool IsUpright() const;
    // From pixels of the frame, counted from its upper left corner.
    QTransform ToDocument() const;
    QPointF PointAt(const QPointF& share) const;
    // In document pixels.
    QPolygonF GetOutline() const;
};

bool operator==(const CropFrame& one, const CropFrame& other);

CropFrame CropFrameOf(const QRect& rect);
// From one corner to the opposite one. With a proportion, of width to height, the largest such one between
// the two that begins at the first; 0 for none.
CropFrame CropFrameBetween(const QPointF& from, const QPointF& to, double proportion);
// The largest one of that proportion within the frame, about its middle.
CropFrame InProportion(const CropFrame& frame, double proportion);

CropFrame Moved(const CropFrame& frame, const QPointF& way);
// To that angle, which may be any; the place stays where it is.
CropFrame Turned(const CropFrame& frame, double angle, const QPointF& share);
// The place stays where it is.
CropFrame Resized(const CropFrame& frame, const QSizeF& size, const QPointF& share);
// As its corner or the middle of its edge at that place goes to the point; the opposite one stays, or else
// the middle of the frame. Pulled across, the frame turns over. With a proportion, 0 for none, both sides
// change.
CropFrame Pulled(const CropFrame& frame, const QPointF& share, const QPointF& to, double proportion,
                 bool aboutMiddle);
