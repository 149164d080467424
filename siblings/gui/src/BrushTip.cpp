#include "BrushTip.h"

#include <QPointF>
#include <QtMath>
#include <cmath>
#include <cstring>

namespace
{

const double MaxDiameter = 10000.0;
const int StarPoints = 5;
const double StarWaist = 0.42;
const int SprayDots = 190;
const int RunLength = 32;

// A tip made ready for drawing: everything in pixels, angles as sine and cosine.
struct Stamp
{
    BrushTip::Shape shape = BrushTip::Round;
    double radius = 0.5;
    double hardness = 1.0;
    double flatness = 1.0; // width in relation to height
    double sine = 0.0;
    double cosine = 1.0;
    int side = 1;
};

double cleaned(double value, double low, double high, double fallback)
{
    return std::isnan(value) ? fallback : qBound(low, value, high);
}

double smoothStep(double t)
{
    t = qBound(0.0, t, 1.0);
    return t * t * (3.0 - 2.0 * t);
}

Stamp prepare(const BrushTip& tip, double diameter)
{
    if (!std::isfinite(diameter) || diameter < 1.0)
        diameter = 1.0;
    diameter = qMin(diameter, MaxDiameter);
    const double roundness = cleaned(tip.roundness, 0.05, 1.0, 1.0);
    const double angle = std::isfinite(tip.angle) ? qDegreesToRadians(std::fmod(tip.angle, 360.0)) : 0.0;

    Stamp stamp;
    stamp.shape = tip.shape >= BrushTip::Round && tip.shape <= BrushTip::Spray ? tip.shape : BrushTip::Round;
    stamp.radius = diameter / 2;
    stamp.hardness = cleaned(tip.hardness, 0.0, 1.0, 1.0);
    stamp.flatness = 1.0 / roundness;
    stamp.sine = std::sin(angle);
    stamp.cosine = std::cos(angle);
    double extent = diameter;
    if (stamp.shape == BrushTip::Square && diameter > 1.0)
    {
        const double s = qAbs(stamp.sine);
        const double c = qAbs(stamp.cosine);
        extent *= qMax(c + s * roundness, s + c * roundness);
    }
    // Too little for a person to see, and too much for the rounding of a quarter turn.
    stamp.side = qMax(1, qCeil(extent - 1e-6));
    return stamp;
}

// Where a point lies between centre and edge. The level is the radius on the edge of the shape and grows
// evenly from the centre; the slope is how much it grows over one pixel across the edge.
struct Level
{
    double level = 0.0;
    double slope = 1.0;
};

Level roundLevel(const Stamp& stamp, double x, double y)
{
    const double stretched = y * stamp.flatness;
    const double level = std::sqrt(x * x + stretched * stretched);
    if (level < 1e-9)
        return {0.0, stamp.flatness};
    return {level, std::sqrt(x * x + stretched * stretched * stamp.flatness * stamp.flatness) / level};
}

Level squareLevel(const Stamp& stamp, double x, double y)
{
    const double stretched = qAbs(y) * stamp.flatness;
    return qAbs(x) >= stretched ? Level{qAbs(x), 1.0} : Level{stretched, stamp.flatness};
}

Level diamondLevel(const Stamp& stamp, double x, double y)
{
    return {qAbs(x) + qAbs(y) * stamp.flatness, std::sqrt(1.0 + stamp.flatness * stamp.flatness)};
}

// One edge of the star serves for all: the point is mirrored, again and again, to the half sector right of
// the tip that stands up.
Level starLevel(const Stamp& stamp, double x, double y)
{
    static const double sine = std::sin(M_PI / StarPoints);
    static const double cosine = std::cos(M_PI / StarPoints);
    static const double length = std::hypot(StarWaist * sine, 1.0 - StarWaist * cosine);
    static const QPointF normal((1.0 - StarWaist * cosine) / length, StarWaist * sine / length);

    double px = qAbs(x);
    double py = -y * stamp.flatness;
    const double right = qMax(0.0, px * cosine - py * sine);
    px -= 2.0 * right * cosine;
    py += 2.0 * right * sine;
    const double left = qMax(0.0, -px * cosine - py * sine);
    px += 2.0 * left * cosine;
    py += 2.0 * left * sine;
    return {(qAbs(px) * normal.x() + py * normal.y()) / normal.y(), stamp.flatness / normal.y()};
}

Level levelAt(const Stamp& stamp, double x, double y)
{
    switch (stamp.shape)
    {
    case BrushTip::Square:
        return squareLevel(stamp, x, y);
    case BrushTip::Diamond:
        return diamondLevel(stamp, x, y);
    case BrushTip::Star:
        return starLevel(stamp, x, y);
    default:
        return roundLevel(stamp, x, y);
    }
}

// Full up to the hardness, then falling smoothly, and never steeper than over one pixel.
uchar coverage(const Stamp& stamp, const Level& at)
{
    const double outer = stamp.radius + 0.5 * at.slope;
    if (at.level >= outer)
        return 0;
    const double inner = qMax(0.0, qMin(stamp.hardness * stamp.radius, stamp.radius - 0.5 * at.slope));
    if (at.level <= inner)
        return 255;
    return uchar(255.0 * (1.0 - smoothStep((at.level - inner) / (outer - inner))) + 0.5);
}

void mirrorRow(uchar* row, int side)
{
    for (int x = 0; x < side / 2; ++x)
        row[side - 1 - x] = row[x];
}

// A circle, by quarters: in each row only the pixels of the slope are computed one by one.
void drawCircle(QImage& image, const Stamp& stamp)
{
    const double centre = stamp.side / 2.0;
    const double outer = stamp.radius + 0.5;
    const double inner = qMax(0.0, qMin(stamp.hardness * stamp.radius, stamp.radius - 0.5));
    for (int y = 0; y < (stamp.side + 1) / 2; ++y)
    {
        uchar* const row = image.scanLine(y);
        const double dy = centre - y - 0.5;
        const int half = (stamp.side + 1) / 2;
        const double reach = outer * outer - dy * dy;
        const double core = inner * inner - dy * dy;
        const int from = reach > 0 ? qBound(0, qFloor(centre - std::sqrt(reach)), half) : half;
        const int to = core > 0 ? qBound(from, qCeil(centre - std::sqrt(core)), half) : half;
        std::memset(row, 0, size_t(from));
        for (int x = from; x < to; ++x)
        {
            const double dx = centre - x - 0.5;
            row[x] = coverage(stamp, {std::sqrt(dx * dx + dy * dy), 1.0});
        }
        std::memset(row + to, 255, size_t(half - to));
        mirrorRow(row, stamp.side);
        std::memcpy(image.scanLine(stamp.side - 1 - y), row, size_t(stamp.side));
    }
}

// How much the level may change from one pixel to its neighbour.
double steepest(const Stamp& stamp)
{
    switch (stamp.shape)
    {
    case BrushTip::Diamond:
    case BrushTip::Star:
        return levelAt(stamp, 0.0, 0.0).slope;
    default:
        return stamp.flatness;
    }
}

// A few pixels of a row, of which the first lies at the start. Most runs of a large tip lie so far from its
// slope that their first pixel speaks for all.
void drawRun(uchar* run, int length, const Stamp& stamp, const QPointF& start)
{
    const auto at = [&](int x)
    {
        const double dx = start.x() + x;
        return levelAt(stamp, dx * stamp.cosine - start.y() * stamp.sine,
                       dx * stamp.sine + start.y() * stamp.cosine);
    };
    const double reach = (length + 0.5) * steepest(stamp);
    const double first = at(0).level;
    if (first - reach >= stamp.radius)
        std::memset(run, 0, size_t(length));
    else if (first + reach <= qMin(stamp.hardness * stamp.radius, stamp.radius))
        std::memset(run, 255, size_t(length));
    else
        for (int x = 0; x < length; ++x)
            run[x] = coverage(stamp, at(x));
}

void drawShape(QImage& image, const Stamp& stamp)
{
    const bool halfTurn = stamp.shape != BrushTip::Star;
    const double centre = stamp.side / 2.0;
    const int rows = halfTurn ? (stamp.side + 1) / 2 : stamp.side;
    for (int y = 0; y < rows; ++y)
    {
        uchar* const row = image.scanLine(y);
        const double dy = y + 0.5 - centre;
        for (int x = 0; x < stamp.side; x += RunLength)
            drawRun(row + x, qMin(RunLength, stamp.side - x), stamp, QPointF(x + 0.5 - centre, dy));
        if (!halfTurn)
            continue;
        uchar* const opposite = image.scanLine(stamp.side - 1 - y);
        for (int x = 0; x < stamp.side; ++x)
            opposite[stamp.side - 1 - x] = row[x];
    }
}

void drawDot(QImage& image, const QPointF& centre, double radius, double strength)
{
    const int top = qMax(0, qFloor(centre.y() - radius - 1));
    const int bottom = qMin(image.height() - 1, qCeil(centre.y() + radius + 1));
    const int left = qMax(0, qFloor(centre.x() - radius - 1));
    const int right = qMin(image.width() - 1, qCeil(centre.x() + radius + 1));
    for (int y = top; y <= bottom; ++y)
    {
        uchar* const row = image.scanLine(y);
        const double dy = y + 0.5 - centre.y();
        for (int x = left; x <= right; ++x)
        {
            const double dx = x + 0.5 - centre.x();
            const double distance = std::sqrt(dx * dx + dy * dy);
            const double cover = qBound(0.0, radius + 0.5 - distance, 1.0) * strength;
            row[x] = qMax(row[x], uchar(255.0 * cover + 0.5));
        }
    }
}

// Numbers from 0 to 1 that look random and are the same each time.
class Scatter
{
public:
    double Next()
    {
        m_state = m_state * 1664525u + 1013904223u;
        return (m_state >> 8) / 16777216.0;
    }

private:
    quint32 m_state = 20011u;
};

// Grains strewn over the tip; hardness is how far out they keep their strength.
void drawSpray(QImage& image, const Stamp& stamp)
{
    image.fill(0);
    Scatter scatter;
    const double centre = stamp.side / 2.0;
    for (int i = 0; i < SprayDots; ++i)
    {
        const double distance = 0.95 * std::sqrt(scatter.Next());
        const double direction = 2.0 * M_PI * scatter.Next();
        const double grain = scatter.Next();
        const double radius = qMax(0.5, stamp.radius * (0.015 + 0.045 * grain * grain));
        const double fade = (distance - stamp.hardness) / qMax(1e-6, 1.0 - stamp.hardness);
        const double reach = qMax(0.0, stamp.radius - radius) * distance;
        const double x = reach * std::cos(direction);
        const double y = reach * std::sin(direction) / stamp.flatness;
        drawDot(
            image,
            QPointF(centre + x * stamp.cosine + y * stamp.sine, centre - x * stamp.sine + y * stamp.cosine),
            radius, 1.0 - smoothStep(fade));
    }
}

} // namespace

QImage RenderBrushTip(const BrushTip& tip, double diameter)
{
    const Stamp stamp = prepare(tip, diameter);
    QImage image(stamp.side, stamp.side, QImage::Format_Alpha8);
    if (image.isNull())
        return image;
    if (stamp.radius <= 0.5)
    {
        // One pixel is painted in full, whatever its shape.
        image.fill(255);
        return image;
    }
    // Grains of a spray that is hardly larger than a pixel would leave nothing of it.
    if (stamp.shape == BrushTip::Spray && stamp.side > 2)
        drawSpray(image, stamp);
    else if ((stamp.shape == BrushTip::Round || stamp.shape == BrushTip::Spray) && stamp.flatness == 1.0)
        drawCircle(image, stamp);
    else
        drawShape(image, stamp);
    return image;
}
