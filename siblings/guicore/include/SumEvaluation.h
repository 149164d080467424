#pragma once

#include <QLocale>
#include <QString>

#include <optional>

#include "guicore_export.h"

// What a person types into a number box instead of a number: "2*300/4", "(10+5)*-2".
//
// Knows + - * / with the usual precedence, signs, parentheses and blanks; the typographic minus, times and
// division signs too. A point, or the locale's decimal point, marks decimals; group separators are not
// understood. Nothing comes back for an incomplete or wrong sum, a division by zero, or a result that is not
// finite. Depth and length are limited by memory only.
GUICORE_EXPORT std::optional<double> EvaluateSum(const QString& text, const QLocale& locale = QLocale::c());

// Rounds to the nearest whole number, halves away from zero, and clamps to `minimum` .. `maximum`. NaN gives
// `minimum`.
GUICORE_EXPORT int RoundIntoRange(double value, int minimum, int maximum);
