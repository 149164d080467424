#include "CropContents.h"

#include <algorithm>
#include <cmath>
#include <cstring>

#include "AffineResample.h"
#include "CanvasResize.h"
#include "ParallelWork.h"
#include "ResampleLayers.h"
#include "StepCounter.h"

namespace
{
const int STRIP_ROWS = 64;

// The share of the whole that one of several equal parts of the work is.
WorkProgress PartOf(const WorkProgress& progress, int part, int parts)
{
    if (!progress)
        return progress;
    return [&progress, part, parts](int percent) { return progress((part * 100 + percent) / parts); };
}

QRect UprightRect(const CropFrame& frame)
{
    return frame.ToDocument().mapRect(QRectF(QPointF(), frame.size)).toRect();
}

// As the frame holds it, in the size of the frame. Null when that did not work.
QImage TurnedImage(const QImage& image, const CropFrame& frame, const WorkProgress& progress)
{
    const QRect bounds(QPoint(), frame.size);
    const QTransform toFrame = frame.ToDocument().inverted();
    const PlacedImage turned = ResampleAffine({image, QPoint()}, toFrame, bounds, progress);
    if (turned.GetRect() == bounds)
        return turned.image;
    if (!turned.image.isNull())
        return CutContents({{turned.image}, QImage()}, bounds.translated(-turned.corner)).layers.value(0);
    if (toFrame.mapRect(QRectF(image.rect())).intersects(bounds))
        return QImage();
    QImage blank(frame.size, image.format());
    blank.fill(0);
    return blank;
}

PictureContents TurnedContents(const PictureContents& contents, const CropFrame& frame,
                               const WorkProgress& progress)
{
    const int images = contents.layers.size() + (contents.selection.isNull() ? 0 : 1);
    PictureContents result;
    for (const QImage& layer : contents.layers)
    {
        result.layers += TurnedImage(layer, frame, PartOf(progress, result.layers.size(), images));
        if (result.layers.constLast().isNull())
            return PictureContents();
    }
    if (contents.selection.isNull())
        return result;
    const QImage selection = TurnedImage(contents.selection, frame, PartOf(progress, images - 1, images));
    if (selection.isNull())
        return PictureContents();
    result.selection = WithoutEmptySelection(selection);
    return result;
}

PictureContents ContentsIn(const PictureContents& contents, const CropFrame& frame,
                           const WorkProgress& progress)
{
    if (frame.angle == 0)
        return CutContents(contents, UprightRect(frame), progress);
    return TurnedContents(contents, frame, progress);
}

// How much of a pixel lies between two edges that are that far from the middle between them; 0 to 1.
double Coverage(double distance, double halfSide)
{
    return std::clamp(halfSide - std::abs(distance) + 0.5, 0.0, 1.0);
}

QRgb Fainter(QRgb pixel, double coverage)
{
    const auto scaled = [coverage](int channel) { return int(std::lround(channel * coverage)); };
    return qRgba(scaled(qRed(pixel)), scaled(qGreen(pixel)), scaled(qBlue(pixel)), scaled(qAlpha(pixel)));
}

void CopyInside(const QImage& from, uchar* to, int y, const CropFrame& frame, const QTransform& toFrame)
{
    const QRgb* source = reinterpret_cast<const QRgb*>(from.constScanLine(y));
    QRgb* row = reinterpret_cast<QRgb*>(to + qint64(y) * from.bytesPerLine());
    const QPointF start = toFrame.map(QPointF(0.5, y + 0.5));
    const double halfWidth = frame.size.width() / 2.0;
    const double halfHeight = frame.size.height() / 2.0;
    for (int x = 0; x < from.width(); ++x)
    {
        const double across = start.x() + x * toFrame.m11() - halfWidth;
        const double down = start.y() + x * toFrame.m12() - halfHeight;
        const double coverage = Coverage(across, halfWidth) * Coverage(down, halfHeight);
        if (coverage >= 1)
            row[x] = source[x];
        else
            row[x] = coverage > 0 ? Fainter(source[x], coverage) : 0;
    }
}
} // namespace

PictureContents CropContents(const PictureContents& contents, const CropFrame& frame, const QSize& size,
                             const WorkProgress& progress)
{
    if (frame.IsNull() || size.isEmpty() || contents.layers.isEmpty())
        return PictureContents();
    if (size == frame.size)
        return ContentsIn(contents, frame, progress);
    // In two steps: along the edges of the picture both would see what is outside of it otherwise.
    const PictureContents cropped = ContentsIn(contents, frame, PartOf(progress, 0, 2));
    return ResampleContents(cropped, size, Resampling::Bicubic, PartOf(progress, 1, 2));
}

bool HasOutside(const QSize& picture, const CropFrame& frame)
{
    const QRectF within(QPointF(), frame.size);
    const QRectF document(QPointF(), picture);
    const QPolygonF corners = frame.ToDocument().inverted().map(QPolygonF(document));
    return !std::all_of(corners.begin(), corners.end(),
                        [&within](const QPointF& corner)
                        { return within.adjusted(-1e-6, -1e-6, 1e-6, 1e-6).contains(corner); });
}

QImage WithoutOutside(const QImage& layer, const CropFrame& frame, const WorkProgress& progress)
{
    QImage result(layer.size(), layer.format());
    if (result.isNull() || frame.IsNull())
        return QImage();
    StepCounter counter(layer.height(), progress);
    const QTransform toFrame = frame.ToDocument().inverted();
    // Asked for before: images may not detach while several threads work on them.
    uchar* bits = result.bits();
    const auto work = [&](int strip)
    {
        const int first = strip * STRIP_ROWS;
        const int last = std::min(first + STRIP_ROWS, layer.height());
        for (int y = first; y < last && !counter.IsCancelled(); ++y)
            CopyInside(layer, bits, y, frame, toFrame);
        counter.Advance(last - first);
    };
    RunParallel((layer.height() + STRIP_ROWS - 1) / STRIP_ROWS, work);
    return counter.IsCancelled() ? QImage() : result;
}

PictureContents ContentsWithin(const PictureContents& contents, const CropFrame& frame,
                               const WorkProgress& progress)
{
    PictureContents result;
    for (const QImage& layer : contents.layers)
    {
        const WorkProgress part = PartOf(progress, result.layers.size(), contents.layers.size());
        result.layers += WithoutOutside(layer, frame, part);
        if (result.layers.constLast().isNull())
            return PictureContents();
    }
    result.selection = contents.selection;
    return result;
}
