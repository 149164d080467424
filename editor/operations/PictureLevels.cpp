#include "PictureLevels.h"

#include <algorithm>
#include <cmath>

#include <QPainter>

#include <opencv2/imgproc.hpp>

#include "ParallelWork.h"

namespace
{
const int BAND_ROWS = 64;
const int MOST_LEVELS = 8;

cv::Mat MatOf(const QImage& image, uchar* bits)
{
    return cv::Mat(image.height(), image.width(), CV_8UC4, bits, size_t(image.bytesPerLine()));
}

// Means of four; an odd last row or column is lost, which nobody sees in a picture so small.
QImage Halved(const QImage& image)
{
    QImage half(image.width() / 2, image.height() / 2, QImage::Format_ARGB32_Premultiplied);
    const cv::Mat from = MatOf(image, const_cast<uchar*>(image.constBits()));
    cv::Mat to = MatOf(half, half.bits());
    cv::resize(from(cv::Rect(0, 0, half.width() * 2, half.height() * 2)), to, to.size(), 0, 0,
               cv::INTER_AREA);
    return half;
}
} // namespace

void PictureLevels::SetPicture(const PlacedImage& picture)
{
    m_corner = picture.corner;
    m_levels = {picture.image};
}

void PictureLevels::Clear()
{
    m_levels.clear();
}

void PictureLevels::Draw(QImage& onto, const QTransform& transform)
{
    if (m_levels.isEmpty() || m_levels.constFirst().isNull())
        return;
    double scale =
        std::max(std::hypot(transform.m11(), transform.m12()), std::hypot(transform.m21(), transform.m22()));
    int level = 0;
    for (; scale <= 0.5 && level < MOST_LEVELS; scale *= 2)
        ++level;
    const QImage& picture = Level(level);
    const QSizeF size = m_levels.constFirst().size();
    const QTransform place =
        QTransform::fromScale(size.width() / picture.width(), size.height() / picture.height()) *
        QTransform::fromTranslate(m_corner.x(), m_corner.y()) * transform;
    uchar* const corner = onto.bits();
    const auto work = [&](int band)
    {
        const int first = band * BAND_ROWS;
        QImage part(corner + qsizetype(first) * onto.bytesPerLine(), onto.width(),
                    std::min(BAND_ROWS, onto.height() - first), onto.bytesPerLine(), onto.format());
        QPainter painter(&part);
        painter.setRenderHint(QPainter::SmoothPixmapTransform, !IsWholeMove(place));
        painter.setTransform(place * QTransform::fromTranslate(0, -first));
        painter.drawImage(QPoint(), picture);
    };
    RunParallel((onto.height() + BAND_ROWS - 1) / BAND_ROWS, work);
}

// The smallest there is when the picture has too few pixels for that one.
const QImage& PictureLevels::Level(int level)
{
    while (m_levels.size() <= level && m_levels.constLast().width() > 1 && m_levels.constLast().height() > 1)
        m_levels.append(Halved(m_levels.constLast()));
    return m_levels.at(std::min(level, m_levels.size() - 1));
}
