#pragma once

// The pictures of a bar: the tool's at its start, and the pattern on a button.

class PatternSelectWidget;
class QAbstractButton;
class QLabel;
class QString;

// Loads the picture in the density of the screen. The form names it too, but only here the density is known.
void SetBarPicture(QLabel* label, const QString& name);

// Shows the pattern of that index on the button. An index without a pattern leaves the icon as it was.
void ShowPattern(QAbstractButton* button, const PatternSelectWidget* patterns, int index);
