#pragma once

#include <QBrush>
#include <QImage>

#include "BrushTip.h"

class QPainter;

// What a picture of a stroke is drawn with.
struct BrushStroke
{
    BrushTip tip;
    double diameter = 12.0;
    // Percent of the diameter.
    double spacing = 10.0;
    // 0 to 1.
    double opacity = 1.0;
    // What the pressure, which rises and falls over the stroke, and its course change.
    bool dynamicSize = false;
    bool dynamicHardness = false;
    bool dynamicAngle = false;
    bool dynamicOpacity = false;
    bool dynamicScatter = false;

    bool operator==(const BrushStroke& other) const;
    bool operator!=(const BrushStroke& other) const { return !(*this == other); }
};

// The coverage of a wave with thin ends from the left to the right of an Alpha8 image; everything in pixels
// of the image.
QImage RenderBrushStroke(const BrushStroke& stroke, const QSize& size);

// Keeps the coverage of a stroke until another one, or another size, is asked for.
class StrokePicture
{
public:
    // The stroke and the size are device-independent, the image has that many pixels for one. It is drawn
    // finer at first: stamps lie on whole pixels, and thin ends would be ragged.
    const QImage& Get(const BrushStroke& stroke, const QSize& size, double pixelRatio);

private:
    BrushStroke m_stroke;
    QSize m_size;
    double m_pixelRatio = 0.0;
    QImage m_mask;
};

// How many pixels a device-independent one has on what a widget is just being painted to: the screen, or a
// picture of another density.
double TargetPixelRatio(const QPainter& painter);

// Paints the coverage of an image, which has that many pixels for a device-independent one, in a colour.
void DrawMask(QPainter& painter, const QPoint& corner, const QImage& mask, double pixelRatio,
              const QBrush& color);
