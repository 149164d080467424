#pragma once

#include <QImage>
#include <QVector>

#include "ImageTiles.h"

// Makes a layer, ARGB32_Premultiplied, transparent: as far as the selection says, or all of it without one.
// The selection is Grayscale8 and as large as the layer, or null. Gives what the touched tiles held before,
// for ExchangeTiles; empty when all was transparent already or an image does not fit.
QVector<SavedTile> ClearPixels(QImage& layer, const QImage& selection);
