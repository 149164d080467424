#pragma once

#include <QRectF>

class NVMeasureUnitConverter;

// The sizes that a document may have, for messages to a person: in pixels at first, then rounded for one
// unit. What is rounded stays within the limits, but for the oddities named in the source.
struct SizeLimits
{
    double minWidth = 1.0;
    double maxWidth = 10000.0;
    double minHeight = 1.0;
    double maxHeight = 10000.0;

    // Left and right are the limits of the width, top and bottom those of the height.
    QRectF Rect() const;
};

// The limits of both sides, if they are to keep the proportions of that size.
SizeLimits ProportionalLimits(int width, int height);

// To whole pixels.
SizeLimits LimitsInPixels(SizeLimits limits);
// From pixels to percent of that size, with two decimals.
SizeLimits LimitsInPercent(const SizeLimits& pixels, int width, int height);
// From pixels to the unit that the converter turns them into, with two decimals.
SizeLimits LimitsInLength(const SizeLimits& pixels, const NVMeasureUnitConverter& fromPixels);
