#include "NVMeasureUnitConverter.h"

#include <cmath>

#include "NVMeasureUnit.h"

NVMeasureUnitConverter::NVMeasureUnitConverter(const NVMeasureUnit& from, const NVMeasureUnit& to, double dpi)
    : m_from(from.GetFactor()), m_to(to.GetFactor()), m_dpi(dpi > 0.0 && std::isfinite(dpi) ? dpi : 0.0)
{
}

double NVMeasureUnitConverter::operator()(double value) const
{
    const bool fromPixels = m_from == NVMeasureUnit::PixelFactor;
    const bool toPixels = m_to == NVMeasureUnit::PixelFactor;
    if (fromPixels == toPixels)
        return fromPixels ? value : value * m_to / m_from;
    if (m_dpi == 0.0)
        return 0.0;
    return fromPixels ? value * m_to / m_dpi : value * m_dpi / m_from;
}
