#pragma once

#include <QString>

#include "utils_export.h"

// Helpers on names and texts. All functions are thread-safe unless a line says otherwise.
class UTILS_EXPORT NVStringHelper
{
public:
    // The name of the picture to load on the current display. On a display with a device pixel ratio above 1
    // this is the name with "@2x" or "@3x" before its suffix, whichever first covers the ratio and exists;
    // otherwise the name as it came. GUI thread only: it asks the application for its ratio.
    static QString DPIAdjustImageName(const QString& name);

    // The same for a ratio that the caller knows. Where no picture covers the ratio, the largest smaller one
    // is named. A name that carries "@2x" or "@3x" already, or has no suffix, stays as it is.
    static QString ImageNameForRatio(const QString& name, double ratio);
};
