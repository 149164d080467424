#pragma once

#include <atomic>

#include <QGradientStops>
#include <QImage>
#include <QPointF>
#include <QTransform>
#include <QVector>

#include "ImageTiles.h"

// What one gradient on the canvas is drawn with. Points are in layer pixels; the first pixel spans 0 to 1.
struct GradientSettings
{
    enum Type
    {
        // Along the line from start to end.
        Linear,
        // Circles about the start; the end lies on the last one.
        Circular,
        // Squares that stand on a corner, about the start; the end is a corner of the last one.
        Diamond,
        // Once around the start, clockwise from the direction of the end.
        Angle
    };

    // The index of the list of types. Anything else is Linear.
    int type = Linear;
    QPointF start;
    QPointF end;
    // In ascending order. Fewer than one draw nothing.
    QGradientStops stops;
    bool reverse = false;
    // 1 to 1000: how often the stops are run through between start and end.
    int repeatCount = 1;
    // Every other run goes backwards.
    bool pingPong = false;
    // Whether the colours at the ends go on beyond start and end; otherwise nothing is drawn there. An Angle
    // has no ends.
    bool outside = true;
    // Percent, 0 to 100.
    double opacity = 100.0;
    // Index into the list of thirteen blend modes, see PixelBlend.h.
    int blendMode = 0;
    // Grayscale8, as large as the layer, 255 selected; null selects everything.
    QImage selection;
};

struct GradientProgress
{
    // 0 to 100.
    std::atomic<int> percent{0};
    // Set from any thread; the work ends soon after, and the layer is as it was.
    std::atomic<bool> cancelled{false};
};

// Draws the gradient on the layer, ARGB32_Premultiplied, in place, on all cores within the call. Gives what
// the touched tiles held before, for ExchangeTiles; empty when nothing changed, start and end are the same
// point, a number is not finite, or the work was cancelled. The progress may be null. Colours are mixed
// premultiplied, and dithered by less than a level, so that long gradients show no bands.
QVector<SavedTile> DrawGradient(QImage& layer, const GradientSettings& settings, GradientProgress* progress);

// The same for a view: the picture shows pieces of the layer, already blended or not, and the transform maps
// its pixels to those of the layer. The selection is looked up there. On all cores.
void DrawGradientPreview(QImage& picture, const QTransform& toLayer, const GradientSettings& settings);
