#include "SpotPicture.h"

#include <cmath>
#include <cstring>

QImage SpotMask(const QImage& coverage, const QRect& marked, const QRect& area, const QImage& selection,
                double opacity)
{
    const QRect part = marked & area;
    if (coverage.size() != marked.size() || part.isEmpty())
        return QImage();
    QImage mask(area.size(), QImage::Format_Grayscale8);
    if (mask.isNull())
        return QImage();
    mask.fill(0);
    bool isEmpty = true;
    for (int y = part.top(); y <= part.bottom(); ++y)
    {
        const uchar* covered = coverage.constScanLine(y - marked.top()) - marked.left();
        const uchar* selected = selection.isNull() ? nullptr : selection.constScanLine(y);
        uchar* line = mask.scanLine(y - area.top()) - area.left();
        for (int x = part.left(); x <= part.right(); ++x)
        {
            const double share = opacity / 100 * (selected ? selected[x] / 255.0 : 1.0);
            line[x] = uchar(std::lround(covered[x] * share));
            isEmpty = isEmpty && line[x] == 0;
        }
    }
    return isEmpty ? QImage() : mask;
}

QImage PictureBefore(const QImage& layer, const QVector<SavedTile>& tiles, const QRect& area)
{
    QImage picture = layer.copy(area);
    for (const SavedTile& tile : tiles)
        CopyArea(tile.before, tile.before.rect(), picture, tile.rect.topLeft() - area.topLeft());
    return picture;
}

QVector<SavedTile> CopyTiles(const QImage& layer, const QVector<SavedTile>& tiles)
{
    QVector<SavedTile> copies;
    for (const SavedTile& tile : tiles)
        copies.append({tile.rect, layer.copy(tile.rect)});
    return copies;
}

void CopyArea(const QImage& from, const QRect& area, QImage& to, const QPoint& place)
{
    const QPoint way = place - area.topLeft();
    const QRect part = (area & from.rect()).translated(way) & to.rect();
    for (int y = part.top(); y <= part.bottom(); ++y)
    {
        const auto* source = reinterpret_cast<const QRgb*>(from.constScanLine(y - way.y()));
        auto* target = reinterpret_cast<QRgb*>(to.scanLine(y));
        std::memcpy(target + part.left(), source + part.left() - way.x(),
                    size_t(part.width()) * sizeof(QRgb));
    }
}
