#pragma once

#include "PictureContents.h"
#include "TileStore.h"
#include "UndoStep.h"

class Document;
class KXDocumentInterface;

// A change of the size or the resolution of a whole document as an undo step: all layers, the selection and
// the resolution, as they were before, swapped with those of the document.
class ResizeCommand : public UndoStep
{
public:
    // The first redo, by the stack, gives the document the contents, which are as many layers as it has; no
    // contents leave the pixels as they are. The resolution is in pixels an inch. The document is not owned
    // and outlives the step.
    ResizeCommand(const QString& text, Document* document, const PictureContents& contents,
                  double resolution);

    qint64 GetMemoryBytes() const override;
    qint64 GetBytes() const override;
    void MoveToDisk() override;

private:
    // Each drops out of the stack, and all other steps soon after, when it can't be carried out, since they
    // are for a document of the other size.
    void TakeBack() override;
    void CarryOut() override;
    void Exchange();
    bool ExchangeContents();

    Document* m_pDocument;
    // Each layer, then the selection if there is one.
    TileStore m_images;
    int m_layers;
    double m_resolution;
};

// As they are now; nothing is copied until the document changes.
PictureContents ContentsOf(const KXDocumentInterface* pixels);
