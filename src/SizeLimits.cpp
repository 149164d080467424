#include "SizeLimits_p.h"

#include <cmath>

#include "NVMeasureUnitConverter.h"
#include "WholePixels_p.h"

namespace
{

bool HasFraction(double value)
{
    return value != std::trunc(value);
}

// From hundredths, up to the next one.
double RoundedUp(double hundredths)
{
    const double whole = HasFraction(hundredths) ? std::trunc(hundredths) + 1.0 : hundredths;
    return std::trunc(whole + 0.5) / 100.0;
}

} // namespace

QRectF SizeLimits::Rect() const
{
    return QRectF(minWidth, minHeight, maxWidth - minWidth, maxHeight - minHeight);
}

SizeLimits ProportionalLimits(int width, int height)
{
    SizeLimits limits;
    const double ratio = SideRatio(width, height);
    if (ratio >= 1.0)
    {
        limits.minWidth = ratio;
        limits.maxHeight = 10000.0 / ratio;
    }
    else
    {
        limits.minHeight = 1.0 / ratio;
        limits.maxWidth = ratio * 10000.0;
    }
    return limits;
}

SizeLimits LimitsInPixels(SizeLimits limits)
{
    // The largest height keeps its fraction, on purpose.
    for (double* limit : {&limits.minWidth, &limits.minHeight, &limits.maxWidth})
    {
        if (HasFraction(*limit))
            *limit = qMax(1.0, qMin(10000.0, std::trunc(*limit) + 1.0));
    }
    return limits;
}

SizeLimits LimitsInPercent(const SizeLimits& pixels, int width, int height)
{
    const double w = qMax(1, width);
    const double h = qMax(1, height);
    SizeLimits limits;
    limits.minWidth = RoundedUp(pixels.minWidth / w * 10000.0);
    limits.minHeight = RoundedUp(pixels.minHeight / h * 10000.0);
    // To the nearest hundredth, which may lie a little beyond the limit, on purpose.
    limits.maxWidth = std::trunc(pixels.maxWidth / w * 10000.0 + 0.5) / 100.0;
    limits.maxHeight = std::trunc(pixels.maxHeight / h * 10000.0 + 0.5) / 100.0;
    return limits;
}

SizeLimits LimitsInLength(const SizeLimits& pixels, const NVMeasureUnitConverter& fromPixels)
{
    SizeLimits limits;
    limits.minWidth = RoundedUp(fromPixels(pixels.minWidth) * 100.0);
    limits.maxWidth = std::trunc(fromPixels(pixels.maxWidth) * 100.0) / 100.0;
    limits.minHeight = RoundedUp(fromPixels(pixels.minHeight) * 100.0);
    limits.maxHeight = std::trunc(fromPixels(pixels.maxHeight) * 100.0) / 100.0;
    return limits;
}
