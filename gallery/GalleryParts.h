// What several widgets of the gallery are filled with.

#pragma once

#include <QImage>
#include <QList>

#include <memory>

#include "GalleryExhibits.h"
#include "NVGradientStop.h"

class NVDocumentView;

// Hills by the sea, drawn by arithmetic. RGB32; any size that is not empty.
QImage DrawGalleryPicture(const QSize& size);

// Four, one of them with transparency.
QList<QList<NVGradientStop>> GalleryGradients();

// A canvas with a document that shows the picture, as the exhibit's companion.
NVDocumentView* AddCanvas(Exhibit& exhibit, QWidget* parent);
