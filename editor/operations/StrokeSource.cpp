#include "StrokeSource.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstring>
#include <memory>
#include <vector>

namespace
{
// What a source reads: the layer before the stroke, or the image that is given instead.
class Picture
{
public:
    Picture(const StrokeBackdrop& backdrop, const QImage& sampled) : m_backdrop(backdrop), m_sampled(sampled)
    {
    }

    QRect Rect() const { return m_sampled.isNull() ? m_backdrop.Rect() : m_sampled.rect(); }
    QImage Copy(const QRect& area) const
    {
        return m_sampled.isNull() ? m_backdrop.Copy(area) : m_sampled.copy(area);
    }

private:
    const StrokeBackdrop& m_backdrop;
    const QImage& m_sampled;
};

QImage Usable(const QImage& sampled)
{
    return sampled.isNull() ? sampled : sampled.convertToFormat(QImage::Format_ARGB32_Premultiplied);
}

double Clean(double value, double low, double high)
{
    return std::isfinite(value) ? std::clamp(value, low, high) : low;
}

// A wide Gaussian leaves nothing that needs every pixel: the picture is halved until the sigma is no more
// than FINEST_SIGMA, blurred, and doubled again. Halving and doubling blur too, by the same cubic spline,
// which is taken off the Gaussian. All grids start at the layer's corner, so that neighbouring areas fit.
const double FINEST_SIGMA = 4.0;
// The variance of the spline, in pixels of the finer grid.
const double SPLINE_VARIANCE = 1.0;
const double KERNEL_SIGMAS = 3.5;
// As many sums as there are registers for.
const int CONVOLVED_AT_ONCE = 4;
// Rows that are kept for halving: a power of two, and no fewer than the five that make one.
const int RING_ROWS = 8;
// Of an offset: further than any picture reaches, and safe to add.
const int FAR_AWAY = 1 << 28;

// The four channels of a pixel, worked on at once.
using Channels = float __attribute__((vector_size(16)));

struct Plane
{
    explicit Plane(const QRect& area)
        : rect(area), pixels(size_t(area.width()) * size_t(area.height()), Channels())
    {
    }

    // Of the leftmost pixel; y as in the rect.
    Channels* Row(int y) { return pixels.data() + size_t(y - rect.top()) * size_t(rect.width()); }
    const Channels* Row(int y) const { return pixels.data() + size_t(y - rect.top()) * size_t(rect.width()); }

    QRect rect;
    std::vector<Channels> pixels;
};

struct BlurPlan
{
    int halvings = 0;
    // Of the Gaussian on the coarsest grid: the middle, then what is equally far to both sides.
    std::vector<float> kernel;
};

BlurPlan MakeBlurPlan(double sigma)
{
    BlurPlan plan;
    double variance = sigma * sigma;
    while (std::ldexp(sigma, -plan.halvings) > FINEST_SIGMA)
    {
        variance = (variance - SPLINE_VARIANCE * 2.0) / 4.0;
        ++plan.halvings;
    }
    const int radius = int(std::ceil(KERNEL_SIGMAS * std::sqrt(variance)));
    double sum = 0.0;
    std::vector<double> weights;
    for (int i = 0; i <= radius; ++i)
    {
        weights.push_back(std::exp(-i * i / (2.0 * variance)));
        sum += i == 0 ? weights.back() : 2.0 * weights.back();
    }
    for (double weight : weights)
        plan.kernel.push_back(float(weight / sum));
    return plan;
}

int HalfDown(int value)
{
    return value >= 0 ? value / 2 : -((1 - value) / 2);
}

// What Doubled needs of the coarser grid, and Halved of the finer one.
QRect CoarserArea(const QRect& area)
{
    return QRect(QPoint(HalfDown(area.left()) - 1, HalfDown(area.top()) - 1),
                 QPoint(HalfDown(area.right()) + 1, HalfDown(area.bottom()) + 1));
}

QRect FinerArea(const QRect& area)
{
    return QRect(QPoint(2 * area.left() - 2, 2 * area.top() - 2),
                 QPoint(2 * area.right() + 2, 2 * area.bottom() + 2));
}

Channels AsChannels(const uchar* pixel)
{
    return Channels{float(pixel[0]), float(pixel[1]), float(pixel[2]), float(pixel[3])};
}

// The rows of an area from top to bottom; beyond the picture the pixels at its edge. They are fetched some at
// a time, so that they stay in the cache: the area around a wide blur is many times larger than what it is
// for.
class PictureRows
{
public:
    PictureRows(const Picture& picture, const QRect& area)
        : m_picture(picture), m_rect(picture.Rect()), m_area(area), m_row(size_t(area.width()))
    {
    }

    const Channels* Row(int y);

private:
    int column(int x) const { return std::clamp(x, m_rect.left(), m_rect.right()); }
    int line(int y) const { return std::clamp(y, m_rect.top(), m_rect.bottom()); }

    static const int BAND = 32;

    const Picture& m_picture;
    QRect m_rect;
    QRect m_area;
    QRect m_band;
    QImage m_image;
    std::vector<Channels> m_row;
};

// Valid until the next call.
const Channels* PictureRows::Row(int y)
{
    const int top = line(y);
    if (m_image.isNull() || top < m_band.top() || top > m_band.bottom())
    {
        m_band =
            QRect(QPoint(column(m_area.left()), top), QPoint(column(m_area.right()), line(y + BAND - 1)));
        m_image = m_picture.Copy(m_band);
    }
    if (m_image.isNull())
        return m_row.data();
    const int before = std::clamp(m_band.left() - m_area.left(), 0, m_area.width());
    const int end = std::clamp(m_band.right() + 1 - m_area.left(), before, m_area.width());
    const uchar* from = m_image.constScanLine(top - m_band.top());
    const uchar* last = from + (m_image.width() - 1) * qsizetype(sizeof(QRgb));
    std::fill(m_row.begin(), m_row.begin() + before, AsChannels(from));
    for (int x = before; x < end; ++x, from += sizeof(QRgb))
        m_row[size_t(x)] = AsChannels(from);
    std::fill(m_row.begin() + end, m_row.end(), AsChannels(last));
    return m_row.data();
}

Plane Load(const Picture& picture, const QRect& area)
{
    PictureRows rows(picture, area);
    Plane plane(area);
    for (int y = area.top(); y <= area.bottom(); ++y)
        std::copy_n(rows.Row(y), area.width(), plane.Row(y));
    return plane;
}

Channels SplineHalf(const Channels& a, const Channels& b, const Channels& middle, const Channels& d,
                    const Channels& e)
{
    return (a + e + (b + d) * 4.0f + middle * 6.0f) * (1.0f / 16.0f);
}

// rowAt gives the rows of FinerArea, each once and in order.
template <typename RowAt>
Plane Halved(const QRect& area, RowAt rowAt)
{
    const int width = area.width();
    std::vector<Channels> narrow(size_t(RING_ROWS) * size_t(width));
    const auto line = [&narrow, width](int y) { return narrow.data() + (y & (RING_ROWS - 1)) * width; };
    Plane half(area);
    int next = 2 * area.top() - 2;
    for (int y = area.top(); y <= area.bottom(); ++y)
    {
        for (; next <= 2 * y + 2; ++next)
        {
            const Channels* from = rowAt(next) + 2;
            Channels* to = line(next);
            for (int x = 0; x < width; ++x, from += 2)
                to[x] = SplineHalf(from[-2], from[-1], from[0], from[1], from[2]);
        }
        const std::array<const Channels*, 5> at = {line(2 * y - 2), line(2 * y - 1), line(2 * y),
                                                   line(2 * y + 1), line(2 * y + 2)};
        Channels* to = half.Row(y);
        for (int x = 0; x < width; ++x)
            to[x] = SplineHalf(at[0][x], at[1][x], at[2][x], at[3][x], at[4][x]);
    }
    return half;
}

// The area of the picture, halved so many times.
Plane LoadHalved(const Picture& picture, const QRect& area, int halvings)
{
    if (halvings == 0)
        return Load(picture, area);
    if (halvings == 1)
    {
        PictureRows rows(picture, FinerArea(area));
        return Halved(area, [&rows](int y) { return rows.Row(y); });
    }
    const Plane fine = LoadHalved(picture, FinerArea(area), halvings - 1);
    return Halved(area, [&fine](int y) { return fine.Row(y); });
}

// The weighted sums around COUNT values in a row, whose neighbours are step apart.
template <int COUNT>
void ConvolveSome(const Channels* from, int step, const std::vector<float>& kernel, Channels* to)
{
    Channels sums[COUNT];
    for (int k = 0; k < COUNT; ++k)
        sums[k] = from[k] * kernel[0];
    const Channels* before = from;
    const Channels* after = from;
    for (size_t i = 1; i < kernel.size(); ++i)
    {
        before -= step;
        after += step;
        for (int k = 0; k < COUNT; ++k)
            sums[k] += (before[k] + after[k]) * kernel[i];
    }
    for (int k = 0; k < COUNT; ++k)
        to[k] = sums[k];
}

void Convolve(const Channels* from, int step, int count, const std::vector<float>& kernel, Channels* to)
{
    int x = 0;
    for (; x + CONVOLVED_AT_ONCE <= count; x += CONVOLVED_AT_ONCE)
        ConvolveSome<CONVOLVED_AT_ONCE>(from + x, step, kernel, to + x);
    for (; x < count; ++x)
        ConvolveSome<1>(from + x, step, kernel, to + x);
}

// The plane reaches beyond the area by the radius of the kernel on all sides.
Plane Smoothed(const Plane& plane, const QRect& area, const std::vector<float>& kernel)
{
    const int width = area.width();
    Plane across(QRect(area.left(), plane.rect.top(), width, plane.rect.height()));
    for (int y = plane.rect.top(); y <= plane.rect.bottom(); ++y)
        Convolve(plane.Row(y) + area.left() - plane.rect.left(), 1, width, kernel, across.Row(y));
    Plane result(area);
    for (int y = area.top(); y <= area.bottom(); ++y)
        Convolve(across.Row(y), width, width, kernel, result.Row(y));
    return result;
}

// A value between coarse ones that are step apart, or on the middle one of three.
Channels SplineDouble(const Channels* at, int step, bool between)
{
    return between ? (at[0] + at[step]) * 0.5f : (at[-step] + at[step] + at[0] * 6.0f) * 0.125f;
}

Plane Doubled(const Plane& coarse, const QRect& area)
{
    const int width = coarse.rect.width();
    Plane tall(QRect(coarse.rect.left(), area.top(), width, area.height()));
    for (int y = area.top(); y <= area.bottom(); ++y)
    {
        const Channels* from = coarse.Row(HalfDown(y));
        Channels* to = tall.Row(y);
        for (int x = 0; x < width; ++x)
            to[x] = SplineDouble(from + x, width, y % 2 != 0);
    }
    Plane result(area);
    for (int y = area.top(); y <= area.bottom(); ++y)
    {
        const Channels* from = tall.Row(y);
        Channels* to = result.Row(y);
        for (int x = area.left(); x <= area.right(); ++x)
            to[x - area.left()] = SplineDouble(from + HalfDown(x) - coarse.rect.left(), 1, x % 2 != 0);
    }
    return result;
}

QImage ToImage(const Plane& plane)
{
    QImage image(plane.rect.size(), QImage::Format_ARGB32_Premultiplied);
    for (int y = 0; y < image.height(); ++y)
    {
        const float* from = reinterpret_cast<const float*>(plane.Row(plane.rect.top() + y));
        uchar* to = image.scanLine(y);
        for (int i = 0; i < image.width() * int(sizeof(QRgb)); ++i)
            to[i] = uchar(int(from[i] + 0.5f));
    }
    return image;
}

Plane Blurred(const Picture& picture, const QRect& area, const BlurPlan& plan)
{
    std::vector<QRect> results{area};
    for (int i = 0; i < plan.halvings; ++i)
        results.push_back(CoarserArea(results.back()));
    const QRect& coarsest = results.back();
    const int radius = int(plan.kernel.size()) - 1;
    Plane plane = LoadHalved(picture, coarsest.adjusted(-radius, -radius, radius, radius), plan.halvings);
    plane = Smoothed(plane, coarsest, plan.kernel);
    for (size_t i = results.size() - 1; i > 0; --i)
        plane = Doubled(plane, results[i - 1]);
    return plane;
}

// How bright a channel of the given brightness, 0 to 1, becomes; the exposure from 0 to 1. White stays white,
// and so does black except in the shadows. All three rise everywhere.
double Dodged(ToneRange range, double exposure, double value)
{
    const double missing = 1.0 - value;
    switch (range)
    {
    case ToneRange::Shadows:
        return value + exposure / 3.0 * missing * missing * missing;
    case ToneRange::Midtones:
        return 1.0 - std::pow(missing, 1.0 + exposure);
    default:
        const double smooth = value * value * (3.0 - 2.0 * value);
        return value + exposure * smooth * smooth * missing;
    }
}

// By opacity, then by premultiplied channel: rounded once, which keeps the order of the values.
using DodgeTable = std::array<uchar, 256 * 256>;

std::shared_ptr<const DodgeTable> MakeDodgeTable(ToneRange range, double exposure)
{
    const auto table = std::make_shared<DodgeTable>();
    for (int alpha = 0; alpha < 256; ++alpha)
    {
        uchar* values = table->data() + alpha * 256;
        for (int value = 0; value < alpha; ++value)
            values[value] = uchar(std::lround(alpha * Dodged(range, exposure, double(value) / alpha)));
        std::fill(values + alpha, values + 256, uchar(alpha));
    }
    return table;
}

void DodgePixels(const DodgeTable& table, QRgb* pixels, int count)
{
    for (int i = 0; i < count; ++i)
    {
        const QRgb pixel = pixels[i];
        const uchar* values = table.data() + qAlpha(pixel) * 256;
        pixels[i] = qRgba(values[qRed(pixel)], values[qGreen(pixel)], values[qBlue(pixel)], qAlpha(pixel));
    }
}
} // namespace

StrokeSource MakeCloneSource(const QPoint& offset, const QImage& sampled)
{
    const QPoint shift(std::clamp(offset.x(), -FAR_AWAY, FAR_AWAY),
                       std::clamp(offset.y(), -FAR_AWAY, FAR_AWAY));
    return [shift, image = Usable(sampled)](const StrokeBackdrop& backdrop, const QRect& area)
    { return Picture(backdrop, image).Copy(area.translated(shift)); };
}

StrokeSource MakeBlurSource(double sigma, const QImage& sampled)
{
    const BlurPlan plan = MakeBlurPlan(Clean(sigma, 0.3, 50.0));
    return ReplacingSource{[plan, image = Usable(sampled)](const StrokeBackdrop& backdrop, const QRect& area)
                           { return ToImage(Blurred(Picture(backdrop, image), area, plan)); }};
}

StrokeSource MakeDodgeSource(ToneRange range, double exposure)
{
    const auto table = MakeDodgeTable(range, Clean(exposure, 0.0, 100.0) / 100.0);
    return ReplacingSource{[table](const StrokeBackdrop& backdrop, const QRect& area)
                           {
                               QImage image = backdrop.Copy(area);
                               for (int y = 0; y < image.height(); ++y)
                                   DodgePixels(*table, reinterpret_cast<QRgb*>(image.scanLine(y)),
                                               image.width());
                               return image;
                           }};
}
