#include "OutlinePixels.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <functional>
#include <vector>

#include "ParallelWork.h"

namespace
{

const uchar Half = 128;
const int Strip = 32;
const int Outside = -1;

// Two rows of the source make one of half the size.
void HalveRow(const uchar* upper, const uchar* lower, int width, uchar* to)
{
    const int pairs = width / 2;
    for (int x = 0; x < pairs; ++x)
    {
        const uchar above = std::max(upper[2 * x], upper[2 * x + 1]);
        const uchar below = std::max(lower[2 * x], lower[2 * x + 1]);
        to[x] = std::max(above, below) >= Half ? 255 : 0;
    }
    if (width % 2 != 0)
        to[pairs] = std::max(upper[width - 1], lower[width - 1]) >= Half ? 255 : 0;
}

QImage Halved(const QImage& mask)
{
    QImage half((mask.width() + 1) / 2, (mask.height() + 1) / 2, QImage::Format_Grayscale8);
    if (half.isNull())
        return half;
    uchar* bits = half.bits();
    const auto strip = [&](int i)
    {
        for (int y = i * Strip; y < std::min(half.height(), (i + 1) * Strip); ++y)
            HalveRow(mask.constScanLine(2 * y), mask.constScanLine(std::min(2 * y + 1, mask.height() - 1)),
                     mask.width(), bits + qsizetype(y) * half.bytesPerLine());
    };
    RunParallel((half.height() + Strip - 1) / Strip, strip);
    return half;
}

// As far down as no pixel of it falls between two of the device.
int LevelFor(double scale, int levels)
{
    const double tolerance = 1e-9;
    const int level = scale < 1 ? int(std::ceil(-std::log2(scale) - tolerance)) : 0;
    return qBound(0, level, levels - 1);
}

// Which pixel of the level lies under the middle of each device pixel from the first on.
std::vector<int> IndicesOf(int first, int count, double origin, double scale, int level, int size)
{
    std::vector<int> indices(size_t(count), Outside);
    for (int i = 0; i < count; ++i)
    {
        const double pixel = std::floor((first + i + 0.5 - origin) / scale);
        if (pixel >= 0 && pixel < size)
            indices[size_t(i)] = int(pixel) >> level;
    }
    return indices;
}

// What the device shows of a mask, a row at a time.
class DeviceRows
{
public:
    // The size is that of the mask, whose level this is.
    DeviceRows(const QImage& image, const QSize& size, int level, const MaskPlace& place, const QRect& area)
        : m_image(image),
          m_columns(IndicesOf(area.left(), area.width(), place.origin.x(), place.scale, level, size.width())),
          m_rows(IndicesOf(area.top(), area.height(), place.origin.y(), place.scale, level, size.height()))
    {
    }

    int GetWidth() const { return int(m_columns.size()); }

    // 1 for each pixel that is selected.
    void Get(int y, uchar* to) const
    {
        const int row = m_rows[size_t(y)];
        if (row == Outside)
        {
            std::memset(to, 0, m_columns.size());
            return;
        }
        const uchar* from = m_image.constScanLine(row);
        for (size_t x = 0; x < m_columns.size(); ++x)
            to[x] = m_columns[x] != Outside && from[m_columns[x]] >= Half;
    }

private:
    const QImage& m_image;
    std::vector<int> m_columns;
    std::vector<int> m_rows;
};

// A selected pixel is of the line if one so near, to either side, above or below, is not.
void AddLine(const std::vector<const uchar*>& rows, int width, int lineWidth, const QPoint& start,
             QVector<QPoint>& pixels)
{
    const uchar* row = rows[size_t(lineWidth)];
    for (int x = 0; x < width; ++x)
    {
        if (!row[lineWidth + x])
            continue;
        bool isInner = true;
        for (int i = 1; i <= lineWidth; ++i)
        {
            const uchar* above = rows[size_t(lineWidth) - size_t(i)];
            const uchar* below = rows[size_t(lineWidth) + size_t(i)];
            isInner = isInner && row[lineWidth + x - i] && row[lineWidth + x + i] && above[lineWidth + x] &&
                below[lineWidth + x];
        }
        if (!isInner)
            pixels += start + QPoint(x, 0);
    }
}

// The rows reach beyond those of the area by the width of the line.
QVector<QPoint> LineOf(const DeviceRows& device, int lineWidth, const QRect& area, int from, int to)
{
    const int width = device.GetWidth();
    const int count = 2 * lineWidth + 1;
    std::vector<uchar> bytes(size_t(count) * size_t(width));
    const auto slot = [&](int y) { return bytes.data() + size_t(y % count) * size_t(width); };
    for (int y = from; y < from + 2 * lineWidth; ++y)
        device.Get(y, slot(y));
    QVector<QPoint> pixels;
    std::vector<const uchar*> rows(static_cast<size_t>(count));
    for (int y = from; y < to; ++y)
    {
        device.Get(y + 2 * lineWidth, slot(y + 2 * lineWidth));
        for (int i = 0; i < count; ++i)
            rows[size_t(i)] = slot(y + i);
        AddLine(rows, area.width(), lineWidth, QPoint(area.left(), area.top() + y), pixels);
    }
    return pixels;
}

} // namespace

QVector<QImage> HalvedMasks(const QImage& mask, const IsCancelled& isCancelled)
{
    if (mask.isNull() || mask.format() != QImage::Format_Grayscale8)
        return {};
    QVector<QImage> masks = {mask};
    while (masks.constLast().width() > 1 || masks.constLast().height() > 1)
    {
        const QImage half = Halved(masks.constLast());
        if (half.isNull() || (isCancelled && isCancelled()))
            return {};
        masks += half;
    }
    return masks;
}

QVector<QPoint> OutlinePixels(const QVector<QImage>& masks, const MaskPlace& place, const QRect& area)
{
    if (masks.isEmpty() || area.isEmpty() || !(place.scale > 0) || place.lineWidth < 1)
        return {};
    const int level = LevelFor(place.scale, masks.size());
    const int width = place.lineWidth;
    const DeviceRows device(masks.at(level), masks.constFirst().size(), level, place,
                            area.adjusted(-width, -width, width, width));
    QVector<QVector<QPoint>> parts((area.height() + Strip - 1) / Strip);
    QVector<QPoint>* part = parts.data();
    const auto strip = [&](int i)
    { part[i] = LineOf(device, width, area, i * Strip, std::min(area.height(), (i + 1) * Strip)); };
    RunParallel(parts.size(), strip);
    QVector<QPoint> pixels;
    for (const QVector<QPoint>& some : qAsConst(parts))
        pixels += some;
    return pixels;
}
