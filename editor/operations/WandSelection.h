#pragma once

#include <QImage>
#include <QPoint>

#include "PictureContents.h"

// What the magic wand looks for.
struct WandSettings
{
    // How far each channel may be off, 0 to 255.
    int tolerance = 32;
    // Only what hangs together with the clicked pixel, side by side; else all that is like it.
    bool contiguous = true;
};

// Selects what is like the pixel at the seed: a Grayscale8 mask as large as the picture, 255 selected, 0 not.
// The picture is ARGB32_Premultiplied. Null when the seed lies outside, when the tolerance is out of range,
// when the memory is too short, or when the progress ended it. Any thread; the work is spread over the cores
// within the call, but for the walk through what hangs together.
QImage WandSelection(const QImage& picture, const QPoint& seed, const WandSettings& settings,
                     const WorkProgress& progress = WorkProgress());
