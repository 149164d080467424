#pragma once

#include <QImage>
#include <QPoint>
#include <QVector>

#include "ImageTiles.h"

// Takes the red out of the pupil that was clicked: of the connected red pixels at the point, or nearest to it
// within twelve pixels. The level, 0.01 to 10, says how pale a red still counts: at 1 the red of a flash in a
// pupil does and skin does not, above 1 paler reds do, below 1 only deeper ones: red must exceed green and
// blue by one part in so many of them. The pupil takes the brightness that its green and blue have. The
// highlight in the eye and its brightness stay, but for a red rim around it.
//
// Only what lies within 512 pixels of the point is looked at. Red that goes on beyond that, or from one side
// of the picture to the other, is no pupil and stays.
//
// The layer is ARGB32_Premultiplied, the selection as in FillSettings. Gives what the touched tiles held
// before, for ExchangeTiles; empty when there is nothing red, when the point lies outside the layer, the
// level out of its range, or an image does not fit.
QVector<SavedTile> RemoveRedEye(QImage& layer, const QPoint& point, double level,
                                const QImage& selection = QImage());
