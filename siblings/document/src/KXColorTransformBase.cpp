#include "KXColorTransformBase.h"

KXColorTransformBase::~KXColorTransformBase() = default;

void KXColorTransformBase::Apply(QImage& image) const
{
    Q_UNUSED(image)
}
