#pragma once

#include <QImage>
#include <QRect>
#include <QVector>

#include "ImageTiles.h"

// The pictures that healing a spot takes and leaves. Layers are ARGB32_Premultiplied, masks Grayscale8.

// Which part of the area is to be healed, and how much: the coverage of the stroke, which is as large as the
// marked rect, times opacity, in percent, and selection, which is as large as the layer or null. Null when
// nothing is left.
QImage SpotMask(const QImage& coverage, const QRect& marked, const QRect& area, const QImage& selection,
                double opacity);
// The area of the layer with what the tiles held before.
QImage PictureBefore(const QImage& layer, const QVector<SavedTile>& tiles, const QRect& area);
// What the layer holds now where the tiles are.
QVector<SavedTile> CopyTiles(const QImage& layer, const QVector<SavedTile>& tiles);
// Copies pixels as they are; what lies beyond either picture is left out.
void CopyArea(const QImage& from, const QRect& area, QImage& to, const QPoint& place);
