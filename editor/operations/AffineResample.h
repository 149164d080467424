#pragma once

#include <QImage>
#include <QPoint>
#include <QTransform>

#include "PictureContents.h"

// A picture and where its upper left pixel lies.
struct PlacedImage
{
    QImage image;
    QPoint corner;

    QRect GetRect() const { return QRect(corner, image.size()); }
};

// The picture under an affine transform of document pixels: the part of it that lies within the bounds,
// bicubic, with edges that fade out over a pixel. What shrinks goes through means, so that nothing is missed.
// The format, ARGB32_Premultiplied or Grayscale8, stays; outside of the picture all is 0. A transform that
// moves by whole pixels changes no pixel. The image is null when nothing lies within the bounds, when the
// transform flattens the picture, when the memory is short, or when the progress, which may be empty, says
// so.
PlacedImage ResampleAffine(const PlacedImage& picture, const QTransform& transform, const QRect& bounds,
                           const WorkProgress& progress);

// Whether the transform moves by whole pixels and does nothing else.
bool IsWholeMove(const QTransform& transform);
