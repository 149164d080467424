#include "PrintLayout.h"

#include <QPageSize>

#include <cmath>

namespace
{

// The slider's end on either side, and what each side covers.
const int SliderEnd = 40;
const double LeastPercent = 0.01;
const double ActualSize = 100.0;
const double MostPercent = 500.0;

// The offset in pixels, as the margins of a page would be. What the page refuses is 0.
QPointF offsetPixels(const PrintLayout& layout)
{
    QPageLayout page = layout.page;
    page.setUnits(layout.unit);
    page.setMode(QPageLayout::StandardMode);
    page.setMinimumMargins(QMarginsF(layout.minimumOffset.x(), layout.minimumOffset.y(), 0, 0));
    page.setLeftMargin(layout.offset.x());
    page.setTopMargin(layout.offset.y());
    return page.paintRectPixels(layout.resolution).topLeft();
}

// A square counts as upright.
bool isUpright(const QSizeF& size)
{
    return size.height() >= size.width();
}

PrintLayout::Rotation rotationOf(const PrintLayout& layout, const QSizeF& image)
{
    if (layout.rotation != PrintLayout::AutoRotated)
        return layout.rotation;
    return isUpright(layout.paper) == isUpright(image) ? PrintLayout::NotRotated : PrintLayout::Clockwise;
}

// Turns a picture of that size so that its corner is at the origin again.
QTransform turned(PrintLayout::Rotation rotation, const QSizeF& image)
{
    QTransform transform;
    switch (rotation)
    {
    case PrintLayout::Clockwise:
        transform.translate(image.height(), 0).rotate(90);
        break;
    case PrintLayout::CounterClockwise:
        transform.translate(0, image.width()).rotate(-90);
        break;
    case PrintLayout::UpsideDown:
        transform.translate(image.width(), image.height()).rotate(180);
        break;
    case PrintLayout::NotRotated:
    case PrintLayout::AutoRotated:
        break;
    }
    return transform;
}

// 1 where there is nothing to scale.
double ratio(double scaled, double length)
{
    return length > 0 ? scaled / length : 1.0;
}

} // namespace

QRectF SheetRect(const PrintLayout& layout)
{
    QPageLayout page = layout.page;
    page.setMode(QPageLayout::FullPageMode);
    return page.paintRectPixels(layout.resolution);
}

QRectF ClipRect(const PrintLayout& layout)
{
    QPageLayout page = layout.page;
    page.setMode(QPageLayout::StandardMode);
    page.setUnits(layout.unit);
    page.setMinimumMargins(layout.minimumMargins);
    page.setMargins(layout.margins);
    const QMarginsF margins = page.margins();
    // Deliberate: of the sheet as it is fed, so in landscape the room is that of the upright sheet.
    const QSizeF size = page.pageSize().size(QPageSize::Unit(layout.unit));
    if (size.width() - margins.left() - margins.right() < 0 ||
        size.height() - margins.top() - margins.bottom() < 0)
    {
        return QRectF();
    }
    return page.paintRectPixels(layout.resolution);
}

QPointF AlignedCorner(const PrintLayout& layout, const QRectF& rect)
{
    const QRectF clip = ClipRect(layout);
    const int cell = layout.place >= 1 && layout.place <= 9 ? layout.place - 1 : 0;
    double x = clip.x();
    double y = clip.y();
    if (cell % 3 == 1)
        x += clip.width() / 2 - (rect.x() + rect.width() / 2);
    else if (cell % 3 == 2)
        x += clip.width() - (rect.x() + rect.width());
    if (cell / 3 == 1)
        y += clip.height() / 2 - (rect.y() + rect.height() / 2);
    else if (cell / 3 == 2)
        y += clip.height() - (rect.y() + rect.height());
    return QPointF(x, y) + offsetPixels(layout);
}

QTransform ImageTransform(const PrintLayout& layout, const QSizeF& image)
{
    const QTransform turn = turned(rotationOf(layout, image), image);
    QSizeF size = turn.mapRect(QRectF(QPointF(), image)).size();
    double sx = 1.0;
    double sy = 1.0;
    if (layout.scaling == PrintLayout::FitToPage)
    {
        const Qt::AspectRatioMode mode = layout.keepRatio ? Qt::KeepAspectRatio : Qt::IgnoreAspectRatio;
        const QSizeF fitted = size.scaled(ClipRect(layout).size(), mode);
        sx = ratio(fitted.width(), size.width());
        sy = ratio(fitted.height(), size.height());
        size = fitted;
    }
    else if (layout.scaling == PrintLayout::CustomScale)
    {
        sx = layout.scaleX;
        sy = layout.scaleY;
        size = QSizeF(size.width() * sx, size.height() * sy);
    }
    const QPointF corner = AlignedCorner(layout, QRectF(QPointF(), size));
    QTransform place;
    place.translate(corner.x(), corner.y()).scale(sx, sy);
    return turn * place;
}

double ConvertLength(double value, QPageLayout::Unit from, QPageLayout::Unit to)
{
    QPageLayout page(QPageSize(QSizeF(1000, 1000), QPageSize::Millimeter), QPageLayout::Portrait, QMarginsF(),
                     QPageLayout::Millimeter, QMarginsF(-1000, -1000, -1000, -1000));
    page.setUnits(from);
    page.setMode(QPageLayout::StandardMode);
    page.setLeftMargin(value);
    return page.margins(to).left();
}

double ZoomPercent(int slider)
{
    const double part = slider / double(SliderEnd);
    return ActualSize + part * (slider < 1 ? ActualSize - LeastPercent : MostPercent - ActualSize);
}

int ZoomSlider(double percent)
{
    if (std::isnan(percent))
        return 0;
    const double bounded = qBound(LeastPercent, percent, MostPercent);
    if (bounded > ActualSize)
        return int((bounded - ActualSize) / (MostPercent - ActualSize) * SliderEnd + 0.5);
    return int((bounded - ActualSize) / (ActualSize - LeastPercent) * SliderEnd - 0.5);
}
