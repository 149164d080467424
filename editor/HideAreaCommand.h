#pragma once

#include <QVector>

#include "CropFrame.h"
#include "PictureContents.h"
#include "UndoStep.h"

class KXDocumentInterface;

// Hides what lies outside of a frame, as an undo step: each layer becomes transparent there, and right below
// it comes a hidden copy of it as it was, from which nothing is missing. The step itself holds no pixels.
class HideAreaCommand : public UndoStep
{
public:
    // The first redo, by the stack, gives the document the layers, which are its own without what lies
    // outside; see WithoutOutside. The document is not owned and outlives the step.
    HideAreaCommand(const QString& text, KXDocumentInterface* document, const CropFrame& frame,
                    const QVector<QImage>& layers);

private:
    void TakeBack() override;
    // Drops out of the stack when memory is short.
    void CarryOut() override;

    KXDocumentInterface* m_pDocument;
    CropFrame m_frame;
    // Until the first redo.
    QVector<QImage> m_layers;
};

// The same without an undo step. False, and nothing is changed, when the layers don't fit.
bool HideArea(KXDocumentInterface* document, const QVector<QImage>& layers);
