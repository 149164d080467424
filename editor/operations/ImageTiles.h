#pragma once

#include <QImage>
#include <QRect>
#include <QVector>

// A piece of a layer as it was at another time: what an undo step keeps instead of the whole layer.
struct SavedTile
{
    // In layer pixels.
    QRect rect;
    // ARGB32_Premultiplied, as large as the rect.
    QImage before;
};

// Swaps the pixels of the layer with those of the tiles, in place: once to undo, once more to redo. The layer
// is ARGB32_Premultiplied; a tile that does not lie wholly within it, or whose image does not fit its rect,
// is left alone. Tiles must not overlap.
void ExchangeTiles(QImage& layer, QVector<SavedTile>& tiles);
