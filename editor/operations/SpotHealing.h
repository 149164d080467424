#pragma once

#include <atomic>

#include <QImage>
#include <QRect>

// How far around a spot the picture has a say in how it is healed, in pixels.
int HealingMargin(const QSize& spot);

// The picture with what the mask marks filled in from what is around it. The picture is
// ARGB32_Premultiplied, the mask Grayscale8 and as large; a mask value between 0 and 255 mixes the healed
// pixel with the one that was there. What is not marked is the same, and the opacity of marked pixels is
// filled in like their colour.
//
// The spot gets the grain of a piece of its surroundings that goes with what borders on it, shifted in
// brightness and colour so that it joins without a seam. A large spot is healed in pieces, from its rim
// inwards. Where no piece is clean and large enough, the surroundings flow in smoothly. Nothing is left to
// chance: the same input gives the same result.
//
// A large spot takes seconds. Meant for another thread: it ends soon after cancelled is set, and gives a null
// image then. So does a mask that marks everything, or one that does not fit.
QImage HealSpot(const QImage& picture, const QImage& mask, const std::atomic<bool>& cancelled);
