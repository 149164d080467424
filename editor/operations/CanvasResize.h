#pragma once

#include <QPoint>
#include <QRect>
#include <QSize>

#include "PictureContents.h"

// Where the picture's upper left corner comes to lie on a canvas of another size. The anchor is 0, 1 or 2 an
// axis: which part of the picture, from the left and from the top, stays where it is on the canvas. About the
// middle, an odd pixel comes and goes at the right and at the bottom.
QPoint CanvasOffset(const QSize& before, const QSize& after, const QPoint& anchor);

// What lies in the frame, which is in pixels of the layers and may reach beyond them: there all is
// transparent and not selected. No contents when the frame is empty, memory is short or the work was
// cancelled. On all cores within the call.
PictureContents CutContents(const PictureContents& contents, const QRect& frame,
                            const WorkProgress& progress = WorkProgress());
