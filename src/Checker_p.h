#pragma once

#include <QBrush>

// The black and white squares behind colours with alpha: a texture brush of a white tile, two cells wide and
// high, with the cells at the top right and the bottom left in black. `cell` in pixels.
QBrush CheckerBrush(int cell);
