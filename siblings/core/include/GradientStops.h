// A gradient as the application keeps it, a list of NVGradientStop, and as it is drawn, the stops of a
// QGradient. Any thread.

#pragma once

#include <QColor>
#include <QList>
#include <QPair>
#include <QVector>

#include "NVGradientStop.h"
#include "core_export.h"

// Position and colour of each stop, in the order of the list.
CORE_EXPORT QVector<QPair<double, QColor>> ToGradientStops(const QList<NVGradientStop>& gradient);

// The gradient run backwards: a stop at p stands at 1 - p, and the order is turned round, so that an
// ascending list stays ascending.
CORE_EXPORT QVector<QPair<double, QColor>> ToReversedStops(const QList<NVGradientStop>& gradient);

// One stop for each element, all its flags false.
CORE_EXPORT QList<NVGradientStop> FromGradientStops(const QVector<QPair<double, QColor>>& stops);
