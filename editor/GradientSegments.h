#pragma once

#include <QGradientStops>

// A piece of a gradient in a GGR file.
struct GradientSegment
{
    // The numbers of the file.
    enum Blending
    {
        Linear,
        Curved,
        Sine,
        SphereIncreasing,
        SphereDecreasing,
        Step
    };
    enum Coloring
    {
        Rgb,
        // Through the hues from red over green to blue, or the other way.
        HueUp,
        HueDown
    };
    // Straight, not premultiplied; 0 to 1.
    struct Color
    {
        double red = 0;
        double green = 0;
        double blue = 0;
        double alpha = 0;
    };

    double left = 0;
    double middle = 0;
    double right = 0;
    Color leftColor;
    Color rightColor;
    int blending = Linear;
    int coloring = Rgb;
};

// Adds the stops that look like the segment when colours are mixed premultiplied between them: two for the
// simplest, otherwise as many as it takes. A stop that is there already is not repeated.
void AddStopsOf(const GradientSegment& segment, QGradientStops& stops);

// The segments, of linear blending in RGB, that look like the stops.
QVector<GradientSegment> ToSegments(const QGradientStops& stops);
