#pragma once

class QWidget;

// Makes the window active after another one in front of it has gone. A window manager that at the same time
// gives the activation to another window of the application, as some do a moment later, is asked once more.
// Nobody is asked again after a press of the mouse, for then the person chooses, nor when a window becomes
// active that was not visible yet: then the application chose.
void ReturnActivation(QWidget* window);
