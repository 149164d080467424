#pragma once

#include <QCursor>

#include "FreeTransform.h"

class NVDocumentView;
class QPainter;

// The box of free transform on a canvas: what it looks like there, and what a pointer takes of it.
class TransformBox
{
public:
    // What a pointer at the position, in document pixels, takes. The reference point lies over all else.
    static FreeTransform::Part PartAt(const FreeTransform& box, const NVDocumentView* view,
                                      const QPointF& position);
    // The pointer over that part.
    static QCursor CursorOf(const FreeTransform& box, FreeTransform::Part part,
                            const FreeTransform::Constraint& constraint);
    // The cell whose point is so near to the position, in document pixels, that a reference point that is
    // dragged there is meant to lie on it; 0 for none.
    static int CellNear(const FreeTransform& box, const NVDocumentView* view, const QPointF& position);
    // In pixels of the viewport.
    static void Draw(QPainter& painter, const FreeTransform& box, const NVDocumentView* view,
                     FreeTransform::Part hover);
};
