#pragma once

#include <QString>

// Plays a session by key and mouse events, as a person would, on a window of its own with settings of its
// own. Each step is checked; its screenshot and an index.html go into the folder, which is made if need be,
// and one line a step to the standard output. The picture is opened if there is one, else one of the size of
// a photograph is drawn. Returns 0 if every step went well, else 1. Needs a QApplication.
int RunTour(const QString& folder, const QString& picture);
