#pragma once

#include <Qt>

class NVMagicWandToolbar;
class NVSelectionToolbar;
class QWidget;

// What the tools do that select: their bars follow the keys that are held and the theme.

// Shift unites, Alt subtracts and both intersect.
void ShowHeldKeys(NVSelectionToolbar* bar, Qt::KeyboardModifiers held);
void ShowHeldKeys(NVMagicWandToolbar* bar, Qt::KeyboardModifiers held);

// The pictures of the four buttons in the theme in force.
void UpdateSelectionButtons(QWidget* bar);
