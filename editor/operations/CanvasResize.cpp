#include "CanvasResize.h"

#include <algorithm>
#include <cstring>

#include "ParallelWork.h"
#include "StepCounter.h"

namespace
{
const int STRIP_ROWS = 128;

int OffsetOn(int before, int after, int anchor)
{
    const int room = after - before;
    return anchor == 1 ? room / 2 : (anchor == 0 ? 0 : room);
}

// The images may not detach while several threads work on them: their memory is asked for before.
struct Cut
{
    const QImage* from;
    QImage* to;
    uchar* bits;
    QRect frame;
};

void CutRow(const Cut& cut, int y)
{
    const int pixel = cut.from->depth() / 8;
    uchar* line = cut.bits + qint64(y) * cut.to->bytesPerLine();
    std::memset(line, 0, size_t(cut.to->bytesPerLine()));
    const QRect kept = cut.frame & cut.from->rect();
    const int row = y + cut.frame.top();
    if (kept.isEmpty() || row < kept.top() || row > kept.bottom())
        return;
    std::memcpy(line + qint64(kept.left() - cut.frame.left()) * pixel,
                cut.from->constScanLine(row) + qint64(kept.left()) * pixel, size_t(kept.width()) * pixel);
}

QImage CutImage(const QImage& image, const QRect& frame, StepCounter& counter)
{
    QImage result(frame.size(), image.format());
    if (result.isNull())
        return result;
    const Cut cut = {&image, &result, result.bits(), frame};
    const auto work = [&cut, &counter](int strip)
    {
        const int first = strip * STRIP_ROWS;
        const int last = std::min(first + STRIP_ROWS, cut.frame.height());
        for (int y = first; y < last && !counter.IsCancelled(); ++y)
            CutRow(cut, y);
        counter.Advance(last - first);
    };
    RunParallel((frame.height() + STRIP_ROWS - 1) / STRIP_ROWS, work);
    return counter.IsCancelled() ? QImage() : result;
}
} // namespace

QPoint CanvasOffset(const QSize& before, const QSize& after, const QPoint& anchor)
{
    return QPoint(OffsetOn(before.width(), after.width(), anchor.x()),
                  OffsetOn(before.height(), after.height(), anchor.y()));
}

PictureContents CutContents(const PictureContents& contents, const QRect& frame, const WorkProgress& progress)
{
    if (frame.isEmpty())
        return PictureContents();
    const int images = contents.layers.size() + (contents.selection.isNull() ? 0 : 1);
    StepCounter counter(qint64(images) * frame.height(), progress);
    PictureContents result;
    for (const QImage& layer : contents.layers)
    {
        result.layers += CutImage(layer, frame, counter);
        if (result.layers.constLast().isNull())
            return PictureContents();
    }
    if (contents.selection.isNull())
        return result;
    const QImage selection = CutImage(contents.selection, frame, counter);
    if (selection.isNull())
        return PictureContents();
    result.selection = WithoutEmptySelection(selection);
    return result;
}
