#pragma once

#include <QImage>
#include <QString>

// The tiles of the pattern chooser: drawn by rule, 64 by 64 pixels, opaque, and without a seam when laid side
// by side. GUI thread only.

int PatternTileCount();
// The index must be valid. Drawn at the first call, then kept for the program's life.
QImage PatternTile(int index);
// In the language of the program. The index must be valid.
QString PatternTileName(int index);
