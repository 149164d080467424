#pragma once

#include "KXDocumentInterface.h"
#include "TileStore.h"
#include "UndoStep.h"

// All layers of a document become one that looks like them together, as an undo step. The first redo, by the
// stack, makes it. Hidden ones go.
class FlattenCommand : public UndoStep
{
public:
    // The document is not owned and outlives the step.
    explicit FlattenCommand(KXDocumentInterface* document);

    qint64 GetMemoryBytes() const override;
    qint64 GetBytes() const override;
    void MoveToDisk() override;

private:
    // Each drops out of the stack when it can't be carried out for want of memory.
    void TakeBack() override;
    void CarryOut() override;

    KXDocumentInterface* m_pDocument;
    // The current layer before.
    int m_before;
    // The layers from the lowest up, without their pixels.
    QVector<KXDocumentInterface::Layer> m_layers;
    // Their pixels while they are not in the document.
    TileStore m_pixels;
};

// Whether it has more to show than one plain layer of pixels.
bool CanFlatten(const KXDocumentInterface* document);
