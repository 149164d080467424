#pragma once

#include <QTransform>
#include <QVector>

#include "AffineResample.h"

// A picture for showing it under changing transforms, small or large: it is read from one that has no more
// pixels than it takes. Smaller ones are made when they are first needed.
class PictureLevels
{
public:
    // ARGB32_Premultiplied.
    void SetPicture(const PlacedImage& picture);
    void Clear();

    // Draws it over the pixels of the image, which a transform maps document pixels to. On all cores.
    void Draw(QImage& onto, const QTransform& transform);

private:
    const QImage& Level(int level);

    QPoint m_corner;
    // Each half as large as the one before.
    QVector<QImage> m_levels;
};
