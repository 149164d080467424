#include "NVMeasureUnit.h"

#include <cmath>

NVMeasureUnit::NVMeasureUnit() = default;

NVMeasureUnit::NVMeasureUnit(const QString& name, const QString& abbreviation, double factor)
    : m_name(name), m_abbreviation(abbreviation)
{
    SetFactor(factor);
}

NVMeasureUnit::~NVMeasureUnit() = default;

QString NVMeasureUnit::GetAbbreviation() const
{
    return m_abbreviation;
}

QString NVMeasureUnit::GetName() const
{
    return m_name;
}

double NVMeasureUnit::GetFactor() const
{
    return m_factor;
}

void NVMeasureUnit::SetFactor(double factor)
{
    if (factor == PixelFactor || (factor > 0.0 && std::isfinite(factor)))
        m_factor = factor;
}

QList<NVMeasureUnit> NVMeasureUnit::StandardUnits()
{
    return {
        NVMeasureUnit(tr("inches"), tr("in", "inches"), 1.0),
        NVMeasureUnit(tr("millimeters"), tr("mm", "millimeters"), 25.4),
        NVMeasureUnit(tr("centimeters"), tr("cm", "centimeters"), 2.54),
        NVMeasureUnit(tr("points"), tr("pt", "points, 72 in one inch"), 72.0),
        NVMeasureUnit(tr("picas"), tr("pc", "picas, 6 in one inch"), 6.0),
    };
}
