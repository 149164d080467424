#pragma once

#include <QIcon>

#include "utils_export.h"

class QPixmap;

// Helpers on icons. GUI thread only.
class UTILS_EXPORT NVIconHelper
{
public:
    // An icon that shows the pixmap, and a faded grey version of it on a disabled control.
    // A null pixmap gives a null icon.
    static QIcon DisabledIcon(const QPixmap& pixmap);
};
