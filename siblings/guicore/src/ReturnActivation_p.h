#pragma once

class QWidget;

// Makes the window active after another one in front of it has gone. A window manager that at the same time
// gives the activation to another window of the application, as some do a moment later, is asked once more.
// Nobody is asked again after a press of the mouse: then the person chooses.
void ReturnActivation(QWidget* window);
