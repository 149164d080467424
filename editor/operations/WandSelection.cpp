#include "WandSelection.h"

#include <algorithm>
#include <atomic>
#include <cstring>
#include <vector>

#include "FloodFill.h"
#include "ParallelWork.h"

namespace
{
const uchar ALIKE = 255;
const uchar REACHED = 1;
const int STRIP_ROWS = 64;
// How many spans are walked between two questions whether to go on.
const int PATIENCE = 8192;
// Pixels that are looked at together.
const int WORD = 8;
const uchar ALL_ALIKE[WORD] = {ALIKE, ALIKE, ALIKE, ALIKE, ALIKE, ALIKE, ALIKE, ALIKE};

// A row of the mask that no thread has to detach.
class MaskRows
{
public:
    explicit MaskRows(QImage& mask) : m_bits(mask.bits()), m_stride(mask.bytesPerLine()) { }

    uchar* At(int y) const { return m_bits + y * qsizetype(m_stride); }

private:
    uchar* m_bits;
    int m_stride;
};

// Calls work(y) for each row.
template <class Work>
void ForRows(int height, const Work& work)
{
    const auto strip = [&](int index)
    {
        const int top = index * STRIP_ROWS;
        for (int y = top; y < std::min(top + STRIP_ROWS, height); ++y)
            work(y);
    };
    RunParallel((height + STRIP_ROWS - 1) / STRIP_ROWS, strip);
}

qint64 CountAlike(const MaskRows& rows, const QSize& size)
{
    std::atomic<qint64> count{0};
    ForRows(size.height(), [&](int y) { count += std::count(rows.At(y), rows.At(y) + size.width(), ALIKE); });
    return count;
}

// Walks from a pixel through all that is alike, a span of a row at a time, and marks it as reached.
class SpanWalk
{
public:
    SpanWalk(const MaskRows& rows, const QSize& size, const WorkProgress& progress)
        : m_rows(rows), m_size(size), m_progress(progress)
    {
        if (m_progress)
            m_alike = CountAlike(rows, size);
    }

    // False when the progress ended it.
    bool Run(const QPoint& seed)
    {
        Reach(seed.x(), {seed.y(), 0, -1}, 0);
        int patience = PATIENCE;
        while (!m_waiting.empty())
        {
            const Step step = m_waiting.back();
            m_waiting.pop_back();
            WalkOn(step);
            if (--patience > 0)
                continue;
            patience = PATIENCE;
            if (m_progress && !m_progress(int(m_reached * 100 / m_alike)))
                return false;
        }
        return true;
    }

private:
    // Both ends are part of it; empty when the right one lies left of the left one.
    struct Span
    {
        int y;
        int left;
        int right;
    };
    // A span that was reached, and from where: the span of the row above (-1) or below (1), or none (0).
    struct Step
    {
        Span span;
        int from;
        int fromLeft;
        int fromRight;
    };

    // In the row that the step came from, what lies beside that span is new alone.
    void WalkOn(const Step& step)
    {
        const Span& span = step.span;
        for (int way : {-1, 1})
        {
            if (way != step.from)
            {
                ReachFrom(span, span.left, span.right, way);
                continue;
            }
            ReachFrom(span, span.left, std::min(span.right, step.fromLeft - 1), way);
            ReachFrom(span, std::max(span.left, step.fromRight + 1), span.right, way);
        }
    }

    void ReachFrom(const Span& span, int left, int right, int way)
    {
        const int y = span.y + way;
        if (y < 0 || y >= m_size.height())
            return;
        const uchar* row = m_rows.At(y);
        for (int x = NextAlike(row, left, right); x <= right; x = NextAlike(row, x, right))
            x = Reach(x, {y, span.left, span.right}, -way) + 2;
    }

    // Beyond the right end when there is none.
    static int NextAlike(const uchar* row, int x, int right)
    {
        const int near = std::min(right, x + WORD);
        for (; x <= near; ++x)
        {
            if (row[x] == ALIKE)
                return x;
        }
        if (x > right)
            return x;
        const void* found = std::memchr(row + x, ALIKE, size_t(right) - size_t(x) + 1);
        return found ? int(static_cast<const uchar*>(found) - row) : right + 1;
    }

    // Marks the span around the pixel of the row; the place of its right end.
    int Reach(int x, const Span& origin, int from)
    {
        uchar* row = m_rows.At(origin.y);
        int left = x;
        int right = x;
        row[x] = REACHED;
        while (left > 0 && row[left - 1] == ALIKE)
            row[--left] = REACHED;
        for (; right + WORD < m_size.width() && std::memcmp(row + right + 1, ALL_ALIKE, WORD) == 0;
             right += WORD)
            std::memset(row + right + 1, REACHED, WORD);
        while (right + 1 < m_size.width() && row[right + 1] == ALIKE)
            row[++right] = REACHED;
        m_reached += right - left + 1;
        m_waiting.push_back({{origin.y, left, right}, from, origin.left, origin.right});
        return right;
    }

    const MaskRows& m_rows;
    const QSize m_size;
    const WorkProgress& m_progress;
    std::vector<Step> m_waiting;
    qint64 m_alike = 0;
    qint64 m_reached = 0;
};

void KeepReached(const MaskRows& rows, const QSize& size)
{
    const auto keep = [&](int y)
    {
        uchar* row = rows.At(y);
        for (int x = 0; x < size.width(); ++x)
            row[x] = row[x] == REACHED ? ALIKE : uchar(0);
    };
    ForRows(size.height(), keep);
}

} // namespace

QImage WandSelection(const QImage& picture, const QPoint& seed, const WandSettings& settings,
                     const WorkProgress& progress)
{
    FillSettings alike;
    alike.tolerance = settings.tolerance;
    alike.contiguous = false;
    QImage mask = FloodMask(picture, seed, alike);
    if (mask.isNull() || (progress && !progress(0)))
        return QImage();
    if (!settings.contiguous)
        return mask;
    const MaskRows rows(mask);
    if (!SpanWalk(rows, mask.size(), progress).Run(seed))
        return QImage();
    KeepReached(rows, mask.size());
    return mask;
}
