#pragma once

#include <QImage>
#include <QRegion>
#include <QVector>

#include "OutlinePixels.h"

class QPainter;

// Draws a line of black and white dashes around what a mask selects. What the line covers of the screen is
// worked out anew only when the mask stands at another place or scale there.
class OutlineDrawing
{
public:
    // Those of HalvedMasks; empty for no line.
    void SetMasks(const QVector<QImage>& masks);
    bool HasMasks() const;
    // How far the dashes have gone, in device-independent pixels.
    void SetPhase(int phase);
    int GetPhase() const;

    // Where the line was drawn last, in device-independent pixels, with some room around. Empty when it was
    // not drawn since the masks changed.
    QRegion GetRegion() const;

    // On a viewport of that size, in device-independent pixels, where the mask's pixel (x, y) covers scale by
    // scale of them from origin + (x, y) * scale. The line is as wide as one of them.
    void Draw(QPainter& painter, const QSize& viewport, const QPointF& origin, double scale);
    // Draws the line where it was drawn last: on what is left of that, only the dashes go on.
    void DrawAgain(QPainter& painter);

private:
    void UpdateLine(const MaskPlace& place, const QRect& sight, double ratio);
    void ColorLine();

    QVector<QImage> m_masks;
    int m_phase = 0;

    // Where the line was worked out for; the sight is in device pixels.
    MaskPlace m_place;
    QRect m_sight;
    double m_ratio = 1.0;
    bool m_isStale = true;
    QVector<QPoint> m_line;
    QRegion m_region;
    // The colours of the line; all else is transparent.
    QImage m_picture;
    int m_coloredPhase = -1;
};
