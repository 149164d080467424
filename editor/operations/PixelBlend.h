#pragma once

#include <QRgb>

// The thirteen blend modes of the option bars on premultiplied pixels: 0 Normal, 1 Multiply, 2 Screen, 3
// Overlay, 4 Difference, 5 Exclusion, 6 Lighten colors, 7 Darken colors, 8 Soft light, 9 Hard light, 10 Color
// dodge, 11 Color burn, 12 Addition. They are the separable formulas of the W3C compositing recommendation
// with the backdrop's alpha respected; Addition is its "lighter" operator. Any other mode is Normal.
//
// A source pixel without alpha leaves the backdrop exactly as it is, and no channel of a result exceeds its
// alpha as long as that holds for both inputs. Any thread.

// Blends count pixels of the source onto the backdrop. The result may be the same array as either input.
void BlendPixels(int blendMode, const QRgb* source, const QRgb* backdrop, QRgb* result, int count);

QRgb BlendPixel(int blendMode, QRgb source, QRgb backdrop);
