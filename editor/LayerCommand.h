#pragma once

#include "KXDocumentInterface.h"
#include "TileStore.h"
#include "UndoStep.h"

// A change of the layers of a document, as an undo step. The first redo, by the stack, makes it. It holds
// pixels only while a layer that was deleted is not in the document.
class LayerCommand : public UndoStep
{
public:
    enum Kind
    {
        // An empty layer above the given one; both become the current one.
        New,
        Duplicate,
        Delete,
        Show,
        Hide
    };

    // The document is not owned and outlives the step. The layer must be there.
    LayerCommand(Kind kind, KXDocumentInterface* document, int layer);

    qint64 GetMemoryBytes() const override;
    qint64 GetBytes() const override;
    void MoveToDisk() override;

private:
    // Each drops out of the stack when it can't be carried out for want of memory.
    void TakeBack() override;
    void CarryOut() override;
    bool Insert();
    bool Remove();
    bool PutBack();

    Kind m_kind;
    KXDocumentInterface* m_pDocument;
    int m_layer;
    // The current layer before.
    int m_before;
    // The layer that comes or goes, without its pixels.
    KXDocumentInterface::Layer m_properties;
    // Those of a deleted layer.
    TileStore m_pixels;
};

// "Layer" and the first number that no layer has yet.
QString NewLayerName(const KXDocumentInterface* document);
