#pragma once

#include <QPainterPath>

#include "BrushTip.h"

class QPainter;

// What a brush looks like over the canvas, and the sizes that its keys step through.

// The outline of a tip about the origin.
QPainterPath BrushOutline(const BrushTip& tip, double diameter);
// Draws the path about the place so that it is seen on any picture.
void DrawOnPicture(QPainter& painter, const QPainterPath& path, const QPointF& place);

// The size that follows, or precedes, in steps that grow with the size. Pixels, 1 to 2500.
int NextBrushSize(int size);
int PreviousBrushSize(int size);
