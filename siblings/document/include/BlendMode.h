#pragma once

#include <QPainter>

#include "document_export.h"

// The thirteen blend modes, known by their index in the lists of the option bars: Normal, Multiply, Screen,
// Overlay, Difference, Exclusion, Lighten colors, Darken colors, Soft light, Hard light, Color dodge, Color
// burn, Addition.
const int BLEND_MODE_COUNT = 13;

// How the painter mixes pixels in the blend mode. An index out of range is taken as Normal. Any thread.
DOCUMENT_EXPORT QPainter::CompositionMode ToCompositionMode(int blendMode);
