#pragma once

#include <QRect>

#include "SelectCommand.h"
#include "TileStore.h"
#include "UndoStep.h"

class KXDocumentInterface;

// A change of a layer and of the selection together, as when selected pixels are moved, as one undo step.
class ContentCommand : public UndoStep
{
public:
    // Both changes are made already; the tiles and the selection are those of before, which are swapped with
    // those of the document. The document is not owned and outlives the step.
    ContentCommand(const QString& text, KXDocumentInterface* document, int layer, QVector<SavedTile> tiles,
                   const QImage& selection);

    qint64 GetMemoryBytes() const override;
    qint64 GetBytes() const override;
    void MoveToDisk() override;

private:
    // Each drops out of the stack when it can't be carried out.
    void TakeBack() override;
    // The first call does nothing.
    void CarryOut() override;
    void Exchange();

    KXDocumentInterface* m_pDocument;
    int m_layer;
    QRect m_area;
    TileStore m_tiles;
    MaskStore m_selection;
    bool m_isFirst = true;
};
