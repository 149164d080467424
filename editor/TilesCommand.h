#pragma once

#include <QRect>

#include "TileStore.h"
#include "UndoStep.h"

class KXDocumentInterface;

// A change of a layer, such as a stroke, as an undo step: the tiles that it touched, as they were before,
// swapped with those of the layer.
class TilesCommand : public UndoStep
{
public:
    // The change is on the layer already. The document is not owned and outlives the step.
    TilesCommand(const QString& text, KXDocumentInterface* document, int layer, QVector<SavedTile> tiles);

    qint64 GetMemoryBytes() const override;
    qint64 GetBytes() const override;
    void MoveToDisk() override;

private:
    void TakeBack() override;
    // The first call does nothing.
    void CarryOut() override;
    void Exchange();

    KXDocumentInterface* m_pDocument;
    int m_layer;
    QRect m_area;
    TileStore m_tiles;
    bool m_isFirst = true;
};
