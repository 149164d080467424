#include "LiftedContent.h"

#include <algorithm>
#include <cstring>
#include <mutex>

#include "ParallelWork.h"
#include "SelectionMask.h"
#include "TileEdit.h"

namespace
{
const int BAND_ROWS = 64;

const QRgb* LineOf(const QImage& image, int y)
{
    return reinterpret_cast<const QRgb*>(image.constScanLine(y));
}

// Channels, times weight / 255, rounded.
inline QRgb Scaled(QRgb color, quint32 weight)
{
    quint32 even = (color & 0xff00ff) * weight + 0x800080;
    quint32 odd = ((color >> 8) & 0xff00ff) * weight + 0x800080;
    even = ((even + ((even >> 8) & 0xff00ff)) >> 8) & 0xff00ff;
    odd = (odd + ((odd >> 8) & 0xff00ff)) & 0xff00ff00;
    return even | odd;
}

inline QRgb Over(QRgb above, QRgb below)
{
    const quint32 rest = 255u - quint32(qAlpha(above));
    return rest == 0 ? above : above + Scaled(below, rest);
}

int BandsOf(int rows)
{
    return (rows + BAND_ROWS - 1) / BAND_ROWS;
}

// From left to right, of a row within the bounds that are searched; empty when first is behind last.
struct Extent
{
    int first;
    int last;
};

template <typename IsThere>
Extent ExtentOf(int left, int right, const IsThere& isThere)
{
    int first = left;
    while (first <= right && !isThere(first))
        ++first;
    int last = right;
    while (last > first && !isThere(last))
        --last;
    return {first, first > right ? right - 1 : last};
}

Extent ExtentOf(const QRgb* row, const uchar* mask, int left, int right)
{
    if (!mask)
        return ExtentOf(left, right, [row](int x) { return qAlpha(row[x]) > 0; });
    return ExtentOf(left, right, [row, mask](int x) { return mask[x] > 0 && qAlpha(row[x]) > 0; });
}

QRect BandBounds(const QImage& layer, const QImage& selection, const QRect& band)
{
    QRect bounds;
    for (int y = band.top(); y <= band.bottom(); ++y)
    {
        const uchar* mask = selection.isNull() ? nullptr : selection.constScanLine(y);
        const QRgb* row = LineOf(layer, y);
        const Extent extent = ExtentOf(row, mask, band.left(), band.right());
        if (extent.first <= extent.last)
            bounds |= QRect(QPoint(extent.first, y), QPoint(extent.last, y));
    }
    return bounds;
}

// The rows of one image from those of others, on all cores.
template <typename Work>
void ForRows(int rows, const Work& work)
{
    const auto band = [&](int index)
    {
        const int end = std::min(rows, (index + 1) * BAND_ROWS);
        for (int y = index * BAND_ROWS; y < end; ++y)
            work(y);
    };
    RunParallel(BandsOf(rows), band);
}

// Each pixel times its weight, which is the mask or, with 255 to flip it, what the mask leaves. Masks are
// mostly long runs of all or nothing.
void WeighRow(const QRgb* from, const uchar* mask, uchar flip, QRgb* to, int count)
{
    for (int x = 0; x < count;)
    {
        const uchar value = mask[x];
        const int end =
            int(std::find_if(mask + x, mask + count, [value](uchar other) { return other != value; }) - mask);
        const uchar weight = value ^ flip;
        if (weight == 0)
            std::fill(to + x, to + end, 0);
        else if (weight == 255)
            std::copy(from + x, from + end, to + x);
        else
            std::transform(from + x, from + end, to + x,
                           [weight](QRgb color) { return Scaled(color, weight); });
        x = end;
    }
}

QImage Selected(const QImage& layer, const QImage& selection, const QRect& bounds)
{
    QImage picture(bounds.size(), QImage::Format_ARGB32_Premultiplied);
    if (picture.isNull())
        return picture;
    uchar* const corner = picture.bits();
    const auto work = [&](int y)
    {
        const QRgb* from = LineOf(layer, bounds.top() + y) + bounds.left();
        const uchar* mask = selection.constScanLine(bounds.top() + y) + bounds.left();
        QRgb* to = reinterpret_cast<QRgb*>(corner + qsizetype(y) * picture.bytesPerLine());
        WeighRow(from, mask, 0, to, bounds.width());
    };
    ForRows(bounds.height(), work);
    return picture;
}

// The layer without what is selected.
QImage Unselected(const QImage& layer, const QImage& selection)
{
    QImage rest(layer.size(), QImage::Format_ARGB32_Premultiplied);
    if (rest.isNull())
        return rest;
    uchar* const corner = rest.bits();
    const auto work = [&](int y)
    {
        const QRgb* from = LineOf(layer, y);
        const uchar* mask = selection.constScanLine(y);
        QRgb* to = reinterpret_cast<QRgb*>(corner + qsizetype(y) * rest.bytesPerLine());
        WeighRow(from, mask, 255, to, layer.width());
    };
    ForRows(layer.height(), work);
    return rest;
}

// The picture's share of a part of a row; the rest of it is as below.
void LayRow(const PlacedImage& picture, const QPoint& start, QRgb* row, int count)
{
    const QRect part = QRect(start, QSize(count, 1)) & picture.GetRect();
    if (part.isEmpty())
        return;
    const QRgb* from =
        LineOf(picture.image, start.y() - picture.corner.y()) + part.left() - picture.corner.x();
    QRgb* to = row + part.left() - start.x();
    for (int i = 0; i < part.width(); ++i)
        to[i] = Over(from[i], to[i]);
}
} // namespace

QRect ContentBounds(const QImage& layer, const QImage& selection)
{
    if (layer.isNull() || (!selection.isNull() && selection.size() != layer.size()))
        return QRect();
    const QRect searched = selection.isNull() ? layer.rect() : MaskBounds(selection) & layer.rect();
    std::mutex mutex;
    QRect bounds;
    const auto work = [&](int band)
    {
        const QRect rows(searched.left(), searched.top() + band * BAND_ROWS, searched.width(), BAND_ROWS);
        const QRect found = BandBounds(layer, selection, rows & searched);
        const std::lock_guard<std::mutex> lock(mutex);
        bounds |= found;
    };
    RunParallel(BandsOf(searched.height()), work);
    return bounds;
}

LiftedContent LiftContent(const QImage& layer, const QImage& selection, const QRect& bounds)
{
    LiftedContent content;
    if (bounds.isEmpty() || !layer.rect().contains(bounds))
        return content;
    content.selection = selection;
    content.picture.corner = bounds.topLeft();
    if (selection.isNull())
    {
        content.picture.image = bounds == layer.rect() ? layer : layer.copy(bounds);
        return content;
    }
    content.rest = Unselected(layer, selection);
    if (!content.rest.isNull())
        content.picture.image = Selected(layer, selection, bounds);
    return content;
}

QVector<SavedTile> PlaceContent(QImage& layer, const LiftedContent& content, const PlacedImage& picture,
                                const QRect& area)
{
    const auto edit = [&](const QPoint& start, const QRgb*, QRgb* after, int count)
    {
        if (content.rest.isNull())
            std::fill_n(after, count, 0);
        else
            std::memcpy(after, LineOf(content.rest, start.y()) + start.x(), size_t(count) * sizeof(QRgb));
        LayRow(picture, start, after, count);
        return true;
    };
    return EditTiles(layer, area, edit);
}

QImage TransformSelection(const QImage& selection, const QTransform& transform, const WorkProgress& progress)
{
    if (selection.isNull())
        return QImage();
    if (IsWholeMove(transform))
        return MoveMask(selection, QPoint(qRound(transform.dx()), qRound(transform.dy())));
    const QRect bounds = MaskBounds(selection);
    if (bounds.isEmpty())
        return QImage();
    const PlacedImage moved =
        ResampleAffine({selection.copy(bounds), bounds.topLeft()}, transform, selection.rect(), progress);
    QImage result(selection.size(), QImage::Format_Grayscale8);
    if (moved.image.isNull() || result.isNull())
        return QImage();
    result.fill(0);
    for (int y = 0; y < moved.image.height(); ++y)
        std::memcpy(result.scanLine(moved.corner.y() + y) + moved.corner.x(), moved.image.constScanLine(y),
                    size_t(moved.image.width()));
    return WithoutEmptySelection(result);
}
