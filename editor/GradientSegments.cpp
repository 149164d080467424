#include "GradientSegments.h"

#include <algorithm>
#include <cmath>
#include <functional>

namespace
{

using Color = GradientSegment::Color;

// Looks the same: less than a level of the usual 255.
const double Tolerance = 0.6 / 255;
// Of the halvings that a stretch may take.
const int MaxDepth = 6;

// How far from the left to the right colour.
double LinearWay(double place, double middle)
{
    if (place <= middle)
        return middle > 0 ? 0.5 * place / middle : 0.5;
    return middle < 1 ? 0.5 + 0.5 * (place - middle) / (1 - middle) : 0.5;
}

double WayAt(int blending, double place, double middle)
{
    const double linear = LinearWay(place, middle);
    switch (blending)
    {
    case GradientSegment::Curved:
        return middle > 0 && middle < 1 ? std::pow(place, std::log(0.5) / std::log(middle)) : linear;
    case GradientSegment::Sine:
        return (1 - std::cos(M_PI * linear)) / 2;
    case GradientSegment::SphereIncreasing:
        return std::sqrt(std::max(0.0, 1 - (linear - 1) * (linear - 1)));
    case GradientSegment::SphereDecreasing:
        return 1 - std::sqrt(std::max(0.0, 1 - linear * linear));
    default:
        return linear;
    }
}

double Between(double one, double other, double way)
{
    return one + (other - one) * way;
}

Color Between(const Color& one, const Color& other, double way)
{
    return {Between(one.red, other.red, way), Between(one.green, other.green, way),
            Between(one.blue, other.blue, way), Between(one.alpha, other.alpha, way)};
}

QColor ToColor(const Color& color)
{
    const auto bounded = [](double value) { return std::clamp(value, 0.0, 1.0); };
    return QColor::fromRgbF(bounded(color.red), bounded(color.green), bounded(color.blue),
                            bounded(color.alpha));
}

Color FromColor(const QColor& color)
{
    return {color.redF(), color.greenF(), color.blueF(), color.alphaF()};
}

Color Premultiplied(const Color& color)
{
    return {color.red * color.alpha, color.green * color.alpha, color.blue * color.alpha, color.alpha};
}

Color Straight(const Color& color)
{
    if (color.alpha <= 0)
        return {0, 0, 0, 0};
    return {color.red / color.alpha, color.green / color.alpha, color.blue / color.alpha, color.alpha};
}

double Distance(const Color& one, const Color& other)
{
    return std::max(std::max(std::abs(one.red - other.red), std::abs(one.green - other.green)),
                    std::max(std::abs(one.blue - other.blue), std::abs(one.alpha - other.alpha)));
}

// A grey has no hue: it takes the other's.
double HueOf(const Color& color, const Color& other)
{
    const double hue = ToColor(color).hsvHueF();
    const double otherHue = ToColor(other).hsvHueF();
    return hue >= 0 ? hue : std::max(0.0, otherHue);
}

Color ThroughHues(const GradientSegment& segment, double way)
{
    const QColor left = ToColor(segment.leftColor);
    const QColor right = ToColor(segment.rightColor);
    const double from = HueOf(segment.leftColor, segment.rightColor);
    double to = HueOf(segment.rightColor, segment.leftColor);
    if (segment.coloring == GradientSegment::HueUp && to < from)
        to += 1;
    if (segment.coloring == GradientSegment::HueDown && to > from)
        to -= 1;
    double hue = Between(from, to, way);
    hue -= std::floor(hue);
    const QColor color =
        QColor::fromHsvF(std::min(hue, 1.0), Between(left.saturationF(), right.saturationF(), way),
                         Between(left.valueF(), right.valueF(), way));
    Color result = FromColor(color.toRgb());
    result.alpha = Between(segment.leftColor.alpha, segment.rightColor.alpha, way);
    return result;
}

// At a place of the segment, 0 to 1.
Color ColorAt(const GradientSegment& segment, double place, double middle)
{
    const double way = WayAt(segment.blending, place, middle);
    if (segment.coloring == GradientSegment::Rgb)
        return Between(segment.leftColor, segment.rightColor, way);
    return ThroughHues(segment, way);
}

// Something that changes from 0 to 1 is taken apart until each piece looks like a straight change.
class Divider
{
public:
    using Look = std::function<Color(double)>;
    using Mix = std::function<Color(const Color&, const Color&, double)>;
    using Take = std::function<void(double)>;

    // What it looks like, premultiplied; how the look of two places is mixed between them; and who takes the
    // ends of the pieces.
    Divider(const Look& look, const Mix& mix, const Take& take) : m_look(look), m_mix(mix), m_take(take) { }

    void Divide(double from, double to, int depth = 0) const
    {
        if (depth < MaxDepth && !IsStraight(from, to))
        {
            const double middle = (from + to) / 2;
            Divide(from, middle, depth + 1);
            Divide(middle, to, depth + 1);
        }
        else
            m_take(to);
    }

private:
    bool IsStraight(double from, double to) const
    {
        const Color left = m_look(from);
        const Color right = m_look(to);
        for (int i = 1; i < 8; ++i)
        {
            const double way = i / 8.0;
            if (Distance(m_look(Between(from, to, way)), m_mix(left, right, way)) > Tolerance)
                return false;
        }
        return true;
    }

    Look m_look;
    Mix m_mix;
    Take m_take;
};

void AddStop(QGradientStops& stops, double position, const QColor& color)
{
    if (stops.isEmpty() || stops.constLast() != QGradientStop(position, color))
        stops.append({position, color});
}

// What stands where nothing is to be seen: the colour that shows next to it.
Color Shown(const Color& color, const Color& neighbour)
{
    return color.alpha > 0 ? color : Color{neighbour.red, neighbour.green, neighbour.blue, 0};
}

void AddSegment(QVector<GradientSegment>& segments, double left, double right, const Color& leftColor,
                const Color& rightColor)
{
    if (right > left)
        segments.append({left, (left + right) / 2, right, leftColor, rightColor});
}

void AddSegmentsBetween(QVector<GradientSegment>& segments, const QGradientStop& from,
                        const QGradientStop& to)
{
    const Color left = Shown(FromColor(from.second), FromColor(to.second));
    const Color right = Shown(FromColor(to.second), left);
    const auto look = [&](double place) { return Between(Premultiplied(left), Premultiplied(right), place); };
    const auto straight = [&](double place)
    {
        if (place > 0 && place < 1)
            return Straight(look(place));
        return place > 0 ? right : left;
    };
    const auto mix = [](const Color& one, const Color& other, double way)
    {
        const Color first = Shown(Straight(one), Straight(other));
        return Premultiplied(Between(first, Shown(Straight(other), first), way));
    };
    double done = 0;
    const auto take = [&](double place)
    {
        const double end = place < 1 ? Between(from.first, to.first, place) : to.first;
        AddSegment(segments, Between(from.first, to.first, done), end, straight(done), straight(place));
        done = place;
    };
    Divider(look, mix, take).Divide(0, 1);
}

} // namespace

void AddStopsOf(const GradientSegment& segment, QGradientStops& stops)
{
    const double length = segment.right - segment.left;
    const double middle = length > 0 ? (segment.middle - segment.left) / length : 0.5;
    AddStop(stops, segment.left, ToColor(segment.leftColor));
    if (segment.blending == GradientSegment::Step)
    {
        AddStop(stops, segment.middle, ToColor(segment.leftColor));
        AddStop(stops, segment.middle, ToColor(segment.rightColor));
        AddStop(stops, segment.right, ToColor(segment.rightColor));
        return;
    }
    const auto look = [&](double place) { return Premultiplied(ColorAt(segment, place, middle)); };
    const auto mix = [](const Color& one, const Color& other, double way)
    { return Between(one, other, way); };
    const auto take = [&](double place)
    {
        const Color color = place < 1 ? ColorAt(segment, place, middle) : segment.rightColor;
        AddStop(stops, place < 1 ? segment.left + length * place : segment.right, ToColor(color));
    };
    const Divider divider(look, mix, take);
    // The middle may be a bend.
    if (middle > 0 && middle < 1 && middle != 0.5)
    {
        divider.Divide(0, middle);
        divider.Divide(middle, 1);
    }
    else
        divider.Divide(0, 1);
}

QVector<GradientSegment> ToSegments(const QGradientStops& stops)
{
    QVector<GradientSegment> segments;
    if (stops.isEmpty())
        return segments;
    const Color first = FromColor(stops.constFirst().second);
    AddSegment(segments, 0, stops.constFirst().first, first, first);
    for (int i = 0; i + 1 < stops.size(); ++i)
        AddSegmentsBetween(segments, stops.at(i), stops.at(i + 1));
    const Color last = FromColor(stops.constLast().second);
    AddSegment(segments, stops.constLast().first, 1, last, last);
    return segments;
}
