#include "StrokeStamp.h"

#include <algorithm>
#include <cmath>

#include <QImage>

#include <opencv2/imgproc.hpp>

#include "ParallelWork.h"

namespace
{
const quint16 FULL = 65535;
// Above this a stamp lies on whole pixels: its falloff is then so wide that half a pixel is about one level
// of 255.
const qint64 COARSE_BYTES = 1 << 20;
const qint64 CACHE_BYTES = 32 << 20;

// How many pixels the falloff of a soft tip needs for one of 255 levels, at its steepest side.
double PixelsPerLevel(const BrushTip& tip, double diameter)
{
    return 0.5 * diameter * tip.roundness * (1.0 - tip.hardness) / 255.0;
}

// Mixes each value with its neighbours, in bands side by side.
cv::Mat Blurred(const cv::Mat& mat, int kernel)
{
    const int bandRows = std::max(64, mat.rows / 8);
    cv::Mat blurred(mat.size(), mat.type());
    std::vector<cv::Range> bands;
    for (int y = 0; y < mat.rows; y += bandRows)
        bands.emplace_back(y, std::min(mat.rows, y + bandRows));
    ForEachParallel(bands,
                    [&](const cv::Range& band)
                    {
                        cv::Mat result = blurred.rowRange(band);
                        cv::blur(mat.rowRange(band), result, cv::Size(kernel, kernel), cv::Point(-1, -1),
                                 cv::BORDER_CONSTANT);
                    });
    return blurred;
}

// The tip in 16 bits. Its 8 bits would show as rings where a hundred soft stamps lie over each other, so the
// levels of a wide falloff are smoothed into each other.
cv::Mat RenderBase(const BrushTip& tip, double diameter)
{
    const QImage image = RenderBrushTip(tip, diameter);
    const cv::Mat bytes(image.height(), image.width(), CV_8UC1, const_cast<uchar*>(image.constBits()),
                        size_t(image.bytesPerLine()));
    cv::Mat base;
    bytes.convertTo(base, CV_16UC1, 257.0);
    const int kernel = 2 * int(std::lround(PixelsPerLevel(tip, diameter))) + 1;
    return kernel > 1 ? Blurred(base, kernel) : base;
}

// Finds the ends of the row and its longest full run.
StrokeStamp::Row Measure(const quint16* values, int width)
{
    StrokeStamp::Row row;
    row.right = width;
    while (row.right > 0 && values[row.right - 1] == 0)
        --row.right;
    while (row.left < row.right && values[row.left] == 0)
        ++row.left;
    row.solidLeft = row.solidRight = row.right;
    bool anyFull = false;
    for (int x = row.left; x < row.right; ++x)
        anyFull |= values[x] == FULL;
    for (int x = row.left; anyFull && x < row.right;)
    {
        const quint16* run = std::find(values + x, values + row.right, FULL);
        const quint16* end = std::find_if(run, values + row.right, [](quint16 v) { return v != FULL; });
        if (end - run > row.solidRight - row.solidLeft)
        {
            row.solidLeft = int(run - values);
            row.solidRight = int(end - values);
        }
        x = int(end - values);
    }
    return row;
}

// The stamp on the pixel grid, with an empty row and column at its end as the moved ones have.
std::shared_ptr<const StrokeStamp> MakeStamp(const cv::Mat& base)
{
    const int side = base.cols;
    auto stamp = std::make_shared<StrokeStamp>();
    stamp->width = side + 1;
    stamp->rows.reserve(size_t(side) + 1);
    for (int y = 0; y < side; ++y)
    {
        const quint16* values = base.ptr<quint16>(y);
        StrokeStamp::Row row = Measure(values, side);
        row.values = stamp->values.size();
        stamp->values.insert(stamp->values.end(), values + row.left, values + row.solidLeft);
        stamp->values.insert(stamp->values.end(), values + row.solidRight, values + row.right);
        stamp->rows.push_back(row);
    }
    stamp->rows.push_back(StrokeStamp::Row());
    stamp->values.shrink_to_fit();
    return stamp;
}

int ValueAt(const StrokeStamp& stamp, const StrokeStamp::Row& row, int x)
{
    if (x < row.left || x >= row.right)
        return 0;
    if (x < row.solidLeft)
        return stamp.values[row.values + size_t(x - row.left)];
    return x < row.solidRight
        ? FULL
        : stamp.values[row.values + size_t(row.solidLeft - row.left + x - row.solidRight)];
}

// A row moved to the right and mixed with the row above it, in quarters of a pixel. Only what is not plainly
// full or empty is computed.
void AppendMoved(StrokeStamp& moved, const StrokeStamp& stamp, const StrokeStamp::Row& above,
                 const StrokeStamp::Row& row, int quartersX, int quartersY)
{
    const bool mixed = quartersY > 0 && above.left < above.right;
    const bool alone = row.left >= row.right;
    StrokeStamp::Row result;
    result.values = moved.values.size();
    result.left = mixed ? (alone ? above.left : std::min(above.left, row.left)) : row.left;
    result.right = std::max(mixed ? above.right : 0, row.right) + (quartersX > 0 ? 1 : 0);
    result.solidLeft =
        (quartersY > 0 ? std::max(above.solidLeft, row.solidLeft) : row.solidLeft) + (quartersX > 0 ? 1 : 0);
    result.solidRight = quartersY > 0 ? std::min(above.solidRight, row.solidRight) : row.solidRight;
    if ((alone && !mixed) || result.left >= result.right)
        result.left = result.right = 0;
    if (result.solidLeft >= result.solidRight)
        result.solidLeft = result.solidRight = result.right;
    const auto down = [&](int x)
    { return ValueAt(stamp, above, x) * quartersY + ValueAt(stamp, row, x) * (4 - quartersY); };
    for (int x = result.left; x < result.right; ++x)
    {
        if (x == result.solidLeft && result.solidLeft < result.solidRight)
            x = result.solidRight;
        if (x < result.right)
            moved.values.push_back(quint16((down(x - 1) * quartersX + down(x) * (4 - quartersX) + 8) / 16));
    }
    moved.rows.push_back(result);
}

std::shared_ptr<const StrokeStamp> MoveStamp(const StrokeStamp& stamp, int quartersX, int quartersY)
{
    auto moved = std::make_shared<StrokeStamp>();
    moved->width = stamp.width;
    moved->rows.reserve(stamp.rows.size());
    const StrokeStamp::Row none;
    for (size_t y = 0; y < stamp.rows.size(); ++y)
        AppendMoved(*moved, stamp, y > 0 ? stamp.rows[y - 1] : none, stamp.rows[y], quartersX, quartersY);
    moved->values.shrink_to_fit();
    return moved;
}
} // namespace

qint64 StrokeStamp::Bytes() const
{
    const size_t bytes = rows.size() * sizeof(Row) + values.capacity() * sizeof(quint16);
    return qint64(bytes);
}

StampCache::Placed StampCache::Get(const BrushTip& tip, double diameter, const QPointF& center)
{
    Family& family = find(tip, diameter);
    family.lastUse = ++m_uses;
    const int steps = family.coarse ? 1 : STEPS;
    const qint64 x = qint64(std::floor((center.x() - family.side / 2.0) * steps + 0.5));
    const qint64 y = qint64(std::floor((center.y() - family.side / 2.0) * steps + 0.5));
    const int quartersX = int(((x % steps) + steps) % steps);
    const int quartersY = int(((y % steps) + steps) % steps);

    const int place = quartersY * STEPS + quartersX;
    std::shared_ptr<const StrokeStamp>& stamp = family.stamps[size_t(place)];
    if (!stamp)
    {
        stamp = MoveStamp(*family.stamps[0], quartersX, quartersY);
        family.bytes += stamp->Bytes();
        m_bytes += stamp->Bytes();
        trim(family);
    }
    return {stamp, QPoint(int((x - quartersX) / steps), int((y - quartersY) / steps))};
}

qint64 StampCache::Bytes() const
{
    return m_bytes;
}

StampCache::Family& StampCache::find(const BrushTip& tip, double diameter)
{
    const Key key(diameter, tip.hardness, tip.angle);
    if (m_pLast && key == m_lastKey)
        return *m_pLast;
    Family& family = m_families[key];
    m_pLast = &family;
    m_lastKey = key;
    if (!family.stamps[0])
    {
        const cv::Mat base = RenderBase(tip, diameter);
        family.side = base.cols;
        family.stamps[0] = MakeStamp(base);
        family.bytes = family.stamps[0]->Bytes();
        family.coarse = family.bytes > COARSE_BYTES;
        m_bytes += family.bytes;
        trim(family);
    }
    return family;
}

// Drops the stamps that were not used for the longest time.
void StampCache::trim(const Family& keep)
{
    while (m_bytes > CACHE_BYTES && m_families.size() > 1)
    {
        auto oldest = m_families.end();
        for (auto it = m_families.begin(); it != m_families.end(); ++it)
        {
            if (&it->second != &keep &&
                (oldest == m_families.end() || it->second.lastUse < oldest->second.lastUse))
                oldest = it;
        }
        m_bytes -= oldest->second.bytes;
        m_families.erase(oldest);
    }
}
