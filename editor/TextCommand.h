#pragma once

#include "KXDocumentInterface.h"
#include "TileStore.h"
#include "UndoStep.h"

// A new text in a layer of its own, as an undo step.
class NewTextCommand : public UndoStep
{
public:
    // The layer is there already, with all of its pixels in the area; the other one was the current one
    // before. The document is not owned and outlives the step.
    NewTextCommand(KXDocumentInterface* document, int layer, const QRect& area, int before);

    qint64 GetMemoryBytes() const override;
    qint64 GetBytes() const override;
    void MoveToDisk() override;

private:
    // Each drops out of the stack when it can't be carried out for want of memory.
    void TakeBack() override;
    // The first call does nothing.
    void CarryOut() override;

    KXDocumentInterface* m_pDocument;
    int m_layer;
    int m_before;
    QRect m_area;
    // The layer without its pixels.
    KXDocumentInterface::Layer m_properties;
    // Its pixels while it is not in the document.
    TileStore m_pixels;
    bool m_isFirst = true;
};

// Another text in the layer of a text, as an undo step.
class EditTextCommand : public UndoStep
{
public:
    // The change is in the layer already; the tile and the source are those of before. The document is not
    // owned and outlives the step.
    EditTextCommand(KXDocumentInterface* document, int layer, const SavedTile& before,
                    const QVariant& sourceBefore);

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
    QVariant m_otherSource;
    bool m_isFirst = true;
};
