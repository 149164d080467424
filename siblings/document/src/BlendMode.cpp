#include "BlendMode.h"

QPainter::CompositionMode ToCompositionMode(int blendMode)
{
    static const QPainter::CompositionMode modes[BLEND_MODE_COUNT] = {
        QPainter::CompositionMode_SourceOver, QPainter::CompositionMode_Multiply,
        QPainter::CompositionMode_Screen,     QPainter::CompositionMode_Overlay,
        QPainter::CompositionMode_Difference, QPainter::CompositionMode_Exclusion,
        QPainter::CompositionMode_Lighten,    QPainter::CompositionMode_Darken,
        QPainter::CompositionMode_SoftLight,  QPainter::CompositionMode_HardLight,
        QPainter::CompositionMode_ColorDodge, QPainter::CompositionMode_ColorBurn,
        QPainter::CompositionMode_Plus};
    return blendMode >= 0 && blendMode < BLEND_MODE_COUNT ? modes[blendMode] : modes[0];
}
