#include "NVGradientStop.h"

NVGradientStop::NVGradientStop(double position, const QColor& color, bool fromForeground, bool fromBackground,
                               bool transparent)
    : m_position(position),
      m_color(color),
      m_fromForeground(fromForeground),
      m_fromBackground(fromBackground),
      m_transparent(transparent)
{
}

NVGradientStop::~NVGradientStop() = default;

double NVGradientStop::GetPosition() const
{
    return m_position;
}

QColor NVGradientStop::GetColor() const
{
    return m_color;
}

bool NVGradientStop::IsFromForeground() const
{
    return m_fromForeground;
}

bool NVGradientStop::IsFromBackground() const
{
    return m_fromBackground;
}

bool NVGradientStop::IsTransparent() const
{
    return m_transparent;
}

bool NVGradientStop::operator==(const NVGradientStop& other) const
{
    return m_position == other.m_position && m_color == other.m_color &&
        m_fromForeground == other.m_fromForeground && m_fromBackground == other.m_fromBackground &&
        m_transparent == other.m_transparent;
}

bool NVGradientStop::operator!=(const NVGradientStop& other) const
{
    return !(*this == other);
}
