#include "GradientStops.h"

QVector<QPair<double, QColor>> ToGradientStops(const QList<NVGradientStop>& gradient)
{
    QVector<QPair<double, QColor>> stops;
    stops.reserve(gradient.size());
    for (const NVGradientStop& stop : gradient)
    {
        stops.append(qMakePair(stop.GetPosition(), stop.GetColor()));
    }
    return stops;
}

QVector<QPair<double, QColor>> ToReversedStops(const QList<NVGradientStop>& gradient)
{
    QVector<QPair<double, QColor>> stops;
    stops.reserve(gradient.size());
    for (auto stop = gradient.crbegin(); stop != gradient.crend(); ++stop)
    {
        stops.append(qMakePair(1.0 - stop->GetPosition(), stop->GetColor()));
    }
    return stops;
}

QList<NVGradientStop> FromGradientStops(const QVector<QPair<double, QColor>>& stops)
{
    QList<NVGradientStop> gradient;
    gradient.reserve(stops.size());
    for (const QPair<double, QColor>& stop : stops)
    {
        gradient.append(NVGradientStop(stop.first, stop.second, false, false, false));
    }
    return gradient;
}
