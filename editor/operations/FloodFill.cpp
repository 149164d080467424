#include "FloodFill.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstring>
#include <functional>
#include <utility>
#include <vector>

#include <opencv2/imgproc.hpp>

#include "ParallelWork.h"
#include "PixelBlend.h"
#include "StrokeTile.h"
#include "TileEdit.h"

namespace
{
const uchar ALIKE = 1;
const uchar FILLED = 255;
const int CHANNELS = 4;
const int STRIP_ROWS = 64;
const int BLOCK = 256;

bool IsPicture(const QImage& image)
{
    return !image.isNull() && image.format() == QImage::Format_ARGB32_Premultiplied;
}

bool FitsAsSelection(const QImage& selection, const QSize& size)
{
    return selection.isNull() ||
        (selection.size() == size && selection.format() == QImage::Format_Grayscale8);
}

// A mask as the library takes it; the memory stays the image's.
cv::Mat MatOf(QImage& mask)
{
    return cv::Mat(mask.height(), mask.width(), CV_8UC1, mask.bits(), size_t(mask.bytesPerLine()));
}

void ForRows(const QRect& rect, const std::function<void(int y)>& work)
{
    std::vector<int> strips;
    for (int y = rect.top(); y <= rect.bottom(); y += STRIP_ROWS)
        strips.push_back(y);
    const auto strip = [&](int top)
    {
        for (int y = top; y < std::min(top + STRIP_ROWS, rect.bottom() + 1); ++y)
            work(y);
    };
    if (strips.size() > 1)
        ForEachParallel(strips, strip);
    else
        std::for_each(strips.begin(), strips.end(), strip);
}

// A row of the image that no thread has to detach.
class MaskRows
{
public:
    explicit MaskRows(QImage& mask) : m_bits(mask.bits()), m_stride(mask.bytesPerLine()) { }

    uchar* At(int y) const { return m_bits + y * qsizetype(m_stride); }

private:
    uchar* m_bits;
    int m_stride;
};

// What is like the pixel that was clicked.
class Likeness
{
public:
    Likeness(QRgb seed, const FillSettings& settings)
        : m_seed(Shown(seed)), m_tolerance(settings.tolerance), m_ignoreAlpha(settings.ignoreTransparency)
    {
        const int alpha = qAlpha(seed);
        m_all = m_tolerance == 255 || (m_ignoreAlpha && alpha == 0);
        const auto straight = [alpha](int channel)
        { return alpha == 0 ? 0 : std::min(255, (channel * 255 + alpha / 2) / alpha); };
        m_straight = {straight(qBlue(seed)), straight(qGreen(seed)), straight(qRed(seed))};
    }

    // Marks count pixels with ALIKE or 0.
    void MarkRow(const QRgb* pixels, uchar* marks, int count) const
    {
        if (m_all)
            std::memset(marks, ALIKE, size_t(count));
        else if (m_ignoreAlpha)
            markColors(pixels, marks, count);
        else
            markPixels(pixels, marks, count);
    }

private:
    // Nothing shows of a transparent pixel, whatever its channels hold.
    static QRgb Shown(QRgb pixel) { return (pixel >> 24) == 0 ? 0 : pixel; }

    // How much each channel is off beyond the tolerance: bytes first, so that many are taken at a time.
    void markPixels(const QRgb* pixels, uchar* marks, int count) const
    {
        std::array<QRgb, BLOCK> shown;
        std::array<uchar, size_t(BLOCK) * CHANNELS> seed;
        std::array<uchar, size_t(BLOCK) * CHANNELS> bytes;
        std::fill(shown.begin(), shown.end(), m_seed);
        std::memcpy(seed.data(), shown.data(), seed.size());
        const uchar tolerance = uchar(m_tolerance);
        for (int done = 0; done < count; done += BLOCK)
        {
            const int part = std::min(BLOCK, count - done);
            for (int i = 0; i < part; ++i)
                shown[size_t(i)] = Shown(pixels[done + i]);
            std::memcpy(bytes.data(), shown.data(), size_t(part) * sizeof(QRgb));
            for (size_t i = 0; i < size_t(part) * CHANNELS; ++i)
            {
                const uchar off = uchar(std::max(bytes[i], seed[i]) - std::min(bytes[i], seed[i]));
                bytes[i] = uchar(std::max(off, tolerance) - tolerance);
            }
            std::memcpy(shown.data(), bytes.data(), size_t(part) * sizeof(QRgb));
            for (int i = 0; i < part; ++i)
                marks[done + i] = shown[size_t(i)] == 0 ? ALIKE : uchar(0);
        }
    }

    // A channel c of a pixel with the opacity a stands for a colour v if it is v * a / 255, rounded. That is
    // asked without a division for all v within the tolerance at once.
    bool IsLike(QRgb pixel) const
    {
        const int alpha = qAlpha(pixel);
        const int limit = m_tolerance * alpha + 127;
        const auto off = [alpha](int channel, int straight)
        { return std::abs(255 * channel - straight * alpha); };
        return off(qBlue(pixel), m_straight[0]) <= limit && off(qGreen(pixel), m_straight[1]) <= limit &&
            off(qRed(pixel), m_straight[2]) <= limit;
    }

    void markColors(const QRgb* pixels, uchar* marks, int count) const
    {
        for (int i = 0; i < count; ++i)
            marks[i] = (pixels[i] >> 24) == 0 || IsLike(pixels[i]) ? ALIKE : uchar(0);
    }

    QRgb m_seed;
    int m_tolerance;
    bool m_ignoreAlpha;
    // True when there is nothing that is not like it.
    bool m_all = false;
    std::array<int, CHANNELS - 1> m_straight;
};

QImage MarkAlike(const QImage& picture, const QPoint& seed, const FillSettings& settings)
{
    QImage marks(picture.size(), QImage::Format_Grayscale8);
    if (marks.isNull())
        return marks;
    const MaskRows rows(marks);
    const QRgb clicked = reinterpret_cast<const QRgb*>(picture.constScanLine(seed.y()))[seed.x()];
    const Likeness likeness(clicked, settings);
    const QImage& selection = settings.selection;
    const auto mark = [&](int y)
    {
        uchar* row = rows.At(y);
        likeness.MarkRow(reinterpret_cast<const QRgb*>(picture.constScanLine(y)), row, marks.width());
        if (selection.isNull())
            return;
        const uchar* selected = selection.constScanLine(y);
        for (int x = 0; x < marks.width(); ++x)
            row[x] = selected[x] == 0 ? uchar(0) : row[x];
    };
    ForRows(marks.rect(), mark);
    rows.At(seed.y())[seed.x()] = ALIKE;
    return marks;
}

// Everything outside the area becomes 0; within it what holds the value becomes filled, and the rest 0.
void KeepOnly(uchar value, QImage& marks, const QRect& area)
{
    const MaskRows rows(marks);
    const int width = marks.width();
    const auto keep = [&](int y)
    {
        uchar* row = rows.At(y);
        const bool inside = area.top() <= y && y <= area.bottom();
        const int left = inside ? area.left() : width;
        const int right = inside ? area.right() + 1 : width;
        std::fill(row, row + left, uchar(0));
        for (int x = left; x < right; ++x)
            row[x] = row[x] == value ? FILLED : uchar(0);
        std::fill(row + right, row + width, uchar(0));
    };
    ForRows(marks.rect(), keep);
}

// The coverage, and what of it is not 0.
struct Fill
{
    QImage mask;
    QRect area;
};

Fill FillAlike(QImage marks, const QPoint& seed, bool contiguous)
{
    if (!contiguous)
    {
        KeepOnly(ALIKE, marks, marks.rect());
        return {marks, marks.rect()};
    }
    cv::Mat mat = MatOf(marks);
    cv::Rect filled;
    cv::floodFill(mat, cv::Point(seed.x(), seed.y()), cv::Scalar(FILLED), &filled, 0, 0, 4);
    const QRect area(filled.x, filled.y, filled.width, filled.height);
    KeepOnly(FILLED, marks, area);
    return {marks, area};
}

// The neighbours weigh as in the smallest Gaussian: 1 at a corner, 2 at a side, of 16.
void SoftenEdges(Fill& fill)
{
    fill.area = fill.area.adjusted(-1, -1, 1, 1) & fill.mask.rect();
    const QRect& area = fill.area;
    cv::Mat inside = MatOf(fill.mask)(cv::Rect(area.x(), area.y(), area.width(), area.height()));
    cv::Mat soft;
    cv::GaussianBlur(inside, soft, cv::Size(3, 3), 0.0, 0.0, cv::BORDER_CONSTANT | cv::BORDER_ISOLATED);
    cv::max(inside, soft, inside);
}

void MultiplySelection(Fill& fill, const QImage& selection)
{
    const MaskRows rows(fill.mask);
    const QRect& area = fill.area;
    const auto multiply = [&](int y)
    {
        uchar* row = rows.At(y);
        const uchar* selected = selection.constScanLine(y);
        for (int x = area.left(); x <= area.right(); ++x)
            row[x] = uchar((row[x] * selected[x] + 127) / 255);
    };
    ForRows(area, multiply);
}

bool CanFill(const QImage& picture, const QPoint& seed, const FillSettings& settings)
{
    return IsPicture(picture) && picture.rect().contains(seed) && settings.tolerance >= 0 &&
        settings.tolerance <= 255 && FitsAsSelection(settings.selection, picture.size()) &&
        (settings.selection.isNull() || settings.selection.constScanLine(seed.y())[seed.x()] != 0);
}

Fill MakeFill(const QImage& picture, const QPoint& seed, const FillSettings& settings)
{
    if (!CanFill(picture, seed, settings))
        return {};
    QImage marks = MarkAlike(picture, seed, settings);
    if (marks.isNull())
        return {};
    Fill fill = FillAlike(std::move(marks), seed, settings.contiguous);
    if (settings.antialiasing)
        SoftenEdges(fill);
    if (!settings.selection.isNull())
        MultiplySelection(fill, settings.selection);
    return fill;
}

// What is laid over the layer, by coverage: the colour, or the pattern.
class Paint
{
public:
    explicit Paint(const FillSettings& settings)
        : m_mode(settings.blendMode),
          m_pattern(settings.pattern.convertToFormat(QImage::Format_ARGB32_Premultiplied))
    {
        const QColor color = settings.color.toRgb();
        for (int i = 0; i < 256; ++i)
        {
            const double part = i / 255.0 * settings.opacity / 100.0;
            const double alpha = color.alphaF() * part * 255.0;
            const auto channel = [alpha](double value) { return int(std::lround(value * alpha)); };
            m_colors[size_t(i)] = qRgba(channel(color.redF()), channel(color.greenF()),
                                        channel(color.blueF()), int(std::lround(alpha)));
            m_parts[size_t(i)] = uchar(std::lround(part * 255.0));
        }
    }

    bool IsInvisible() const { return m_pattern.isNull() ? qAlpha(m_colors[255]) == 0 : m_parts[255] == 0; }

    bool Row(const uchar* mask, const QPoint& start, const QRgb* before, QRgb* after, int count) const
    {
        const bool full = std::all_of(mask, mask + count, [](uchar value) { return value == FILLED; });
        if (!full && std::all_of(mask, mask + count, [](uchar value) { return value == 0; }))
            return false;
        if (full && m_pattern.isNull() && m_mode == 0 && qAlpha(m_colors[255]) == 255)
        {
            std::fill_n(after, count, m_colors[255]);
            return true;
        }
        std::array<QRgb, StrokeTile::SIDE> source;
        if (m_pattern.isNull())
            std::transform(mask, mask + count, source.begin(),
                           [this](uchar value) { return m_colors[value]; });
        else
            patternRow(mask, start, source.data(), count);
        BlendPixels(m_mode, source.data(), before, after, count);
        return true;
    }

private:
    void patternRow(const uchar* mask, const QPoint& start, QRgb* source, int count) const
    {
        const int width = m_pattern.width();
        const QRgb* row =
            reinterpret_cast<const QRgb*>(m_pattern.constScanLine(start.y() % m_pattern.height()));
        int x = start.x() % width;
        for (int i = 0; i < count; ++i)
        {
            source[i] = faded(row[x], m_parts[mask[i]]);
            x = x + 1 == width ? 0 : x + 1;
        }
    }

    // Two channels at a time, each in 16 bits of its own.
    static QRgb faded(QRgb pixel, uint part)
    {
        const auto pair = [part](uint channels)
        {
            const uint product = channels * part + 0x800080u;
            return ((product + ((product >> 8) & 0xff00ffu)) >> 8) & 0xff00ffu;
        };
        return pair(pixel & 0xff00ffu) | pair((pixel >> 8) & 0xff00ffu) << 8;
    }

    int m_mode;
    QImage m_pattern;
    // By coverage: the premultiplied colour, and what the pattern is multiplied by.
    std::array<QRgb, 256> m_colors;
    std::array<uchar, 256> m_parts;
};

bool CanPaint(const QImage& layer, const FillSettings& settings)
{
    const bool fits =
        settings.sampled.isNull() || (IsPicture(settings.sampled) && settings.sampled.size() == layer.size());
    const bool hasPaint = !settings.pattern.isNull() || settings.color.isValid();
    return IsPicture(layer) && fits && hasPaint && settings.opacity >= 0.0 && settings.opacity <= 100.0;
}
} // namespace

QImage FloodMask(const QImage& picture, const QPoint& seed, const FillSettings& settings)
{
    return MakeFill(picture, seed, settings).mask;
}

QVector<SavedTile> FloodFill(QImage& layer, const QPoint& seed, const FillSettings& settings)
{
    if (!CanPaint(layer, settings))
        return {};
    const Paint paint(settings);
    if (paint.IsInvisible())
        return {};
    const Fill fill = MakeFill(settings.sampled.isNull() ? layer : settings.sampled, seed, settings);
    const auto edit = [&](const QPoint& start, const QRgb* before, QRgb* after, int count)
    { return paint.Row(fill.mask.constScanLine(start.y()) + start.x(), start, before, after, count); };
    return EditTiles(layer, fill.area, edit);
}
