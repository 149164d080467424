#pragma once

#include <QImage>
#include <QPoint>
#include <QRect>
#include <QRectF>
#include <QSize>

#include <functional>

// Selections as masks: Grayscale8, as large as the document, 255 selected, values between partly. A null mask
// selects nothing, and no function here gives a mask in which all is 0: it is null then. Another format
// counts as nothing selected. All is done on all cores within the call.

// How a new selection meets the one that is there: the states of the selection bars.
enum SelectionState
{
    ReplaceSelection = 1,
    UniteSelections = 2,
    SubtractSelection = 3,
    IntersectSelections = 4
};

// Asked now and then, on any thread; true ends the work soon, and its outcome is null then.
using IsCancelled = std::function<bool()>;

// A state that is none of the four counts as ReplaceSelection. Masks of two sizes give the new one.
QImage CombineMasks(const QImage& before, QImage with, int state);

// The smallest rect that holds all that is not 0; empty for a null mask.
QRect MaskBounds(const QImage& mask);
// Whether anything is selected.
bool HasSelected(const QImage& mask);
// Whether anything is selected by half or more, which is what an outline goes around.
bool HasOutline(const QImage& mask);

// Everything is selected. Null when the size is empty or memory is short; so are the next two.
QImage FullMask(const QSize& size);
// A rectangle, with corners of that radius, at most half its shorter side; antialiased where it doesn't lie
// on whole pixels. It may reach beyond the picture. The feather is as in FeatherMask.
QImage RectangleMask(const QSize& size, const QRectF& rect, double radius = 0, double feather = 0);
// The ellipse within the rect, antialiased.
QImage EllipseMask(const QSize& size, const QRectF& rect, double feather = 0);

// The size is that of the document: nothing selected becomes everything.
QImage InvertMask(const QImage& mask, const QSize& size);
// What leaves the picture is gone.
QImage MoveMask(const QImage& mask, const QPoint& offset);

// These four are in pixels; 0 or less changes nothing. Soft edges stay soft, and a selection that reaches the
// edge of the picture counts as going on beyond it.
// By a disc of that radius.
QImage GrowMask(const QImage& mask, int radius, const IsCancelled& isCancelled = IsCancelled());
QImage ShrinkMask(const QImage& mask, int radius, const IsCancelled& isCancelled = IsCancelled());
// The edge goes from selected to not selected over about that many pixels on either side.
QImage FeatherMask(const QImage& mask, double radius, const IsCancelled& isCancelled = IsCancelled());
// Rounds corners, and takes away spots and gaps, that are small against the radius. The edge is sharp after
// it.
QImage SmoothMask(const QImage& mask, int radius, const IsCancelled& isCancelled = IsCancelled());

// What is done to a selection afterwards, in pixels, one after the other. To grow and then to shrink closes
// gaps.
struct MaskRefinement
{
    int smooth = 0;
    int grow = 0;
    int shrink = 0;
    int feather = 0;
};
QImage RefineMask(const QImage& mask, const MaskRefinement& refinement,
                  const IsCancelled& isCancelled = IsCancelled());
