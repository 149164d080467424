#pragma once

class QKeyEvent;
class QWidget;

// Whether the key is an Enter that presses the default button: one without modifiers. A key that is held down
// does not count, or the Enter that opened a dialog would close it as well.
bool IsEnter(const QKeyEvent* event);

// Clicks the push button in the dialog that has the focus, or else its default button. A disabled button is
// not clicked. Other windows that belong to the dialog are not searched.
void PressDefaultButton(QWidget* dialog);
