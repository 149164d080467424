#pragma once

#include <QImage>

#include "gui_export.h"

// The shape of a brush, free of its size: what a preset holds and what a stroke is stamped with.
struct BrushTip
{
    enum Shape : int
    {
        Round,
        Square,
        Diamond,
        Star,
        Spray
    };

    Shape shape = Round;
    // 0 to 1: the part of the radius that is fully opaque; the rest falls off to the edge.
    double hardness = 1.0;
    // 0.05 to 1: height in relation to width.
    double roundness = 1.0;
    // Degrees, counter-clockwise.
    double angle = 0.0;

    bool operator==(const BrushTip& other) const
    {
        return shape == other.shape && hardness == other.hardness && roundness == other.roundness &&
            angle == other.angle;
    }
    bool operator!=(const BrushTip& other) const { return !(*this == other); }
};

// The coverage of one stamp as a square Alpha8 image with the tip in its centre, smooth at the edges. The
// diameter is in pixels, at least 1; fractions show in the coverage of the edge. Thread-safe.
GUI_EXPORT QImage RenderBrushTip(const BrushTip& tip, double diameter);
