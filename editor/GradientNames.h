#pragma once

#include <QVector>

#include "GradientFile.h"

// Names for a list of gradients that was edited, where gradients are known by their place alone: each that is
// in the old list too has its name, in the same order; of those in between, one takes the place of one. The
// others get the first free one of the names that the pattern gives for a number.
QVector<NamedGradient> WithNames(const QVector<QGradientStops>& stops, const QVector<NamedGradient>& old,
                                 const QString& pattern);
