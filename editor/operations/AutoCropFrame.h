#pragma once

#include <QImage>
#include <QRect>

#include "PictureContents.h"

// What of a picture's border is background.
struct AutoCropSettings
{
    // What the background looks like. With all but Transparent a pixel belongs to it when no channel of it is
    // further from the background than the tolerance; channels are those of premultiplied pixels with their
    // opacity, so that whatever is transparent is alike.
    enum Background
    {
        // Pixels of an opacity, 0 to 255, up to the tolerance.
        Transparent,
        // The pixel in that corner.
        LeftTop,
        BottomRight,
        // The corner that is like most of the four corners; of several, the first from the upper left one
        // clockwise.
        Auto
    };
    enum Side
    {
        Left = 1,
        Top = 2,
        Right = 4,
        Bottom = 8
    };

    Background background = Auto;
    // The sides that may be cut, as flags; the others stay as they are.
    int sides = Left | Top | Right | Bottom;
    // 0 to 255.
    int tolerance = 15;
};

// What is left when rows and columns that are background from end to end are cut from the sides. The picture
// is ARGB32_Premultiplied. Null when all of it is background, whatever the sides, and when the work was
// cancelled. On all cores within the call.
QRect AutoCropFrame(const QImage& picture, const AutoCropSettings& settings,
                    const WorkProgress& progress = WorkProgress());
