#include "BatchChange.h"

#include <QTransform>

#include "KXDocumentInterface.h"

namespace
{

QSize Turned(const QSize& size, int rotation)
{
    return rotation % 180 == 0 ? size : size.transposed();
}

} // namespace

QSize ChangedSize(const QSize& size, const BatchChange& change)
{
    QSize turned = Turned(size, change.rotation);
    const bool isLarger = turned.width() > change.bounds.width() || turned.height() > change.bounds.height();
    if (change.resize == BatchChange::FitWithin && (isLarger || change.enlarges))
        turned.scale(change.bounds, Qt::KeepAspectRatio);
    else if (change.resize == BatchChange::ByPercent)
        turned = QSize(qRound(turned.width() * (change.percent / 100.0)),
                       qRound(turned.height() * (change.percent / 100.0)));
    return turned.expandedTo(QSize(1, 1));
}

bool IsTooLarge(const QSize& size)
{
    const int limit = KXDocumentInterface::MAX_DOC_DIMENSION;
    return size.width() > limit || size.height() > limit;
}

QImage Changed(const QImage& image, const BatchChange& change)
{
    const QSize size = ChangedSize(image.size(), change);
    if (IsTooLarge(size))
        return {};
    QImage result = image;
    const QSize unturned = Turned(size, change.rotation);
    if (unturned != image.size())
        result = image.scaled(unturned, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    if (change.rotation != 0)
        result = result.transformed(QTransform().rotate(change.rotation));
    return result;
}
