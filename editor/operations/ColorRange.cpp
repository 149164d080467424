#include "ColorRange.h"

#include <algorithm>
#include <array>
#include <atomic>
#include <cstdlib>

#include "ParallelWork.h"

namespace
{

// Rows that are worked on between two looks at whether it was cancelled.
const int BandRows = 64;
// Of the preview, along each side of a pixel.
const int PreviewSamples = 2;

int Difference(QRgb one, QRgb other)
{
    return std::max(std::max(std::abs(qRed(one) - qRed(other)), std::abs(qGreen(one) - qGreen(other))),
                    std::max(std::abs(qBlue(one) - qBlue(other)), std::abs(qAlpha(one) - qAlpha(other))));
}

// The colour space in cells, by the three colour channels.
const int CellBits = 4;
const int CellSide = 256 >> CellBits;
const int CellsAlong = 1 << CellBits;
const int CellCount = 1 << (3 * CellBits);

int CellOf(QRgb pixel)
{
    const int shift = 8 - CellBits;
    return (((qRed(pixel) >> shift) << CellBits | qGreen(pixel) >> shift) << CellBits) |
        qBlue(pixel) >> shift;
}

// The least and the most by which a channel differs from those of a range.
struct Spread
{
    Spread() = default;
    Spread(int value, int first, int last)
        : least(std::max({0, first - value, value - last})),
          most(std::max(std::abs(value - first), std::abs(value - last)))
    {
    }

    int least = 0;
    int most = 0;
};

Spread Joined(const Spread& one, const Spread& other)
{
    Spread joined;
    joined.least = std::max(one.least, other.least);
    joined.most = std::max(one.most, other.most);
    return joined;
}

// How far a colour is from the cells, channel by channel.
struct Reach
{
    Reach() = default;
    explicit Reach(QRgb from) : color(from), alpha(qAlpha(from), 0, 255), opaque(qAlpha(from), 255, 255)
    {
        for (int i = 0; i < CellsAlong; ++i)
        {
            const int first = i * CellSide;
            const int last = first + CellSide - 1;
            red[size_t(i)] = Spread(qRed(from), first, last);
            green[size_t(i)] = Spread(qGreen(from), first, last);
            blue[size_t(i)] = Spread(qBlue(from), first, last);
        }
    }
    Spread From(int cell, bool isOpaque) const
    {
        const int mask = CellsAlong - 1;
        return Joined(Joined(red[size_t(cell >> (2 * CellBits))], green[size_t((cell >> CellBits) & mask)]),
                      Joined(blue[size_t(cell & mask)], isOpaque ? opaque : alpha));
    }

    QRgb color = 0;
    std::array<Spread, CellsAlong> red;
    std::array<Spread, CellsAlong> green;
    std::array<Spread, CellsAlong> blue;
    // From any opacity, and from the full one.
    Spread alpha;
    Spread opaque;
};

// The colours, sorted by the cells that they can matter to: however many there are, a pixel is compared with
// few.
class ColorTable
{
public:
    explicit ColorTable(const ColorRangeSettings& settings);

    uchar Coverage(QRgb pixel) const;

private:
    struct Candidate
    {
        QRgb color = 0;
        // No pixel of the cell differs by less.
        int least = 0;
    };
    struct Cell
    {
        // In m_candidates, the nearest first.
        int begin = 0;
        int end = 0;
        // Whatever lies in it is selected to the full.
        bool isFull = false;
    };

    Cell MakeCell(const QVector<Reach>& reaches, int tolerance, int index, bool isOpaque);

    int m_fullDifference = 0;
    std::array<uchar, 256> m_coverage;
    // Of opaque pixels, and of all others.
    std::array<Cell, CellCount> m_opaque;
    std::array<Cell, CellCount> m_others;
    QVector<Candidate> m_candidates;
};

ColorTable::ColorTable(const ColorRangeSettings& settings) : m_fullDifference(settings.tolerance / 2)
{
    for (int difference = 0; difference < 256; ++difference)
        m_coverage[size_t(difference)] = uchar(ColorRangeCoverage(difference, settings.tolerance));
    QVector<Reach> reaches;
    for (const QRgb color : settings.colors)
        reaches += Reach(color);
    for (int index = 0; index < CellCount; ++index)
    {
        m_opaque[size_t(index)] = MakeCell(reaches, settings.tolerance, index, true);
        m_others[size_t(index)] = MakeCell(reaches, settings.tolerance, index, false);
    }
}

uchar ColorTable::Coverage(QRgb pixel) const
{
    const Cell& cell = (qAlpha(pixel) == 255 ? m_opaque : m_others)[size_t(CellOf(pixel))];
    if (cell.isFull)
        return 255;
    int least = 256;
    for (int i = cell.begin; i < cell.end; ++i)
    {
        const Candidate& candidate = m_candidates.at(i);
        if (least <= std::max(m_fullDifference, candidate.least))
            break;
        least = std::min(least, Difference(pixel, candidate.color));
    }
    return least > 255 ? 0 : m_coverage[size_t(least)];
}

ColorTable::Cell ColorTable::MakeCell(const QVector<Reach>& reaches, int tolerance, int index, bool isOpaque)
{
    Cell cell;
    cell.begin = m_candidates.size();
    for (const Reach& reach : reaches)
    {
        const Spread spread = reach.From(index, isOpaque);
        cell.isFull = cell.isFull || spread.most <= m_fullDifference;
        if (spread.least <= tolerance)
            m_candidates += {reach.color, spread.least};
    }
    if (cell.isFull)
        m_candidates.resize(cell.begin);
    cell.end = m_candidates.size();
    const auto isNearer = [](const Candidate& one, const Candidate& other)
    { return one.least < other.least; };
    std::sort(m_candidates.begin() + cell.begin, m_candidates.end(), isNearer);
    return cell;
}

// True if any pixel is selected at least in part.
bool MaskRow(const QRgb* pixels, uchar* mask, int width, const ColorTable& table)
{
    QRgb last = pixels[0];
    uchar coverage = table.Coverage(last);
    uchar any = 0;
    for (int x = 0; x < width; ++x)
    {
        if (pixels[x] != last)
        {
            last = pixels[x];
            coverage = table.Coverage(last);
        }
        mask[x] = coverage;
        any |= coverage;
    }
    return any != 0;
}

// The pixels in the middle of an even raster.
template <class Pixel>
QImage Sampled(const QImage& image, const QSize& size)
{
    QImage sampled(size, image.format());
    for (int y = 0; y < size.height(); ++y)
    {
        const qint64 line = (2 * qint64(y) + 1) * image.height() / (2 * size.height());
        const auto* from = reinterpret_cast<const Pixel*>(image.constScanLine(int(line)));
        auto* to = reinterpret_cast<Pixel*>(sampled.scanLine(y));
        for (int x = 0; x < size.width(); ++x)
            to[x] = from[(2 * qint64(x) + 1) * image.width() / (2 * size.width())];
    }
    return sampled;
}

bool IsMaskOf(const QImage& mask, const QImage& picture)
{
    return mask.format() == QImage::Format_Grayscale8 && mask.size() == picture.size();
}

} // namespace

int ColorRangeCoverage(int difference, int tolerance)
{
    const int full = tolerance / 2;
    if (difference <= full)
        return 255;
    const int steps = tolerance + 1 - full;
    return difference > tolerance ? 0 : (255 * (tolerance + 1 - difference) + steps / 2) / steps;
}

QImage ColorRangeMask(const QImage& picture, const ColorRangeSettings& settings,
                      const IsCancelled& isCancelled)
{
    QImage mask(picture.size(), QImage::Format_Grayscale8);
    if (mask.isNull() || settings.colors.isEmpty())
        return QImage();
    ColorRangeSettings clamped = settings;
    clamped.tolerance = qBound(0, settings.tolerance, 255);
    const ColorTable table(clamped);
    uchar* const bits = mask.bits();
    const qint64 stride = mask.bytesPerLine();
    std::atomic<bool> hasAny{false};
    std::atomic<bool> wasCancelled{false};
    const auto work = [&](int band)
    {
        if (wasCancelled || (isCancelled && isCancelled()))
        {
            wasCancelled = true;
            return;
        }
        const int end = std::min((band + 1) * BandRows, picture.height());
        for (int y = band * BandRows; y < end; ++y)
        {
            const auto* row = reinterpret_cast<const QRgb*>(picture.constScanLine(y));
            if (MaskRow(row, bits + y * stride, picture.width(), table))
                hasAny = true;
        }
    };
    RunParallel((picture.height() + BandRows - 1) / BandRows, work);
    return hasAny && !wasCancelled ? mask : QImage();
}

QImage ColorRangePreview(const QImage& picture, const QImage& selection, const ColorRangeSettings& settings,
                         int state, const QSize& room, const IsCancelled& isCancelled)
{
    if (picture.isNull() || room.isEmpty())
        return QImage();
    const QSize size = picture.size().scaled(room, Qt::KeepAspectRatio).expandedTo(QSize(1, 1));
    const QSize raster = size * PreviewSamples;
    const QImage mask = ColorRangeMask(Sampled<QRgb>(picture, raster), settings, isCancelled);
    const QImage before = IsMaskOf(selection, picture) ? Sampled<uchar>(selection, raster) : QImage();
    QImage after = CombineMasks(before, mask, state);
    if (after.isNull())
    {
        after = QImage(raster, QImage::Format_Grayscale8);
        after.fill(0);
    }
    if (isCancelled && isCancelled())
        return QImage();
    return after.scaled(size, Qt::IgnoreAspectRatio, Qt::SmoothTransformation)
        .convertToFormat(QImage::Format_Grayscale8);
}
