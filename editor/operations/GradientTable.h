#pragma once

#include <vector>

#include <QGradientStops>
#include <QRgb>

// Where the pixels of a row lie along the stops of a gradient: 0 to 1, or one of these.
const float BEFORE_START = -1.0f;
const float BEYOND_END = 2.0f;

// The colours of a gradient, to be looked up pixel by pixel. They are mixed premultiplied, and exact: several
// stops at one place make a hard edge there.
class GradientTable
{
public:
    // The stops must be in ascending order. Opacity is 0 to 1; without outside there is no colour before the
    // start and beyond the end.
    GradientTable(const QGradientStops& stops, bool reverse, double opacity, bool outside);

    // Premultiplied colours, dithered by less than a level according to where the row begins in its picture.
    void Fill(const float* places, QRgb* pixels, int count, int x, int y) const;

private:
    struct Channels
    {
        // Blue, green, red and alpha, premultiplied, 0 to 255.
        float values[4];
    };

    // From one stop to the next.
    struct Segment
    {
        Channels color;
        // By how much the colour changes over a length of 1.
        Channels slope;
        float start;
        // The first place that belongs to the next segment.
        float end;
    };

    static Channels Premultiplied(const QColor& color, double opacity);
    static Segment Plain(const Channels& color, float end);
    void AddStops(const QGradientStops& stops, double opacity);
    void FillBuckets();

    std::vector<Segment> m_segments;
    // For equal parts of the length, the segment that each begins in; one more before them and one behind.
    std::vector<int> m_buckets;
};
