#pragma once

#include <functional>

#include <QImage>
#include <QPoint>
#include <QRect>
#include <QVector>

#include "ImageTiles.h"

// Gives the new pixels of a part of a row of the layer, no longer than a tile is wide, from those that are
// there. False when they stay as they are; then nothing needs to be written. Called from several threads at
// once.
using RowEdit = std::function<bool(const QPoint& start, const QRgb* before, QRgb* after, int count)>;

// Changes an area of a layer, ARGB32_Premultiplied, in place and gives what the tiles that did change held
// before. Tiles lie on the same squares as those of a stroke; the work is spread over the cores.
QVector<SavedTile> EditTiles(QImage& layer, const QRect& area, const RowEdit& edit);
