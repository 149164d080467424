#pragma once

#include <QPixmap>
#include <QStringList>

struct GalleryRequest;
struct GalleryRow;

// The widget as it comes up, alone. Waits for what it works out on other threads.
QPixmap TakeGalleryPicture(const GalleryRow& row);
// Draws each widget into <name>.png in the folder, which is made if need be, in the theme of NVApplication.
// Returns the names of those that have no picture: it is of one colour, or could not be written.
QStringList RenderGallery(const QString& folder);

// Does what was asked for and returns the status of the program: 0, 1 if a picture is missing, 2 for a
// request that cannot be done. Needs a QApplication.
int RunGallery(const GalleryRequest& request);
