#pragma once

// How a bar and the popup of one of its buttons keep in step. The button's checked state follows the popup,
// and the popup follows the button; while it is open, the bar is an event filter of the popup.

class NVBrushToolbarWidget;
class QAbstractButton;
class QEvent;
class QObject;
class QWidget;

// What becomes of a settings popup when the modal window in front of it goes.
enum class AfterBlock
{
    Leave,
    Raise
};

// The button was toggled. Checked: opens the popup one pixel below the button, left edges in line, gives it
// the focus, and lets the bar see its events. Unchecked: closes it, and the bar sees no more of its events.
void ShowBarPopup(bool checked, QWidget* popup, const QAbstractButton* button, QObject* bar);

// The bar saw this event of an open popup. A hidden popup lets its button go up. A popup that loses the
// activation is hidden, unless the pointer is on the checked button: then a click is under way that closes
// it, and would open it again if it were hidden here.
void FollowBarPopup(QWidget* popup, QAbstractButton* button, const QEvent* event);

// The same for the settings popup of a brush bar, which stays open while a modal window blocks it; that is
// kept in `blocked`.
void FollowSettingsPopup(QWidget* popup, QAbstractButton* button, const QEvent* event, bool& blocked,
                         AfterBlock after);

// Whether the object is the bar's own settings popup.
bool IsSettingsPopup(QObject* object, const NVBrushToolbarWidget* bar);
