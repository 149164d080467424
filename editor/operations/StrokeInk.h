#pragma once

#include <QVector>

#include "BrushStroke.h"
#include "StrokePath.h"
#include "StrokeTile.h"

// The ink of a stroke whose settings are within their ranges and whose images have the right formats.
//
// Pattern+Color and Pattern+Gradient multiply the colour by the brightness of the pattern: white takes the
// colour, black stays black, and the pattern's alpha makes holes.
StrokeInk MakeStrokeInk(const StrokeSettings& settings);

// The colours of single stamps, in the fill modes and dynamics where they differ.
class StrokeColors
{
public:
    explicit StrokeColors(const StrokeSettings& settings);

    // Premultiplied.
    QRgb At(const StampPlan& plan) const;

private:
    QRgb gradientAt(double distance) const;
    QRgb randomAt(quint64 index) const;

    QRgb m_foreground;
    QRgb m_background;
    int m_fillMode;
    // One run through the stops, evenly spread.
    QVector<QRgb> m_gradient;
    double m_runLength;
    quint64 m_seed;
};
