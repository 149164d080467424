#pragma once

#include <QImage>
#include <QRect>
#include <QVector>

#include "AffineResample.h"
#include "ImageTiles.h"

// The pixels of a layer that are moved or transformed together: those that a selection holds, or all without
// one. Where a selection is partial, so is what is taken.
struct LiftedContent
{
    // What is taken: ARGB32_Premultiplied, as large as what there is of it. Null when there is nothing.
    PlacedImage picture;
    // The layer without it, ARGB32_Premultiplied. Null when nothing is left.
    QImage rest;
    // As large as the layer, Grayscale8; null without a selection.
    QImage selection;
};

// The smallest rect that holds all pixels of the layer, ARGB32_Premultiplied, that are not wholly
// transparent, and that the selection, if there is one, holds some of. Worked out on all cores.
QRect ContentBounds(const QImage& layer, const QImage& selection);

// Nothing is lifted, and the picture is null, when the bounds, as ContentBounds gives them, are empty or the
// memory is short. Where they are the whole layer without a selection, its pixels are shared.
LiftedContent LiftContent(const QImage& layer, const QImage& selection, const QRect& bounds);

// Lays the picture over what is left of the layer, in place, and gives what the changed tiles held before.
// Only the area is looked at: it holds what the layer shows of the content now, and where it is to be.
QVector<SavedTile> PlaceContent(QImage& layer, const LiftedContent& content, const PlacedImage& picture,
                                const QRect& area);

// The selection under a transform, as large as it was; what leaves the layer is gone. Null when nothing of it
// is left, or without a selection.
QImage TransformSelection(const QImage& selection, const QTransform& transform, const WorkProgress& progress);
