#pragma once

#include <QColor>
#include <QImage>
#include <QPoint>

// The mean colour of a square of that odd side about the pixel, as far as the square lies in the picture,
// which is ARGB32_Premultiplied. A pixel counts as much as it is opaque; where all is transparent, the colour
// is transparent black. Invalid when the pixel itself lies outside.
QColor SampleColor(const QImage& picture, const QPoint& pixel, int side);
