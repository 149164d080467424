#include "TileEdit.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <vector>

#include "ParallelWork.h"
#include "StrokeTile.h"

namespace
{
struct Pixels
{
    QRgb* corner = nullptr;
    qsizetype stride = 0;

    QRgb* At(int x, int y) const { return corner + y * stride + x; }
};

QImage CopyOf(const Pixels& layer, const QRect& rect)
{
    QImage copy(rect.size(), QImage::Format_ARGB32_Premultiplied);
    for (int y = 0; y < rect.height(); ++y)
        std::memcpy(copy.scanLine(y), layer.At(rect.left(), rect.top() + y),
                    size_t(rect.width()) * sizeof(QRgb));
    return copy;
}

// The tile is kept at the first row that is not what it was: the rows above it are untouched then.
void EditTile(const Pixels& layer, const QRect& area, const RowEdit& edit, SavedTile& tile)
{
    const QRect part = tile.rect & area;
    const size_t bytes = size_t(part.width()) * sizeof(QRgb);
    std::array<QRgb, StrokeTile::SIDE> after;
    for (int y = part.top(); y <= part.bottom(); ++y)
    {
        QRgb* row = layer.At(part.left(), y);
        if (!edit(QPoint(part.left(), y), row, after.data(), part.width()) ||
            std::memcmp(row, after.data(), bytes) == 0)
            continue;
        if (tile.before.isNull())
            tile.before = CopyOf(layer, tile.rect);
        std::memcpy(row, after.data(), bytes);
    }
}

std::vector<SavedTile> TilesOf(const QRect& bounds, const QRect& area)
{
    const int side = StrokeTile::SIDE;
    std::vector<SavedTile> tiles;
    for (int y = area.top() / side * side; y <= area.bottom(); y += side)
    {
        for (int x = area.left() / side * side; x <= area.right(); x += side)
            tiles.push_back({QRect(x, y, side, side) & bounds, QImage()});
    }
    return tiles;
}
} // namespace

QVector<SavedTile> EditTiles(QImage& layer, const QRect& area, const RowEdit& edit)
{
    const QRect inside = area & layer.rect();
    if (inside.isEmpty() || layer.format() != QImage::Format_ARGB32_Premultiplied)
        return {};
    const Pixels pixels{reinterpret_cast<QRgb*>(layer.bits()),
                        layer.bytesPerLine() / qsizetype(sizeof(QRgb))};
    std::vector<SavedTile> tiles = TilesOf(layer.rect(), inside);
    const auto work = [&](SavedTile& tile) { EditTile(pixels, inside, edit, tile); };
    ForEachParallel(tiles, work);
    QVector<SavedTile> changed;
    std::copy_if(tiles.begin(), tiles.end(), std::back_inserter(changed),
                 [](const SavedTile& tile) { return !tile.before.isNull(); });
    return changed;
}
