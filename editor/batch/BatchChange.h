#pragma once

#include <QImage>
#include <QSize>

// What a batch job does with each image. Free of widgets; every function is thread-safe.

struct BatchChange
{
    enum Resize
    {
        KeepSize,
        FitWithin, // as large as fits within `bounds`
        ByPercent
    };

    Resize resize = KeepSize;
    // Pixels, of the image as it comes out.
    QSize bounds = QSize(1920, 1080);
    // FitWithin only: whether smaller images grow.
    bool enlarges = false;
    int percent = 50;
    // Degrees clockwise: 0, 90, 180 or 270.
    int rotation = 0;
};

// The size of an image of this size afterwards: at least one pixel a side, and the shape kept.
QSize ChangedSize(const QSize& size, const BatchChange& change);
// Whether a side is longer than a document's may be.
bool IsTooLarge(const QSize& size);
// A null image if there is not enough memory, or the result would be too large.
QImage Changed(const QImage& image, const BatchChange& change);
