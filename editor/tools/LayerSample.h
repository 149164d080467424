#pragma once

#include <QImage>
#include <QPoint>
#include <QPointF>

class KXDocumentInterface;

// What a tool reads that works on the current layer: all layers as they look now, or that layer alone. Null
// when the layer itself shows it, also because no other layer does: then no copy of it is held.
QImage SampledLayers(const KXDocumentInterface* document, bool allLayers);

// The pixel that the position, in document pixels, lies in. Positions far outside are cut.
QPoint PixelAt(const QPointF& position);
