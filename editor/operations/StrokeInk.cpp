#include "StrokeInk.h"

#include <algorithm>
#include <cmath>

namespace
{
const int GRADIENT_COLORS = 1024;
const double SIZES_PER_RUN = 10.0;

QRgb MixPixels(QRgb a, QRgb b, double t)
{
    const auto mix = [t](int from, int to) { return int(std::lround(from + (to - from) * t)); };
    return qRgba(mix(qRed(a), qRed(b)), mix(qGreen(a), qGreen(b)), mix(qBlue(a), qBlue(b)),
                 mix(qAlpha(a), qAlpha(b)));
}

bool HasStampColors(const StrokeSettings& settings)
{
    if (settings.erase || settings.source)
        return false;
    switch (settings.fillMode)
    {
    case StrokeSettings::Gradient:
    case StrokeSettings::PatternGradient:
    case StrokeSettings::RandomColor:
        return true;
    case StrokeSettings::Pattern:
        return settings.pattern.isNull() && settings.dynamics.color;
    default:
        return settings.dynamics.color;
    }
}

bool HasPattern(const StrokeSettings& settings)
{
    return settings.fillMode == StrokeSettings::Pattern ||
        settings.fillMode == StrokeSettings::PatternColor ||
        settings.fillMode == StrokeSettings::PatternGradient;
}

// The pattern's brightness times a colour, all premultiplied.
QImage Tinted(QImage pattern, QRgb color)
{
    const auto times = [](int a, int b) { return (a * b + 127) / 255; };
    for (int y = 0; y < pattern.height(); ++y)
    {
        QRgb* row = reinterpret_cast<QRgb*>(pattern.scanLine(y));
        for (int x = 0; x < pattern.width(); ++x)
        {
            const int alpha = qAlpha(row[x]);
            const int light = std::min(qGray(row[x]), alpha);
            row[x] = qRgba(times(qRed(color), light), times(qGreen(color), light), times(qBlue(color), light),
                           times(qAlpha(color), alpha));
        }
    }
    return pattern;
}

QGradientStops SortedStops(const StrokeSettings& settings)
{
    QGradientStops stops;
    for (const QGradientStop& stop : settings.gradient)
    {
        if (std::isfinite(stop.first))
            stops.append({std::clamp(stop.first, 0.0, 1.0), stop.second});
    }
    if (stops.isEmpty())
        stops = {{0.0, settings.foreground}, {1.0, settings.background}};
    std::stable_sort(stops.begin(), stops.end(),
                     [](const QGradientStop& a, const QGradientStop& b) { return a.first < b.first; });
    return stops;
}

QRgb ColorOfStops(const QGradientStops& stops, double t)
{
    const auto after =
        std::find_if(stops.begin(), stops.end(), [t](const QGradientStop& s) { return s.first > t; });
    if (after == stops.begin())
        return qPremultiply(stops.first().second.rgba());
    if (after == stops.end())
        return qPremultiply(stops.last().second.rgba());
    const auto before = after - 1;
    const double part = (t - before->first) / (after->first - before->first);
    return MixPixels(qPremultiply(before->second.rgba()), qPremultiply(after->second.rgba()), part);
}
} // namespace

StrokeInk MakeStrokeInk(const StrokeSettings& settings)
{
    StrokeInk ink;
    ink.stampColors = HasStampColors(settings);
    ink.color = qPremultiply(settings.foreground.rgba());
    ink.blendMode = settings.blendMode;
    ink.opacity = quint16(std::lround(settings.opacity * 655.35));
    ink.selection = settings.selection;
    ink.erase = settings.erase;
    ink.source = settings.source;
    ink.sourceReplaces = settings.source.target<ReplacingSource>() != nullptr;
    if (ink.erase || ink.source)
        return ink;
    if (!HasPattern(settings) || settings.pattern.isNull())
    {
        // The alpha goes with the coverage: rounding the colour to few levels first would show in Color burn.
        ink.color = settings.foreground.rgba() | 0xff000000u;
        if (!ink.stampColors)
            ink.opacity = quint16(ink.opacity * settings.foreground.alpha() / 255);
        return ink;
    }
    if (settings.fillMode == StrokeSettings::Pattern)
        ink.pattern = settings.pattern;
    else
        ink.pattern = Tinted(settings.pattern, ink.stampColors ? qRgba(255, 255, 255, 255) : ink.color);
    return ink;
}

StrokeColors::StrokeColors(const StrokeSettings& settings)
    : m_foreground(qPremultiply(settings.foreground.rgba())),
      m_background(qPremultiply(settings.background.rgba())),
      m_fillMode(settings.fillMode),
      m_runLength(settings.size * SIZES_PER_RUN),
      m_seed(settings.seed)
{
    if (m_fillMode != StrokeSettings::Gradient && m_fillMode != StrokeSettings::PatternGradient)
        return;
    const QGradientStops stops = SortedStops(settings);
    m_gradient.reserve(GRADIENT_COLORS);
    for (int i = 0; i < GRADIENT_COLORS; ++i)
        m_gradient.append(ColorOfStops(stops, double(i) / (GRADIENT_COLORS - 1)));
}

QRgb StrokeColors::At(const StampPlan& plan) const
{
    if (!m_gradient.isEmpty())
        return gradientAt(plan.distance);
    if (m_fillMode == StrokeSettings::RandomColor)
        return randomAt(plan.index);
    return MixPixels(m_background, m_foreground, plan.pressure);
}

QRgb StrokeColors::gradientAt(double distance) const
{
    const double runs = std::fmod(distance / m_runLength, 2.0);
    const double t = runs > 1.0 ? 2.0 - runs : runs;
    return m_gradient[int(std::lround(t * (GRADIENT_COLORS - 1)))];
}

// Any hue, never pale or dark, as opaque as the foreground.
QRgb StrokeColors::randomAt(quint64 index) const
{
    const double hue = StrokeChance(m_seed, index, 2) * 0.9999;
    const double saturation = 0.5 + 0.5 * StrokeChance(m_seed, index, 3);
    const double value = 0.6 + 0.4 * StrokeChance(m_seed, index, 4);
    return qPremultiply(QColor::fromHsvF(hue, saturation, value, qAlpha(m_foreground) / 255.0).rgba());
}
