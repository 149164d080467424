#include "SelectionMask.h"

#include <QPainter>
#include <QPainterPath>

#include <algorithm>
#include <array>
#include <atomic>
#include <cmath>
#include <cstring>
#include <vector>

#include "ParallelWork.h"

namespace
{

// Work is shared out in strips of so many rows, or columns.
const int Strip = 64;
const int BlurColumns = 512;
const int BlurPasses = 3;
// What a painter reaches; no picture does.
const double Far = 30000;

bool IsMask(const QImage& mask)
{
    return !mask.isNull() && mask.format() == QImage::Format_Grayscale8;
}

bool IsStopped(const IsCancelled& isCancelled)
{
    return isCancelled && isCancelled();
}

// The bytes of an image, which no thread has to detach.
struct MaskRows
{
    explicit MaskRows(QImage& mask) : bits(mask.bits()), stride(mask.bytesPerLine()) { }
    uchar* At(int y) const { return bits + y * stride; }

    uchar* bits;
    qsizetype stride;
};

struct ConstMaskRows
{
    explicit ConstMaskRows(const QImage& mask) : bits(mask.constBits()), stride(mask.bytesPerLine()) { }
    const uchar* At(int y) const { return bits + y * stride; }

    const uchar* bits;
    qsizetype stride;
};

void ForStrips(int count, int strip, const std::function<void(int from, int to)>& work)
{
    const auto part = [&](int i) { work(i * strip, std::min(count, (i + 1) * strip)); };
    RunParallel((count + strip - 1) / strip, part);
}

void ForRows(int rows, const std::function<void(int y)>& work)
{
    const auto strip = [&](int from, int to)
    {
        for (int y = from; y < to; ++y)
            work(y);
    };
    ForStrips(rows, Strip, strip);
}

QImage BlankMask(const QSize& size)
{
    QImage mask(size, QImage::Format_Grayscale8);
    if (!mask.isNull())
        mask.fill(0);
    return mask;
}

QImage Checked(const QImage& mask)
{
    return HasSelected(mask) ? mask : QImage();
}

// Each loop stands alone, for the vectoriser.
void CombineRow(const uchar* before, uchar* with, int count, int state)
{
    if (state == UniteSelections)
    {
        for (int x = 0; x < count; ++x)
            with[x] = std::max(before[x], with[x]);
    }
    else if (state == SubtractSelection)
    {
        for (int x = 0; x < count; ++x)
            with[x] = std::min(before[x], uchar(255 - with[x]));
    }
    else
    {
        for (int x = 0; x < count; ++x)
            with[x] = std::min(before[x], with[x]);
    }
}

QRectF WithinReach(const QRectF& rect)
{
    return rect.normalized() & QRectF(-Far, -Far, 2 * Far, 2 * Far);
}

// Draws the shape, white on black, antialiased, in strips.
QImage DrawnMask(const QSize& size, const QPainterPath& shape)
{
    QImage mask = BlankMask(size);
    if (mask.isNull())
        return mask;
    const QRect area = shape.boundingRect().toAlignedRect() & mask.rect();
    const MaskRows rows(mask);
    const auto draw = [&](int from, int to)
    {
        QImage part(rows.At(area.top() + from), size.width(), to - from, int(rows.stride),
                    QImage::Format_Alpha8);
        QPainter painter(&part);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.translate(0, -area.top() - from);
        // The painter keeps in a path, without a lock, what it makes of it, and copies share that: each
        // thread builds a path of its own.
        QPainterPath own;
        own.addPath(shape);
        painter.fillPath(own, Qt::white);
    };
    ForStrips(area.height(), Strip, draw);
    return mask;
}

// Rows of bytes that are maxima over windows of 1, 2, 4 ... of the columns from their place on.
class WindowRows
{
public:
    // The radius is at least 1. Of a row of so many columns the maxima are for windows about each of them.
    WindowRows(int radius, int columns)
        : m_radius(radius),
          m_columns(columns),
          m_length(columns + 2 * radius),
          m_levels(LevelOf(2 * radius + 1) + 1),
          m_slots(size_t(2 * radius + 1)),
          m_bytes(m_slots * size_t(m_levels) * size_t(m_length))
    {
    }

    // Takes a row in, for the place that the one of 2 * radius + 1 rows before had. The row is null for one
    // outside the mask; else it begins at the first column, and so many before and behind it are in the mask.
    void Take(int slot, const uchar* row, int before, int behind)
    {
        uchar* first = At(slot, 0);
        std::memset(first, 0, size_t(m_length));
        if (row)
        {
            const int left = std::min(before, m_radius);
            const int count = left + m_columns + std::min(behind, m_radius);
            std::memcpy(first + m_radius - left, row - left, size_t(count));
        }
        for (int level = 1; level < m_levels; ++level)
        {
            const int half = 1 << (level - 1);
            const uchar* from = At(slot, level - 1);
            uchar* to = At(slot, level);
            const int count = m_length - half;
            for (int x = 0; x < count; ++x)
                to[x] = std::max(from[x], from[x + half]);
            std::memcpy(to + count, from + count, size_t(half));
        }
    }

    // The maximum of what is there and of the row's windows of that half width.
    void Raise(int slot, int half, uchar* result) const
    {
        const int width = 2 * half + 1;
        const int level = LevelOf(width);
        const uchar* from = At(slot, level) + m_radius - half;
        const uchar* end = from + width - (1 << level);
        for (int x = 0; x < m_columns; ++x)
            result[x] = std::max(result[x], std::max(from[x], end[x]));
    }

private:
    static int LevelOf(int width)
    {
        int level = 0;
        while ((2 << level) <= width)
            ++level;
        return level;
    }

    uchar* At(int slot, int level) { return m_bytes.data() + Offset(slot, level); }
    const uchar* At(int slot, int level) const { return m_bytes.data() + Offset(slot, level); }
    size_t Offset(int slot, int level) const
    {
        return (size_t(slot) * size_t(m_levels) + size_t(level)) * size_t(m_length);
    }

    int m_radius;
    int m_columns;
    int m_length;
    int m_levels;
    size_t m_slots;
    std::vector<uchar> m_bytes;
};

// Half the width of the disc in each of its rows.
std::vector<int> DiscOf(int radius)
{
    std::vector<int> halves;
    for (int y = -radius; y <= radius; ++y)
        halves.push_back(int(std::sqrt(double(radius) * radius - double(y) * y)));
    return halves;
}

// The maxima over a disc, in one column of tiles of the area.
void DilateColumn(const QImage& mask, const QRect& area, const MaskRows& result, const std::vector<int>& disc,
                  const IsCancelled& isCancelled)
{
    const int radius = int(disc.size()) / 2;
    const int slotCount = int(disc.size());
    const ConstMaskRows rows(mask);
    WindowRows windows(radius, area.width());
    const auto take = [&](int y)
    {
        const bool isInside = y >= 0 && y < mask.height();
        windows.Take((y - area.top() + radius) % slotCount, isInside ? rows.At(y) + area.left() : nullptr,
                     area.left(), mask.width() - 1 - area.right());
    };
    for (int y = area.top() - radius; y < area.top() + radius; ++y)
        take(y);
    for (int y = area.top(); y <= area.bottom(); ++y)
    {
        if ((y - area.top()) % Strip == 0 && IsStopped(isCancelled))
            return;
        take(y + radius);
        uchar* to = result.At(y) + area.left();
        for (int i = 0; i < slotCount; ++i)
            windows.Raise((y - area.top() + i) % slotCount, disc[size_t(i)], to);
    }
}

std::vector<QRect> TilesOf(const QRect& area, int side)
{
    std::vector<QRect> tiles;
    for (int y = area.top(); y <= area.bottom(); y += side)
    {
        for (int x = area.left(); x <= area.right(); x += side)
            tiles.push_back(QRect(x, y, side, side) & area);
    }
    return tiles;
}

// Grey dilation by a disc. Beyond the mask all is 0.
QImage Dilated(const QImage& mask, int radius, const IsCancelled& isCancelled)
{
    const QRect area = MaskBounds(mask).adjusted(-radius, -radius, radius, radius) & mask.rect();
    QImage result = BlankMask(mask.size());
    if (result.isNull() || area.isEmpty())
        return result;
    const MaskRows rows(result);
    const std::vector<int> disc = DiscOf(radius);
    // Wide enough that the rows that lie beside it do not count, narrow enough for the cache.
    std::vector<QRect> tiles = TilesOf(area, std::max(512, 4 * radius));
    const auto dilate = [&](const QRect& tile)
    {
        if (!IsStopped(isCancelled))
            DilateColumn(mask, tile, rows, disc, isCancelled);
    };
    ForEachParallel(tiles, dilate);
    return result;
}

QImage Inverted(const QImage& mask)
{
    QImage result(mask.size(), QImage::Format_Grayscale8);
    if (result.isNull())
        return result;
    const MaskRows to(result);
    const ConstMaskRows from(mask);
    const auto row = [&](int y)
    {
        for (int x = 0; x < mask.width(); ++x)
            to.At(y)[x] = uchar(255 - from.At(y)[x]);
    };
    ForRows(mask.height(), row);
    return result;
}

// Rounded to the nearest, by a multiplication.
class Divider
{
public:
    explicit Divider(int by) : m_half(uint(by) / 2), m_factor((1ULL << 32) / quint64(by) + 1) { }
    uchar operator()(uint sum) const { return uchar(((sum + m_half) * m_factor) >> 32); }

private:
    uint m_half;
    quint64 m_factor;
};

// The mean over 2 * radius + 1 columns of a row; what lies beyond it is as its ends.
void BlurRow(const uchar* from, uchar* to, int count, int radius, const Divider& divider)
{
    const int last = count - 1;
    uint sum = uint(from[0]) * uint(radius + 1);
    for (int x = 1; x <= radius; ++x)
        sum += from[std::min(x, last)];
    for (int x = 0; x < count; ++x)
    {
        to[x] = divider(sum);
        sum += from[std::min(x + radius + 1, last)];
        sum -= from[std::max(x - radius, 0)];
    }
}

// The same down a strip of columns.
void BlurColumnsOf(const ConstMaskRows& from, const MaskRows& to, const QRect& strip, int rows, int radius)
{
    const Divider divider(2 * radius + 1);
    const int count = strip.width();
    const auto source = [&](int y) { return from.At(qBound(0, y, rows - 1)) + strip.left(); };
    std::vector<uint> sums(size_t(count), 0);
    for (int y = -radius; y <= radius; ++y)
    {
        const uchar* row = source(y);
        for (int x = 0; x < count; ++x)
            sums[size_t(x)] += row[x];
    }
    for (int y = 0; y < rows; ++y)
    {
        uchar* row = to.At(y) + strip.left();
        const uchar* next = source(y + radius + 1);
        const uchar* past = source(y - radius);
        uint* sum = sums.data();
        for (int x = 0; x < count; ++x)
        {
            row[x] = divider(sum[x]);
            sum[x] = sum[x] + next[x] - past[x];
        }
    }
}

// Box blurs in a row, which come close to a Gaussian of that deviation.
QImage Blurred(const QImage& mask, double deviation, const IsCancelled& isCancelled)
{
    // Of a box of width w the variance is (w * w - 1) / 12.
    const double width = std::sqrt(12 * deviation * deviation / BlurPasses + 1);
    const int radius = std::max(1, int(std::lround((width - 1) / 2)));
    const Divider divider(2 * radius + 1);
    QImage one = mask.copy();
    QImage other(mask.size(), QImage::Format_Grayscale8);
    if (one.isNull() || other.isNull())
        return QImage();
    for (int pass = 0; pass < BlurPasses; ++pass)
    {
        if (IsStopped(isCancelled))
            return QImage();
        const MaskRows rows(one);
        const MaskRows turned(other);
        ForRows(mask.height(),
                [&](int y) { BlurRow(rows.At(y), turned.At(y), mask.width(), radius, divider); });
        const ConstMaskRows from(other);
        const auto columns = [&](int left, int right)
        { BlurColumnsOf(from, rows, QRect(left, 0, right - left, 1), mask.height(), radius); };
        ForStrips(mask.width(), BlurColumns, columns);
    }
    return one;
}

// Does the work on a piece of the mask around what is selected in part or ends there, as far as it reaches:
// what lies far from an edge does not change.
QImage BlurredNearEdges(const QImage& mask, double deviation, const IsCancelled& isCancelled)
{
    const int reach = int(std::ceil(deviation * 4)) + BlurPasses;
    const QRect area = MaskBounds(mask).adjusted(-reach, -reach, reach, reach) & mask.rect();
    if (area == mask.rect())
        return Blurred(mask, deviation, isCancelled);
    const QImage piece = Blurred(mask.copy(area), deviation, isCancelled);
    QImage result = BlankMask(mask.size());
    if (piece.isNull() || result.isNull())
        return QImage();
    const MaskRows to(result);
    const ConstMaskRows from(piece);
    ForRows(area.height(),
            [&](int y)
            { std::memcpy(to.At(area.top() + y) + area.left(), from.At(y), size_t(area.width())); });
    return result;
}

void ApplyTable(QImage& mask, const std::array<uchar, 256>& table)
{
    const MaskRows rows(mask);
    const auto row = [&](int y)
    {
        uchar* bytes = rows.At(y);
        for (int x = 0; x < mask.width(); ++x)
            bytes[x] = table[bytes[x]];
    };
    ForRows(mask.height(), row);
}

// So steep that a straight edge, which was blurred, is as soft as an antialiased one.
std::array<uchar, 256> SteepTable(double deviation)
{
    const double slope = std::max(1.0, deviation * std::sqrt(2 * M_PI));
    std::array<uchar, 256> table;
    for (size_t i = 0; i < table.size(); ++i)
        table[i] = uchar(qBound(0.0, (double(i) - 127.5) * slope + 127.5, 255.0) + 0.5);
    return table;
}

} // namespace

QImage CombineMasks(const QImage& before, QImage with, int state)
{
    const bool hasNew = IsMask(with);
    const bool hasOld = IsMask(before) && (!hasNew || before.size() == with.size());
    const bool isReplaced =
        state != UniteSelections && state != SubtractSelection && state != IntersectSelections;
    if (isReplaced)
        return Checked(with);
    if (!hasOld)
        return state == UniteSelections ? Checked(with) : QImage();
    if (!hasNew)
        return state == IntersectSelections ? QImage() : Checked(before);
    with.detach();
    if (with.isNull())
        return before;
    const MaskRows rows(with);
    const ConstMaskRows old(before);
    ForRows(with.height(), [&](int y) { CombineRow(old.At(y), rows.At(y), with.width(), state); });
    return Checked(with);
}

QRect MaskBounds(const QImage& mask)
{
    if (!IsMask(mask))
        return QRect();
    const ConstMaskRows rows(mask);
    const int width = mask.width();
    std::vector<QRect> parts(size_t((mask.height() + Strip - 1) / Strip));
    const auto look = [&](int from, int to)
    {
        QRect& part = parts[size_t(from / Strip)];
        for (int y = from; y < to; ++y)
        {
            const uchar* row = rows.At(y);
            // One comparison with itself, moved by a byte, finds a row of zeros fast.
            if (row[0] == 0 && std::memcmp(row, row + 1, size_t(width - 1)) == 0)
                continue;
            const auto isSet = [](uchar value) { return value != 0; };
            const int left = int(std::find_if(row, row + width, isSet) - row);
            const auto end = std::make_reverse_iterator(row);
            const auto right = std::find_if(std::make_reverse_iterator(row + width), end, isSet);
            part |= QRect(QPoint(left, y), QPoint(int(end - right) - 1, y));
        }
    };
    ForStrips(mask.height(), Strip, look);
    QRect bounds;
    for (const QRect& part : parts)
        bounds |= part;
    return bounds;
}

bool HasSelected(const QImage& mask)
{
    if (!IsMask(mask))
        return false;
    const ConstMaskRows rows(mask);
    std::atomic<bool> found{false};
    const auto look = [&](int y)
    {
        const uchar* row = rows.At(y);
        if (!found && (row[0] != 0 || std::memcmp(row, row + 1, size_t(mask.width() - 1)) != 0))
            found = true;
    };
    ForRows(mask.height(), look);
    return found;
}

bool HasOutline(const QImage& mask)
{
    if (!IsMask(mask))
        return false;
    const ConstMaskRows rows(mask);
    std::atomic<bool> found{false};
    const auto look = [&](int y)
    {
        const uchar* row = rows.At(y);
        const auto isHalf = [](uchar value) { return value >= 128; };
        if (!found && std::any_of(row, row + mask.width(), isHalf))
            found = true;
    };
    ForRows(mask.height(), look);
    return found;
}

QImage FullMask(const QSize& size)
{
    QImage mask(size, QImage::Format_Grayscale8);
    if (!mask.isNull())
        mask.fill(255);
    return mask;
}

QImage RectangleMask(const QSize& size, const QRectF& rect, double radius, double feather)
{
    const QRectF within = WithinReach(rect);
    const double corner = std::min({radius, within.width() / 2, within.height() / 2});
    QPainterPath shape;
    if (corner > 0)
        shape.addRoundedRect(within, corner, corner);
    else
        shape.addRect(within);
    return FeatherMask(Checked(DrawnMask(size, shape)), feather);
}

QImage EllipseMask(const QSize& size, const QRectF& rect, double feather)
{
    QPainterPath shape;
    shape.addEllipse(WithinReach(rect));
    return FeatherMask(Checked(DrawnMask(size, shape)), feather);
}

QImage InvertMask(const QImage& mask, const QSize& size)
{
    if (!IsMask(mask) || mask.size() != size)
        return FullMask(size);
    return Checked(Inverted(mask));
}

QImage MoveMask(const QImage& mask, const QPoint& offset)
{
    if (!IsMask(mask))
        return QImage();
    const QRect target = MaskBounds(mask).translated(offset) & mask.rect();
    QImage result = BlankMask(mask.size());
    if (target.isEmpty() || result.isNull())
        return QImage();
    const MaskRows to(result);
    const ConstMaskRows from(mask);
    const auto row = [&](int y)
    {
        std::memcpy(to.At(target.top() + y) + target.left(),
                    from.At(target.top() + y - offset.y()) + target.left() - offset.x(),
                    size_t(target.width()));
    };
    ForRows(target.height(), row);
    return result;
}

QImage GrowMask(const QImage& mask, int radius, const IsCancelled& isCancelled)
{
    if (!IsMask(mask) || radius <= 0)
        return Checked(mask);
    const QImage result = Dilated(mask, radius, isCancelled);
    return IsStopped(isCancelled) ? QImage() : Checked(result);
}

QImage ShrinkMask(const QImage& mask, int radius, const IsCancelled& isCancelled)
{
    if (!IsMask(mask) || radius <= 0)
        return Checked(mask);
    // Only what lies around the selection takes of it.
    const QRect area = MaskBounds(mask).adjusted(-1, -1, 1, 1) & mask.rect();
    const QImage outside = Dilated(Inverted(mask.copy(area)), radius, isCancelled);
    if (IsStopped(isCancelled) || outside.isNull())
        return QImage();
    QImage result = BlankMask(mask.size());
    if (result.isNull())
        return QImage();
    const MaskRows to(result);
    const ConstMaskRows from(outside);
    const auto row = [&](int y)
    {
        uchar* bytes = to.At(area.top() + y) + area.left();
        for (int x = 0; x < area.width(); ++x)
            bytes[x] = uchar(255 - from.At(y)[x]);
    };
    ForRows(area.height(), row);
    return Checked(result);
}

QImage FeatherMask(const QImage& mask, double radius, const IsCancelled& isCancelled)
{
    if (!IsMask(mask) || !(radius > 0))
        return Checked(mask);
    return Checked(BlurredNearEdges(mask, radius / 2, isCancelled));
}

QImage SmoothMask(const QImage& mask, int radius, const IsCancelled& isCancelled)
{
    if (!IsMask(mask) || radius <= 0)
        return Checked(mask);
    QImage result = BlurredNearEdges(mask, radius / 2.0, isCancelled);
    if (result.isNull() || IsStopped(isCancelled))
        return QImage();
    ApplyTable(result, SteepTable(radius / 2.0));
    return Checked(result);
}

QImage RefineMask(const QImage& mask, const MaskRefinement& refinement, const IsCancelled& isCancelled)
{
    QImage result = SmoothMask(mask, refinement.smooth, isCancelled);
    result = GrowMask(result, refinement.grow, isCancelled);
    result = ShrinkMask(result, refinement.shrink, isCancelled);
    result = FeatherMask(result, refinement.feather, isCancelled);
    return IsStopped(isCancelled) ? QImage() : result;
}
