#include "AffineResample.h"

#include <algorithm>
#include <cmath>
#include <exception>
#include <vector>

#include <opencv2/imgproc.hpp>

#include "ParallelWork.h"
#include "StepCounter.h"

namespace
{
const int TILE_SIDE = 256;
// What bicubic looks at beside a place, and rounding.
const int MARGIN = 4;
// Of an area, against that of the picture: less is a line.
const double LEAST_AREA = 1e-12;

cv::Mat MatOf(const QImage& image, uchar* bits)
{
    const int type = image.depth() == 8 ? CV_8UC1 : CV_8UC4;
    return cv::Mat(image.height(), image.width(), type, bits, size_t(image.bytesPerLine()));
}

cv::Mat MatOf(const QImage& image)
{
    // The library takes constant memory only as changeable; what is read stays as it is.
    return MatOf(image, const_cast<uchar*>(image.constBits()));
}

cv::Rect RectOf(const QRect& rect)
{
    return cv::Rect(rect.x(), rect.y(), rect.width(), rect.height());
}

// Bicubic swings beyond the colours that it mixes; none may be above its opacity.
void LimitToOpacity(cv::Mat& tile)
{
    for (int y = 0; y < tile.rows; ++y)
    {
        uchar* line = tile.ptr(y);
        for (uchar* pixel = line; pixel < line + qint64(tile.cols) * 4; pixel += 4)
        {
            for (int channel = 0; channel < 3; ++channel)
                pixel[channel] = std::min(pixel[channel], pixel[3]);
        }
    }
}

// Means of so many pixels become one, to the right and down; what is missing of the last is transparent.
cv::Mat Shrunk(const cv::Mat& source, int across, int down)
{
    const int width = (source.cols + across - 1) / across;
    const int height = (source.rows + down - 1) / down;
    cv::Mat whole = source;
    if (width * across != source.cols || height * down != source.rows)
        cv::copyMakeBorder(source, whole, 0, height * down - source.rows, 0, width * across - source.cols,
                           cv::BORDER_CONSTANT, cv::Scalar());
    cv::Mat result;
    cv::resize(whole, result, cv::Size(width, height), 0, 0, cv::INTER_AREA);
    return result;
}

// How many pixels of the picture may become one before the transform reads it.
int ReductionOf(double scale)
{
    int reduction = 1;
    while (reduction < 1024 && scale * reduction <= 0.5)
        reduction *= 2;
    return reduction;
}

// Reads the picture, in pixels of its own from its corner on, through the inverse of a transform.
class Reader
{
public:
    Reader(const QImage& image, const QTransform& toPicture) : m_source(MatOf(image)), m_inverse(toPicture)
    {
        bool isInvertible = false;
        const QTransform forth = toPicture.inverted(&isInvertible);
        const int across = ReductionOf(std::hypot(forth.m11(), forth.m12()));
        const int down = ReductionOf(std::hypot(forth.m21(), forth.m22()));
        if (across > 1 || down > 1)
        {
            m_source = Shrunk(m_source, across, down);
            m_inverse = m_inverse * QTransform::fromScale(1.0 / across, 1.0 / down);
        }
    }

    // The tile lies there on the device of the transform.
    void Read(cv::Mat& tile, const QPoint& corner) const
    {
        const QTransform inverse = QTransform::fromTranslate(corner.x(), corner.y()) * m_inverse;
        // Cut before it is rounded: a box that is almost flat reaches farther than integers do.
        const QRectF reach =
            inverse.mapRect(QRectF(0, 0, tile.cols, tile.rows)).adjusted(-MARGIN, -MARGIN, MARGIN, MARGIN);
        const QRect needed = (reach & QRectF(0, 0, m_source.cols, m_source.rows)).toAlignedRect();
        if (needed.isEmpty())
        {
            tile.setTo(cv::Scalar());
            return;
        }
        // Places are those of the middles of pixels.
        const double x = inverse.m11() * 0.5 + inverse.m21() * 0.5 + inverse.dx() - 0.5 - needed.x();
        const double y = inverse.m12() * 0.5 + inverse.m22() * 0.5 + inverse.dy() - 0.5 - needed.y();
        const cv::Matx23d matrix(inverse.m11(), inverse.m21(), x, inverse.m12(), inverse.m22(), y);
        cv::warpAffine(m_source(RectOf(needed)), tile, matrix, tile.size(),
                       cv::INTER_CUBIC | cv::WARP_INVERSE_MAP, cv::BORDER_CONSTANT, cv::Scalar());
        if (tile.channels() == 4)
            LimitToOpacity(tile);
    }

private:
    cv::Mat m_source;
    QTransform m_inverse;
};

std::vector<cv::Rect> TilesOf(const QSize& size)
{
    std::vector<cv::Rect> tiles;
    for (int y = 0; y < size.height(); y += TILE_SIDE)
    {
        for (int x = 0; x < size.width(); x += TILE_SIDE)
            tiles.emplace_back(x, y, std::min(TILE_SIDE, size.width() - x),
                               std::min(TILE_SIDE, size.height() - y));
    }
    return tiles;
}

bool ReadTiles(QImage& result, const QPoint& corner, const Reader& reader, const WorkProgress& progress)
{
    std::vector<cv::Rect> tiles = TilesOf(result.size());
    StepCounter counter(qint64(tiles.size()), progress);
    const cv::Mat whole = MatOf(result, result.bits());
    const auto work = [&](const cv::Rect& rect)
    {
        if (counter.IsCancelled())
            return;
        try
        {
            cv::Mat tile = whole(rect);
            reader.Read(tile, corner + QPoint(rect.x, rect.y));
        }
        catch (const std::exception&)
        {
            // Out of memory: sizes and formats are right.
            counter.Cancel();
        }
        counter.Advance(1);
    };
    ForEachParallel(tiles, work);
    return !counter.IsCancelled();
}

PlacedImage CutOut(const PlacedImage& picture, const QRect& bounds)
{
    const QRect inside = picture.GetRect() & bounds;
    if (inside.isEmpty())
        return {};
    if (inside == picture.GetRect())
        return picture;
    return {picture.image.copy(inside.translated(-picture.corner)), inside.topLeft()};
}

bool IsFlat(const QTransform& transform)
{
    const double area = std::abs(transform.determinant());
    return !transform.isAffine() || !std::isfinite(area) || area < LEAST_AREA;
}
} // namespace

PlacedImage ResampleAffine(const PlacedImage& picture, const QTransform& transform, const QRect& bounds,
                           const WorkProgress& progress)
{
    if (picture.image.isNull() || IsFlat(transform))
        return {};
    if (IsWholeMove(transform))
    {
        const QPoint way(qRound(transform.dx()), qRound(transform.dy()));
        return CutOut({picture.image, picture.corner + way}, bounds);
    }
    // A pixel more for the edge that fades out.
    const QRectF reach = transform.mapRect(QRectF(picture.GetRect())).adjusted(-1, -1, 1, 1);
    const QRect area = (reach & QRectF(bounds)).toAlignedRect() & bounds;
    if (area.isEmpty())
        return {};
    PlacedImage result{QImage(area.size(), picture.image.format()), area.topLeft()};
    if (result.image.isNull())
        return {};
    try
    {
        const QTransform toPicture =
            transform.inverted() * QTransform::fromTranslate(-picture.corner.x(), -picture.corner.y());
        if (ReadTiles(result.image, area.topLeft(), Reader(picture.image, toPicture), progress))
            return result;
    }
    catch (const std::exception&)
    {
        // Out of memory for what is shrunk.
        return {};
    }
    return {};
}

bool IsWholeMove(const QTransform& transform)
{
    const double farthest = 1e8;
    return transform.type() <= QTransform::TxTranslate && std::abs(transform.dx()) < farthest &&
        std::abs(transform.dy()) < farthest && std::round(transform.dx()) == transform.dx() &&
        std::round(transform.dy()) == transform.dy();
}
