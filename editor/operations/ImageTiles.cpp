#include "ImageTiles.h"

#include <algorithm>

void ExchangeTiles(QImage& layer, QVector<SavedTile>& tiles)
{
    if (layer.format() != QImage::Format_ARGB32_Premultiplied)
        return;
    for (SavedTile& tile : tiles)
    {
        const QRect& rect = tile.rect;
        if (rect.isEmpty() || !layer.rect().contains(rect) || tile.before.size() != rect.size() ||
            tile.before.format() != layer.format())
            continue;
        for (int y = 0; y < rect.height(); ++y)
        {
            QRgb* row = reinterpret_cast<QRgb*>(tile.before.scanLine(y));
            QRgb* other = reinterpret_cast<QRgb*>(layer.scanLine(rect.top() + y)) + rect.left();
            std::swap_ranges(row, row + rect.width(), other);
        }
    }
}
