#include "SharpPixmap_p.h"

#include <QWidget>

QPixmap SharpPixmap(const QSize& size, const QWidget* widget)
{
    const qreal ratio = widget->devicePixelRatioF();
    QPixmap pixmap((QSizeF(size.expandedTo(QSize(1, 1))) * ratio).toSize());
    pixmap.setDevicePixelRatio(ratio);
    pixmap.fill(Qt::transparent);
    return pixmap;
}
