#pragma once

#include <QColor>
#include <QImage>
#include <QPoint>
#include <QVector>

#include "ImageTiles.h"

struct FillSettings
{
    // 0 to 255: how far the channel that differs most may be from the pixel that was clicked. Channels are
    // those of the premultiplied pixel with its opacity, so that whatever is transparent is alike.
    int tolerance = 32;
    // Only what is connected, by sides, with the pixel that was clicked; else all that is like it.
    bool contiguous = true;
    // The pixels just outside take part of the colour, the more the more of their eight neighbours are
    // filled, those by a side counting double; at most three quarters. The inside stays full.
    bool antialiasing = false;
    // Opacity does not count in the comparison, only the colour without it, as closely as a faint pixel tells
    // it: it is like the clicked one if any colour within the tolerance looks as it does. A fully transparent
    // pixel, which has no colour, is like any other.
    bool ignoreTransparency = false;
    QColor color = Qt::black;
    // Laid out from the upper left corner of the layer in place of the colour. Null: the colour.
    QImage pattern;
    // Index into the list of thirteen blend modes, see PixelBlend.h.
    int blendMode = 0;
    // Percent, 0 to 100.
    double opacity = 100.0;
    // What is compared, as large as the layer, ARGB32_Premultiplied; null for the layer itself.
    QImage sampled;
    // Grayscale8, as large as the layer, 255 selected; null selects everything. What is not selected at all
    // is not filled, and what lies behind it is not reached; what is partly selected is filled in part.
    QImage selection;
};

// The coverage of the fill, 0 to 255, as a Grayscale8 image as large as the picture; null when the seed lies
// outside the picture or in nothing that is selected, or when the tolerance is out of range, an image does
// not fit or the memory is short. The picture is ARGB32_Premultiplied; settings.sampled is not looked at. Any
// thread.
QImage FloodMask(const QImage& picture, const QPoint& seed, const FillSettings& settings);

// Fills the layer, ARGB32_Premultiplied, from the seed, in layer pixels. Gives what the touched tiles held
// before, for ExchangeTiles; empty when nothing changed, as with settings that are out of range or images
// that do not fit. The work is spread over the cores within the call.
QVector<SavedTile> FloodFill(QImage& layer, const QPoint& seed, const FillSettings& settings);
