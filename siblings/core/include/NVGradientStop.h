#pragma once

#include <QColor>

#include "core_export.h"

// One colour of a gradient and its place. A plain value, any thread.
//
// The three flags say where the colour was taken from when the stop was made, so that a gradient can be
// written as it was read. Drawing goes by the colour alone: a stop with a flag does not follow the
// application's colours.
class CORE_EXPORT NVGradientStop
{
public:
    // `position` is a fraction of the gradient's length, 0.0 at the start and 1.0 at the end. It is kept as
    // given.
    NVGradientStop(double position, const QColor& color, bool fromForeground, bool fromBackground,
                   bool transparent);
    NVGradientStop(const NVGradientStop& other) = default;
    NVGradientStop& operator=(const NVGradientStop& other) = default;
    // In the library, so that it may come to hold more without a new build of who uses it.
    ~NVGradientStop(); // NOLINT(performance-trivially-destructible)

    double GetPosition() const;
    // With its alpha.
    QColor GetColor() const;
    // The colour was the application's foreground colour.
    bool IsFromForeground() const;
    // The colour was the application's background colour.
    bool IsFromBackground() const;
    // The colour was taken with full transparency, whatever it is the colour of.
    bool IsTransparent() const;

    // Exact, of all five members.
    bool operator==(const NVGradientStop& other) const;
    bool operator!=(const NVGradientStop& other) const;

private:
    double m_position;
    QColor m_color;
    bool m_fromForeground;
    bool m_fromBackground;
    bool m_transparent;
};

Q_DECLARE_TYPEINFO(NVGradientStop, Q_MOVABLE_TYPE);
