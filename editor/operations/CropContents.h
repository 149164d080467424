#pragma once

#include "CropFrame.h"
#include "PictureContents.h"

// What lies in the frame, upright and in that size, bicubic; beyond the picture all is transparent and not
// selected. An upright frame in its own size changes no pixel. No contents when the frame or the size is
// empty, memory is short or the work was cancelled. On all cores within the call.
PictureContents CropContents(const PictureContents& contents, const CropFrame& frame, const QSize& size,
                             const WorkProgress& progress = WorkProgress());

// Whether some of a picture of that size lies outside of the frame.
bool HasOutside(const QSize& picture, const CropFrame& frame);

// The layer, ARGB32_Premultiplied, transparent outside of the frame, with smooth edges where the frame is
// turned. Null when memory is short or the work was cancelled.
QImage WithoutOutside(const QImage& layer, const CropFrame& frame,
                      const WorkProgress& progress = WorkProgress());

// The same for all layers; the selection stays. No contents when it did not work for one of them.
PictureContents ContentsWithin(const PictureContents& contents, const CropFrame& frame,
                               const WorkProgress& progress = WorkProgress());
