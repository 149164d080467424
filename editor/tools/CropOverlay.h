#pragma once

#include <QColor>
#include <QCursor>
#include <QPointF>
#include <QRect>

#include "CropFrame.h"

class NVDocumentView;
class QPainter;

// The frame of a crop on the canvas: how it is drawn and what a pointer takes hold of.

// What a pointer is over.
struct CropHit
{
    enum Part
    {
        Outside,
        Inside,
        // One of the eight in the corners and in the middles of the edges.
        Handle
    };

    Part part = Outside;
    // Of a handle; see CropFrame.
    QPointF share;
};
bool operator==(const CropHit& one, const CropHit& other);

struct CropLook
{
    enum Guides
    {
        NoGuides,
        Thirds,
        Grid
    };

    // Over all of the picture that is not in the frame; transparent for none.
    QColor shade = Qt::transparent;
    int guides = NoGuides;
    // The reference point.
    QPointF reference;
    CropHit hover;
};

// The position is in document pixels. Of a frame that is small on the screen only the corners can be taken.
CropHit CropHitAt(const NVDocumentView* view, const CropFrame& frame, const QPointF& position);
// Double arrows as the handle goes, a bent one outside, for a screen of that pixel ratio.
QCursor CropCursor(const CropHit& hit, const CropFrame& frame, double ratio);
// What drawing covers beside the shade, in pixels of the viewport.
QRect CropArea(const NVDocumentView* view, const CropFrame& frame);
// The picture is from 0, 0 on, in document pixels.
void DrawCrop(QPainter& painter, const NVDocumentView* view, const QSize& picture, const CropFrame& frame,
              const CropLook& look);
