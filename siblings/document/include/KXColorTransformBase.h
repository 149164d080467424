#pragma once

#include <QImage>

#include "document_export.h"

// A colour transform between the document and the screen.
class DOCUMENT_EXPORT KXColorTransformBase
{
public:
    KXColorTransformBase() = default;
    virtual ~KXColorTransformBase();

    // Transforms the pixels of an ARGB32_Premultiplied image in place. The default leaves them as they are.
    // May be called from any thread.
    virtual void Apply(QImage& image) const;

private:
    Q_DISABLE_COPY(KXColorTransformBase)
};
