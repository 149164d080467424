#include "AutoCropFrame.h"

#include <algorithm>
#include <cstdlib>
#include <vector>

#include "ParallelWork.h"
#include "StepCounter.h"

namespace
{
const int STRIP_ROWS = 64;

bool AreAlike(QRgb one, QRgb other, int tolerance)
{
    // As most pixels of a background are.
    if (one == other)
        return true;
    return std::abs(qAlpha(one) - qAlpha(other)) <= tolerance &&
        std::abs(qRed(one) - qRed(other)) <= tolerance &&
        std::abs(qGreen(one) - qGreen(other)) <= tolerance &&
        std::abs(qBlue(one) - qBlue(other)) <= tolerance;
}

QRgb PixelOf(const QImage& picture, int x, int y)
{
    return reinterpret_cast<const QRgb*>(picture.constScanLine(y))[x];
}

QRgb CommonCorner(const QImage& picture, int tolerance)
{
    const int right = picture.width() - 1;
    const int bottom = picture.height() - 1;
    const QRgb corners[] = {PixelOf(picture, 0, 0), PixelOf(picture, right, 0),
                            PixelOf(picture, right, bottom), PixelOf(picture, 0, bottom)};
    const auto likes = [&corners, tolerance](QRgb corner)
    {
        return std::count_if(std::begin(corners), std::end(corners),
                             [=](QRgb other) { return AreAlike(corner, other, tolerance); });
    };
    return *std::max_element(std::begin(corners), std::end(corners),
                             [&likes](QRgb one, QRgb other) { return likes(one) < likes(other); });
}

QRgb BackgroundOf(const QImage& picture, const AutoCropSettings& settings)
{
    switch (settings.background)
    {
    case AutoCropSettings::LeftTop:
        return PixelOf(picture, 0, 0);
    case AutoCropSettings::BottomRight:
        return PixelOf(picture, picture.width() - 1, picture.height() - 1);
    case AutoCropSettings::Auto:
        return CommonCorner(picture, settings.tolerance);
    case AutoCropSettings::Transparent:
        break;
    }
    return 0;
}

// The bounds of what is no background, in some of the rows.
template <class IsBackground>
QRect BoundsOf(const QImage& picture, int first, int last, const IsBackground& isBackground)
{
    QRect bounds;
    for (int y = first; y < last; ++y)
    {
        const auto* line = reinterpret_cast<const QRgb*>(picture.constScanLine(y));
        int left = 0;
        while (left < picture.width() && isBackground(line[left]))
            ++left;
        if (left == picture.width())
            continue;
        int right = picture.width() - 1;
        while (right > left && isBackground(line[right]))
            --right;
        bounds |= QRect(QPoint(left, y), QPoint(right, y));
    }
    return bounds;
}

QRect BoundsOfRows(const QImage& picture, int first, int last, const AutoCropSettings& settings,
                   QRgb background)
{
    const int tolerance = settings.tolerance;
    if (settings.background == AutoCropSettings::Transparent)
        return BoundsOf(picture, first, last, [=](QRgb pixel) { return qAlpha(pixel) <= tolerance; });
    return BoundsOf(picture, first, last, [=](QRgb pixel) { return AreAlike(pixel, background, tolerance); });
}

QRect OnSides(const QRect& bounds, const QRect& all, int sides)
{
    return QRect(QPoint(sides & AutoCropSettings::Left ? bounds.left() : all.left(),
                        sides & AutoCropSettings::Top ? bounds.top() : all.top()),
                 QPoint(sides & AutoCropSettings::Right ? bounds.right() : all.right(),
                        sides & AutoCropSettings::Bottom ? bounds.bottom() : all.bottom()));
}
} // namespace

QRect AutoCropFrame(const QImage& picture, const AutoCropSettings& settings, const WorkProgress& progress)
{
    if (picture.isNull() || picture.format() != QImage::Format_ARGB32_Premultiplied)
        return QRect();
    const QRgb background = BackgroundOf(picture, settings);
    StepCounter counter(picture.height(), progress);
    std::vector<QRect> bounds(size_t((picture.height() + STRIP_ROWS - 1) / STRIP_ROWS));
    const auto work = [&](int strip)
    {
        const int first = strip * STRIP_ROWS;
        const int last = std::min(first + STRIP_ROWS, picture.height());
        if (!counter.IsCancelled())
            bounds[size_t(strip)] = BoundsOfRows(picture, first, last, settings, background);
        counter.Advance(last - first);
    };
    RunParallel(int(bounds.size()), work);
    QRect found;
    for (const QRect& part : bounds)
        found |= part;
    if (found.isNull() || counter.IsCancelled())
        return QRect();
    return OnSides(found, picture.rect(), settings.sides);
}
