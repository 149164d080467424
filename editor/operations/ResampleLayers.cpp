#include "ResampleLayers.h"

#include <algorithm>
#include <exception>
#include <vector>

#include <opencv2/imgproc.hpp>

#include "ParallelWork.h"
#include "StepCounter.h"

namespace
{
// Rows, or columns, that are worked off between two looks at whether to go on. Memory is read by rows: narrow
// strips of columns are slow.
const int STRIP_ROWS = 64;
const int STRIP_COLUMNS = 512;

// One axis gets another length. Axes are independent: whole rows or whole columns can be worked off in any
// number at a time, with the same outcome.
struct Pass
{
    bool horizontal;
    int length;
    int interpolation;
    bool isLast;
};

int InterpolationOf(Resampling resampling)
{
    switch (resampling)
    {
    case Resampling::Nearest:
        return cv::INTER_NEAREST_EXACT;
    case Resampling::Bilinear:
        return cv::INTER_LINEAR;
    case Resampling::Bicubic:
        break;
    }
    return cv::INTER_CUBIC;
}

// Bilinear and bicubic look at the two or four pixels next to a place only: what shrinks by more than two
// goes through means to the size from where they miss nothing.
void AddPasses(std::vector<Pass>& passes, bool horizontal, int from, int to, Resampling resampling)
{
    if (from == to)
        return;
    const int whole = from / to;
    const bool byMeans = resampling != Resampling::Nearest && whole >= 2;
    const int between = byMeans ? (from + whole - 1) / whole : from;
    if (between != from)
        passes.push_back({horizontal, between, cv::INTER_AREA, false});
    if (between != to)
        passes.push_back({horizontal, to, InterpolationOf(resampling), false});
}

// The axis that shrinks most comes first, so that little is worked on; among equals whole rows, which are
// faster, where there is most of them.
std::vector<Pass> PassesFor(const QSize& from, const QSize& to, Resampling resampling)
{
    const qint64 byWidth = qint64(to.width()) * from.height();
    const qint64 byHeight = qint64(to.height()) * from.width();
    const bool widthFirst = byWidth < byHeight || (byWidth == byHeight && to.width() < from.width());
    std::vector<Pass> passes;
    for (const bool horizontal : {widthFirst, !widthFirst})
        AddPasses(passes, horizontal, horizontal ? from.width() : from.height(),
                  horizontal ? to.width() : to.height(), resampling);
    if (!passes.empty())
        passes.back().isLast = true;
    return passes;
}

QSize SizeAfter(const Pass& pass, const QSize& size)
{
    return pass.horizontal ? QSize(pass.length, size.height()) : QSize(size.width(), pass.length);
}

qint64 PixelsOf(const QSize& size)
{
    return qint64(size.width()) * size.height();
}

// The steps that the passes count, in pixels.
qint64 StepsOf(const std::vector<Pass>& passes, QSize size)
{
    qint64 steps = 0;
    for (const Pass& pass : passes)
    {
        size = SizeAfter(pass, size);
        steps += PixelsOf(size);
    }
    return steps;
}

cv::Mat MatOf(const QImage& image, uchar* bits)
{
    const int type = image.depth() == 8 ? CV_8UC1 : CV_8UC4;
    return cv::Mat(image.height(), image.width(), type, bits, size_t(image.bytesPerLine()));
}

cv::Mat StripOf(const cv::Mat& image, bool rows, int first, int last)
{
    return rows ? image.rowRange(first, last) : image.colRange(first, last);
}

// Bicubic swings beyond the colours that it mixes; none may be above its opacity.
void LimitToOpacity(cv::Mat& strip)
{
    for (int y = 0; y < strip.rows; ++y)
    {
        uchar* line = strip.ptr(y);
        for (uchar* pixel = line; pixel < line + qint64(strip.cols) * 4; pixel += 4)
        {
            for (int channel = 0; channel < 3; ++channel)
                pixel[channel] = std::min(pixel[channel], pixel[3]);
        }
    }
}

QImage RunPass(const QImage& image, const Pass& pass, StepCounter& counter)
{
    QImage result(SizeAfter(pass, image.size()), image.format());
    if (result.isNull())
        return result;
    // The library takes constant memory only as changeable; what is read stays as it is.
    const cv::Mat from = MatOf(image, const_cast<uchar*>(image.constBits()));
    const cv::Mat to = MatOf(result, result.bits());
    const int lines = pass.horizontal ? to.rows : to.cols;
    const int length = pass.horizontal ? STRIP_ROWS : STRIP_COLUMNS;
    const auto work = [&](int strip)
    {
        const int first = strip * length;
        const int last = std::min(first + length, lines);
        if (counter.IsCancelled())
            return;
        try
        {
            cv::Mat part = StripOf(to, pass.horizontal, first, last);
            cv::resize(StripOf(from, pass.horizontal, first, last), part, part.size(), 0, 0,
                       pass.interpolation);
            if (pass.isLast && part.channels() == 4)
                LimitToOpacity(part);
        }
        catch (const std::exception&)
        {
            // Out of memory: sizes and formats are right.
            counter.Cancel();
        }
        counter.Advance(qint64(last - first) * pass.length);
    };
    RunParallel((lines + length - 1) / length, work);
    return counter.IsCancelled() ? QImage() : result;
}

QImage Resample(const QImage& image, const std::vector<Pass>& passes, StepCounter& counter)
{
    QImage result = image;
    for (const Pass& pass : passes)
    {
        if (!result.isNull())
            result = RunPass(result, pass, counter);
    }
    return result;
}
} // namespace

PictureContents ResampleContents(const PictureContents& contents, const QSize& size, Resampling resampling,
                                 const WorkProgress& progress)
{
    if (size.isEmpty() || contents.layers.isEmpty())
        return PictureContents();
    const QSize before = contents.layers.constFirst().size();
    const std::vector<Pass> passes = PassesFor(before, size, resampling);
    const int images = contents.layers.size() + (contents.selection.isNull() ? 0 : 1);
    StepCounter counter(images * StepsOf(passes, before), progress);
    PictureContents result;
    for (const QImage& layer : contents.layers)
    {
        result.layers += Resample(layer, passes, counter);
        if (result.layers.constLast().isNull())
            return PictureContents();
    }
    if (contents.selection.isNull())
        return result;
    const QImage selection = Resample(contents.selection, passes, counter);
    if (selection.isNull())
        return PictureContents();
    result.selection = WithoutEmptySelection(selection);
    return result;
}
