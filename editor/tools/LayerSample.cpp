#include "LayerSample.h"

#include <cmath>

#include "KXDocumentInterface.h"

namespace
{

// Far beyond any document, and yet safe to add up.
const double Farthest = 1e8;

bool IsShown(const KXDocumentInterface::Layer& layer)
{
    return layer.visible && layer.opacity > 0;
}

// Whether the composition is nothing but the current layer.
bool ShowsLayerAlone(const KXDocumentInterface* document)
{
    const int current = document->GetCurrentLayer();
    for (int i = 0; i < document->GetLayerCount(); ++i)
    {
        const KXDocumentInterface::Layer& layer = document->GetLayer(i);
        const bool plain = layer.visible && layer.opacity == 100 && layer.blendMode == 0;
        if (i == current ? !plain : IsShown(layer))
            return false;
    }
    return true;
}

int Floor(double value)
{
    return std::isfinite(value) ? int(std::floor(qBound(-Farthest, value, Farthest))) : int(-Farthest);
}

} // namespace

QImage SampledLayers(const KXDocumentInterface* document, bool allLayers)
{
    return allLayers && !ShowsLayerAlone(document) ? document->GetComposition() : QImage();
}

QPoint PixelAt(const QPointF& position)
{
    return QPoint(Floor(position.x()), Floor(position.y()));
}
