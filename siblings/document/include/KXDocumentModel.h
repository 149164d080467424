#pragma once

#include "document_export.h"

class KXColorTransformBase;
class KXDocumentInterface;

// What a view shows: one document and the colour transform to show it with.
class DOCUMENT_EXPORT KXDocumentModel
{
public:
    // The document is not owned and must outlive the model. May be null.
    explicit KXDocumentModel(KXDocumentInterface* document);
    virtual ~KXDocumentModel();

    KXDocumentInterface* GetDocument() const;
    // A new transform for the screen; the caller owns it.
    virtual KXColorTransformBase* CreateComplexFilter() const;

private:
    KXDocumentModel(const KXDocumentModel&) = delete;
    KXDocumentModel& operator=(const KXDocumentModel&) = delete;

    KXDocumentInterface* m_pDocument;
};
