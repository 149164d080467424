#pragma once

#include <QImage>
#include <QVector>

#include <functional>

// The pixels of a whole document: what is another when its size is.
struct PictureContents
{
    // From the lowest up; ARGB32_Premultiplied, all of one size. Empty for no contents.
    QVector<QImage> layers;
    // Grayscale8, as large as the layers, 255 selected; null when nothing is selected.
    QImage selection;
};

// How far work has come, in percent; called on any thread, also on several at once. False ends the work soon.
using WorkProgress = std::function<bool(int percent)>;

// A selection in which nothing is selected is none.
QImage WithoutEmptySelection(const QImage& selection);
