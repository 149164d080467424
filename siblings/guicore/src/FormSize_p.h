#pragma once

class QWidget;

// Gives a window the size that the form gave to its content, but none smaller than the layout wants. Call it
// before the window is shown. A window that has a size already, a child widget, and a content without a size
// of its own are left alone.
void TakeFormSize(QWidget* window, QWidget* content);
