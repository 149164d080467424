// Where a picture lands on the page: the geometry of printing, without widgets and without a printer.
//
// Rectangles and points are in pixels of the printer's resolution, with the origin at the corner of the
// sheet.

#pragma once

#include <QMarginsF>
#include <QPageLayout>
#include <QPointF>
#include <QRectF>
#include <QSizeF>
#include <QTransform>

#include "generaltoolsgui_export.h"

// All that the place of a picture depends on. Nothing in it is checked beforehand: what the page refuses
// counts as 0.
struct PrintLayout
{
    enum Scaling
    {
        Unscaled, // a pixel of the picture is a pixel of the printer
        FitToPage,
        CustomScale
    };
    enum Rotation : int
    {
        NotRotated,
        AutoRotated, // like Clockwise if sheet and picture differ in shape
        Clockwise,
        CounterClockwise,
        UpsideDown
    };

    // The sheet, without margins.
    QPageLayout page;
    // The sheet as it is fed, in pixels. Only its shape counts.
    QSizeF paper;
    // Pixels an inch.
    int resolution = 0;

    // Of margins and offset.
    QPageLayout::Unit unit = QPageLayout::Millimeter;
    // What the margins may go down to; below 0 they lie outside of the sheet.
    QMarginsF minimumMargins;
    QMarginsF margins;
    QPointF minimumOffset;
    QPointF offset;

    // 1 to 9 in reading order; anything else is 1.
    int place = 5;
    // Anything else than the named values is NotRotated.
    Rotation rotation = NotRotated;
    Scaling scaling = Unscaled;
    // With FitToPage: the picture isn't stretched.
    bool keepRatio = true;
    // With CustomScale.
    double scaleX = 1.0;
    double scaleY = 1.0;
};

// The whole sheet.
GENERALTOOLSGUI_EXPORT QRectF SheetRect(const PrintLayout& layout);
// The sheet within its margins; beyond the sheet where a margin is below 0. All zero if the margins leave no
// room. The room is that of the sheet before it is turned, even in landscape.
GENERALTOOLSGUI_EXPORT QRectF ClipRect(const PrintLayout& layout);
// Top left corner of a picture that is as large as `rect` on the page.
GENERALTOOLSGUI_EXPORT QPointF AlignedCorner(const PrintLayout& layout, const QRectF& rect);
// From pixels of a picture of that size to those of the printer: turned, then scaled, then moved.
GENERALTOOLSGUI_EXPORT QTransform ImageTransform(const PrintLayout& layout, const QSizeF& image);

// A length in another unit, as the margin of a page is converted: to two decimals. 0 for what is no margin
// from -1000 to 2000 millimetres.
GENERALTOOLSGUI_EXPORT double ConvertLength(double value, QPageLayout::Unit from, QPageLayout::Unit to);

// The zoom of a preview. A slider from -40 to 40 stands for 0.01 to 500 percent, with 100 in its middle and a
// scale of its own on each side.
GENERALTOOLSGUI_EXPORT double ZoomPercent(int slider);
// Kept within the slider for any percentage.
GENERALTOOLSGUI_EXPORT int ZoomSlider(double percent);
