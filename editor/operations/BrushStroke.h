#pragma once

#include <memory>

#include <QColor>
#include <QGradient>
#include <QImage>
#include <QPointF>
#include <QRect>
#include <QVector>

#include "BrushTip.h"
#include "ImageTiles.h"
#include "StrokeSource.h"

// What the pressure of the pen, or the course of the stroke, changes in each stamp.
struct StrokeDynamics
{
    // The diameter is the size times the pressure, at least 1 pixel.
    bool size = false;
    // The hardness is that of the tip times the pressure.
    bool hardness = false;
    // From the background at pressure 0 to the foreground at 1, in fill modes Color and Pattern+Color.
    bool color = false;
    // The tip turns with the direction of the stroke, which is what the tip's own angle is measured from.
    bool angle = false;
    // The coverage of the stamp is multiplied by the pressure.
    bool opacity = false;
    // Each stamp is moved by up to the size, in a random direction.
    bool scatter = false;
};

// What one stroke is painted with.
struct StrokeSettings
{
    enum FillMode
    {
        Color,
        Pattern,
        PatternColor,
        Gradient,
        PatternGradient,
        RandomColor
    };

    BrushTip tip;
    // Pixels, 1 to 2500.
    double size = 1.0;
    // Percent of the stamp's diameter, 1 to 1000. Stamps are never closer than half a pixel.
    double spacing = 25.0;
    // Percent, 0 to 100, of the stroke as a whole.
    double opacity = 100.0;
    // Index into the list of thirteen blend modes, see PixelBlend.h.
    int blendMode = 0;
    // The index of the fill mode list. Anything else is Color.
    int fillMode = Color;
    QColor foreground = Qt::black;
    QColor background = Qt::white;
    // Laid out from the upper left corner of the layer. Null: the fill modes with a pattern do without it.
    QImage pattern;
    // Empty: from the foreground to the background. One run through the stops is ten sizes long, and every
    // other run goes backwards.
    QGradientStops gradient;
    StrokeDynamics dynamics;
    // Rounds the corners between the points: the path runs through the middles between them.
    bool smooth = false;
    // Chooses the colours and places that are left to chance.
    quint64 seed = 0;
    // Grayscale8, as large as the layer, 255 selected; null selects everything. Outside a smaller mask
    // nothing is.
    QImage selection;
    // Takes away instead: the layer becomes more transparent by the coverage of the stroke. What it is
    // painted with, and the blend mode, have no say then.
    bool erase = false;
    // What the stroke is painted with in place of colour and pattern, where it is not empty. An image that is
    // not of the right size and format paints nothing in its area.
    StrokeSource source;
};

struct StrokePoint
{
    // In layer pixels; the first pixel spans 0 to 1. A position that is not finite is ignored.
    QPointF pos;
    // 0 to 1, cut to that. Not a number counts as 1.
    double pressure = 1.0;
};

// One stroke of a brush on one layer. Points are queued and worked off in pieces, so that a large brush does
// not hold up the pointer:
//
//     stroke.AddPoint({position, pressure});            // on each move
//     changed = stroke.Advance(layer, 12);              // after moves, and on idle while HasPending()
//     changed = stroke.Finish(layer);                   // on release
//     undoStep = stroke.TakeSavedTiles();
//
// The coverage of the stamps builds up within the stroke, and the stroke as a whole is blended with the layer
// as it was before: a stroke at half opacity does not darken where it crosses itself. The outcome depends on
// the points alone, not on how they were split over the calls, nor on the time they were given.
//
// The work is spread over the cores, all within the calls. Not to be used from two threads at a time.
class BrushStroke
{
public:
    explicit BrushStroke(const StrokeSettings& settings);
    ~BrushStroke();

    // Whether Advance would do something now.
    bool HasPending() const;
    // All pixels that were touched so far, in layer pixels.
    QRect TouchedRect() const;
    // Stamps that were placed so far, those beyond the layer included if the path came near it.
    qint64 StampCount() const;
    // What the stroke holds of memory besides the saved tiles and the cached stamps.
    qint64 BufferBytes() const;

    // Queues a point. Ignored after Finish.
    void AddPoint(const StrokePoint& point);

    // Works for about the given time, at least one stamp, and returns the area of the layer that changed. It
    // takes longer where bringing the changed area up to date does by itself, up to half as long again. The
    // layer is ARGB32_Premultiplied and the same in each call of a stroke, not changed by others in between;
    // anything else does nothing. The caller should hold no copy of the layer, else the first change pays for
    // a copy of it all.
    QRect Advance(QImage& layer, int budgetMs);
    // Works off all that is left and ends the stroke. A stroke of a single point becomes one stamp here at
    // the latest.
    QRect Finish(QImage& layer);

    // How much each pixel of TouchedRect is covered, Grayscale8: 255 fully. The opacity has no say, and of
    // the selection only what it leaves out altogether, which counts as not covered. Null for a stroke whose
    // stamps have colours of their own, before anything is touched, and after TakeSavedTiles.
    QImage Coverage() const;

    // What the touched tiles held before the stroke, for ExchangeTiles. Meant for after Finish; the stroke is
    // over with it.
    QVector<SavedTile> TakeSavedTiles();

private:
    Q_DISABLE_COPY(BrushStroke)

    class Private;
    std::unique_ptr<Private> d;
};
