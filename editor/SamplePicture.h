#pragma once

#include <QImage>

// A landscape at sunrise, drawn by arithmetic: the picture that the program starts with. The same size always
// gives the same pixels. RGB32, opaque; a null image for an empty size. Thread-safe.
QImage DrawSamplePicture(const QSize& size = QSize(4000, 3000));
