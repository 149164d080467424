#pragma once

#include "CropFrame.h"

// By how much a line in document pixels is off level or plumb, whichever is nearer, in degrees, clockwise:
// above -45 to 45. 0 for a line without length.
double SlopeOf(const QPointF& from, const QPointF& to);

// The largest frame of that angle, -90 to 90, that lies within a picture of that size: cropped by it, what
// has that slope is straight, and nothing from beyond the picture comes in.
CropFrame StraightenFrame(const QSize& picture, double angle);
