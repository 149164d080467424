#pragma once

// The ties between a brush bar and its settings popup, one value each, in both directions. The popup is
// silent when a value stays the same, which ends the round; so a tie may be made twice, and every bar does
// make the ties of its controls once more on top of those of its base.

class NVBrushToolbarWidget;

void LinkOpacity(NVBrushToolbarWidget* bar);
void LinkSize(NVBrushToolbarWidget* bar);
void LinkSpacing(NVBrushToolbarWidget* bar);
