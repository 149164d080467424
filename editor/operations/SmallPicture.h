#pragma once

#include <QImage>

// The picture in small, no side longer than that one, ARGB32_Premultiplied; a smaller picture is enlarged.
// Looks at a few pixels for each one that it gives, however large the picture is. Takes an
// ARGB32_Premultiplied picture; null for a null one.
QImage SmallPicture(const QImage& picture, int side);
