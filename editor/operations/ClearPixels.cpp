#include "ClearPixels.h"

#include <algorithm>

#include "SelectionMask.h"
#include "TileEdit.h"

namespace
{

// A share of 255 of each channel, rounded.
QRgb Faded(QRgb pixel, uint share)
{
    const auto faded = [share](int channel)
    {
        const uint product = uint(channel) * share + 128;
        return int((product + (product >> 8)) >> 8);
    };
    return qRgba(faded(qRed(pixel)), faded(qGreen(pixel)), faded(qBlue(pixel)), faded(qAlpha(pixel)));
}

} // namespace

QVector<SavedTile> ClearPixels(QImage& layer, const QImage& selection)
{
    if (selection.isNull())
    {
        const auto clear = [](const QPoint&, const QRgb*, QRgb* after, int count)
        {
            std::fill_n(after, count, 0U);
            return true;
        };
        return EditTiles(layer, layer.rect(), clear);
    }
    if (selection.size() != layer.size() || selection.format() != QImage::Format_Grayscale8)
        return {};
    const auto fade = [&selection](const QPoint& start, const QRgb* before, QRgb* after, int count)
    {
        const uchar* selected = selection.constScanLine(start.y()) + start.x();
        for (int x = 0; x < count; ++x)
            after[x] = Faded(before[x], 255U - selected[x]);
        return true;
    };
    return EditTiles(layer, MaskBounds(selection), fade);
}
