#pragma once

class QLabel;

// Makes a label paint its text as one line, plain, with dots in the middle where it does not fit. text() and
// what a screen reader hears stay whole.
void ElideWhenPainted(QLabel* label);
