#pragma once

#include <QSize>

#include "PictureContents.h"

// In the order of the list of the image size dialog.
enum class Resampling
{
    // Each pixel is that of the place where its middle lies.
    Nearest,
    Bilinear,
    Bicubic
};

// The contents in another size. The smooth ways mix premultiplied pixels, so that the colour of transparent
// ones leaves no fringe, and shrink to less than half by way of means, so that no pixel is skipped. No
// contents when the size is empty, memory is short or the work was cancelled. On all cores within the call.
PictureContents ResampleContents(const PictureContents& contents, const QSize& size, Resampling resampling,
                                 const WorkProgress& progress = WorkProgress());
