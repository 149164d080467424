#pragma once

class HeldKeys;
class NVMagicWandToolbar;
class NVSelectionToolbar;
class QWidget;

// What the tools do that select: their bars follow the keys that are held and the theme.

// While the keys are watched, Shift unites, Alt subtracts and both intersect. Neither is owned.
void FollowHeldKeys(NVSelectionToolbar* bar, HeldKeys* keys);
void FollowHeldKeys(NVMagicWandToolbar* bar, HeldKeys* keys);

// The pictures of the four buttons in the theme in force.
void UpdateSelectionButtons(QWidget* bar);
