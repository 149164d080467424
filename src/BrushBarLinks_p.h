#pragma once

// The ties between a brush bar and its settings popup.

#include "IBrush.h" // whole, since it is an argument of connected signals
#include "KXBrushSettings.h"

class NVBrushToolbarWidget;
class QAbstractButton;

// One value each, in both directions. The popup is silent when a value stays the same, which ends the round;
// so a tie may be made twice, and every bar does make the ties of its controls once more on top of those of
// its base.
void LinkOpacity(NVBrushToolbarWidget* bar);
void LinkSize(NVBrushToolbarWidget* bar);
void LinkSpacing(NVBrushToolbarWidget* bar);

// The slot gets the brush whenever another one is chosen, and whenever the current one changes.
template <class Bar>
void LinkBrush(Bar* bar, void (Bar::*slot)(IBrush*))
{
    QObject::connect(bar->GetBrushes(), &KXBrushSettings::CurrentBrushChanged, bar, slot);
    QObject::connect(bar->GetBrushes(), &KXBrushSettings::BrushParameterChanged, bar, slot);
}

// Draws the brush on the bar's button, in white under the dark theme and in black under all others. Null
// leaves the icon as it was.
void ShowBrush(QAbstractButton* button, IBrush* brush);
