#pragma once

#include <QString>

class QColor;

// A colour as people read it: "R: 255  G: 128  B: 0  100%".
QString ColorReadOut(const QColor& color);
// How opaque it is: "100%".
QString OpacityReadOut(const QColor& color);
