#include "KXDocumentModel.h"

#include "KXColorTransformBase.h"

KXDocumentModel::KXDocumentModel(KXDocumentInterface* document) : m_pDocument(document) { }

KXDocumentModel::~KXDocumentModel() = default;

KXDocumentInterface* KXDocumentModel::GetDocument() const
{
    return m_pDocument;
}

KXColorTransformBase* KXDocumentModel::CreateComplexFilter() const
{
    return new KXColorTransformBase;
}
