#pragma once

#include <QFont>

#include "guicore_export.h"

class QDoubleSpinBox;
class QLabel;

// Texts that stay readable where the place for them is fixed and too narrow.

// Keeps the number of the box in full sight, as that of an NVSpinBox is: where it has no room the arrows and
// the margins shrink, and at last the font. Lasts as long as the box, which needs it once.
GUICORE_EXPORT void FitText(QDoubleSpinBox* box);

// The same for a label whose width is fixed: a text of one line gets a smaller font where it has no room.
// Looks once, so it has to be called with each text.
GUICORE_EXPORT void FitText(QLabel* label);

// The largest font, up to the given one, in which the text is no wider than that, in pixels. Letters move
// closer together before they get smaller.
GUICORE_EXPORT QFont FittingFont(QFont font, const QString& text, int width);
