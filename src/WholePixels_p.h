#pragma once

#include <cmath>
#include <limits>

// The integer part. What is too large for an int becomes the nearest int, and what is no number 0.
inline int WholePixels(double value)
{
    using Limits = std::numeric_limits<int>;
    if (std::isnan(value))
        return 0;
    if (value >= Limits::max())
        return Limits::max();
    if (value <= Limits::min())
        return Limits::min();
    return static_cast<int>(value);
}

// Width by height, always positive: a side below 1 counts as 1.
inline double SideRatio(int width, int height)
{
    return static_cast<double>(width < 1 ? 1 : width) / (height < 1 ? 1 : height);
}
