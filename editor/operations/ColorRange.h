#pragma once

#include <QImage>
#include <QSize>
#include <QVector>

#include "SelectionMask.h"

struct ColorRangeSettings
{
    // What is looked for, premultiplied.
    QVector<QRgb> colors;
    // 0 to 255, see ColorRangeMask; clamped.
    int tolerance = 0;
};

// How much of a pixel is selected whose channel that differs most differs by that much: all of it up to half
// the tolerance, then less and less, and nothing of it beyond the tolerance. 0 to 255.
int ColorRangeCoverage(int difference, int tolerance);

// The pixels that are like one of the colours, by the one that they are most like: Grayscale8, as large as
// the picture; null when there are none. The picture is ARGB32_Premultiplied. Channels are those of the
// premultiplied pixel with its opacity, so that whatever is transparent is alike. All cores work within the
// call; it gives null soon after it was cancelled.
QImage ColorRangeMask(const QImage& picture, const ColorRangeSettings& settings,
                      const IsCancelled& isCancelled = IsCancelled());

// What the selection would be, small: as large as fits into the room with the shape of the picture, black
// where nothing is selected. The colours meet the selection that is there, which may be null, as
// CombineMasks has it. Looks at a few pixels for each one that it gives. Null for an empty room or picture,
// and when it was cancelled.
QImage ColorRangePreview(const QImage& picture, const QImage& selection, const ColorRangeSettings& settings,
                         int state, const QSize& room, const IsCancelled& isCancelled = IsCancelled());
