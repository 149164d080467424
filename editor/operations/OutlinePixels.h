#pragma once

#include <QImage>
#include <QPoint>
#include <QPointF>
#include <QRect>
#include <QVector>

#include "SelectionMask.h"

// The line around what a mask selects by half or more, as the pixels of a screen that it covers: as exact as
// the screen is at every scale, and no dearer for a selection of a million specks than for a square.

// The mask at 1/1, 1/2, 1/4 ... of its size, down to one pixel; a pixel of a smaller one is 255 if any that
// it stands for is selected by half or more, so that nothing small gets lost. Empty for a null mask, or when
// it was cancelled. On all cores.
QVector<QImage> HalvedMasks(const QImage& mask, const IsCancelled& isCancelled = IsCancelled());

// Where a mask stands on a device: its pixel (x, y) covers scale by scale device pixels from
// origin + (x, y) * scale.
struct MaskPlace
{
    double scale = 1.0;
    QPointF origin;
    // Of the line, in device pixels, 1 at least. It lies within the selection.
    int lineWidth = 1;

    bool operator==(const MaskPlace& other) const
    {
        return scale == other.scale && origin == other.origin && lineWidth == other.lineWidth;
    }
};

// The pixels of the line within an area of the device, in no order. The masks are those of HalvedMasks.
QVector<QPoint> OutlinePixels(const QVector<QImage>& masks, const MaskPlace& place, const QRect& area);
