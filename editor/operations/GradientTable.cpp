#include "GradientTable.h"

#include <algorithm>
#include <array>

#include <QColor>

namespace
{
// A power of two, so that a place finds its bucket without rounding.
const int BUCKETS = 1024;
const int PATTERN = 8;

using Thresholds = std::array<std::array<float, PATTERN>, PATTERN>;

// Evenly spread between 0 and 1, and neighbours far apart: each bit of the place in the pattern decides half
// of what the bit before left open.
Thresholds MakeThresholds()
{
    Thresholds thresholds;
    for (unsigned y = 0; y < PATTERN; ++y)
    {
        for (unsigned x = 0; x < PATTERN; ++x)
        {
            unsigned value = 0;
            for (unsigned bit = 1; bit < PATTERN; bit *= 2)
                value = value * 4 + ((x ^ y) & bit ? 2 : 0) + (y & bit ? 1 : 0);
            thresholds[y][x] = (float(value) + 0.5f) / (PATTERN * PATTERN);
        }
    }
    return thresholds;
}

QGradientStops Reversed(const QGradientStops& stops)
{
    QGradientStops reversed;
    for (auto stop = stops.crbegin(); stop != stops.crend(); ++stop)
        reversed.append({1.0 - stop->first, stop->second});
    return reversed;
}
} // namespace

GradientTable::GradientTable(const QGradientStops& stops, bool reverse, double opacity, bool outside)
{
    const QGradientStops ordered = reverse ? Reversed(stops) : stops;
    const Channels none{};
    const Channels first = Premultiplied(ordered.first().second, opacity);
    const Channels last = Premultiplied(ordered.last().second, opacity);
    m_segments.push_back(Plain(outside ? first : none, 0.0f));
    AddStops(ordered, opacity);
    m_segments.push_back(Plain(last, (1.0f + BEYOND_END) / 2.0f));
    m_segments.push_back(Plain(outside ? last : none, 2.0f * BEYOND_END));
    FillBuckets();
}

void GradientTable::Fill(const float* places, QRgb* pixels, int count, int x, int y) const
{
    static const Thresholds thresholds = MakeThresholds();
    const std::array<float, PATTERN>& row = thresholds[unsigned(y) % PATTERN];
    for (int i = 0; i < count; ++i)
    {
        const float place = places[i];
        const int bucket = place < 0.0f ? 0 : 1 + int(std::min(place, 1.0f) * BUCKETS);
        const Segment* segment = m_segments.data() + m_buckets[size_t(bucket)];
        while (place >= segment->end)
            ++segment;
        const float way = place - segment->start;
        const float threshold = row[unsigned(x + i) % PATTERN];
        int channels[4];
        for (int c = 0; c < 4; ++c)
            channels[c] = int(segment->color.values[c] + segment->slope.values[c] * way + threshold);
        const int alpha = channels[3];
        pixels[i] = QRgb(std::min(channels[0], alpha)) | QRgb(std::min(channels[1], alpha)) << 8 |
            QRgb(std::min(channels[2], alpha)) << 16 | QRgb(alpha) << 24;
    }
}

GradientTable::Channels GradientTable::Premultiplied(const QColor& color, double opacity)
{
    const double alpha = color.alphaF() * opacity * 255.0;
    return {{float(color.blueF() * alpha), float(color.greenF() * alpha), float(color.redF() * alpha),
             float(alpha)}};
}

GradientTable::Segment GradientTable::Plain(const Channels& color, float end)
{
    return {color, Channels{}, 0.0f, end};
}

// What lies between stops at one place takes no room, and is left out.
void GradientTable::AddStops(const QGradientStops& stops, double opacity)
{
    Channels color = Premultiplied(stops.first().second, opacity);
    float place = 0.0f;
    bool isFirst = true;
    for (const QGradientStop& stop : stops)
    {
        const float end = std::clamp(float(stop.first), place, 1.0f);
        const Channels next = Premultiplied(stop.second, opacity);
        if (end > place)
        {
            Segment segment = {color, Channels{}, place, end};
            for (int c = 0; c < 4 && !isFirst; ++c)
                segment.slope.values[c] = (next.values[c] - color.values[c]) / (end - place);
            m_segments.push_back(segment);
        }
        color = next;
        place = end;
        isFirst = false;
    }
}

void GradientTable::FillBuckets()
{
    m_buckets.assign(BUCKETS + 2, 0);
    int segment = 0;
    for (int i = 0; i <= BUCKETS; ++i)
    {
        while (float(i) / BUCKETS >= m_segments[size_t(segment)].end)
            ++segment;
        m_buckets[size_t(i) + 1] = segment;
    }
}
