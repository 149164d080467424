#pragma once

#include "utils_export.h"

class NVMeasureUnit;

// Turns lengths of one unit into another. A plain value, any thread.
//
//     NVMeasureUnit pixel;
//     pixel.SetFactor(NVMeasureUnit::PixelFactor);
//     const NVMeasureUnitConverter toPixels(millimetres, pixel, 300.0);
//     toPixels(25.4) // 300.0
class UTILS_EXPORT NVMeasureUnitConverter
{
public:
    // `dpi` in pixels per inch counts between pixels and a physical unit only. One that isn't positive and
    // finite makes every length 0 there.
    NVMeasureUnitConverter(const NVMeasureUnit& from, const NVMeasureUnit& to, double dpi);

    // Not rounded. A value that is not finite, or a result beyond all numbers, is handed on as it is.
    double operator()(double value) const;

private:
    double m_from;
    double m_to;
    double m_dpi;
};
