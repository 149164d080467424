#include "NVIconHelper.h"

#include <QImage>
#include <QPixmap>

namespace
{
// How much of its opacity a faded pixel keeps.
const double FadedOpacity = 0.4;

QImage faded(QImage image)
{
    image = image.convertToFormat(QImage::Format_ARGB32);
    for (int y = 0; y < image.height(); ++y)
    {
        auto* line = reinterpret_cast<QRgb*>(image.scanLine(y));
        for (int x = 0; x < image.width(); ++x)
        {
            const int grey = qGray(line[x]);
            line[x] = qRgba(grey, grey, grey, qRound(qAlpha(line[x]) * FadedOpacity));
        }
    }
    return image;
}
} // namespace

QIcon NVIconHelper::DisabledIcon(const QPixmap& pixmap)
{
    if (pixmap.isNull())
        return QIcon();
    QIcon icon(pixmap);
    icon.addPixmap(QPixmap::fromImage(faded(pixmap.toImage())), QIcon::Disabled);
    return icon;
}
