#pragma once

// How a bar and the popup of one of its buttons keep in step. The button's checked state follows the popup,
// and the popup follows the button; while it is open, the bar is an event filter of the popup.

class QAbstractButton;
class QEvent;
class QObject;
class QWidget;

// Opens the popup one pixel below the button, left edges in line, gives it the focus, and lets the bar see
// its events.
void OpenBarPopup(QWidget* popup, const QAbstractButton* button, QObject* bar);

// Closes the popup; the bar sees no more of its events.
void CloseBarPopup(QWidget* popup, QObject* bar);

// The popup was hidden by whatever means: lets the button go up.
void RaiseBarPopupButton(QAbstractButton* button);

// The popup lost the activation: hides it, unless the pointer is on the checked button. Then a click is under
// way that closes the popup by itself, and would open it again if it were hidden here.
void LeaveBarPopup(QWidget* popup, const QAbstractButton* button);
