#pragma once

#include <QPoint>
#include <QRect>

#include "guicore_export.h"

class QWidget;

// Where a window that was opened beside a control has to go so that nothing of it is cut off by the screen's
// edge.

// Top left corner, nearest to that of `window`, at which `window` lies within `area`. Of a window larger than
// the area the top left part is what stays in sight. An empty area changes nothing.
GUICORE_EXPORT QPoint KeepOnScreen(const QRect& window, const QRect& area);

// The same with the free area of the screen on which the top left corner lies, or else the one that shows
// most of the window, or else the primary screen.
GUICORE_EXPORT QPoint KeepOnScreen(const QRect& window);

// The same for a window that drops down from a button of up to 32 pixels at its top left corner. A window
// that has to go up would cover the button, which then could not be clicked to close it; it goes to the right
// or else to the left of the button instead, if there is room.
GUICORE_EXPORT QPoint KeepOnScreenBesideButton(const QRect& window, const QRect& area);

// Free area, without task bars, of the screen that the rule above picks. Empty only without any screen.
GUICORE_EXPORT QRect AvailableArea(const QRect& window);

// Moves a top-level window that dropped down from a button onto the screen, frame and all, and off the
// button. Call it from showEvent(): the size is settled there, and the window has not been seen yet. Does
// nothing for a null pointer or a child widget.
GUICORE_EXPORT void MoveOntoScreen(QWidget* window);
